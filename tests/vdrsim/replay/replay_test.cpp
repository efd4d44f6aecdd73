#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

#include "folder.h"
#include "in_process.h"
#include "journal/put.h"
#include "replay/matching_replay.h"
#include "replay/recording.h"
#include "replay/strict_replay.h"

namespace {

using in_process::Block;
using in_process::Execute;
using in_process::Result;
using in_process::Scalar;
using replay_test::Folder;
using vdrsim::MatchingReplay;
using vdrsim::Recording;
using vdrsim::StrictReplay;

struct Line {
  uint32_t code;
  wire::Bytes input;
  uint32_t capacity;
  std::string result;
};

std::string Hex(const wire::Bytes& bytes) {
  std::string hex;
  vdrsim::PutHex(hex, bytes);
  return hex;
}

// What stands behind the input of a command that gave so many bytes.
std::string Gave(uint32_t length, const std::string& output) {
  return "\"errno\":0,\"length\":" + std::to_string(length) +
         ",\"produced\":" + std::to_string(output.size() / 2) + ",\"output\":\"" + output + "\"";
}
std::string Failed(const std::string& error, uint32_t length) {
  return "\"errno\":\"" + error + "\",\"length\":" + std::to_string(length) + ",\"produced\":0";
}

std::string Write(const Folder& folder, const std::vector<Line>& lines) {
  std::string content = "{\"format\":\"vdrsim-journal\",\"version\":1}\n";
  int seq = 0;
  for (const auto& [code, input, capacity, result] : lines) {
    content += "{\"seq\":" + std::to_string(++seq) +
               ",\"pid\":5,\"node\":\"normal\",\"code\":" + std::to_string(code) + ",\"input\":\"" +
               Hex(input) + "\",\"capacity\":" + std::to_string(capacity) + "," + result + "}\n";
  }
  content += "{\"end\":" + std::to_string(seq) + "}\n";
  const std::string path = folder.Path("file");
  replay_test::Write(path, content);
  return path;
}

class Replays : public testing::Test {
 protected:
  std::string Report(const MatchingReplay& replay) {
    testing::internal::CaptureStderr();
    replay.Report();
    return testing::internal::GetCapturedStderr();
  }
  // What is said of a departure; empty when there was none.
  std::string Report(StrictReplay& replay) {
    testing::internal::CaptureStderr();
    const bool isKept = replay.Report();
    const std::string report = testing::internal::GetCapturedStderr();
    EXPECT_EQ(isKept, report.empty());
    return report;
  }

