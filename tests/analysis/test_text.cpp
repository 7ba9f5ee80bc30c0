#include <gtest/gtest.h>

#include "base/text.hpp"
#include "base/utf8.hpp"

namespace drav {
namespace {

const std::string kEuro = "\xE2\x82\xAC";  // three bytes, one character
const std::string kSmile = "\xF0\x9F\x98\x80";  // four bytes, one character

TEST(Len, CountsCharactersAndEachInvalidByte) {
  const std::pair<std::string, std::int64_t> cases[] = {
      {"", 0}, {"A1", 2}, {kEuro, 1}, {kEuro + "x" + kSmile, 3},
      {"\xFF\xFE", 2},
      {"a\xE2\x82", 3},          // a cut-off sequence is two stray bytes
      {"\xC0\xAF", 2},           // overlong form of '/'
      {"\xED\xA0\x80", 3},       // an encoded surrogate
      {"\xF5\x80\x80\x80", 4}};  // beyond U+10FFFF: no sequence starts with F5
  for (const auto& [text, length] : cases) EXPECT_EQ(Len(text), length) << text;
}

TEST(Left, CutsByCharactersAndNeverPads) {
  EXPECT_EQ(Left(kEuro + "bc", 2), kEuro + "b");
  EXPECT_EQ(Left(kSmile, 1), kSmile);
  EXPECT_EQ(Left("Model1234567", 8), "Model123");
  EXPECT_EQ(Left("A1", 8), "A1");
  EXPECT_EQ(Left("abc", 0), "");
  EXPECT_EQ(Left("abc", -5), "");
}

TEST(NthField, FieldsBetweenSeparators) {
  const std::tuple<const char*, int, const char*> cases[] = {
      {"A1,204", 1, "A1"}, {"A1,204", 2, "204"}, {"A1,,204", 2, ""}, {"A1,,204", 3, "204"}, {"A1", 2, ""},
      {"", 1, ""},         {",204", 1, ""},      {"a,b,c", 4, ""},    {"a,b", 0, ""},       {"a,b,c", 3, "c"}};
  for (const auto& [text, index, field] : cases) EXPECT_EQ(NthField(text, ",", index), field) << text << index;
  EXPECT_EQ(NthField("a::b::c", "::", 3), "c");
}

TEST(ReplaceAll, ScansOnBehindEachReplacement) {
  EXPECT_EQ(ReplaceAll("\t\t", "\t", ","), ",,");
  EXPECT_EQ(ReplaceAll("aaa", "aa", "a"), "aa");  // replaced text is not scanned again
  EXPECT_EQ(ReplaceAll("abb", "ab", "xa"), "xab");  // nor is it when find and replacement are as long
  EXPECT_EQ(ReplaceAll("abc", "", ","), "abc");
  EXPECT_EQ(ReplaceAll("x\r\ny", "\r\n", ","), "x,y");
}

TEST(ChrAndAsc, RoundTripCodePoints) {
  EXPECT_EQ(Chr(0x20AC), kEuro);
  EXPECT_EQ(Asc(kEuro + "x"), 0x20AC);
  EXPECT_EQ(Asc(""), 0);
  EXPECT_EQ(Asc("\xFF"), 0xFFFD);
  for (std::int64_t code : {1, 127, 128, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF}) EXPECT_EQ(Asc(Chr(code)), code);
  EXPECT_EQ(Chr(0xD800), utf8::kReplacement);
}

}  // namespace
}  // namespace drav
