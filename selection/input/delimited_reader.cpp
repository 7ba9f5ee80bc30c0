#include "selection/input/delimited_reader.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "base/errors.hpp"
#include "base/utf8.hpp"

namespace drav::selection {
namespace {

// The bytes that FindRecord acts on: line ends, quotes, the backslash that
// may escape a quote, and NUL.
constexpr std::array<bool, 256> kRecordBytes = [] {
  std::array<bool, 256> bytes{};
  for (const char c : {'\n', '\r', '"', '\\', '\0'}) bytes[static_cast<unsigned char>(c)] = true;
  return bytes;
}();

// The characters of Windows-1252 at 0x80 to 0x9F; the bytes it leaves
// unused stand for the control characters of the same number, as browsers
// read them. From 0xA0 on it is Latin-1, whose bytes are their code points.
constexpr char16_t kWindows1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t Windows1252(unsigned char byte) {
  return byte >= 0x80 && byte < 0xA0 ? char32_t{kWindows1252High[byte - 0x80]} : char32_t{byte};
}

void AppendWindows1252(std::string_view bytes, std::string& out) {
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      out += c;
    } else {
      utf8::Append(out, Windows1252(byte));
    }
  }
}

// The length of the UTF-8 sequence that `lead` starts; 0 for a byte that
// starts none.
std::size_t SequenceLength(unsigned char lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

std::string Hex(unsigned char byte) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  return {kDigits[byte >> 4], kDigits[byte & 15]};
}

}  // namespace

std::optional<InputEncoding> InputEncodingNamed(std::string_view name) {
  if (name == "utf-8" || name == "UTF-8" || name == "utf8") return InputEncoding::Utf8;
  if (name == "windows-1252" || name == "cp1252" || name == "Windows-1252") return InputEncoding::Windows1252;
  return std::nullopt;
}

DelimitedReader::DelimitedReader(std::FILE* file, std::string name, Diagnostics& diagnostics, ReadLimits limits,
                                 InputEncoding encoding)
    : file_(file), name_(std::move(name)), limits_(limits), diagnostics_(diagnostics) {
  // The byte-order mark may come in more than one read.
  while (buffer_.size() < 3 && !atEnd_) ReadChunk(buffer_);
  const std::string_view start(buffer_);
  if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF")) {
    decoding_ = Decoding::Utf16;
    utf16_.emplace(start[0] == '\xFE');
    raw_ = buffer_.substr(2);
    buffer_.clear();
    utf16_->Decode(raw_, atEnd_, buffer_);
  } else if (encoding == InputEncoding::Windows1252) {
    decoding_ = Decoding::Windows1252;
    raw_.swap(buffer_);
    AppendWindows1252(raw_, buffer_);
  } else {
    if (start.starts_with("\xEF\xBB\xBF")) position_ = checked_ = 3;
    // A byte-order mark says UTF-8 as plainly as the option does.
    strictUtf8_ = encoding == InputEncoding::Utf8 || position_ == 3;
    decoding_ = strictUtf8_ ? Decoding::Utf8 : Decoding::Ascii;
    Check();
  }
  std::size_t end = 0;
  std::size_t next = 0;
  bool found = FindRecord(end, next);
  while (found && end == position_) {  // blank lines before the header
    position_ = next;
    found = FindRecord(end, next);
  }
  if (!found) Refuse({.file = name_, .text = "no header line; the input is empty"});

  // The separator the header uses most; on a tie tab wins over semicolon and
  // semicolon over comma, because names hold commas more often than tabs.
  // Blanks count only when none of the three is there.
  std::size_t tabs = 0, semicolons = 0, commas = 0, blanks = 0;
  bool quoted = false;
  for (std::size_t i = position_; i < end; ++i) {
    const char c = buffer_[i];
    if (c == '"') quoted = !quoted;
    if (quoted) continue;
    tabs += c == '\t';
    semicolons += c == ';';
    commas += c == ',';
    blanks += c == ' ';
  }
  if (tabs > 0 && tabs >= semicolons && tabs >= commas) {
    separator_ = '\t';
  } else if (semicolons > 0 && semicolons >= commas) {
    separator_ = ';';
  } else if (commas == 0 && blanks > 0) {
    separator_ = ' ';
  }
  SplitRecord(std::string_view(buffer_).substr(position_, end - position_), Syntax(), unquoted_, fields_);
  position_ = next;
  header_.assign(fields_.begin(), fields_.end());
}

