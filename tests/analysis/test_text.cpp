#include <gtest/gtest.h>

#include "analysis/text.hpp"
#include "analysis/utf8.hpp"

namespace drav {
namespace {

const std::string kEuro = "\xE2\x82\xAC";  // three bytes, one character
const std::string kSmile = "\xF0\x9F\x98\x80";  // four bytes, one character

TEST(Len, CountsCharactersNotBytes) {
  EXPECT_EQ(Len(""), 0);
  EXPECT_EQ(Len("A1"), 2);
  EXPECT_EQ(Len(kEuro), 1);
  EXPECT_EQ(Len(kEuro + "x" + kSmile), 3);
  EXPECT_EQ(Len("+204.0"), 6);
}

TEST(Len, InvalidBytesCountOneEach) {
  EXPECT_EQ(Len("\xFF\xFE"), 2);
  EXPECT_EQ(Len("a\xE2\x82"), 3);  // a cut-off sequence is two stray bytes
  EXPECT_EQ(Len("\xC0\xAF"), 2);   // overlong form of '/'
  EXPECT_EQ(Len("\xED\xA0\x80"), 3);  // an encoded surrogate
  EXPECT_EQ(Len("\xF5\x80\x80\x80"), 4);  // beyond U+10FFFF: no sequence starts with F5
}

TEST(Left, CutsByCharacters) {
  EXPECT_EQ(Left(kEuro + "bc", 2), kEuro + "b");
  EXPECT_EQ(Len(Left(kEuro + "bc", 2)), 2);
  EXPECT_EQ(Left(kSmile, 1), kSmile);
  EXPECT_EQ(Left("Model1234567", 8), "Model123");
  EXPECT_EQ(Left("ModelABCD", 8), "ModelABC");
  EXPECT_EQ(Left("Model123", 8), "Model123");
  EXPECT_EQ(Left("A1", 8), "A1");  // never pads
}

TEST(Left, CountOfZeroOrLessGivesEmptyText) {
  EXPECT_EQ(Left("abc", 0), "");
  EXPECT_EQ(Left("abc", -5), "");
  EXPECT_EQ(Left("", 3), "");
}

TEST(NthField, FieldsBetweenSeparators) {
  EXPECT_EQ(NthField("A1,204", ",", 1), "A1");
  EXPECT_EQ(NthField("A1,204", ",", 2), "204");
  EXPECT_EQ(NthField("A1,,204", ",", 2), "");
  EXPECT_EQ(NthField("A1,,204", ",", 3), "204");
  EXPECT_EQ(NthField("A1", ",", 1), "A1");
  EXPECT_EQ(NthField("A1", ",", 2), "");
  EXPECT_EQ(NthField("", ",", 1), "");
  EXPECT_EQ(NthField("", ",", 2), "");
  EXPECT_EQ(NthField("A1,", ",", 2), "");
  EXPECT_EQ(NthField(",204", ",", 1), "");
  EXPECT_EQ(NthField("a,b,c", ",", 4), "");
  EXPECT_EQ(NthField("a,b", ",", 0), "");
  EXPECT_EQ(NthField("a::b::c", "::", 3), "c");
}

TEST(ReplaceAll, ScansOnBehindEachReplacement) {
  EXPECT_EQ(ReplaceAll("A1\t204", "\t", ","), "A1,204");
  EXPECT_EQ(ReplaceAll("A1 204", "\t", ","), "A1 204");
  EXPECT_EQ(ReplaceAll("\t\t", "\t", ","), ",,");
  EXPECT_EQ(ReplaceAll("aaa", "aa", "a"), "aa");  // replaced text is not scanned again
  EXPECT_EQ(ReplaceAll("abb", "ab", "xa"), "xab");  // nor is it when find and replacement are as long
  EXPECT_EQ(ReplaceAll("abc", "", ","), "abc");
  EXPECT_EQ(ReplaceAll("x\r\ny", "\r\n", ","), "x,y");
}

TEST(ChrAndAsc, RoundTripCodePoints) {
  EXPECT_EQ(Chr(9), "\t");
  EXPECT_EQ(Chr(13), "\r");
  EXPECT_EQ(Chr(0x20AC), kEuro);
  EXPECT_EQ(Asc("A"), 65);
  EXPECT_EQ(Asc(kEuro + "x"), 0x20AC);
  EXPECT_EQ(Asc(kSmile), 0x1F600);
  EXPECT_EQ(Asc(""), 0);
  EXPECT_EQ(Asc("\xFF"), 0xFFFD);
  for (std::int64_t code : {1, 8, 27, 127, 128, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF}) {
    EXPECT_EQ(Asc(Chr(code)), code) << code;
  }
  EXPECT_EQ(Chr(0xD800), utf8::kReplacement);
}

TEST(Utf8Sanitize, ReplacesEachInvalidByte) {
  EXPECT_EQ(utf8::Sanitize("plain"), "plain");
  EXPECT_EQ(utf8::Sanitize(kEuro), kEuro);
  const std::string replaced = utf8::Sanitize("a\xFF" "b\xE2\x82");
  EXPECT_EQ(replaced, "a\xEF\xBF\xBD" "b\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_TRUE(utf8::IsValid(replaced));
  EXPECT_EQ(Len(replaced), 5);
}

}  // namespace
}  // namespace drav
