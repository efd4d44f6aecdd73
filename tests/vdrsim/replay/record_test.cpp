#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <optional>
#include <vector>

#include "allocations.h"
#include "folder.h"
#include "in_process.h"
#include "record/forward.h"
#include "record/node_device.h"
#include "record/recording_log.h"
#include "record/reply_memory.h"
#include "soft_limit.h"
#include "support/any_memory.h"

namespace {

using replay_test::Folder;
using vdrsim::ReplyMemory;

TEST(ReplyMemory, KnowsHowFarItWasWritten) {
  for (const uint32_t size : {1U, 4096U, 10000U, 0xffffffffU}) {
    const ReplyMemory memory(size);
    ASSERT_TRUE(memory);
    ASSERT_EQ(memory.room().size(), size);
    EXPECT_EQ(memory.Written(), 0U);
    memory.room()[0] = std::byte{0};
    EXPECT_EQ(memory.Written(), 0U) << "zeros are not told from what was never written";
    memory.room()[size / 2] = std::byte{1};
    EXPECT_EQ(memory.Written(), size / 2 + 1);
    memory.room()[size - 1] = std::byte{1};
    EXPECT_EQ(memory.Written(), size);
  }
}

TEST(ReplyMemory, MayBeOfNoSize) {
  const ReplyMemory memory(0);
  EXPECT_TRUE(memory);
  EXPECT_TRUE(memory.room().empty());
  EXPECT_EQ(memory.Written(), 0U);
}

TEST(ReplyMemory, IsGivenBack) {
  const auto isMapped = [] {
    return replay_test::Content("/proc/self/maps").find("vdrsim-reply") != std::string::npos;
  };
  {
    const ReplyMemory memory(4096);
    EXPECT_TRUE(isMapped());
  }
  EXPECT_FALSE(isMapped());
}

TEST(ReplyMemory, IsOfNoUseWithoutRoom) {
  {
    const SoftLimit limit(RLIMIT_FSIZE, 4095);
    EXPECT_FALSE(ReplyMemory(4096));
  }
  {
    const SoftLimit limit(RLIMIT_NOFILE, 0);
    EXPECT_FALSE(ReplyMemory(4096));
  }
  const SoftLimit limit(RLIMIT_AS, 0);
  EXPECT_FALSE(ReplyMemory(4096));
}

// A folder can be opened to be read alone.
TEST(NodeDevice, RefusesAHostWithoutDevice) {
  const std::pair<std::string, std::string> nodes[] = {{"/no/node", "No such file or directory"},
                                                       {"/", "Is a directory"}};
  for (const auto& [node, why] : nodes) {
    try {
      const vdrsim::NodeDevice device({node, "/dev/null"});
      FAIL() << "there is no such node";
    } catch (const std::runtime_error& failure) {
      EXPECT_EQ(std::string(failure.what()), node + ": " + why +
                                                 ": this host has no device to record, or it can't "
                                                 "be used (record --simulated needs none)");
    }
  }
}

TEST(NodeDevice, HandsOnWhatTheKernelSays) {
  vdrsim::NodeDevice device({"/dev/null", "/no/other"});
  std::array<std::byte, 4> room{};
  const auto refused = device.Command(vdrsim::Node::Normal, 9, {}, room);
  EXPECT_EQ(refused.error, ENOTTY);
  EXPECT_EQ(refused.length, 4U);
  const auto missing = device.Command(vdrsim::Node::Upgrade, 9, {}, room);
  EXPECT_EQ(missing.error, ENOENT);
  EXPECT_EQ(missing.length, 4U);
}

TEST(NodeDevice, SaysAllOfTheRoom) {
  const ReplyMemory memory(0x01020304);
  vdrsim::NodeDevice device({"/dev/null", "/no/other"});
  EXPECT_EQ(device.Command(vdrsim::Node::Normal, 9, {}, memory.room()).length, 0x01020304U);
}

class Counting final : public vdrsim::HostDevice {
 public:
  Outcome Command(vdrsim::Node node, uint32_t, std::span<const std::byte>,
                  std::span<std::byte> room) noexcept override {
    ++commands;
    lastNode = node;
    if (!room.empty()) room.front() = writes;
    return {error, error == 0 ? 0 : static_cast<uint32_t>(room.size())};
  }
  int commands = 0;
  vdrsim::Node lastNode = vdrsim::Node::Normal;
  int error = 0;
  std::byte writes{};
};

// What was asked of a caller's memory.
class Asked final : public vdrsim::Destination {
 public:
  bool Takes(uint32_t length) override {
    lengths.push_back(length);
    return true;
  }
  bool HoldUp(std::chrono::nanoseconds) noexcept override { return true; }
  void Kill() noexcept override {}

