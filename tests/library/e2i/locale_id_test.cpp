#include <gtest/gtest.h>
#include <vdrzax/e2i.h>

#include "support/contract.h"

namespace {

TEST(LocaleId, TheKernelFillsTheCallers16Bytes) {
  fake::Bytes buffer(16);
  contract::ExpectRawGetter([&] { return VDRZAX_GetLocaleId(buffer.data()); }, 86, wire::Block(),
                            buffer.data(), 16);
}

TEST(LocaleId, AShortReplyIsNotRefused) {
  fake::Bytes buffer(16, 0xEE);
  fake::Device device;
  device.AnswerWith({.bytes = {1, 2}});
  EXPECT_EQ(VDRZAX_GetLocaleId(buffer.data()), 0);
  EXPECT_EQ(buffer[1], 2);
  EXPECT_EQ(buffer[2], 0xEE);
}

TEST(LocaleId, ANullBufferIsGivenToTheKernel) {
  fake::Device device;
  EXPECT_EQ(VDRZAX_GetLocaleId(nullptr), 0);
  ASSERT_EQ(device.commands.size(), 1u);
  EXPECT_EQ(device.commands[0].outBuffer, nullptr);
  EXPECT_EQ(device.commands[0].outLength, 16u);
}

}  // namespace
