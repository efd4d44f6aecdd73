#include <gtest/gtest.h>
#include <vdrzax/services.h>

#include "support/contract.h"

namespace {

using wire::Block;

TEST(FullSync, SaveSendsItsFlagAsOneByteAndTheKernelWritesTheStatus) {
  uint32_t status = 0;
  contract::ExpectRawGetter([&] { return VDRZAX_PerformFullSyncSave(0xFF, &status); }, 123,
                            Block().U8(256, 0xFF), &status, 4);
}

TEST(FullSync, SaveWithFlag0Sends968ZeroBytes) {
  uint32_t status = 0;
  contract::ExpectRawGetter([&] { return VDRZAX_PerformFullSyncSave(0, &status); }, 123, Block(),
                            &status, 4);
}

TEST(FullSync, StatusSends968ZeroBytesAndTheKernelWritesTheStatus) {
  uint32_t status = 0;
  contract::ExpectRawGetter([&] { return VDRZAX_GetFullSyncSaveStatus(&status); }, 124, Block(),
                            &status, 4);
}

struct Getter {
  int (*call)(uint32_t*);
  unsigned long code;
};

constexpr Getter kGetters[] = {
    {[](uint32_t* status) { return VDRZAX_PerformFullSyncSave(1, status); }, 123},
    {VDRZAX_GetFullSyncSaveStatus, 124}};

TEST(FullSync, TheLengthOfTheStatusIsNotExamined) {
  for (const Getter& getter : kGetters) {
    SCOPED_TRACE(getter.code);
    fake::Device device;
    device.AnswerWith({.bytes = {0x11}});
    uint32_t status = 0xEEEEEEEE;
    EXPECT_EQ(getter.call(&status), 0);
    EXPECT_EQ(status, 0xEEEEEE11u);
  }
}

TEST(FullSync, AfterAFailureTheVariableHoldsWhatTheKernelWrote) {
  for (const Getter& getter : kGetters) {
    SCOPED_TRACE(getter.code);
    fake::Device device;
    device.AnswerWith({.bytes = {1, 2, 3, 4}, .result = -1, .error = EBUSY});
    uint32_t status = 0;
    EXPECT_EQ(getter.call(&status), -1);
    EXPECT_EQ(errno, EBUSY);
    EXPECT_EQ(status, 0x04030201u);
  }
}

TEST(FullSync, ANullStatusIsGivenToTheKernelWhichDecides) {
  for (const Getter& getter : kGetters) {
    SCOPED_TRACE(getter.code);
    for (const int error : {0, EFAULT}) {
      fake::Device device;
      if (error != 0) device.AnswerWith(fake::Failure(error));
      EXPECT_EQ(getter.call(nullptr), error == 0 ? 0 : -1);
      ASSERT_EQ(device.commands.size(), 1u);
      EXPECT_EQ(device.commands[0].request, getter.code);
      EXPECT_EQ(device.commands[0].outBuffer, nullptr);
      EXPECT_EQ(device.commands[0].outLength, 4u);
    }
  }
}

}  // namespace
