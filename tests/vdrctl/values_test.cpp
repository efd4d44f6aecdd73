#include "values.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/escapes.h"
#include "common/suggestion.h"

// Arguments as people write them.
namespace {

using namespace vdrctl;
using tools::Suggestion;
using tools::Unescaped;

template <typename Value>
std::vector<uint8_t> BytesOf(const Value& value) {
  std::vector<uint8_t> bytes(sizeof value);
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}
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

TEST(Addresses, AreInNetworkByteOrder) {
  EXPECT_EQ(BytesOf(*ParseIpv4("192.0.2.7")), (Raw{192, 0, 2, 7}));
  for (const char* wrong : {"", "1", "1.2.3", "1.2.3.4.5", "1.2.3.256", "01.2.3.4", "1.2.3.4 ",
                            "a.b.c.d", "::1", "1.2.3.4/8"}) {
    EXPECT_FALSE(ParseIpv4(wrong)) << wrong;
  }
  EXPECT_EQ(BytesOf(*ParseIpv6("102:304:506:708:90a:b0c:d0e:f10")),
            (Raw{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
  EXPECT_EQ(BytesOf(*ParseIpv6("::ffff:1.2.3.4")),
            (Raw{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 255, 1, 2, 3, 4}));
  for (const char* wrong : {"", ":", "1::2::3", "1.2.3.4", "::1%eth0", "::1/64", "::10000"}) {
    EXPECT_FALSE(ParseIpv6(wrong)) << wrong;
  }
}

TEST(Prefixes, HaveALengthOrANetmask) {
  const struct {
    const char* text;
    Raw mask;
  } masks[] = {{"1.2.3.4/0", {0, 0, 0, 0}},
               {"1.2.3.4/1", {128, 0, 0, 0}},
               {"1.2.3.4/23", {255, 255, 254, 0}},
               {"1.2.3.4/32", {255, 255, 255, 255}},
               {"1.2.3.4/0.0.0.0", {0, 0, 0, 0}},
               {"1.2.3.4/255.128.0.0", {255, 128, 0, 0}},
               {"1.2.3.4/255.255.255.255", {255, 255, 255, 255}}};
  for (const auto& [text, mask] : masks) {
    const auto prefix = ParsePrefix(text);
    ASSERT_TRUE(prefix) << text;
    EXPECT_EQ(BytesOf(prefix->address), (Raw{1, 2, 3, 4})) << text;
    EXPECT_EQ(BytesOf(prefix->mask), mask) << text;
  }
  for (const char* wrong :
       {"", "/", "1.2.3.4", "1.2.3.4/", "/8", "1.2.3.4/33", "1.2.3.4/-1", "1.2.3.4/+8", "1.2.3/8",
        "1.2.3.4/8/8", "1.2.3.4/0x8", "1.2.3.4/255.0.255.0", "1.2.3.4/0.0.0.255", "1.2.3.4/255."}) {
    EXPECT_FALSE(ParsePrefix(wrong)) << wrong;
  }
}

TEST(Ipv6Prefixes, HaveALength) {
  EXPECT_EQ(ParsePrefix6("::1/0")->length, 0);
  EXPECT_EQ(ParsePrefix6("::1/128")->length, 128);
  EXPECT_EQ(BytesOf(ParsePrefix6("100::1/64")->address),
            (Raw{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}));
  for (const char* wrong : {"", "::1", "::1/", "::1/129", "::1/ffff::", "/64", "1.2.3.4/8"}) {
    EXPECT_FALSE(ParsePrefix6(wrong)) << wrong;
  }
}

TEST(Macs, AreSixGroups) {
  for (const char* text : {"02:00:5e:10:ab:ff", "2:0:5E:10:AB:FF", "02-00-5e-10-ab-ff"}) {
    const auto mac = ParseMac(text);
    ASSERT_TRUE(mac) << text;
    EXPECT_EQ(BytesOf(*mac), (Raw{2, 0, 0x5e, 0x10, 0xab, 0xff})) << text;
    EXPECT_EQ(MacText(*mac), "02:00:5e:10:ab:ff");
  }
  for (const char* wrong : {"", ":::::", "1:2:3:4:5", "1:2:3:4:5:", "1:2:3:4:5:6:", "1:2:3:4:5:6:7",
                            "1:2:3:4:5:100", "001:2:3:4:5:6", "1:2:3:4:5:g", "1:2:3:4:5:6 "}) {
    EXPECT_FALSE(ParseMac(wrong)) << wrong;
  }
}

TEST(Switches, AreOnOrOff) {
  EXPECT_EQ(ParseSwitch("on"), true);
  EXPECT_EQ(ParseSwitch("off"), false);
  for (const char* wrong : {"", "ON", "1", "true", "o"}) EXPECT_FALSE(ParseSwitch(wrong)) << wrong;
}

TEST(Lists, AreSplitAtEachSeparator) {
  EXPECT_EQ(SplitAt("a,,b,", ','), (std::vector<std::string_view>{"a", "", "b", ""}));
  EXPECT_EQ(SplitAt("", ','), (std::vector<std::string_view>{""}));
  EXPECT_EQ(ParseNumbers("1,0x2,255", ',', 255), (std::vector<uint64_t>{1, 2, 255}));
  for (const char* wrong : {"", ",", "1,", "1,,2", "256", "1;2"}) {
    EXPECT_TRUE(ParseNumbers(wrong, ',', 255).empty()) << wrong;
  }
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
  for (const char* wrong : {R"(\)", R"(a\)", R"(\n)", R"(\x)", R"(\x1)", R"(\x00)", R"(\xg0)",
                            R"(\X41)", R"(a\ b)", R"(\\\)"}) {
    EXPECT_FALSE(Unescaped(wrong)) << wrong;
  }
}

TEST(Suggestions, AreForASlipOfTheHandAlone) {
  constexpr std::array<std::string_view, 3> kWords{"delete", "set", "resolve"};
  for (const char* slip : {"delte", "deletee", "delfte", "deelte", "dleete", "DElete"}) {
    EXPECT_EQ(Suggestion(slip, kWords), " (did you mean 'delete'?)") << slip;
  }
  EXPECT_EQ(Suggestion("est", kWords), " (did you mean 'set'?)");
  EXPECT_EQ(Suggestion("st", kWords), " (did you mean 'set'?)");
  EXPECT_EQ(Suggestion("rsolv", kWords), "");
  EXPECT_EQ(Suggestion("resolv", kWords), " (did you mean 'resolve'?)");
  for (const char* other : {"", "x", "list", "tes", "del-all"}) {
    EXPECT_EQ(Suggestion(other, kWords), "") << other;
  }
  EXPECT_EQ(Suggestion("set", {}), "");
}

}  // namespace