DelimitedReader::~DelimitedReader() {
  if (!reading_.joinable()) return;
  ahead_->Stop();
  reading_.join();
}

bool DelimitedReader::ReadAhead() {
  if (ahead_) return true;
  // The current record stays current: it becomes the one handed out of a
  // first batch of its own.
  batch_ = RecordBatch();
  batch_.Add(std::string_view(buffer_).substr(recordBegin_, recordEnd_ - recordBegin_), recordLine_, Syntax());
  nextInBatch_ = 0;
  NextAhead();
  ahead_ = std::make_unique<RecordBatches>();
  notesKept_ = true;
  // What the reading thread needs is this reader's own state, which Next
  // no longer touches; the thread is gone before the reader is. It finds
  // the records; the threads that use them split them.
  try {
    reading_ = std::thread([this] {
      for (;;) {
        RecordBatch batch;
        try {
          std::size_t begin = 0;
          std::size_t end = 0;
          while (batch.Records() < RecordBatches::kRecords && batch.bytes.size() < RecordBatches::kBytes) {
            const bool found = FindNonBlank(begin, end);
            TakeNotes(batch);
            if (!found) {
              batch.last = true;
              break;
            }
            batch.Add(std::string_view(buffer_).substr(begin, end - begin), recordLine_, Syntax());
          }
        } catch (...) {
          // Out of memory too: the batch so far goes, and the fault after it.
          TakeNotes(batch);
          batch.error = std::current_exception();
          batch.last = true;
        }
        const bool last = batch.last;
        if (!ahead_->Push(std::move(batch)) || last) return;
      }
    });
  } catch (const std::system_error&) {
    // No thread to be had: the current record is still the one Fields
    // gives, and the rest are read as they are asked for.
    ahead_.reset();
    notesKept_ = false;
    return false;
  }
  return true;
}

// A note of the reading: told at once on the calling thread, kept for the
// batch being filled on the reading thread.
void DelimitedReader::Tell(Diagnostic note) {
  if (notesKept_) {
    keptNotes_.push_back(std::move(note));
  } else {
    diagnostics_.Add(std::move(note));
  }
}

// The notes found while finding the record the batch takes next come
// before it.
void DelimitedReader::TakeNotes(RecordBatch& batch) {
  for (Diagnostic& note : keptNotes_) batch.notes.emplace_back(batch.Records(), std::move(note));
  keptNotes_.clear();
}

bool DelimitedReader::Next() { return ahead_ ? NextAhead() : ReadRecord(); }

bool DelimitedReader::NextAhead() {
  while (nextInBatch_ == batch_.Records()) {
    if (batch_.last) {
      batch_.TellNotes(batch_.Records(), batch_.Records() + 1, diagnostics_);
      if (batch_.error) std::rethrow_exception(batch_.error);
      aheadFields_.clear();
      return false;
    }
    batch_ = ahead_->Pop();
    nextInBatch_ = 0;
    }
  const std::size_t r = nextInBatch_++;
  batch_.TellNotes(r, r + 1, diagnostics_);
  batch_.Fields(r, aheadUnquoted_, aheadFields_);
  aheadLine_ = batch_.lines[r];
  return true;
}

std::optional<RecordBatch> DelimitedReader::TakeBatch() {
  if (!ahead_ || nextInBatch_ < batch_.Records()) throw std::logic_error("TakeBatch: not between batches read ahead");
  if (batch_.last) {
    batch_.TellNotes(batch_.Records(), batch_.Records() + 1, diagnostics_);
    if (batch_.error) std::rethrow_exception(std::exchange(batch_.error, nullptr));
    return std::nullopt;
  }
  RecordBatch batch = ahead_->Pop();
  // What stays behind is an empty batch that knows whether one follows.
  batch_ = RecordBatch();
  batch_.last = batch.last;
  nextInBatch_ = 0;
  aheadFields_.clear();
  return batch;
}