  Folder folder_{};
};

TEST_F(Replays, EachRequestIsAnsweredByItsMatchAndTheLastOneRepeats) {
  const Recording recording(Write(folder_, {{9, {}, 4, Gave(4, "01000000")},
                                            {1, Block("a").bytes(), 577, Failed("ENOENT", 577)},
                                            {9, {}, 4, Gave(4, "02000000")},
                                            {1, Block("b").bytes(), 577, Gave(2, "aabb")}}));
  MatchingReplay replay(recording);
  EXPECT_EQ(Execute(replay, 1, Block("b"), 577).reply.size(), 2U);
  for (const uint32_t level : {1U, 2U, 2U, 2U}) {
    EXPECT_EQ(Execute(replay, 9, {}, 4).WordAt(0), level);
  }
  EXPECT_EQ(Execute(replay, 1, Block("a"), 577).error, ENOENT);
  EXPECT_EQ(Execute(replay, 1, Block("b"), 577).error, 0);
  EXPECT_EQ(Report(replay), "");
}

TEST_F(Replays, WhatIsNotRecordedIsListed) {
  const Recording recording(Write(folder_, {{9, {}, 4, Gave(4, "01000000")}}));
  MatchingReplay replay(recording);
  EXPECT_EQ(Execute(replay, 11, {}, 4).error, ENOTTY);
  EXPECT_EQ(Execute(replay, 9, Scalar(1), 4).error, ENOTTY) << "another input";
  EXPECT_EQ(Execute(replay, 11, {}, 4).error, ENOTTY);
  EXPECT_EQ(Report(replay), "vdrsim: not in " + recording.path() +
                                ", and answered with ENOTTY:\n  GetExtendedLogLevel() (2 times)\n"
                                "  GetLogLevel(4 bytes)\n");
}

TEST_F(Replays, OfManyThatAreNotRecordedSomeAreCountedAlone) {
  const Recording recording(Write(folder_, {}));
  MatchingReplay replay(recording);
  for (uint32_t value = 0; value < 150; ++value) Execute(replay, 10, Scalar(value), 0);
  EXPECT_NE(Report(replay).find("  and others (50 times)\n"), std::string::npos);
}

TEST_F(Replays, AReplyThatWasNotKeptIsNotMadeUp) {
  const std::string result = "\"errno\":0,\"length\":4,\"produced\":4";
  const Recording recording(Write(folder_, {{9, {}, 4, result}, {42, {}, 0, Gave(0, "")}}));
  MatchingReplay replay(recording);
  EXPECT_EQ(Execute(replay, 9, {}, 4).error, ENODATA);
  EXPECT_EQ(Execute(replay, 42, {}, 0).error, 0);
  EXPECT_EQ(Report(replay), "vdrsim: in " + recording.path() +
                                " without the reply, and answered with ENODATA:\n"
                                "  GetLogLevel()\n");
}

TEST_F(Replays, AReplyThatDoesNotFitIsWithheld) {
  const Recording recording(Write(folder_, {{9, {}, 4, Gave(4, "01000000")}}));
  MatchingReplay replay(recording);
  EXPECT_EQ(Execute(replay, 9, {}, 3).error, EINVAL);
  EXPECT_EQ(Execute(replay, 9, {}, 5).reply.size(), 4U);
}

TEST_F(Replays, StrictlyTheOrderIsThatOfTheRecording) {
  const Recording recording(Write(folder_, {{9, {}, 4, Gave(4, "01000000")},
                                            {1, Block("a").bytes(), 577, Failed("ENOENT", 577)}}));
  StrictReplay replay(recording);
  EXPECT_EQ(Execute(replay, 9, {}, 4).WordAt(0), 1U);
  EXPECT_EQ(Execute(replay, 1, Block("a"), 577).error, ENOENT);
  EXPECT_EQ(Report(replay), "");
}

TEST_F(Replays, TheFirstDepartureIsNamedFieldByField) {
  const wire::Wire input = Block("a").U32(256, 10).U8(368, 1);
  const Recording recording(
      Write(folder_, {{9, {}, 4, Gave(4, "01000000")}, {2, input.bytes(), 0, Gave(0, "")}}));
  StrictReplay replay(recording);
  Execute(replay, 9, {}, 4);
  const wire::Wire other = Block("b").U32(256, 11).U8(368, 1);
  EXPECT_EQ(Execute(replay, 2, other, 8).error, EPROTO);
  EXPECT_EQ(Execute(replay, 2, input, 0).error, EPROTO) << "all behind it fail";
  EXPECT_EQ(Report(replay),
            "vdrsim: the run departs from " + recording.path() +
                ":3\n"
                "  recorded: SetVdrInstance(name=\"a\", second=10, text=\"\", fourth=0, flag=1)\n"
                "  asked:    SetVdrInstance(name=\"b\", second=11, text=\"\", fourth=0, flag=1)\n"
                "    name: \"a\" recorded, \"b\" asked\n"
                "    second: 10 recorded, 11 asked\n"
                "    capacity: 0 recorded, 8 asked\n");
}

TEST_F(Replays, ADifferenceInNoFieldIsNamedByItsPlace) {
  const Recording recording(Write(folder_, {{2, Block("a").bytes(), 0, Gave(0, "")}}));
  StrictReplay replay(recording);
  EXPECT_EQ(Execute(replay, 2, Block("a").U8(900, 255), 0).error, EPROTO);
  EXPECT_NE(Report(replay).find("\n    byte 900 of the input: 00 recorded, ff asked\n"),
            std::string::npos);
}

TEST_F(Replays, AnotherCommandIsADeparture) {
  const Recording recording(Write(folder_, {{9, {}, 4, Gave(4, "01000000")}}));
  StrictReplay replay(recording);
  EXPECT_EQ(Execute(replay, 10, Scalar(7), 4).error, EPROTO);
  EXPECT_EQ(Report(replay),
            "vdrsim: the run departs from " + recording.path() +
                ":2\n  recorded: GetLogLevel()\n  asked:    SetLogLevel(value=7)\n");
}

TEST_F(Replays, OneCommandTooManyIsADeparture) {
  const Recording recording(Write(folder_, {}));
  StrictReplay replay(recording);
  EXPECT_EQ(Execute(replay, 10, Scalar(7), 4).error, EPROTO);
  EXPECT_EQ(Report(replay), "vdrsim: after the last command of " + recording.path() +
                                " came SetLogLevel(value=7)\n");
}

TEST_F(Replays, OneCommandTooFewIsADeparture) {
  const Recording recording(Write(folder_, {{9, {}, 4, Gave(4, "01000000")}}));
  StrictReplay replay(recording);
  EXPECT_EQ(Report(replay),
            "vdrsim: the run ended before " + recording.path() + ":2\n  recorded: GetLogLevel()\n");
}

TEST_F(Replays, AFileThatCannotBeReadAnyMoreGivesNoWrongReply) {
  const std::string path = Write(folder_, {{10, Scalar(7), 0, Gave(0, "")}});
  const Recording recording(path);
  MatchingReplay matching(recording);
  StrictReplay strict(recording);
  replay_test::Write(path, std::string(1000, ' '));
  EXPECT_EQ(Execute(matching, 10, Scalar(7), 0).error, ENOTTY);
  EXPECT_EQ(Execute(strict, 10, Scalar(7), 0).error, EPROTO);
  EXPECT_EQ(Report(strict), "vdrsim: " + path + ":2 can't be read any more\n");
}

}  // namespace
