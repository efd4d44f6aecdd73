#include "common/values.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "common/digits.h"
#include "common/errno_name.h"
#include "common/escapes.h"
#include "common/suggestion.h"

// What people write and read, in arguments and in files.
namespace {

using namespace tools;
using Raw = std::vector<uint8_t>;

TEST(Numbers, AreDecimalOrHexadecimal) {
  EXPECT_EQ(ParseNumber("0"), 0U);
  EXPECT_EQ(ParseNumber("007"), 7U);
  EXPECT_EQ(ParseNumber("0xfF"), 255U);
  EXPECT_EQ(ParseNumber("0X10"), 16U);
  EXPECT_EQ(ParseNumber("18446744073709551615"), UINT64_MAX);
  EXPECT_EQ(ParseNumber("0xffffffffffffffff"), UINT64_MAX);
  for (const char* wrong : {"", "0x", "x1", "1 ", " 1", "+1", "-1", "1.0", "1e3", "0x1g", "0x-1",
                            "18446744073709551616", "0x10000000000000000"}) {
    EXPECT_FALSE(ParseNumber(wrong)) << wrong;
  }
}

// Beside the digits stand the characters around each of their three ranges.
TEST(HexDigits, AreThoseOfBothCases) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  for (int code = 0; code < 256; ++code) {
    const auto character = static_cast<char>(code);
    const bool isUpper = character >= 'A' && character <= 'Z';
    const std::size_t place = kDigits.find(static_cast<char>(isUpper ? code + 32 : code));
    EXPECT_EQ(HexDigit(character), place < kDigits.size() ? static_cast<int>(place) : -1) << code;
  }
}

TEST(Lists, AreSplitAtEachSeparator) {
  EXPECT_EQ(SplitAt("a,,b,", ','), (std::vector<std::string_view>{"a", "", "b", ""}));
  EXPECT_EQ(SplitAt("", ','), (std::vector<std::string_view>{""}));
}

TEST(HexBytes, ArePairsOfDigits) {
  EXPECT_EQ(ParseHexBytes("00aBff"), (Raw{0, 0xab, 0xff}));
  for (const char* wrong : {"", "0", "000", "0g", "0x", "-1"}) {
    EXPECT_TRUE(ParseHexBytes(wrong).empty()) << wrong;
  }
}

TEST(Escapes, StandForBytes) {
  EXPECT_EQ(Unescaped("plain"), "plain");
  EXPECT_EQ(Unescaped(""), "");
  EXPECT_EQ(Unescaped(R"(\\)"), "\\");
  EXPECT_EQ(Unescaped(R"(a\x01\xffb\\x41)"),
            "a\x01\xff"
            "b\\x41");
  EXPECT_EQ(Unescaped(R"(\xff)"), "\xff");
  EXPECT_EQ(Printable(" ~\x7f\x80\xff\n\\x"), R"( ~\x7f\x80\xff\x0a\\x)");
  EXPECT_EQ(BackslashesDoubled(R"(a\x41\\)"), R"(a\\x41\\\\)");
  for (const char* wrong : {R"(\)", R"(a\)", R"(\n)", R"(\x)", R"(\x1)", R"(\x00)", R"(\xg0)",
                            R"(\X41)", R"(a\ b)", R"(\\\)"}) {
    EXPECT_FALSE(Unescaped(wrong)) << wrong;
  }
}

TEST(Suggestions, AreForASlipOfTheHandAlone) {
  constexpr std::array<std::string_view, 4> kWords{"delete", "set", "resolve", "allow"};
  for (const char* slip : {"delte", "deletee", "delfte", "deelte", "dleete", "DElete"}) {
    EXPECT_EQ(Suggestion(slip, kWords), " (did you mean 'delete'?)") << slip;
  }
  EXPECT_EQ(Suggestion("est", kWords), " (did you mean 'set'?)");
  for (const char* slip : {"st", "sett", "sxt"}) {
    EXPECT_EQ(Suggestion(slip, kWords), " (did you mean 'set'?)") << slip;
  }
  EXPECT_EQ(Suggestion("rsolv", kWords), "");
  EXPECT_EQ(Suggestion("resolv", kWords), " (did you mean 'resolve'?)");
  for (const char* other : {"", "x", "list", "tes", "del-all", "sxy", "sxe", "stx", "lalwo"}) {
    EXPECT_EQ(Suggestion(other, kWords), "") << other;
  }
  EXPECT_EQ(Suggestion("lalow", kWords), " (did you mean 'allow'?)");
  EXPECT_EQ(Suggestion("set", {}), "");
}

TEST(ErrnoNames, StandForNumbers) {
  EXPECT_EQ(ErrnoName(ENOENT), "ENOENT");
  for (const int none : {-1, 0, 41, 4095, 100000}) EXPECT_EQ(ErrnoName(none), "") << none;
  EXPECT_EQ(ErrnoOf("EPERM"), 1);
  EXPECT_EQ(ErrnoOf("ENOENT"), 2);
  EXPECT_EQ(ErrnoOf("EHWPOISON"), 133);
  EXPECT_EQ(ErrnoOf("EWOULDBLOCK"), 11);
  EXPECT_EQ(ErrnoOf("EDEADLOCK"), 35);
  EXPECT_EQ(ErrnoOf("ENOTSUP"), 95);
  EXPECT_EQ(ErrnoOf("EOPNOTSUPP"), 95);
  for (const char* wrong : {"", "0", "ENONE", "enoent", "ENOENT "}) {
    EXPECT_FALSE(ErrnoOf(wrong)) << wrong;
  }
  EXPECT_EQ(ErrnoNames().front(), "EPERM");
  EXPECT_EQ(ErrnoNames().back(), "EHWPOISON");
}

}  // namespace
