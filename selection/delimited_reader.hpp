#pragma once
// Delimited text with a header row, as R's write.csv and write.csv2,
// Python's csv module, spreadsheets and Stata write it. The separator (comma,
// tab or semicolon) is the one the header line uses most; quoting follows
// RFC 4180, so a quoted field may hold separators, doubled quotes and line
// ends. LF, CR LF and CR all end a line, and a UTF-8 byte-order mark is
// dropped. Records are read one at a time, so memory follows the longest
// record, not the file.
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>
#include <vector>

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

class DelimitedReader {
 public:
  // Reads from a stream that stays open and stays the caller's (it may be
  // standard input). `name` stands for the input in messages. Reads the
  // header at once; an empty input is a DataError, a failed read a ReadError.
  DelimitedReader(std::FILE* file, std::string name, ReadLimits limits = {});

  const std::string& Name() const { return name_; }
  // The header's fields, unquoted, in file order.
  const std::vector<std::string>& Header() const { return header_; }
  char Separator() const { return separator_; }
  // With semicolons between fields a comma in a number is its decimal mark,
  // as in the spreadsheets of most of Europe.
  bool DecimalComma() const { return separator_ == ';'; }

  // Moves to the next record that is not blank; false at the end of input.
  bool Next();
  // The current record's fields; valid until the next call of Next.
  std::span<const std::string_view> Fields() const { return fields_; }
  // The line (from 1) on which the current record starts.
  std::int64_t Line() const { return recordLine_; }

 private:
  bool FindRecord(std::size_t& end, std::size_t& next);
  bool Refill();
  void Split(std::size_t begin, std::size_t end);

  std::FILE* file_;
  std::string name_;
  ReadLimits limits_;
  std::string buffer_;
  std::size_t position_ = 0;  // first byte of the record to read next
  bool atEnd_ = false;
  char separator_ = ',';
  std::vector<std::string> header_;
  std::string unquoted_;  // quoted fields of the current record, unescaped
  std::vector<std::string_view> fields_;
  std::int64_t nextLine_ = 1;
  std::int64_t recordLine_ = 0;
};

}  // namespace drav::selection
