#include <gtest/gtest.h>
#include <vdrzax/channel.h>

#include <cstdlib>
#include <cstring>

#include "support/contract.h"

namespace {

using contract::Outcome;
using contract::Steps;

class Device : public testing::Test {
 protected:
  void TearDown() override { unsetenv("USE_UPGRADE_DEV"); }

  IoctlEnvelope envelope_{};
  fake::Device device_;
};

TEST_F(Device, ACommandOpensTheNodeIssuesOneIoctlAndCloses) {
  EXPECT_EQ(VDRZAXIoctl(42, &envelope_), 0);
  EXPECT_EQ(device_.steps, (Steps{"open64", "ioctl", "close"}));
  ASSERT_EQ(device_.commands.size(), 1u);
  EXPECT_EQ(device_.commands[0].node, "/qorv/devices/char/zaxdriver/ryn_vdr");
  EXPECT_EQ(device_.commands[0].openFlags, 2);
  EXPECT_EQ(device_.commands[0].request, 42u);
}

TEST_F(Device, TheUpgradeNodeIsChosenByAnyValueOfItsVariable) {
  for (const char* value : {"1", "0", "", "no"}) {
    setenv("USE_UPGRADE_DEV", value, 1);
    EXPECT_EQ(VDRZAXIoctl(1, &envelope_), 0);
    EXPECT_EQ(device_.commands.back().node, "/qorv/devices/char/zaxdriver/ryn_vdr_ugrade");
  }
}

TEST_F(Device, TheEmptyVariableOpensTheUpgradeNode) {
  setenv("USE_UPGRADE_DEV", "", 1);
  EXPECT_EQ(VDRZAXIoctl(1, &envelope_), 0);
  EXPECT_EQ(device_.commands.back().node, "/qorv/devices/char/zaxdriver/ryn_vdr_ugrade");
}

TEST_F(Device, TheVariableIsReadAfreshOnEveryCall) {
  for (int round = 0; round < 2; ++round) {
    setenv("USE_UPGRADE_DEV", "1", 1);
    EXPECT_EQ(VDRZAXIoctl(1, &envelope_), 0);
    EXPECT_EQ(device_.commands.back().node, "/qorv/devices/char/zaxdriver/ryn_vdr_ugrade");
    unsetenv("USE_UPGRADE_DEV");
    EXPECT_EQ(VDRZAXIoctl(1, &envelope_), 0);
    EXPECT_EQ(device_.commands.back().node, "/qorv/devices/char/zaxdriver/ryn_vdr");
  }
}

TEST_F(Device, AMissingNodeFailsAtOnceWithoutFallingBackToTheOther) {
  setenv("USE_UPGRADE_DEV", "1", 1);
  device_.openError = ENOENT;
  contract::ExpectFailure(device_, [&] { return VDRZAXIoctl(1, &envelope_); }, ENOENT, {"open64"});
}

TEST_F(Device, ARefusedOpenKeepsItsErrno) {
  device_.openError = EACCES;
  contract::ExpectFailure(device_, [&] { return VDRZAXIoctl(1, &envelope_); }, EACCES, {"open64"});
}

TEST_F(Device, AFailingIoctlIsNotRetried) {
  for (const int error : {EINTR, EAGAIN, EXDEV}) {
    device_.steps.clear();
    device_.AnswerWith(fake::Failure(error));
    contract::ExpectFailure(device_, [&] { return VDRZAXIoctl(1, &envelope_); }, error,
                            {"open64", "ioctl", "close"});
  }
}

TEST_F(Device, EveryNegativeResultOfTheIoctlBecomesMinusOne) {
  device_.AnswerWith({.result = -7, .error = EPERM});
  contract::ExpectFailure(device_, [&] { return VDRZAXIoctl(1, &envelope_); }, EPERM,
                          {"open64", "ioctl", "close"});
}

TEST_F(Device, ANonNegativeResultOfTheIoctlIsDiscarded) {
  device_.AnswerWith({.result = 7});
  EXPECT_EQ(contract::Run([&] { return VDRZAXIoctl(1, &envelope_); }).result, 0);
}

TEST_F(Device, AFailingCloseDoesNotFailASuccessfulCommand) {
  device_.closeError = EIO;
  EXPECT_EQ(VDRZAXIoctl(1, &envelope_), 0);
}

TEST_F(Device, WhatAFailingCloseLeavesInErrnoIsWhatTheCallerSees) {
  device_.AnswerWith(fake::Failure(EXDEV));
  device_.closeError = EIO;
  contract::ExpectFailure(device_, [&] { return VDRZAXIoctl(1, &envelope_); }, EIO,
                          {"open64", "ioctl", "close"});
}

TEST_F(Device, ErrnoIsUntouchedOnSuccess) {
  const Outcome outcome = contract::Run([&] { return VDRZAXIoctl(1, &envelope_); });
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, contract::kUntouched);
}

TEST_F(Device, ANegativeRequestIsSignExtended) {
  EXPECT_EQ(VDRZAXIoctl(-2, &envelope_), 0);
  EXPECT_EQ(device_.commands.back().request, 0xFFFFFFFFFFFFFFFEul);
}

TEST_F(Device, TheEnvelopeReachesTheKernelUnchangedAndKeepsItsReplyLength) {
  uint8_t reply[8] = {};
  envelope_ = {0, nullptr, 8, reply};
  device_.AnswerWith({.bytes = {1, 2, 3}});
  EXPECT_EQ(VDRZAXIoctl(1, &envelope_), 0);
  EXPECT_EQ(device_.commands.back().outLength, 8u);
  EXPECT_EQ(device_.commands.back().outBuffer, reply);
  uint32_t length;
  std::memcpy(&length, reinterpret_cast<const uint8_t*>(&envelope_) + 12, 4);
  EXPECT_EQ(length, 3u);
  EXPECT_BYTES(wire::BytesOf(reply, 8), (fake::Bytes{1, 2, 3, 0, 0, 0, 0, 0}));
}

// An agent may have closed its standard input.
TEST_F(Device, DescriptorsFromZeroOnAreOpenDevices) {
  device_.firstDescriptor = 0;
  for (int command = 0; command < 3; ++command) EXPECT_EQ(VDRZAXIoctl(1, &envelope_), 0);
  EXPECT_EQ(device_.commands.size(), 3u);
}

}  // namespace
