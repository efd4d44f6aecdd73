#include "batch/line.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

// Lines of a file of commands.
namespace {

using Words = std::vector<std::string>;
using namespace std::string_view_literals;

TEST(Lines, AreSplitAsAShellWould) {
  const struct {
    std::string_view line;
    Words words;
  } lines[] = {
      {"", {}},
      {" \t\r", {}},
      {"a", {"a"}},
      {" a\tb\rc  d ", {"a", "b", "c", "d"}},
      {"# a", {}},
      {"a # b", {"a"}},
      {"a#b \\# '#'", {"a#b", "#", "#"}},
      {"'a b'c\"d e\"", {"a bcd e"}},
      {"'' \"\"", {"", ""}},
      {R"('a\b\'c)", {R"(a\b\c)"}},
      {R"('"' "'")", {"\"", "'"}},
      {R"("a\"b\\c\d\ \'")", {R"(a"b\c\d\ \')"}},
      {R"(\a\ \\\'\"b)", {R"(a \'"b)"}},
      {"\\\tb\\\rc", {"\tb\rc"}},
      {"a\x01\x7f\x80\xff!~\vb\fc\nd", {"a\x01\x7f\x80\xff!~\vb\fc\nd"}},
      {"a # \0"sv, {"a"}},
  };
  for (const auto& [line, words] : lines) EXPECT_EQ(vdrctl::SplitLine(line), words) << line;
}

TEST(Lines, AreRefusedWithAReason) {
  const struct {
    std::string_view line;
    const char* reason;
  } lines[] = {
      {"'", "a closing ' is missing"},
      {"a 'b\"", "a closing ' is missing"},
      {"a\"b'", "a closing \" is missing"},
      {R"("\")", "a closing \" is missing"},
      {R"("\)", "a closing \" is missing"},
      {R"(a \)", "a character is missing behind the last backslash"},
      {"a\0"sv, "a byte of zero can't be a part of a word"},
      {"a '\0' # b"sv, "a byte of zero can't be a part of a word"},
      {"\\\0 a"sv, "a byte of zero can't be a part of a word"},
  };
  for (const auto& [line, reason] : lines) {
    try {
      vdrctl::SplitLine(line);
      ADD_FAILURE() << line;
    } catch (const vdrctl::WrongLine& wrong) {
      EXPECT_STREQ(wrong.what(), reason) << line;
    }
  }
}

}  // namespace