bool DelimitedReader::ReadRecord() {
  if (!FindNonBlank(recordBegin_, recordEnd_)) {
    fields_.clear();
    return false;
  }
  SplitRecord(std::string_view(buffer_).substr(recordBegin_, recordEnd_ - recordBegin_), Syntax(), unquoted_,
              fields_);
  return true;
}

// Finds the next record that is not blank; its text is buffer_[begin, end)
// until the next read. False when no record is left.
bool DelimitedReader::FindNonBlank(std::size_t& begin, std::size_t& end) {
  std::size_t next = 0;
  while (FindRecord(end, next)) {
    begin = position_;
    position_ = next;
    if (!IsBlankRecord(std::string_view(buffer_).substr(begin, end - begin), Syntax(), unquoted_, fields_)) return true;
  }
  return false;
}

// Finds the end of the record that starts at position_ (the first line end
// outside quotes) and where the record after it starts, reading more input
// as needed. False when no record is left.
bool DelimitedReader::FindRecord(std::size_t& end, std::size_t& next) {
  recordLine_ = nextLine_;
  std::size_t i = position_;
  bool quoted = false;
  std::int64_t quoteLine = 0;  // where the open quote opened
  for (;;) {
    for (; i < buffer_.size(); ++i) {
      const char c = buffer_[i];
      // Most bytes are none of the few that end or quote a record: one
      // look-up passes them.
      if (!kRecordBytes[static_cast<unsigned char>(c)]) continue;
      if (c == '\\' && quoted) {
        // R's write.table escapes a quote inside a quoted field as \" by
        // default, where RFC 4180 doubles it. Such a quote is taken for an
        // escape once one is met that could not close the field: one not
        // followed by a separator, a line end or a second quote.
        if (i + 2 >= buffer_.size() && !atEnd_) break;
        if (i + 1 < buffer_.size() && buffer_[i + 1] == '"') {
          const char after = i + 2 < buffer_.size() ? buffer_[i + 2] : '\n';
          if (!backslashEscapes_ && after != separator_ && after != '\n' && after != '\r' && after != '"') {
            backslashEscapes_ = true;
            Tell({Severity::Note, name_, nextLine_, {},
                  "a quote inside a quoted field is escaped by a backslash, as write.table writes it; read so"});
          }
          if (backslashEscapes_) ++i;
        }
      } else if (c == '"') {
        quoted = !quoted;
        quoteLine = nextLine_;
      } else if (c == '\n' || c == '\r') {
        const bool crAtBufferEnd = c == '\r' && i + 1 == buffer_.size() && !atEnd_;
        if (crAtBufferEnd) break;  // a CR LF may be split across two reads
        const bool crlf = c == '\r' && i + 1 < buffer_.size() && buffer_[i + 1] == '\n';
        if (quoted) {
          nextLine_ += 1;
          i += crlf;
          continue;
        }
        end = i;
        next = i + 1 + crlf;
        nextLine_ += 1;
        RefuseInvalidBefore(next);
        return true;
      } else if (c == '\0') {
        Refuse({.file = name_, .line = nextLine_, .text = "holds a NUL byte; this is not a text file"});
      }
    }
    if (i - position_ > limits_.maxRecordBytes) {
      const std::size_t limit = limits_.maxRecordBytes;
      const std::string size = limit >= (1u << 20) ? std::to_string(limit >> 20) + " MiB" : std::to_string(limit) + " bytes";
      if (quoted) RefuseOpenQuote(quoteLine, " within " + size);
      Refuse({.file = name_, .line = recordLine_, .text = "a line longer than " + size + "; this is not a table"});
    }
    if (atEnd_) {
      if (i == position_) return false;
      // A quote left open would make the rest of the file one field.
      if (quoted) RefuseOpenQuote(quoteLine, "");
      end = next = i;
      RefuseInvalidBefore(next);
      return true;
    }
    const std::size_t scanned = i - position_;
    Refill();
    i = position_ + scanned;
  }
}

