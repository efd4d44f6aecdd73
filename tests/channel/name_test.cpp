#include <gtest/gtest.h>
#include <vdrzax/channel.h>

#include <cstring>
#include <string>

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

TEST(Name, AUuidWithMoreTextBehindItIsCopiedWhole) {
  const std::string text = "01234567-89ab-cdef-0123-456789abcdef-and-more";
  EXPECT_BYTES(Copy(text), Expected(text));
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
