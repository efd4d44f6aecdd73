#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include "folder.h"
#include "in_process.h"
#include "record/forward.h"
#include "record/node_device.h"
#include "record/recording_log.h"
#include "record/reply_memory.h"

namespace {

using replay_test::Folder;
using vdrsim::ReplyMemory;

TEST(ReplyMemory, KnowsHowFarItWasWritten) {
  for (const uint32_t size : {1U, 4096U, 10000U, 0xffffffffU}) {
    const ReplyMemory memory(size);
    ASSERT_TRUE(memory);
    ASSERT_EQ(memory.room().size(), size);
    EXPECT_EQ(memory.Written(), 0U);
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

TEST(NodeDevice, RefusesAHostWithoutDevice) {
  try {
    const vdrsim::NodeDevice device({"/no/node", "/no/other"});
    FAIL() << "there is no such node";
  } catch (const std::runtime_error& failure) {
    EXPECT_EQ(std::string(failure.what()),
              "/no/node: No such file or directory: this host has no device to record, or it can't "
              "be used (record --simulated needs none)");
  }
}

TEST(NodeDevice, HandsOnWhatTheKernelSays) {
  vdrsim::NodeDevice device({"/dev/null", "/no/other"});
  std::array<std::byte, 4> room{};
  const auto refused = device.Command(vdrsim::Node::Normal, 9, {}, room);
  EXPECT_EQ(refused.error, ENOTTY);
  EXPECT_EQ(refused.length, 4U);
  EXPECT_EQ(device.Command(vdrsim::Node::Upgrade, 9, {}, room).error, ENOENT);
}

class Counting final : public vdrsim::HostDevice {
 public:
  Outcome Command(vdrsim::Node, uint32_t, std::span<const std::byte>,
                  std::span<std::byte>) noexcept override {
    ++commands;
    return {0, 0};
  }
  int commands = 0;
};

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

}  // namespace
