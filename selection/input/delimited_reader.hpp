#pragma once
// Delimited text with a header row, as R's write.csv and write.csv2,
// Python's csv module, spreadsheets and Stata write it. The separator (comma,
// tab or semicolon) is the one the header line uses most; quoting follows
// RFC 4180, so a quoted field may hold separators, doubled quotes and line
// ends, or quotes escaped by a backslash as write.table writes them. A header with none of the three but with blanks between its fields
// is R's write.table as it stands by default (sep = " ", the names quoted):
// then a run of spaces separates, and spaces at either end of a line do not. LF, CR LF and CR all end a line. Records are read one at a time, so
// memory follows the longest record, not the file.
//
// What comes out is UTF-8. A UTF-8 byte-order mark is dropped, and text that
// opens with a UTF-16 one (Excel's "Unicode text") is decoded. Other text is
// taken for UTF-8 until its first byte outside ASCII: when that byte starts
// no valid UTF-8 character, the file is Windows-1252 (Excel's default on
// Windows), and since everything before it was ASCII, reading it so from the
// start would have given the same text.
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "base/diagnostics.hpp"
#include "base/utf16_decoder.hpp"
#include "selection/input/record_batches.hpp"

namespace drav::selection {

struct ReadLimits {
  // A record longer than this ends the read with a DataError: an input with
  // no line end at all (a device of endless bytes, a binary file) would
  // otherwise be held in memory until the machine runs out. A row of a model
  // table is a few hundred bytes; 64 MiB leaves room for any real one and
  // keeps a hostile line to a small part of the machine.
  std::size_t maxRecordBytes = std::size_t{64} << 20;
  // Bytes asked of the stream at a time.
  std::size_t chunkBytes = std::size_t{1} << 20;
};

// How the bytes of a file without a UTF-16 byte-order mark are read.
enum class InputEncoding {
  Detect,       // UTF-8, or Windows-1252 when the first byte outside ASCII is not UTF-8
  Utf8,         // UTF-8 only: a byte that is not is refused
  Windows1252,  // every byte a character of Windows-1252
};

std::optional<InputEncoding> InputEncodingNamed(std::string_view name);

class DelimitedReader {
 public:
  // Reads from a stream that stays open and stays the caller's (it may be
  // standard input). `name` stands for the input in messages. Reads the
  // header at once; an empty input is a DataError, a failed read an IOException.
  // What it decides about the text that the user should be told, such as
  // reading it as Windows-1252, goes to `diagnostics` as a note.
  DelimitedReader(std::FILE* file, std::string name, Diagnostics& diagnostics, ReadLimits limits = {},
                  InputEncoding encoding = InputEncoding::Detect);
  ~DelimitedReader();
  DelimitedReader(const DelimitedReader&) = delete;
  DelimitedReader& operator=(const DelimitedReader&) = delete;

  const std::string& Name() const { return name_; }
  // The header's fields, unquoted, in file order.
  const std::vector<std::string>& Header() const { return header_; }
  char Separator() const { return separator_; }

  // Moves to the next record that is not blank; false at the end of input.
  bool Next();
  // The current record's fields; valid until the next call of Next.
  std::span<const std::string_view> Fields() const { return ahead_ ? std::span(aheadFields_) : std::span(fields_); }
  // The line (from 1) on which the current record starts.
  std::int64_t Line() const { return ahead_ ? aheadLine_ : recordLine_; }

  // From the next record on, finds the records on a second thread, a few
  // batches ahead of Next, which then only splits and hands out what was
  // read (or TakeBatch hands out whole batches, to be split by their user).
  // The records, errors and notes are those of reading on one thread, in
  // the same order: a note found ahead travels with its batch and is told
  // on the calling thread when its record is handed out. False, and the
  // reading goes on on this thread, where no thread can be started.
  bool ReadAhead();
  // While reading ahead, once Next has handed out the records of the batch
  // at hand: the next batch whole, for a caller that shares its records
  // among threads (Next then goes on after it); none at the end. A batch
  // whose reading stopped at a fault of the file is the last and carries
  // the fault in `error`, for the caller to throw after its records. Its
  // notes are the caller's to tell (RecordBatch::TellNotes) as it takes
  // its records.
  std::optional<RecordBatch> TakeBatch();

 private:
  enum class Decoding { Ascii, Utf8, Windows1252, Utf16 };

  bool ReadRecord();
  bool FindNonBlank(std::size_t& begin, std::size_t& end);
  RecordSyntax Syntax() const { return {separator_, backslashEscapes_}; }
  bool NextAhead();
  bool FindRecord(std::size_t& end, std::size_t& next);
  bool Refill();
  void ReadChunk(std::string& into);
  void Check();
  void RefuseInvalidBefore(std::size_t next) const;
  [[noreturn]] void RefuseOpenQuote(std::int64_t line, const std::string& within) const;
  void Tell(Diagnostic note);
  void TakeNotes(RecordBatch& batch);

  std::FILE* file_;
  std::string name_;
  ReadLimits limits_;
  Decoding decoding_ = Decoding::Ascii;
  bool strictUtf8_ = false;
  std::optional<Utf16Decoder> utf16_;
  std::string raw_;  // bytes as read, for the decodings that change them
  std::string buffer_;
  std::size_t position_ = 0;  // first byte of the record to read next
  std::size_t checked_ = 0;   // bytes of buffer_ known to be valid text
  std::size_t invalidAt_ = std::string::npos;  // the first byte of buffer_ that is not UTF-8
  bool atEnd_ = false;
  bool backslashEscapes_ = false;  // quotes in quoted fields are \" rather than ""
  char separator_ = ',';
  std::vector<std::string> header_;
  std::string unquoted_;  // quoted fields of the current record, unescaped
  std::vector<std::string_view> fields_;
  std::int64_t nextLine_ = 1;
  std::int64_t recordLine_ = 0;
  std::size_t recordBegin_ = 0, recordEnd_ = 0;  // the current record's text in buffer_
  Diagnostics& diagnostics_;
  // While reading ahead: the batches, the thread that fills them, and the
  // record of the current batch that Next handed out. The reading thread
  // keeps its notes for its batch, which Next tells in their turn.
  std::unique_ptr<RecordBatches> ahead_;
  std::thread reading_;
  bool notesKept_ = false;
  std::vector<Diagnostic> keptNotes_;
  RecordBatch batch_;
  std::size_t nextInBatch_ = 0;
  std::string aheadUnquoted_;
  std::vector<std::string_view> aheadFields_;
  std::int64_t aheadLine_ = 0;
};

}  // namespace drav::selection
