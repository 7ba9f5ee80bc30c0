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

std::vector<std::string> ReadLines(std::string_view contents, int count) {
  TempFile file(contents);
  FolderItem item(file.Path());
  TextInputStream stream = TextInputStream::Open(item);
  stream.SetEncoding(Encodings::UTF8);
  std::vector<std::string> lines;
  for (int i = 0; i < count; ++i) lines.push_back(stream.ReadLine());
  return lines;
}

using Lines = std::vector<std::string>;

TEST(ReadLine, EveryLineEndGivesTheSameLines) {
  const Lines expected{"A1\t204", "A2\t202", "", "C1\t214", "", ""};
  EXPECT_EQ(ReadLines("A1\t204\nA2\t202\n\nC1\t214\n", 6), expected);
  EXPECT_EQ(ReadLines("A1\t204\rA2\t202\r\rC1\t214\r", 6), expected);
  EXPECT_EQ(ReadLines("A1\t204\r\nA2\t202\r\n\r\nC1\t214\r\n", 6), expected);
  EXPECT_EQ(ReadLines("A1\t204\r\nA2\t202\r\rC1\t214", 6), expected);  // mixed, no final line end
}

TEST(ReadLine, BehindTheEndGivesEmptyTextAgainAndAgain) {
  EXPECT_EQ(ReadLines("one\ntwo", 5), (Lines{"one", "two", "", "", ""}));
  EXPECT_EQ(ReadLines("", 3), (Lines{"", "", ""}));
  EXPECT_EQ(ReadLines("\n", 2), (Lines{"", ""}));
}

TEST(ReadLine, LinesLongerThanOneChunk) {
  const std::string longLine(200'000, 'x');
  EXPECT_EQ(ReadLines(longLine + "\nnext", 3), (Lines{longLine, "next", ""}));
}

TEST(ReadLine, CrLfSplitAcrossChunksIsOneLineEnd) {
  // The CR is the last byte of the first chunk, the LF the first of the next.
  const std::string first(TextInputStream::kChunkSize - 1, 'a');
  EXPECT_EQ(ReadLines(first + "\r\nsecond\r\n", 3), (Lines{first, "second", ""}));
  EXPECT_EQ(ReadLines(first + "\rsecond", 3), (Lines{first, "second", ""}));
}

TEST(ReadLine, Utf8ByteOrderMarkIsDropped) {
  EXPECT_EQ(ReadLines("\xEF\xBB\xBF" "A1\t204\n", 2), (Lines{"A1\t204", ""}));
  EXPECT_EQ(ReadLines("\xEF\xBB\xBF", 1), (Lines{""}));
}

TEST(ReadLine, InvalidUtf8BecomesReplacementCharacters) {
  EXPECT_EQ(ReadLines("A\xFF" "1\t204\n\xC3\n", 2), (Lines{"A\xEF\xBF\xBD" "1\t204", "\xEF\xBF\xBD"}));
}

std::string Utf16(std::u16string_view text, bool littleEndian, bool bom = true) {
  std::string bytes;
  if (bom) bytes += littleEndian ? "\xFF\xFE" : "\xFE\xFF";
  for (char16_t unit : text) {
    const char lo = static_cast<char>(unit & 0xFF), hi = static_cast<char>(unit >> 8);
    bytes += littleEndian ? lo : hi;
    bytes += littleEndian ? hi : lo;
  }
  return bytes;
}

TEST(ReadLine, Utf16WithByteOrderMarkIsDecoded) {
  const std::u16string text = u"A1\t204\r\nB\u00E9\t-3.5\r\n\U0001F600\t1";
  const Lines expected{"A1\t204", "B\xC3\xA9\t-3.5", "\xF0\x9F\x98\x80\t1", ""};
  EXPECT_EQ(ReadLines(Utf16(text, true), 4), expected);
  EXPECT_EQ(ReadLines(Utf16(text, false), 4), expected);
}

TEST(ReadLine, BrokenUtf16BecomesReplacementCharacters) {
  std::u16string lone = u"a";
  lone += char16_t(0xD800);  // high surrogate with no partner
  lone += u"b";
  lone += char16_t(0xDC00);  // low surrogate alone
  EXPECT_EQ(ReadLines(Utf16(lone, true), 1), (Lines{"a\xEF\xBF\xBD" "b\xEF\xBF\xBD"}));
  EXPECT_EQ(ReadLines(Utf16(u"ab", true) + "c", 1), (Lines{"ab\xEF\xBF\xBD"}));  // odd last byte
}

TEST(ReadLine, Utf16SurrogatePairSplitAcrossChunks) {
  // The BOM and the x's fill all but the last two bytes of the first chunk, so
  // the high surrogate ends it and the low one opens the next.
  const std::size_t xs = TextInputStream::kChunkSize / 2 - 2;
  std::u16string text(xs, u'x');
  text += u"\U0001F600\nz";
  const Lines lines = ReadLines(Utf16(text, true), 2);
  EXPECT_EQ(lines[0], std::string(xs, 'x') + "\xF0\x9F\x98\x80");
  EXPECT_EQ(lines[1], "z");
}

TEST(Open, MissingFileRaisesIOExceptionWithTheSystemCode) {
  TempFile file("");
  FolderItem item(file.Folder() / "gone.txt");
  EXPECT_FALSE(item.Exists());
  try {
    TextInputStream::Open(item);
    FAIL() << "no exception";
  } catch (const IOException& error) {
    EXPECT_EQ(error.ErrorNumber(), ENOENT);
    EXPECT_EQ(item.LastErrorCode(), ENOENT);
    EXPECT_EQ(error.Path(), item.Path().string());
    EXPECT_NE(std::string(error.what()).find("gone.txt"), std::string::npos);
    EXPECT_FALSE(error.Reason().empty());
  }
}

TEST(ReadLine, ReadingAFolderRaisesIOException) {
  TempFile file("");
  FolderItem folder(file.Folder());
  EXPECT_TRUE(folder.Exists());
  try {
    TextInputStream stream = TextInputStream::Open(folder);
    stream.ReadLine();
    FAIL() << "no exception";
  } catch (const IOException& error) {
    EXPECT_EQ(error.ErrorNumber(), EISDIR);
  }
}

// A pipe or a device chosen in a window would block the window or never end:
// it is refused at once, before anything waits on it. A command line may
// name such a stream, as for any filter.
TEST(Open, ItemOfRegularFilesRefusesPipesAndDevicesAtOnce) {
  TempFile file("");
  const std::filesystem::path pipe = file.Folder() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  for (const std::filesystem::path& path : {pipe, std::filesystem::path("/dev/zero")}) {
    FolderItem item(path);
    try {
      TextInputStream::Open(item);
      FAIL() << "opened " << path;
    } catch (const IOException& error) {
      EXPECT_EQ(error.Reason(), path == pipe ? "It is a named pipe, not a regular file"
                                             : "It is a device, not a regular file");
      EXPECT_EQ(item.LastErrorCode(), EINVAL);
    }
  }
}

TEST(ReadLine, AnEndlessInputStopsAtTheBoundWithAReason) {
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
  EXPECT_LE(seen, TextInputStream::kMaxInput);
  EXPECT_GT(seen, TextInputStream::kMaxInput - TextInputStream::kChunkSize);
}

TEST(FolderItem, NameHasNoFolders) {
  EXPECT_EQ(FolderItem("/tmp/some folder/models.txt").Name(), "models.txt");
}

}  // namespace
}  // namespace drav
