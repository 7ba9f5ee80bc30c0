#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "analysis/runtime_exception.hpp"
#include "analysis/text_input_stream.hpp"
#include "tests/analysis/temp_file.hpp"

namespace drav {
namespace {

using testing_support::TempFile;
using Lines = std::vector<std::string>;

std::string Utf16(std::u16string_view text, bool littleEndian) {
  std::string bytes = littleEndian ? "\xFF\xFE" : "\xFE\xFF";
  for (char16_t unit : text) {
    const char lo = static_cast<char>(unit & 0xFF), hi = static_cast<char>(unit >> 8);
    bytes += littleEndian ? lo : hi;
    bytes += littleEndian ? hi : lo;
  }
  return bytes;
}

struct LinesCase {
  const char* name;
  std::string contents;
  Lines lines;  // as many as are read, the empty ones behind the end included
};

class ReadLine : public testing::TestWithParam<LinesCase> {};

TEST_P(ReadLine, GivesTheLines) {
  TextInputStream stream = testing_support::OpenAsRunDoes(GetParam().contents);
  Lines lines;
  for (std::size_t i = 0; i < GetParam().lines.size(); ++i) lines.push_back(stream.ReadLine());
  EXPECT_EQ(lines, GetParam().lines);
}

const Lines kFour{"A1\t204", "A2\t202", "", "C1\t214", "", ""};
const std::string kChunkLessOne(TextInputStream::kChunkSize - 1, 'a');
const std::string kLongLine(200'000, 'x');
// The BOM and the x's fill all but the last two bytes of the first chunk, so
// the high surrogate ends it and the low one opens the next.
const std::u16string kXs(TextInputStream::kChunkSize / 2 - 2, u'x');
const std::u16string kMixed = u"A1\t204\r\nB\u00E9\t-3.5\r\n\U0001F600\t1";
const Lines kMixedLines{"A1\t204", "B\xC3\xA9\t-3.5", "\xF0\x9F\x98\x80\t1", ""};
const std::u16string kLoneSurrogates{u'a', char16_t(0xD800), u'b', char16_t(0xDC00)};

INSTANTIATE_TEST_SUITE_P(
    Files, ReadLine,
    testing::Values(
        LinesCase{"Lf", "A1\t204\nA2\t202\n\nC1\t214\n", kFour},
        LinesCase{"Cr", "A1\t204\rA2\t202\r\rC1\t214\r", kFour},
        LinesCase{"CrLf", "A1\t204\r\nA2\t202\r\n\r\nC1\t214\r\n", kFour},
        LinesCase{"MixedWithoutLastLineEnd", "A1\t204\r\nA2\t202\r\rC1\t214", kFour},
        LinesCase{"Empty", "", {"", ""}},
        LinesCase{"LineEndOnly", "\n", {"", ""}},
        LinesCase{"LongerThanAChunk", kLongLine + "\nnext", {kLongLine, "next", ""}},
        // The CR is the last byte of the first chunk, the LF the first of the next.
        LinesCase{"CrLfAcrossChunks", kChunkLessOne + "\r\nsecond\r\n", {kChunkLessOne, "second", ""}},
        LinesCase{"CrAtChunkEnd", kChunkLessOne + "\rsecond", {kChunkLessOne, "second", ""}},
        LinesCase{"Utf8MarkDropped", "\xEF\xBB\xBF" "A1\t204\n", {"A1\t204", ""}},
        LinesCase{"Utf8MarkOnly", "\xEF\xBB\xBF", {""}},
        LinesCase{"InvalidUtf8", "A\xFF" "1\t204\n\xC3\n", {"A\xEF\xBF\xBD" "1\t204", "\xEF\xBF\xBD"}},
        LinesCase{"Utf16LE", Utf16(kMixed, true), kMixedLines},
        LinesCase{"Utf16BE", Utf16(kMixed, false), kMixedLines},
        LinesCase{"LoneSurrogates", Utf16(kLoneSurrogates, true), {"a\xEF\xBF\xBD" "b\xEF\xBF\xBD"}},
        LinesCase{"OddLastByte", Utf16(u"ab", true) + "c", {"ab\xEF\xBF\xBD"}},
        LinesCase{"SurrogatePairAcrossChunks", Utf16(kXs + u"\U0001F600\nz", true),
                  {std::string(kXs.size(), 'x') + "\xF0\x9F\x98\x80", "z"}}),
    [](const auto& info) { return std::string(info.param.name); });

// A pipe or a device chosen in a window would block the window or never end:
// it is refused at once, before anything waits on it, as a folder is. A
// command line may name such a stream, as for any filter.
TEST(Open, RefusesWhatIsNoRegularFileWithItsCode) {
  const TempFile file("");
  const std::filesystem::path pipe = file.Folder() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const std::tuple<std::filesystem::path, int, const char*> cases[] = {
      {file.Folder() / "gone.txt", ENOENT, "No such file or directory"},
      {file.Folder(), EISDIR, "Is a directory"},
      {pipe, EINVAL, "It is a named pipe, not a regular file"},
      {"/dev/zero", EINVAL, "It is a device, not a regular file"}};
  for (const auto& [path, code, reason] : cases) {
    FolderItem item(path);
    try {
      TextInputStream::Open(item);
      ADD_FAILURE() << "opened " << path;
    } catch (const IOException& error) {
      EXPECT_EQ(error.ErrorNumber(), code);
      EXPECT_EQ(item.LastErrorCode(), code);
      EXPECT_EQ(error.Path(), path.string());
      EXPECT_EQ(error.Reason(), reason);
    }
  }
}

TEST(Open, AnEndlessInputStopsAtTheBoundWithAReason) {
  FolderItem zero("/dev/zero", FolderItem::Kinds::AnyStream);
  TextInputStream stream = TextInputStream::Open(zero);
  std::uint64_t seen = 0;
  try {
    stream.ReadLine([&seen](std::string_view piece) { seen += piece.size(); });
    FAIL() << "no exception";
  } catch (const IOException& error) {
    EXPECT_EQ(error.ErrorNumber(), EFBIG);
    EXPECT_NE(error.Reason().find("1 GiB"), std::string::npos);
  }
  // Chunks divide the bound: every byte up to it is handed on, none past it.
  EXPECT_EQ(seen, TextInputStream::kMaxInput);
}

}  // namespace
}  // namespace drav