  std::vector<uint32_t> lengths{};
};

vdrsim::Answer Execute(vdrsim::Executor& executor, vdrsim::Node node, uint32_t capacity,
                       vdrsim::Destination& destination) {
  return executor.Execute({.process = 1,
                           .thread = 1,
                           .node = node,
                           .code = 9,
                           .input = {},
                           .capacity = capacity,
                           .destination = destination});
}

TEST(Forward, AsksForTheBeginningOfTheCallersMemory) {
  Counting device;
  vdrsim::Forward forward(device);
  Asked asked;
  for (const uint32_t capacity : {0U, 100U, 4096U, 4097U, 577577U}) {
    Execute(forward, vdrsim::Node::Normal, capacity, asked);
  }
  EXPECT_EQ(asked.lengths, (std::vector<uint32_t>{0, 100, 4096, 4096, 4096}));
}

TEST(Forward, TakesTheNodeOfTheCaller) {
  Counting device;
  vdrsim::Forward forward(device);
  AnyMemory memory;
  for (const vdrsim::Node node : {vdrsim::Node::Upgrade, vdrsim::Node::Normal}) {
    Execute(forward, node, 4, memory);
    EXPECT_EQ(device.lastNode, node);
  }
}

TEST(Forward, AFailureThatWritesNothingLeavesTheCallersLength) {
  Counting device;
  device.error = EIO;
  vdrsim::Forward forward(device);
  AnyMemory memory;
  const vdrsim::Answer answer = Execute(forward, vdrsim::Node::Normal, 4, memory);
  EXPECT_EQ(answer.error, EIO);
  EXPECT_EQ(answer.claimed, std::nullopt);
  device.writes = std::byte{1};
  EXPECT_EQ(Execute(forward, vdrsim::Node::Normal, 4, memory).claimed, 4U);
}

TEST(Forward, WithoutMemoryHasNoEffect) {
  Counting device;
  vdrsim::Forward forward(device);
  {
    const SoftLimit limit(RLIMIT_FSIZE, 0);
    EXPECT_EQ(in_process::Execute(forward, 9, {}, 4).error, ENOMEM);
  }
  {
    const allocations::Limit limit(0);
    EXPECT_EQ(in_process::Execute(forward, 9, {}, 4).error, ENOMEM);
  }
  EXPECT_EQ(device.commands, 0);
}

TEST(Forward, WhoseReplyCannotBeDeliveredHasNoEffect) {
  Counting device;
  vdrsim::Forward forward(device);
  EXPECT_EQ(in_process::ExecuteInVain(forward, 9, {}, 4).error, EFAULT);
  EXPECT_EQ(device.commands, 0);
  EXPECT_EQ(in_process::Execute(forward, 9, {}, 4).error, 0);
  EXPECT_EQ(device.commands, 1);
}

TEST(RecordingLog, TakesAPlainFileAlone) {
  for (const char* path : {"/dev/null", "/dev/full"}) {
    try {
      const vdrsim::RecordingLog log(path, vdrsim::JournalForm("vdrsim"));
      FAIL() << path;
    } catch (const std::runtime_error& failure) {
      EXPECT_EQ(std::string(failure.what()),
                std::string(path) + ": a recording must be a plain file");
    }
  }
}

// An output longer than what is written at once.
TEST(RecordingLog, WritesLongOutputsInParts) {
  const Folder folder;
  vdrsim::RecordingLog log(folder.Path("file"), vdrsim::JournalForm("vdrsim"));
  const wire::Bytes output(200001, std::byte{0xa5});
  log.Append({.seq = 1, .code = 9, .produced = 200001, .output = output});
  std::string digits;
  for (size_t index = 0; index < output.size(); ++index) digits += "a5";
  EXPECT_NE(replay_test::Content(folder.Path("file")).find("\"output\":\"" + digits + "\"}\n"),
            std::string::npos);
}

TEST(RecordingLog, ThatCanGrowNoMoreIsToldOnceAndLeftAlone) {
  const Folder folder;
  const std::string path = folder.Path("file");
  vdrsim::RecordingLog log(path, vdrsim::JournalForm("vdrsim"));
  const wire::Bytes output(500000);
  testing::internal::CaptureStderr();
  {
    const SoftLimit limit(RLIMIT_FSIZE, 200000);
    log.Append({.seq = 1, .code = 9, .produced = 500000, .output = output});
  }
  log.Append({.kind = vdrsim::Entry::Kind::Mark, .seq = 2});
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vdrsim: " + path + ": File too large; the recording is incomplete\n");
  EXPECT_EQ(replay_test::Content(path).size(), 200000U);
  EXPECT_FALSE(log.Finish());
}

TEST(RecordingLog, WithoutMemoryIsIncomplete) {
  const Folder folder;
  const std::string path = folder.Path("file");
  vdrsim::RecordingLog log(path, vdrsim::JournalForm("vdrsim"));
  const wire::Bytes output(1000);
  testing::internal::CaptureStderr();
  {
    const allocations::Limit limit(0);
    for (uint64_t seq = 1; seq <= 2; ++seq) {
      log.Append({.seq = seq, .code = 9, .produced = 1000, .output = output});
    }
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vdrsim: " + path + ": out of memory; the recording is incomplete\n");
  EXPECT_FALSE(log.Finish());
}

}  // namespace
