#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <string>
#include <vector>

#include "analysis/text_input_stream.hpp"
#include "base/runtime_exception.hpp"
#include "tests/analysis/temp_file.hpp"

namespace drav {
namespace {

using Lines = std::vector<std::string>;

std::string Utf16(std::u16string_view text) {  // little-endian, with its mark
  std::string bytes = "\xFF\xFE";
  for (char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
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

// Line ends of every kind, byte-order marks, UTF-16 and bytes that are no
// UTF-8 are the classic goldens' (tests/golden/classic.batch). Here what a
// small file cannot show: lines and pairs cut by the edges of the chunks
// the stream reads.
const std::string kChunkLessOne(TextInputStream::kChunkSize - 1, 'a');
const std::string kLongLine(200'000, 'x');
// The BOM and the x's fill all but the last two bytes of the first chunk, so
// the high surrogate ends it and the low one opens the next.
const std::u16string kXs(TextInputStream::kChunkSize / 2 - 2, u'x');
const std::u16string kLoneSurrogates{u'a', char16_t(0xD800), u'b', char16_t(0xDC00)};

INSTANTIATE_TEST_SUITE_P(
    Files, ReadLine,
    testing::Values(
        LinesCase{"LongerThanAChunk", kLongLine + "\nnext", {kLongLine, "next", ""}},
        // The CR is the last byte of the first chunk, the LF the first of the next.
        LinesCase{"CrLfAcrossChunks", kChunkLessOne + "\r\nsecond\r\n", {kChunkLessOne, "second", ""}},
        LinesCase{"CrAtChunkEnd", kChunkLessOne + "\rsecond", {kChunkLessOne, "second", ""}},
        LinesCase{"Utf8MarkOnly", "\xEF\xBB\xBF", {""}},
        LinesCase{"LoneSurrogates", Utf16(kLoneSurrogates), {"a\xEF\xBF\xBD" "b\xEF\xBF\xBD"}},
        LinesCase{"OddLastByte", Utf16(u"ab") + "c", {"ab\xEF\xBF\xBD"}},
        LinesCase{"SurrogatePairAcrossChunks", Utf16(kXs + u"\U0001F600\nz"),
                  {std::string(kXs.size(), 'x') + "\xF0\x9F\x98\x80", "z"}}),
    [](const auto& info) { return std::string(info.param.name); });

// Files that are no regular file, refused by a window's run, are the
// windows' fault tests'; a command line reads any stream, up to a bound.
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
