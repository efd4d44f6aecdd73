#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include "datapath/datapath.h"
#include "every_command.h"
#include "folder.h"
#include "in_process.h"
#include "journal/journal.h"
#include "record/forward.h"
#include "record/node_device.h"
#include "record/recording_log.h"
#include "replay/matching_replay.h"
#include "replay/recording.h"
#include "replay/strict_replay.h"
#include "requests/field_view.h"
#include "socket_device.h"

// What is recorded of a host is what is replayed, byte for byte.

namespace {

using in_process::Result;
using replay_test::Command;
using replay_test::Content;
using replay_test::EveryCommand;
using replay_test::Folder;
using vdrsim::Executor;
using vdrsim::Forward;
using vdrsim::HostDevice;
using vdrsim::Journal;
using vdrsim::Recording;

std::vector<Result> ExecuteAll(Executor& executor, const std::vector<Command>& commands) {
  std::vector<Result> results;
  results.reserve(commands.size());
  for (const auto& [code, input, capacity] : commands) {
    results.push_back(in_process::Execute(executor, code, input, capacity));
  }
  return results;
}

// The same with a recording of it.
std::vector<Result> Record(const std::string& path, Executor& end,
                           const std::vector<Command>& commands) {
  Journal::Logs logs;
  logs.push_back(std::make_unique<vdrsim::RecordingLog>(path, vdrsim::JournalForm("vdrsim")));
  Journal journal(end, std::move(logs), Journal::Keeps::Outputs);
  auto results = ExecuteAll(journal, commands);
  EXPECT_TRUE(journal.Finish());
  return results;
}

std::string WithoutTimes(const std::string& path) {
  return std::regex_replace(Content(path), std::regex("\"time\":[0-9.]+"), "\"time\":0");
}

void ExpectSame(const std::vector<Result>& actual, const std::vector<Result>& expected,
                const std::vector<Command>& commands) {
  ASSERT_EQ(actual.size(), expected.size());
  for (size_t index = 0; index < actual.size(); ++index) {
    EXPECT_EQ(actual[index].error, expected[index].error) << "code " << commands[index].code;
    EXPECT_EQ(wire::Difference(actual[index].reply, expected[index].reply), "")
        << "code " << commands[index].code;
  }
}

void ExpectRoundTrip(HostDevice& device, const std::vector<Command>& commands) {
  const Folder folder;
  const std::string recorded = folder.Path("recorded");
  const std::string strict = folder.Path("strict");
  const std::string matching = folder.Path("matching");
  vdrsim::Datapath datapath;
  const std::vector<Result> expected = ExecuteAll(datapath, commands);
  Forward forward(device);
  ExpectSame(Record(recorded, forward, commands), expected, commands);
  const Recording recording(recorded);
  vdrsim::StrictReplay inOrder(recording);
  ExpectSame(Record(strict, inOrder, commands), expected, commands);
  EXPECT_TRUE(inOrder.Report());
  EXPECT_EQ(WithoutTimes(strict), WithoutTimes(recorded));
  vdrsim::MatchingReplay byMatch(recording);
  ExpectSame(Record(matching, byMatch, commands), expected, commands);
  EXPECT_EQ(WithoutTimes(matching), WithoutTimes(recorded));
}

TEST(RoundTrip, TheRowHasEveryCommandAndMostSucceed) {
  const std::vector<Command> commands = EveryCommand();
  std::set<const vdrsim::requests::Request*> sent;
  std::set<const vdrsim::requests::Request*> succeeded;
  vdrsim::Datapath datapath;
  for (const auto& [code, input, capacity] : commands) {
    const auto* request = vdrsim::requests::Find(code, input);
    const int error = in_process::Execute(datapath, code, input, capacity).error;
    sent.insert(request);
    if (error == 0) succeeded.insert(request);
  }
  for (const auto* request : vdrsim::requests::kRequests) EXPECT_TRUE(sent.contains(request));
  EXPECT_GE(succeeded.size(), 140U);
}

TEST(RoundTrip, EveryCommandOfAHostBehindASocket) {
  replay_test::SocketDevice device;
  ExpectRoundTrip(device, EveryCommand());
}

// Started in a run, whose nodes are those of its host.
TEST(RoundTripOnNodes, EveryCommand) {
  if (!std::getenv("VDRSIM")) GTEST_SKIP() << "there is no device";
  vdrsim::NodeDevice device(
      {"/qorv/devices/char/zaxdriver/ryn_vdr", "/qorv/devices/char/zaxdriver/ryn_vdr_ugrade"});
  ExpectRoundTrip(device, EveryCommand());
}

// What a kernel may do and the simulation does not.
class Odd final : public HostDevice {
 public:
  Outcome Command(vdrsim::Node, uint32_t code, std::span<const std::byte>,
                  std::span<std::byte> room) noexcept override {
    switch (code) {
      case 1:  // writes, and fails then
        std::memcpy(room.data(), "written", 7);
        return {EIO, static_cast<uint32_t>(room.size())};
      case 2:  // fails, and says a length
        return {EIO, 5};
      case 3:  // both
        std::memcpy(room.data(), "written", 7);
        return {EIO, 3};
      case 4:  // writes more than it says
        std::memcpy(room.data(), "written", 7);
        return {0, 3};
      case 5:  // says more than there is room for
        return {0, 1000};
      case 6:  // leaves the length as it was, and writes less
        std::memcpy(room.data(), "written", 7);
        return {0, static_cast<uint32_t>(room.size())};
      default:
        return {512, static_cast<uint32_t>(room.size())};
    }
  }
};

std::string Text(const Result& result) {
  return {reinterpret_cast<const char*>(result.reply.data()), result.reply.size()};
}

TEST(RoundTrip, WhatADeviceDoesOtherwiseIsKept) {
  std::vector<Command> commands;
  for (uint32_t code = 1; code <= 7; ++code) commands.push_back({code, wire::Bytes(4), 88});
  const Folder folder;
  Odd device;
  Forward forward(device);
  const auto results = Record(folder.Path("recorded"), forward, commands);
  EXPECT_EQ(Text(results[0]), "written");
  EXPECT_EQ(results[0].error, EIO);
  EXPECT_EQ(Text(results[1]), "");
  EXPECT_EQ(Text(results[2]), "written");
  EXPECT_EQ(Text(results[3]), "written");
  EXPECT_EQ(results[3].error, 0);
  EXPECT_EQ(results[4].reply.size(), 88U);
  EXPECT_EQ(results[5].reply.size(), 88U);
  EXPECT_EQ(results[6].error, 512);

  const Recording recording(folder.Path("recorded"));
  const auto recorded = recording.commands();
  const uint32_t lengths[] = {88, 5, 3, 3, 1000, 88, 88};
  for (size_t index = 0; index < recorded.size(); ++index) {
    EXPECT_EQ(recorded[index].length, lengths[index]) << index;
    EXPECT_EQ(recorded[index].produced, results[index].reply.size()) << index;
    EXPECT_EQ(recorded[index].error, results[index].error) << index;
  }
  vdrsim::StrictReplay replay(recording);
  ExpectSame(Record(folder.Path("replayed"), replay, commands), results, commands);
  EXPECT_EQ(WithoutTimes(folder.Path("replayed")), WithoutTimes(folder.Path("recorded")));
}

}  // namespace
