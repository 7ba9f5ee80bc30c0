#include "selection/delimited_reader.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "selection/errors.hpp"

namespace drav::selection {

DelimitedReader::DelimitedReader(std::FILE* file, std::string name, ReadLimits limits)
    : file_(file), name_(std::move(name)), limits_(limits) {
  // The byte-order mark may come in more than one read.
  while (buffer_.size() < 3 && !atEnd_) Refill();
  const std::string_view start(buffer_);
  if (start.starts_with("\xEF\xBB\xBF")) position_ = 3;
  if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF")) {
    throw DataError(name_ + ": the text is UTF-16; save it as UTF-8 (or CSV UTF-8)");
  }
  std::size_t end = 0;
  std::size_t next = 0;
  bool found = FindRecord(end, next);
  while (found && end == position_) {  // blank lines before the header
    position_ = next;
    found = FindRecord(end, next);
  }
  if (!found) throw DataError(name_ + ": no header line; the input is empty");

  // The separator the header uses most; on a tie tab wins over semicolon and
  // semicolon over comma, because names hold commas more often than tabs.
  std::size_t tabs = 0, semicolons = 0, commas = 0;
  bool quoted = false;
  for (std::size_t i = position_; i < end; ++i) {
    const char c = buffer_[i];
    if (c == '"') quoted = !quoted;
    if (quoted) continue;
    tabs += c == '\t';
    semicolons += c == ';';
    commas += c == ',';
  }
  if (tabs > 0 && tabs >= semicolons && tabs >= commas) {
    separator_ = '\t';
  } else if (semicolons > 0 && semicolons >= commas) {
    separator_ = ';';
  }
  Split(position_, end);
  position_ = next;
  header_.assign(fields_.begin(), fields_.end());
}

bool DelimitedReader::Next() {
  std::size_t end = 0;
  std::size_t next = 0;
  while (FindRecord(end, next)) {
    Split(position_, end);
    position_ = next;
    const bool blank = std::all_of(fields_.begin(), fields_.end(), [](std::string_view f) { return f.empty(); });
    if (!blank) return true;
  }
  fields_.clear();
  return false;
}

// Finds the end of the record that starts at position_ (the first line end
// outside quotes) and where the record after it starts, reading more input
// as needed. False when no record is left.
bool DelimitedReader::FindRecord(std::size_t& end, std::size_t& next) {
  recordLine_ = nextLine_;
  std::size_t i = position_;
  bool quoted = false;
  for (;;) {
    for (; i < buffer_.size(); ++i) {
      const char c = buffer_[i];
      if (c == '"') {
        quoted = !quoted;
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
        return true;
      } else if (c == '\0') {
        throw DataError(name_ + ":" + std::to_string(nextLine_) + ": holds a NUL byte; this is not a text file");
      }
    }
    if (i - position_ > limits_.maxRecordBytes) {
      const std::size_t limit = limits_.maxRecordBytes;
      const std::string size = limit >= (1u << 20) ? std::to_string(limit >> 20) + " MiB" : std::to_string(limit) + " bytes";
      throw DataError(name_ + ":" + std::to_string(recordLine_) + ": a line longer than " + size +
                      "; this is not a table");
    }
    if (atEnd_) {
      if (i == position_) return false;
      end = next = i;
      return true;
    }
    const std::size_t scanned = i - position_;
    Refill();
    i = position_ + scanned;
  }
}

// Appends the next chunk of input to the unread bytes. The bytes already
// handed out are dropped first, so the buffer holds one record at most.
bool DelimitedReader::Refill() {
  if (position_ > 0) {
    buffer_.erase(0, position_);
    position_ = 0;
  }
  const std::size_t old = buffer_.size();
  buffer_.resize(old + limits_.chunkBytes);
  const std::size_t got = std::fread(buffer_.data() + old, 1, limits_.chunkBytes, file_);
  const int error = errno;
  buffer_.resize(old + got);
  if (got < limits_.chunkBytes) {
    if (std::ferror(file_)) throw ReadError(name_, error);
    atEnd_ = true;
  }
  return got > 0;
}

void DelimitedReader::Split(std::size_t begin, std::size_t end) {
  fields_.clear();
  unquoted_.clear();
  // Room for every quoted field up front: the views into it must not move.
  unquoted_.reserve(end - begin);
  const char* const text = buffer_.data();
  std::size_t i = begin;
  for (;;) {
    if (i < end && text[i] == '"') {
      const std::size_t start = unquoted_.size();
      for (++i; i < end; ++i) {
        if (text[i] != '"') {
          unquoted_ += text[i];
        } else if (i + 1 < end && text[i + 1] == '"') {
          unquoted_ += '"';
          ++i;
        } else {
          ++i;
          break;
        }
      }
      // Anything between the closing quote and the separator is kept, as
      // spreadsheets do, rather than lost.
      for (; i < end && text[i] != separator_; ++i) unquoted_ += text[i];
      fields_.emplace_back(unquoted_.data() + start, unquoted_.size() - start);
    } else {
      const void* found = std::memchr(text + i, separator_, end - i);
      const std::size_t stop = found ? static_cast<std::size_t>(static_cast<const char*>(found) - text) : end;
      fields_.emplace_back(text + i, stop - i);
      i = stop;
    }
    if (i >= end) break;
    ++i;
  }
}

}  // namespace drav::selection
