#include "replay/matching_replay.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

#include "allocations.h"
#include "folder.h"
#include "in_process.h"
#include "recorded.h"
#include "replay/recording.h"
#include "replay/strict_replay.h"

namespace {

using in_process::Block;
using in_process::Execute;
using in_process::Scalar;
using replay_test::Ask;
using replay_test::Failed;
using replay_test::Folder;
using replay_test::Gave;
using replay_test::Line;
using vdrsim::MatchingReplay;
using vdrsim::Recording;
using vdrsim::StrictReplay;

class MatchingReplays : public testing::Test {
 protected:
  std::string Report(const MatchingReplay& replay) {
    testing::internal::CaptureStderr();
    replay.Report();
    return testing::internal::GetCapturedStderr();
  }

  Folder folder_{};
};

TEST_F(MatchingReplays, EachRequestIsAnsweredByItsMatchAndTheLastOneRepeats) {
  const Recording recording(Write(folder_, {{9, {}, 4, Gave(4, "01000000")},
                                            {1, Block("a").bytes(), 577, Failed("ENOENT", 577)},
                                            {9, {}, 4, Gave(4, "02000000")},
                                            {9, {}, 4, Gave(4, "03000000")},
                                            {1, Block("b").bytes(), 577, Gave(2, "aabb")}}));
  MatchingReplay replay(recording);
  EXPECT_EQ(Execute(replay, 1, Block("b"), 577).reply.size(), 2U);
  for (const uint32_t level : {1U, 2U, 3U, 3U, 3U}) {
    EXPECT_EQ(Execute(replay, 9, {}, 4).WordAt(0), level);
  }
  EXPECT_EQ(Execute(replay, 1, Block("a"), 577).error, ENOENT);
  EXPECT_EQ(Execute(replay, 1, Block("b"), 577).error, 0);
  EXPECT_EQ(Report(replay), "");
}

TEST_F(MatchingReplays, WhatIsNotRecordedIsListed) {
  const Recording recording(Write(folder_, {{9, {}, 4, Gave(4, "01000000")}}));
  MatchingReplay replay(recording);
  EXPECT_EQ(Execute(replay, 11, {}, 4).error, ENOTTY);
  EXPECT_EQ(Execute(replay, 9, Scalar(1), 4).error, ENOTTY) << "another input";
  EXPECT_EQ(Execute(replay, 11, {}, 4).error, ENOTTY);
  EXPECT_EQ(Report(replay), "vdrsim: not in " + recording.path() +
                                ", and answered with ENOTTY:\n  GetExtendedLogLevel() (2 times)\n"
                                "  GetLogLevel(4 bytes)\n");
}

TEST_F(MatchingReplays, OfManyThatAreNotRecordedSomeAreCountedAlone) {
  const Recording recording(Write(folder_, {}));
  MatchingReplay replay(recording);
  for (uint32_t value = 0; value < 150; ++value) Execute(replay, 10, Scalar(value), 0);
  Execute(replay, 10, Scalar(0), 0);
  const std::string report = Report(replay);
  EXPECT_NE(report.find("  SetLogLevel(value=0) (2 times)\n"), std::string::npos);
  EXPECT_NE(report.find("  and others (50 times)\n"), std::string::npos);
}

TEST_F(MatchingReplays, AReplyThatWasNotKeptIsNotMadeUp) {
  const std::string result = "\"errno\":0,\"length\":4,\"produced\":1";
  const Recording recording(Write(folder_, {{9, {}, 4, result}, {42, {}, 0, Gave(0, "")}}));
  MatchingReplay replay(recording);
  EXPECT_EQ(Execute(replay, 9, {}, 4).error, ENODATA);
  EXPECT_EQ(Execute(replay, 42, {}, 0).error, 0);
  EXPECT_EQ(Report(replay), "vdrsim: in " + recording.path() +
                                " without the reply, and answered with ENODATA:\n"
                                "  GetLogLevel()\n");
}

TEST_F(MatchingReplays, AReplyThatDoesNotFitIsWithheld) {
  const Recording recording(Write(folder_, {{9, {}, 4, Gave(4, "01000000")}}));
  MatchingReplay replay(recording);
  EXPECT_EQ(Execute(replay, 9, {}, 3).error, EINVAL);
  EXPECT_EQ(Execute(replay, 9, {}, 5).reply.size(), 4U);
}

TEST_F(MatchingReplays, AFileThatCannotBeReadAnyMoreGivesNoWrongReply) {
  const std::string path = Write(folder_, {{10, Scalar(7), 0, Gave(0, "")}});
  const Recording recording(path);
  MatchingReplay replay(recording);
  replay_test::Write(path, std::string(1000, ' '));
  EXPECT_EQ(Execute(replay, 10, Scalar(7), 0).error, ENOTTY);
}

TEST_F(MatchingReplays, AnInputThatIsAnotherMeanwhileIsNotAnswered) {
  Write(folder_, {{10, Scalar(7), 0, Gave(0, "")}});
  const std::string path = folder_.Path("file");
  const Recording recording(path);
  MatchingReplay replay(recording);
  Write(folder_, {{10, Scalar(8), 0, Gave(0, "")}});
  EXPECT_EQ(Execute(replay, 10, Scalar(7), 0).error, ENOTTY);
}

TEST_F(MatchingReplays, OneThatIsCutMeanwhileCannotBeMatched) {
  const std::string path = Write(folder_, {{10, Scalar(7), 0, Gave(0, "")}});
  const Recording recording(path);
  replay_test::Write(path, "");
  try {
    const MatchingReplay replay(recording);
    FAIL() << "it can't be read";
  } catch (const std::runtime_error& failure) {
    EXPECT_EQ(std::string(failure.what()), path + ": can't be read any more");
  }
}

TEST_F(MatchingReplays, CodesAndNodesAreToldApart) {
  std::vector<Line> lines;
  for (uint32_t code = 200; code < 210; ++code) {
    lines.push_back({code, {}, 9, Gave(code, "")});
    lines.push_back({code, {}, 9, Gave(code + 1000, "")});
  }
  const std::string path = Write(folder_, lines);
  std::string content = replay_test::Content(path);
  for (size_t seq = 2; seq <= lines.size(); seq += 2) {
    const size_t line = content.find("{\"seq\":" + std::to_string(seq) + ",");
    content.replace(content.find("normal", line), 6, "upgrade");
  }
  replay_test::Write(path, content);
  const Recording recording(path);
  MatchingReplay replay(recording);
  for (uint32_t time = 0; time < 20; ++time) {
    const uint32_t code = 200 + time / 2;
    EXPECT_EQ(Ask(replay, vdrsim::Node::Upgrade, code, {}, 9).claimed, code + 1000);
    EXPECT_EQ(Ask(replay, vdrsim::Node::Normal, code, {}, 9).claimed, code);
  }
}

// What is claimed of a reply is what a failing device left of the caller's number, or what it said.
TEST_F(MatchingReplays, ALengthThatWasLeftIsThatOfTheCaller) {
  const auto failed = [](int error, uint32_t length, const std::string& output) {
    return "\"errno\":" + std::to_string(error) + ",\"length\":" + std::to_string(length) +
           ",\"produced\":" + std::to_string(output.size() / 2) +
           (output.empty() ? "" : ",\"output\":\"" + output + "\"");
  };
  const Recording recording(Write(folder_, {{200, {}, 4, failed(1, 4, "")},
                                            {201, {}, 4, failed(1, 4, "aa")},
                                            {202, {}, 4, failed(1, 3, "")},
                                            {203, {}, 4, failed(0, 4, "")},
                                            {204, {}, 4, failed(0, 4, "aa")}}));
  MatchingReplay replay(recording);
  const struct {
    uint32_t code;
    int error;
    std::optional<uint32_t> claimed;
    size_t written;
  } kCases[] = {
      {200, 1, std::nullopt, 0}, {201, 1, 9, 1}, {202, 1, 3, 0}, {203, 0, 4, 0}, {204, 0, 4, 1}};
  for (const auto& [code, error, claimed, written] : kCases) {
    vdrsim::Answer answer = Ask(replay, code, 9);
    EXPECT_EQ(answer.error, error) << code;
    EXPECT_EQ(answer.claimed, claimed) << code;
    EXPECT_EQ(answer.reply.Next().size(), written) << code;
  }
}

class CountedOrder final : public vdrsim::Order {
 public:
  void TakePlace() noexcept override { ++places; }
  int places = 0;
};

TEST_F(MatchingReplays, AndStrictOnesTakeTheirPlaceAndHaveNoEffectWithoutMemory) {
  const Recording recording(Write(folder_, {{10, Scalar(7), 0, Gave(0, "")}}));
  MatchingReplay matching(recording);
  StrictReplay strict(recording);
  for (vdrsim::Executor* replay : std::initializer_list<vdrsim::Executor*>{&matching, &strict}) {
    CountedOrder order;
    const wire::Bytes input = Scalar(7);
    {
      const allocations::Limit limit(0);
      EXPECT_EQ(Ask(*replay, vdrsim::Node::Normal, 10, input, 0, &order).error, ENOMEM);
    }
    EXPECT_EQ(Ask(*replay, vdrsim::Node::Normal, 10, input, 0, &order).error, 0);
    EXPECT_EQ(order.places, 2);
  }
}

}  // namespace
