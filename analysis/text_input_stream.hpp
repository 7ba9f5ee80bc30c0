#pragma once
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/folder_item.hpp"
#include "base/utf16_decoder.hpp"

namespace drav {

enum class TextEncoding { UTF8 };

struct Encodings {
  static constexpr TextEncoding UTF8 = TextEncoding::UTF8;
};

// Reads a text file line by line, a chunk at a time, so that a run reads only
// as much of a file as the lines it asks for. The file is closed when the
// stream goes, on every path.
//
// What comes out is always valid UTF-8: a UTF-8 byte-order mark is dropped, a
// file that opens with a UTF-16 byte-order mark is decoded as UTF-16, and
// each byte that is not valid UTF-8 becomes U+FFFD.
//
// Whatever the file holds, a stream never takes more memory than a chunk and
// never reads past kMaxInput bytes: an endless input such as a device or a
// file of one huge line ends with IOException, not with the memory gone.
class TextInputStream {
 public:
  // Opens the file for reading, without waiting on a pipe that nobody
  // writes to: an item that asks for a regular file refuses anything else at
  // once. On failure sets the item's LastErrorCode and throws IOException
  // with that code.
  static TextInputStream Open(FolderItem& item);
  // Reads a stream that is already open, such as one over memory; the
  // stream takes the file over and closes it. `name` stands in messages.
  static TextInputStream Adopt(std::FILE* file, std::string name);

  // Bytes read from the file at a time. Small, so that a run on a huge file
  // reads little more than the lines it asks for.
  static constexpr std::size_t kChunkSize = 16 * 1024;
  // Bytes a stream reads at most. Far beyond any set of models, which even
  // at 99 lines of ten megabytes stays below it.
  static constexpr std::uint64_t kMaxInput = std::uint64_t{1} << 30;

  TextInputStream(TextInputStream&&) noexcept = default;
  TextInputStream& operator=(TextInputStream&&) noexcept = default;

  void SetEncoding(TextEncoding encoding) { encoding_ = encoding; }
  TextEncoding Encoding() const { return encoding_; }

  // The next line without its line end; LF, CR and CR LF each end a line and
  // the last line needs none. Behind the end of the file: the empty text, as
  // often as asked. A failed read throws IOException with the system's code.
  std::string ReadLine();
  // The same line handed to `take` in pieces as it streams by, so that a
  // caller keeps only what it needs of a long line. The pieces are the
  // file's bytes: UTF-8 as far as the file is, so what is kept is to be
  // passed through utf8::Sanitize.
  void ReadLine(const std::function<void(std::string_view)>& take);

 private:
  enum class Source { Unknown, Utf8, Utf16LE, Utf16BE };
  struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  TextInputStream(std::FILE* file, std::string path) : file_(file), path_(std::move(path)) {}
  bool Fill();
  void DetectSource(std::string_view& raw);
  std::string Finish(std::string line) const;

  std::unique_ptr<std::FILE, FileCloser> file_;
  std::string path_;
  TextEncoding encoding_ = TextEncoding::UTF8;
  Source source_ = Source::Unknown;
  std::unique_ptr<char[]> raw_;  // bytes as read from the file
  std::string buffer_;       // bytes ready to be split into lines
  std::size_t position_ = 0;  // next unread byte of buffer_
  std::optional<Utf16Decoder> utf16_;  // for a file that opens with a UTF-16 byte-order mark
  std::uint64_t consumed_ = 0;  // bytes read from the file so far
  bool atEnd_ = false;
};

}  // namespace drav
