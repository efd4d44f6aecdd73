#include "journal/journal_form.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "entries.h"

namespace {

using journal_test::Command;
using journal_test::Mark;
using vdrsim::Entry;
using vdrsim::JournalForm;
using wire::Wire;

std::string Line(const Entry& entry) {
  return journal_test::Line(JournalForm("vdrsim 1.2.3"), entry);
}

std::string Hex(const Wire& wire) {
  std::string hex;
  for (const std::byte byte : wire.bytes()) {
    for (const unsigned digit :
         {std::to_integer<unsigned>(byte) / 16, std::to_integer<unsigned>(byte) % 16}) {
      hex += "0123456789abcdef"[digit];
    }
  }
  return hex;
}

TEST(JournalForm, TheFirstLineSaysWhatItIs) {
  std::string out;
  JournalForm("vdrsim 1.2.3").PutBeginning(out);
  EXPECT_EQ(out, "{\"format\":\"vdrsim-journal\",\"version\":1,\"program\":\"vdrsim 1.2.3\"}\n");
}

TEST(JournalForm, ACommandHasItsFieldsByName) {
  const Wire input = Wire(968).Text(0, "edge-1").U32(256, 4294967295).Text(332, "t\"\\").U8(368, 5);
  EXPECT_EQ(Line(Command(3, 2, input)),
            "{\"seq\":3,\"time\":1.500000000,\"pid\":7,\"tid\":7,\"node\":\"normal\",\"code\":2,"
            "\"name\":\"SetVdrInstance\",\"request\":{\"name\":\"edge-1\",\"second\":4294967295,"
            "\"text\":\"t\\\"\\\\\",\"fourth\":0,\"flag\":5},\"input\":\"" +
                Hex(input) + "\",\"capacity\":0,\"errno\":0,\"length\":0,\"produced\":0}\n");
}

TEST(JournalForm, AResultIsToldAsItIs) {
  Entry entry = Command(1, 9, {});
  entry.thread = 8;
  entry.node = vdrsim::Node::Upgrade;
  entry.error = ENOENT;
  entry.capacity = 4;
  entry.length = 5;
  entry.produced = 6;
  EXPECT_EQ(Line(entry),
            "{\"seq\":1,\"time\":1.500000000,\"pid\":7,\"tid\":8,\"node\":\"upgrade\",\"code\":9,"
            "\"name\":\"GetLogLevel\",\"request\":{},\"input\":\"\",\"capacity\":4,"
            "\"errno\":\"ENOENT\",\"length\":5,\"produced\":6}\n");
  entry.error = EPERM;
  EXPECT_NE(Line(entry).find("\"errno\":\"EPERM\","), std::string::npos);
  entry.error = 512;
  EXPECT_NE(Line(entry).find("\"errno\":512,"), std::string::npos);
}

TEST(JournalForm, WhatHasNoMeaningIsNull) {
  const Wire input = Wire(4).U32(0, 0x0201ff00);
  EXPECT_NE(Line(Command(1, 175, input))
                .find("\"code\":175,\"name\":null,\"request\":null,\"input\":\"00ff0102\""),
            std::string::npos);
  EXPECT_NE(Line(Command(1, 2, input))
                .find("\"name\":\"SetVdrInstance\",\"request\":null,\"input\":\"00ff0102\""),
            std::string::npos);
}

TEST(JournalForm, ATextThatIsNoUtf8IsEscapedAndSaysSo) {
  const Wire input = Wire(968).Text(0, "a\\\xff").Text(332, "\xc3\xa9\x01");
  EXPECT_NE(Line(Command(1, 2, input))
                .find("\"name\":\"a\\\\\\\\\\\\xff\",\"nameEscaped\":true,\"second\":0,"
                      "\"text\":\"\\u00e9\\u0001\",\"fourth\""),
            std::string::npos)
      << Line(Command(1, 2, input));
}

TEST(JournalForm, ATextMayFillItsField) {
  const Wire input = Wire(968).Text(0, std::string(64, 'n')).Text(332, std::string(18, 't'));
  const std::string line = Line(Command(1, 2, input));
  EXPECT_NE(line.find("\"name\":\"" + std::string(64, 'n') + "\","), std::string::npos);
  EXPECT_NE(line.find("\"text\":\"" + std::string(18, 't') + "\","), std::string::npos);
}

TEST(JournalForm, OtherKindsOfFields) {
  const Wire node = Wire(968).Text(320, "\x02\xab\x03\x04\x05\x06");
  EXPECT_NE(Line(Command(1, 93, node)).find("\"mac\":\"02:ab:03:04:05:06\"}"), std::string::npos);
  const Wire policy = Wire(968).U32(408, 0xfffffffe);
  EXPECT_NE(Line(Command(1, 141, policy)).find("\"policyType\":-2}"), std::string::npos);
  const Wire route = Wire(968).U64(260, 0xfffffffffffffffe).U8(276, 64);
  EXPECT_NE(Line(Command(1, 110, route)).find("\"destPart1\":18446744073709551614,"),
            std::string::npos);
  const Wire bytes = Wire(968).Text(404, "\x01\xfe");
  EXPECT_NE(Line(Command(1, 100, bytes)).find("\"bytes\":\"01fe" + std::string(124, '0') + "\"}"),
            std::string::npos);
  const Wire variant = Wire(968).U32(552, 1);
  EXPECT_NE(Line(Command(1, 23, variant)).find("\"GetLifStatsCached\""), std::string::npos);
}

TEST(JournalForm, AMarkAndTheEndHaveLinesOfTheirOwn) {
  EXPECT_EQ(Line(Mark(4, "before\nthe \xff")),
            "{\"mark\":\"before\\\\x0athe \\\\xff\",\"markEscaped\":true,\"seq\":4,"
            "\"time\":2.000000003}\n");
  EXPECT_EQ(Line(Mark(4, "two\nlines")),
            "{\"mark\":\"two\\nlines\",\"seq\":4,\"time\":2.000000003}\n");
  EXPECT_EQ(Line(Mark(4, "\"")), "{\"mark\":\"\\\"\",\"seq\":4,\"time\":2.000000003}\n");
  EXPECT_EQ(Line(Mark(4, "\\")), "{\"mark\":\"\\\\\",\"seq\":4,\"time\":2.000000003}\n");
  EXPECT_EQ(Line(Mark(4, "\x1f ~\x7f")),
            "{\"mark\":\"\\u001f ~\\u007f\",\"seq\":4,\"time\":2.000000003}\n");
  EXPECT_EQ(Line({.kind = Entry::Kind::End, .seq = 12, .time = 5}),
            "{\"end\":12,\"time\":0.000000005}\n");
}

}  // namespace
