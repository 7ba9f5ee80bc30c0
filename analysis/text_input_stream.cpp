#include "analysis/text_input_stream.hpp"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/runtime_exception.hpp"
#include "base/utf8.hpp"

namespace drav {
namespace {

constexpr std::size_t kChunk = TextInputStream::kChunkSize;

// The first CR or LF at or behind `from`. A plain loop: find_first_of tests
// each byte against the set with a call of its own.
std::size_t FindLineEnd(const std::string& text, std::size_t from) {
  for (std::size_t i = from; i < text.size(); ++i) {
    if (text[i] == '\n' || text[i] == '\r') return i;
  }
  return std::string::npos;
}

bool StartsWith(std::string_view s, std::string_view prefix) { return s.substr(0, prefix.size()) == prefix; }

std::string KindOf(mode_t mode) {
  if (S_ISFIFO(mode)) return "a named pipe";
  if (S_ISSOCK(mode)) return "a socket";
  if (S_ISCHR(mode) || S_ISBLK(mode)) return "a device";
  return "no regular file";
}

}  // namespace

TextInputStream TextInputStream::Open(FolderItem& item) {
  const std::string path = item.Path().string();
  const bool regularOnly = item.Accepts() == FolderItem::Kinds::RegularFile;
  // O_NONBLOCK: opening a named pipe would otherwise wait for a writer
  // before the kind of file could even be looked at.
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | (regularOnly ? O_NONBLOCK : 0));
  if (fd < 0) {
    item.SetLastErrorCode(errno != 0 ? errno : EIO);
    throw IOException(path, item.LastErrorCode());
  }
  struct stat info {};
  if (regularOnly && (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode))) {
    const int code = S_ISDIR(info.st_mode) ? EISDIR : EINVAL;
    ::close(fd);
    item.SetLastErrorCode(code);
    if (code == EISDIR) throw IOException(path, code);
    throw IOException(path, code, "It is " + KindOf(info.st_mode) + ", not a regular file");
  }
  // O_NONBLOCK may stay: it changes nothing for the regular file it now is.
  std::FILE* file = ::fdopen(fd, "rb");
  if (file == nullptr) {
    item.SetLastErrorCode(errno != 0 ? errno : EIO);
    ::close(fd);
    throw IOException(path, item.LastErrorCode());
  }
  item.SetLastErrorCode(0);
  // The stream keeps its own chunk buffer; a second one in stdio is waste.
  std::setvbuf(file, nullptr, _IONBF, 0);
  return TextInputStream(file, path);
}

TextInputStream TextInputStream::Adopt(std::FILE* file, std::string name) {
  if (file == nullptr) throw NilObjectException("no stream to read");
  return TextInputStream(file, std::move(name));
}

std::string TextInputStream::ReadLine() {
  std::string line;
  ReadLine([&line](std::string_view piece) { line.append(piece); });
  return Finish(std::move(line));
}

void TextInputStream::ReadLine(const std::function<void(std::string_view)>& take) {
  for (;;) {
    if (position_ >= buffer_.size() && !Fill()) return;
    const std::size_t end = FindLineEnd(buffer_, position_);
    if (end == std::string::npos) {
      take(std::string_view(buffer_).substr(position_));
      position_ = buffer_.size();
      continue;
    }
    if (end > position_) take(std::string_view(buffer_).substr(position_, end - position_));
    position_ = end + 1;
    // A CR may be the first half of CR LF split across two chunks.
    if (buffer_[end] == '\r') {
      if (position_ >= buffer_.size()) Fill();
      if (position_ < buffer_.size() && buffer_[position_] == '\n') ++position_;
    }
    return;
  }
}

bool TextInputStream::Fill() {
  buffer_.erase(0, position_);
  position_ = 0;
  if (atEnd_) return false;

  if (!raw_) raw_ = std::make_unique_for_overwrite<char[]>(kChunk);
  errno = 0;
  const std::size_t got = std::fread(raw_.get(), 1, kChunk, file_.get());
  if (got < kChunk) {
    if (std::ferror(file_.get())) throw IOException(path_, errno != 0 ? errno : EIO);
    atEnd_ = true;
  }
  consumed_ += got;
  if (consumed_ > kMaxInput) {
    throw IOException(path_, EFBIG, "Reading stopped after 1 GiB without reaching the last model line; "
                                    "no file of models is that long");
  }
  std::string_view raw(raw_.get(), got);
  const std::size_t before = buffer_.size();
  if (source_ == Source::Unknown) DetectSource(raw);
  if (source_ == Source::Utf8) {
    buffer_.append(raw);
  } else {
    utf16_->Decode(raw, atEnd_, buffer_);
  }
  return buffer_.size() > before;
}

void TextInputStream::DetectSource(std::string_view& raw) {
  if (StartsWith(raw, "\xEF\xBB\xBF")) {
    raw.remove_prefix(3);
    source_ = Source::Utf8;
  } else if (StartsWith(raw, "\xFF\xFE")) {
    raw.remove_prefix(2);
    source_ = Source::Utf16LE;
    utf16_.emplace(false);
  } else if (StartsWith(raw, "\xFE\xFF")) {
    raw.remove_prefix(2);
    source_ = Source::Utf16BE;
    utf16_.emplace(true);
  } else {
    source_ = Source::Utf8;
  }
}

std::string TextInputStream::Finish(std::string line) const {
  return source_ == Source::Utf8 ? utf8::Sanitize(std::move(line)) : line;
}

}  // namespace drav
