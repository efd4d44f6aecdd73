#include "values.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

// Arguments as people write them.
namespace {

using namespace vdrctl;

template <typename Value>
std::vector<uint8_t> BytesOf(const Value& value) {
  std::vector<uint8_t> bytes(sizeof value);
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}
using Raw = std::vector<uint8_t>;

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
       {"", "/", "1.2.3.4", "0.0.0.0", "255.255.255.0", "1.2.3.4/", "/8", "1.2.3.4/33",
        "1.2.3.4/-1", "1.2.3.4/+8", "1.2.3/8", "1.2.3.4/8/8", "1.2.3.4/0x8", "1.2.3.4/255.0.255.0",
        "1.2.3.4/0.0.0.255", "1.2.3.4/255."}) {
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
  for (const char* wrong :
       {"", ":::::", "1:2:3:4:5", "1:2:3:4:5:", "1:2:3:4:5:6:", "1:2:3:4:5:6:7", "1:2:3:4:5:100",
        "001:2:3:4:5:6", "1:2:3:4:5:g", "1:2:3:4:5:6 ", "1.2.3.4.5.6", "1:2:3:4:5;6"}) {
    EXPECT_FALSE(ParseMac(wrong)) << wrong;
  }
}

TEST(Switches, AreOnOrOff) {
  EXPECT_EQ(ParseSwitch("on"), true);
  EXPECT_EQ(ParseSwitch("off"), false);
  for (const char* wrong : {"", "ON", "1", "true", "o"}) EXPECT_FALSE(ParseSwitch(wrong)) << wrong;
}

TEST(Numbers, StandBetweenSeparators) {
  EXPECT_EQ(ParseNumbers("1,0x2,255", ',', 255), (std::vector<uint64_t>{1, 2, 255}));
  for (const char* wrong : {"", ",", "1,", "1,,2", "256", "1;2"}) {
    EXPECT_TRUE(ParseNumbers(wrong, ',', 255).empty()) << wrong;
  }
}

}  // namespace
