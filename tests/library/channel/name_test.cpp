#include <gtest/gtest.h>
#include <vdrzax/channel.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "support/contract.h"

namespace {

// The 64 bytes of `out` and one behind them, all set before the call.
fake::Bytes Copy(const std::string& text) {
  fake::Bytes out(65, 0xEE);
  VDRZAXGetUuidOrName(text.c_str(), reinterpret_cast<char*>(out.data()));
  return out;
}

fake::Bytes Expected(const std::string& text) {
  fake::Bytes out(65, 0);
  std::memcpy(out.data(), text.data(), text.size());
  out[64] = 0xEE;
  return out;
}

TEST(Name, AWellFormedUuidIsCopiedAsText) {
  const std::string uuid = "01234567-89ab-cdef-0123-456789abcdef";
  EXPECT_BYTES(Copy(uuid), Expected(uuid));
}

TEST(Name, AnyOtherTextIsCopiedToo) {
  for (const char* text : {"", "edge-1", "0123", "01234567-89ab", "%02x%s%n", "zz"}) {
    EXPECT_BYTES(Copy(text), Expected(text));
  }
}

TEST(Name, ATextIsCutTo63CharactersAndTerminated) {
  const std::string text63(63, 'x');
  EXPECT_BYTES(Copy(text63), Expected(text63));
  EXPECT_BYTES(Copy(text63 + "y"), Expected(text63));
  EXPECT_BYTES(Copy(text63 + std::string(500, 'y')), Expected(text63));
}

TEST(Name, TheHeaderNamesTheLongestTextThatIsNotCut) {
  const std::string longest(VDRZAX_NAME_MAX, 'x');
  EXPECT_BYTES(Copy(longest + "y"), Expected(longest));
  EXPECT_BYTES(Copy(longest), Expected(longest));
}

TEST(Name, AUuidWithMoreTextBehindItIsCopiedWhole) {
  const std::string text = "01234567-89ab-cdef-0123-456789abcdef-and-more";
  EXPECT_BYTES(Copy(text), Expected(text));
}

TEST(Name, TheTextIsScannedForTheSixteenBytesOfAUuid) {
  fake::Device device;
  std::vector<unsigned> bytes;
  device.scan = [&](const char* text, const char* format, unsigned* const* places) {
    const int converted =
        std::sscanf(text, format, places[0], places[1], places[2], places[3], places[4], places[5],
                    places[6], places[7], places[8], places[9], places[10], places[11], places[12],
                    places[13], places[14], places[15]);
    for (int index = 0; index < 16; ++index) bytes.push_back(*places[index]);
    return converted;
  };
  const std::string uuid = "f0e1d2c3-b4a5-9687-7869-5a4b3c2d1e0f";
  EXPECT_BYTES(Copy(uuid), Expected(uuid));
  EXPECT_EQ(bytes, (std::vector<unsigned>{0xF0, 0xE1, 0xD2, 0xC3, 0xB4, 0xA5, 0x96, 0x87, 0x78,
                                          0x69, 0x5A, 0x4B, 0x3C, 0x2D, 0x1E, 0x0F}));
}

TEST(Name, ATextOf64NumbersAloneWouldNotBeCopied) {
  for (const int converted : {-1, 0, 15, 16, 17, 63, 65}) {
    fake::Device device;
    device.scan = [&](const char*, const char*, unsigned* const*) { return converted; };
    EXPECT_BYTES(Copy("edge-1"), Expected("edge-1"));
  }
  fake::Device device;
  device.scan = [](const char*, const char*, unsigned* const*) { return 64; };
  EXPECT_BYTES(Copy("edge-1"), fake::Bytes(65, 0xEE));
}

TEST(Name, NoDeviceIsTouchedAndNothingIsAllocated) {
  fake::Device device;
  Copy("edge-1");
  EXPECT_EQ(device.steps, contract::Steps{});
}

TEST(NameDeathTest, ANullTextFaults) {
  char out[64];
  EXPECT_DEATH(VDRZAXGetUuidOrName(nullptr, out), "");
}

TEST(NameDeathTest, ANullBufferFaults) { EXPECT_DEATH(VDRZAXGetUuidOrName("edge-1", nullptr), ""); }

}  // namespace
