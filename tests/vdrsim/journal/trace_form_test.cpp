#include "journal/trace_form.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "entries.h"

namespace {

using journal_test::Command;
using vdrsim::Entry;
using wire::Wire;

std::string Line(const Entry& entry) { return journal_test::Line(vdrsim::TraceForm(), entry); }

TEST(TraceForm, ACommandLooksLikeAFunctionCall) {
  const Wire input = Wire(968).Text(0, "edge-\"1\"").U32(256, 10).Text(332, "\x1b[\xff");
  EXPECT_EQ(
      Line(Command(1, 2, input)),
      "[7] SetVdrInstance(name=\"edge-\\\"1\\\"\", second=10, text=\"\\x1b[\\xff\", fourth=0, "
      "flag=0) = 0\n");
  EXPECT_EQ(Line(Command(1, 42, {})), "[7] PreUnload() = 0\n");
}

TEST(TraceForm, AFailureIsNamedAndExplained) {
  Entry entry = Command(1, 9, {});
  entry.thread = 9;
  entry.node = vdrsim::Node::Upgrade;
  entry.error = ENOENT;
  entry.capacity = entry.length = 4;
  EXPECT_EQ(Line(entry), "[7/9 upgrade] GetLogLevel() = -1 ENOENT (No such file or directory)\n");
  entry.error = EPERM;
  EXPECT_EQ(Line(entry), "[7/9 upgrade] GetLogLevel() = -1 EPERM (Operation not permitted)\n");
  entry.error = 512;
  EXPECT_EQ(Line(entry), "[7/9 upgrade] GetLogLevel() = -1 512 (Unknown error 512)\n");
}

TEST(TraceForm, TheLengthIsToldAndWhatIsClaimedInstead) {
  Entry entry = Command(1, 9, {});
  entry.capacity = 577;
  entry.length = entry.produced = 4;
  EXPECT_EQ(Line(entry), "[7] GetLogLevel() = 0 <4>\n");
  entry.length = 2;
  EXPECT_EQ(Line(entry), "[7] GetLogLevel() = 0 <4, claims 2>\n");
  entry.error = EIO;
  entry.produced = 0;
  EXPECT_EQ(Line(entry), "[7] GetLogLevel() = -1 EIO (Input/output error) <0, claims 2>\n");
}

TEST(TraceForm, WhatHasNoMeaningIsCounted) {
  EXPECT_EQ(Line(Command(1, 175, Wire(5))), "[7] command 175(5 bytes) = 0\n");
  EXPECT_EQ(Line(Command(1, 2, Wire(5))), "[7] SetVdrInstance(5 bytes) = 0\n");
}

TEST(TraceForm, OtherKindsOfFields) {
  const Wire node = Wire(968).Text(320, "\x02\xab\x03\x04\x05\x06");
  EXPECT_EQ(Line(Command(1, 93, node)),
            "[7] BridgeClusterNodeSet(name=\"\", nodeName=\"\", mac=02:ab:03:04:05:06) = 0\n");
  const Wire policy = Wire(968).U32(408, 0xfffffffe);
  EXPECT_NE(Line(Command(1, 141, policy)).find("policyType=-2) = 0\n"), std::string::npos);
  const Wire bytes = Wire(968).Text(404, "\x01\xfe");
  EXPECT_NE(Line(Command(1, 100, bytes)).find("bytes=01fe0000"), std::string::npos);
}

TEST(TraceForm, AMarkHasALineAndTheEndHasNone) {
  EXPECT_EQ(Line(journal_test::Mark(1, "two\nlines")), "[mark] \"two\\x0alines\"\n");
  EXPECT_EQ(Line({.kind = Entry::Kind::End}), "");
}

}  // namespace
