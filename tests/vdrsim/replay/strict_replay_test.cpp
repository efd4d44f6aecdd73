#include "replay/strict_replay.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

#include "folder.h"
#include "in_process.h"
#include "recorded.h"
#include "replay/recording.h"

namespace {

using in_process::Block;
using in_process::Execute;
using in_process::Scalar;
using replay_test::Ask;
using replay_test::Failed;
using replay_test::Folder;
using replay_test::Gave;
using replay_test::Line;
using vdrsim::Recording;
using vdrsim::StrictReplay;

class StrictReplays : public testing::Test {
 protected:
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

TEST_F(StrictReplays, KeepTheOrderOfTheRecording) {
  const Recording recording(Write(folder_, {{9, {}, 4, Gave(4, "01000000")},
                                            {1, Block("a").bytes(), 577, Failed("ENOENT", 577)}}));
  StrictReplay replay(recording);
  EXPECT_EQ(Execute(replay, 9, {}, 4).WordAt(0), 1U);
  EXPECT_EQ(Execute(replay, 1, Block("a"), 577).error, ENOENT);
  EXPECT_EQ(Report(replay), "");
}

TEST_F(StrictReplays, TheFirstDepartureIsNamedFieldByField) {
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

TEST_F(StrictReplays, ADifferenceInNoFieldIsNamedByItsPlace) {
  const Recording recording(Write(folder_, {{2, Block("a").bytes(), 0, Gave(0, "")}}));
  StrictReplay replay(recording);
  EXPECT_EQ(Execute(replay, 2, Block("a").U8(900, 255), 0).error, EPROTO);
  EXPECT_NE(Report(replay).find("\n    byte 900 of the input: 00 recorded, ff asked\n"),
            std::string::npos);
}

TEST_F(StrictReplays, EachDifferenceAloneIsADeparture) {
  const wire::Wire arp = Block("e");
  const struct {
    Line recorded;
    vdrsim::Node node;
    uint32_t code;
    wire::Bytes input;
    uint32_t capacity;
    const char* message;
  } kCases[] = {
      {{9, {}, 4, Gave(4, "01000000")},
       vdrsim::Node::Upgrade,
       9,
       {},
       4,
       "  recorded: GetLogLevel()\n  asked:    GetLogLevel()\n"
       "    node: normal recorded, upgrade asked\n"},
      {{10, Scalar(7), 0, Gave(0, "")},
       vdrsim::Node::Normal,
       10,
       Scalar(7),
       5,
       "  recorded: SetLogLevel(value=7)\n  asked:    SetLogLevel(value=7)\n"
       "    capacity: 0 recorded, 5 asked\n"},
      {{9, {}, 4, Gave(4, "01000000")},
       vdrsim::Node::Normal,
       11,
       {},
       4,
       "  recorded: GetLogLevel()\n  asked:    GetExtendedLogLevel()\n"},
      {{3, Block("a").bytes(), 0, Gave(0, "")},
       vdrsim::Node::Normal,
       3,
       wire::Bytes(5),
       0,
       "  recorded: DelVdrInstance(name=\"a\")\n  asked:    DelVdrInstance(5 bytes)\n"},
      {{39, arp.bytes(), 0, Gave(0, "")},
       vdrsim::Node::Normal,
       39,
       wire::Wire(arp).U8(917, 1).bytes(),
       0,
       "  recorded: DelArp(instanceName=\"e\", ip=0, ifName=\"\")\n"
       "  asked:    DelProxyArp(instanceName=\"e\", ip=0, ifName=\"\", byte917=1)\n"},
      {{200, Scalar(1), 0, Gave(0, "")},
       vdrsim::Node::Normal,
       200,
       Scalar(2),
       0,
       "  recorded: command 200(4 bytes)\n  asked:    command 200(4 bytes)\n"
       "    byte 0 of the input: 01 recorded, 02 asked\n"},
      {{200, Scalar(1), 0, Gave(0, "")},
       vdrsim::Node::Normal,
       201,
       Scalar(2),
       0,
       "  recorded: command 200(4 bytes)\n  asked:    command 201(4 bytes)\n"},
  };
  for (const auto& [recorded, node, code, input, capacity, message] : kCases) {
    const Recording recording(Write(folder_, {recorded}));
    StrictReplay replay(recording);
    EXPECT_EQ(Ask(replay, node, code, input, capacity).error, EPROTO);
    EXPECT_EQ(Report(replay),
              "vdrsim: the run departs from " + recording.path() + ":2\n" + message);
  }
}

TEST_F(StrictReplays, AnotherCommandIsADeparture) {
  const Recording recording(Write(folder_, {{9, {}, 4, Gave(4, "01000000")}}));
  StrictReplay replay(recording);
  EXPECT_EQ(Execute(replay, 10, Scalar(7), 4).error, EPROTO);
  EXPECT_EQ(Report(replay),
            "vdrsim: the run departs from " + recording.path() +
                ":2\n  recorded: GetLogLevel()\n  asked:    SetLogLevel(value=7)\n");
}

TEST_F(StrictReplays, OneCommandTooManyIsADeparture) {
  const Recording recording(Write(folder_, {}));
  StrictReplay replay(recording);
  EXPECT_EQ(Execute(replay, 10, Scalar(7), 4).error, EPROTO);
  EXPECT_EQ(Report(replay), "vdrsim: after the last command of " + recording.path() +
                                " came SetLogLevel(value=7)\n");
}

TEST_F(StrictReplays, OneCommandTooFewIsADeparture) {
  const Recording recording(Write(folder_, {{9, {}, 4, Gave(4, "01000000")}}));
  StrictReplay replay(recording);
  EXPECT_EQ(Report(replay),
            "vdrsim: the run ended before " + recording.path() + ":2\n  recorded: GetLogLevel()\n");
}

TEST_F(StrictReplays, AReplyEndsWhereItCannotBeReadAnyMore) {
  const std::string path = Write(folder_, {{9, {}, 4, Gave(4, "01000000")}});
  const Recording recording(path);
  StrictReplay replay(recording);
  vdrsim::Answer answer = Ask(replay, 9, 4);
  replay_test::Write(path, "");
  EXPECT_TRUE(answer.reply.Next().empty());
}

TEST_F(StrictReplays, AFileThatCannotBeReadAnyMoreIsADeparture) {
  const std::string path = Write(folder_, {{10, Scalar(7), 0, Gave(0, "")}});
  const Recording recording(path);
  StrictReplay replay(recording);
  replay_test::Write(path, std::string(1000, ' '));
  EXPECT_EQ(Execute(replay, 10, Scalar(7), 0).error, EPROTO);
  EXPECT_EQ(Report(replay), "vdrsim: " + path + ":2 can't be read any more\n");
}

}  // namespace
