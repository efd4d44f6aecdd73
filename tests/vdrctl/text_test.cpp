#include "output/text.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <string_view>

// Texts where the locale shows what is not ASCII.
namespace {

using namespace std::string_view_literals;
using vdrctl::Writer;

[[maybe_unused]] const int kLocale = setenv("LC_ALL", "C.UTF-8", 1);

std::string Utf8(char32_t character) {
  const auto byte = [&](char32_t lead, int shift) {
    return static_cast<char>(lead | (character >> shift & (lead == 0x80 ? 0x3F : 0xFF)));
  };
  if (character < 0x80) return {byte(0, 0)};
  if (character < 0x800) return {byte(0xC0, 6), byte(0x80, 0)};
  if (character < 0x10000) return {byte(0xE0, 12), byte(0x80, 6), byte(0x80, 0)};
  return {byte(0xF0, 18), byte(0x80, 12), byte(0x80, 6), byte(0x80, 0)};
}

std::string Json(std::string_view text) {
  Writer out;
  vdrctl::PutJsonText(out, text);
  return out.text();
}

TEST(Utf8, IsNotWhatHasAShorterFormNorASurrogateNorBeyondTheLast) {
  for (const auto good :
       {""sv, "\0"sv, "\x7f"sv, "\xc2\x80"sv, "\xdf\xbf"sv, "\xe0\xa0\x80"sv, "\xe0\xbf\xbf"sv,
        "\xe1\x80\x80"sv, "\xec\xbf\xbf"sv, "\xed\x80\x80"sv, "\xed\x9f\xbf"sv, "\xee\x80\x80"sv,
        "\xef\xbf\xbf"sv, "\xf0\x90\x80\x80"sv, "\xf1\x80\x80\x80"sv, "\xf3\xbf\xbf\xbf"sv,
        "\xf4\x80\x80\x80"sv, "\xf4\x8f\xbf\xbf"sv, "a\xc3\xa9\xe4\xb8\xad\xf0\x9f\x98\x80z"sv}) {
    EXPECT_TRUE(vdrctl::IsUtf8(good)) << Json(good);
  }
  for (const auto wrong : {"\x80"sv,
                           "\xbf\x80"sv,
                           "\xa2\x80"sv,
                           "\xc0\x80"sv,
                           "\xc1\xbf"sv,
                           "\xc2"sv,
                           "\xc2\x7f"sv,
                           "\xc2\xc0"sv,
                           "\xc2\x40"sv,
                           "\xdf\xff"sv,
                           "\xe0\x80\x80"sv,
                           "\xe0\x9f\xbf"sv,
                           "\xe1\x80"sv,
                           "\xe1\x7f\x80"sv,
                           "\xe1\x80\x7f"sv,
                           "\xe1\xc0\x80"sv,
                           "\xe1\x80\xc0"sv,
                           "\xed\xa0\x80"sv,
                           "\xed\xbf\xbf"sv,
                           "\xf0\x80\x80\x80"sv,
                           "\xf0\x8f\xbf\xbf"sv,
                           "\xf1\x80\x80"sv,
                           "\xf1\x80\x80\x7f"sv,
                           "\xf1\x80\xc0\x80"sv,
                           "\xf4\x90\x80\x80"sv,
                           "\xf5\x80\x80\x80"sv,
                           "\xf8\x90\x80\x80"sv,
                           "\xff\xbf\xbf\xbf"sv,
                           "a\xc2"sv,
                           "\xc3\xa9\xff"sv}) {
    EXPECT_FALSE(vdrctl::IsUtf8(wrong)) << Json(wrong);
  }
}

TEST(Json, EachCharacterIsItsCodeUnitsInAscii) {
  const struct {
    char32_t character;
    const char* json;
  } characters[] = {
      {0x01, R"("\u0001")"},
      {0x1F, R"("\u001f")"},
      {' ', "\" \""},
      {'!', "\"!\""},
      {'"', R"("\"")"},
      {'\\', R"("\\")"},
      {'~', "\"~\""},
      {0x7F, R"("\u007f")"},
      {0x80, R"("\u0080")"},
      {0xE9, R"("\u00e9")"},
      {0x7FF, R"("\u07ff")"},
      {0x800, R"("\u0800")"},
      {0x4E2D, R"("\u4e2d")"},
      {0xD7FF, R"("\ud7ff")"},
      {0xE000, R"("\ue000")"},
      {0xFFFF, R"("\uffff")"},
      {0x10000, R"("\ud800\udc00")"},
      {0x103FF, R"("\ud800\udfff")"},
      {0x10400, R"("\ud801\udc00")"},
      {0x1F600, R"("\ud83d\ude00")"},
      {0x10FFFF, R"("\udbff\udfff")"},
  };
  for (const auto& [character, json] : characters) EXPECT_EQ(Json(Utf8(character)), json);
  EXPECT_EQ(Json("a\"b\xc3\xa9"
                 "c\\"),
            R"("a\"b\u00e9c\\")");
  EXPECT_EQ(Json("a\"\xff"), R"("a\"\\xff")");
}

TEST(Escaping, LeavesAloneWhatAReaderSees) {
  EXPECT_EQ(vdrctl::Escaped("a\xc3\xa9\xe4\xb8\xad\xf0\x9f\x98\x80~"),
            "a\xc3\xa9\xe4\xb8\xad\xf0\x9f\x98\x80~");
  EXPECT_EQ(vdrctl::Escaped("\\\x7f\xc2\x80\xc2\x9f\xcc\x81\xe2\x80\x8b"),
            R"(\\\x7f\xc2\x80\xc2\x9f\xcc\x81\xe2\x80\x8b)");
  // What turns the direction of reading round, in two parts for who reads this.
  EXPECT_EQ(vdrctl::Escaped(std::string("\xe2\x80") + "\xae"), R"(\xe2\x80\xae)");
  EXPECT_EQ(vdrctl::Escaped("\xc3\xa9\xc3\xe4\xb8\xad\xff"), "\xc3\xa9\\xc3\xe4\xb8\xad\\xff");
}

TEST(Widths, AreThoseOfATerminal) {
  EXPECT_EQ(vdrctl::DisplayWidth(""), 0U);
  EXPECT_EQ(vdrctl::DisplayWidth(" ~\\x1b"), 6U);
  EXPECT_EQ(vdrctl::DisplayWidth("a\xc3\xa9z"), 3U);
  EXPECT_EQ(vdrctl::DisplayWidth("\xe4\xb8\xad\xf0\x9f\x98\x80"), 4U);
}

TEST(Widths, CutATextBetweenItsCharacters) {
  constexpr std::string_view kText = "a\xe4\xb8\xad\xc3\xa9z";
  const std::size_t lengths[] = {0, 1, 1, 4, 6, 7, 7};
  for (std::size_t columns = 0; columns < std::size(lengths); ++columns) {
    EXPECT_EQ(vdrctl::FirstColumns(kText, columns), kText.substr(0, lengths[columns])) << columns;
  }
}

}  // namespace
