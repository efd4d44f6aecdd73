#include <gtest/gtest.h>
#include <vdrzax/e2i.h>

#include "support/contract.h"

namespace {

TEST(FLTable, TheKernelFillsTheCallers426080Bytes) {
  fake::Bytes buffer(426080);
  contract::ExpectRawGetter([&] { return VDRZAX_DumpFLTable(0x1234, buffer.data()); }, 72,
                            wire::Block().U16(256, 0x1234), buffer.data(), 426080);
}

TEST(FLTable, TheSelectorTakesTwoBytesAndNoMore) {
  fake::Bytes buffer(426080);
  contract::ExpectRawGetter([&] { return VDRZAX_DumpFLTable(0xFFFF, buffer.data()); }, 72,
                            wire::Block().U8(256, 0xFF).U8(257, 0xFF), buffer.data(), 426080);
}

TEST(FLTable, ANullBufferIsGivenToTheKernel) {
  fake::Device device;
  EXPECT_EQ(VDRZAX_DumpFLTable(1, nullptr), 0);
  ASSERT_EQ(device.commands.size(), 1u);
  EXPECT_EQ(device.commands[0].outBuffer, nullptr);
  EXPECT_EQ(device.commands[0].outLength, 426080u);
}

}  // namespace