// Appends the next chunk of input to the unread bytes, decoded. The bytes
// already handed out are dropped first, so the buffer holds one record at
// most.
bool DelimitedReader::Refill() {
  if (position_ > 0) {
    buffer_.erase(0, position_);
    checked_ -= std::min(checked_, position_);
    if (invalidAt_ != std::string::npos) invalidAt_ -= position_;
    position_ = 0;
  }
  const std::size_t before = buffer_.size();
  switch (decoding_) {
    case Decoding::Utf16:
      raw_.clear();
      ReadChunk(raw_);
      utf16_->Decode(raw_, atEnd_, buffer_);
      break;
    case Decoding::Windows1252:
      raw_.clear();
      ReadChunk(raw_);
      AppendWindows1252(raw_, buffer_);
      break;
    case Decoding::Ascii:
    case Decoding::Utf8:
      ReadChunk(buffer_);
      Check();
      break;
  }
  return buffer_.size() > before;
}

void DelimitedReader::ReadChunk(std::string& into) {
  const std::size_t old = into.size();
  into.resize(old + limits_.chunkBytes);
  const std::size_t got = std::fread(into.data() + old, 1, limits_.chunkBytes, file_);
  const int error = errno;
  into.resize(old + got);
  if (got < limits_.chunkBytes) {
    if (std::ferror(file_)) throw IOException(name_, error);
    atEnd_ = true;
  }
}

// Checks the bytes of the buffer behind checked_ as UTF-8. Of a character
// that the last read cut off, the rest comes with the next. While the text
// has been ASCII, a byte that starts no UTF-8 character makes the rest
// Windows-1252; once it has held UTF-8, such a byte is kept in mind and
// refused when its record is read.
void DelimitedReader::Check() {
  const std::string_view text(buffer_);
  std::size_t i = checked_;
  while (i < text.size()) {
    // Eight bytes at a time through the ASCII that makes up nearly all of a
    // table.
    for (std::uint64_t word = 0; i + sizeof word <= text.size(); i += sizeof word) {
      std::memcpy(&word, text.data() + i, sizeof word);
      if ((word & 0x8080808080808080ULL) != 0) break;
    }
    if (i >= text.size()) break;
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x80) {
      ++i;
      continue;
    }
    const std::size_t length = SequenceLength(byte);
    if (length != 0 && i + length > text.size() && !atEnd_) break;
    if (length != 0 && utf8::CharLength(text, i) == length) {
      decoding_ = Decoding::Utf8;
      i += length;
      continue;
    }
    if (decoding_ == Decoding::Ascii) {
      std::string rest(text.substr(i));
      buffer_.resize(i);
      AppendWindows1252(rest, buffer_);
      decoding_ = Decoding::Windows1252;
      std::string shown;
      utf8::Append(shown, Windows1252(byte));
      Tell({Severity::Note, {}, 0, {},
            name_ + " is not UTF-8; read as Windows-1252, in which byte " + Hex(byte) + " is '" + shown +
                "' (--encoding utf-8 refuses such a file)"});
      checked_ = buffer_.size();
      return;
    }
    if (invalidAt_ == std::string::npos) invalidAt_ = i;
    i = text.size();
  }
  checked_ = i;
}

void DelimitedReader::RefuseOpenQuote(std::int64_t line, const std::string& within) const {
  Refuse({.file = name_,
          .line = recordLine_,
          .text = "the quote opened on line " + std::to_string(line) + " is never closed" + within +
                  "; a quoted field ends with a quote of its own"});
}

void DelimitedReader::RefuseInvalidBefore(std::size_t next) const {
  if (invalidAt_ >= next) return;
  const auto byte = static_cast<unsigned char>(buffer_[invalidAt_]);
  Refuse({.file = name_,
          .line = recordLine_,
          .text = "byte " + Hex(byte) +
                  " is not UTF-8, though the text before it is; --encoding windows-1252 reads the file as "
                  "Windows-1252"});
}

}  // namespace drav::selection
