#include "replay/recording.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <random>
#include <string>

#include "datapath/datapath.h"
#include "every_command.h"
#include "folder.h"
#include "in_process.h"
#include "journal/journal.h"
#include "record/recording_log.h"

namespace {

using replay_test::Content;
using replay_test::Folder;
using replay_test::Write;
using vdrsim::Recording;

const std::string kBeginning = "{\"format\":\"vdrsim-journal\",\"version\":1}\n";
const std::string kEnd = "{\"end\":1,\"time\":2.5}\n";

std::string Line(const std::string& members) {
  return "{\"seq\":1,\"node\":\"upgrade\",\"code\":9,\"input\":\"01fE\",\"capacity\":4," + members +
         "}\n";
}
const std::string kRest = "\"errno\":\"ENOENT\",\"length\":5,\"produced\":2";

// Objects in one another.
std::string Nested(int depth) {
  std::string value = "{}";
  while (--depth > 0) value = "{\"a\":" + value + "}";
  return value;
}

// Why a recording is refused, empty when it is not.
std::string Refusal(const Folder& folder, const std::string& content) {
  const std::string path = folder.Path("file");
  Write(path, content);
  try {
    const Recording recording(path);
    return "";
  } catch (const vdrsim::BadRecording& failure) {
    const std::string what = failure.what();
    EXPECT_EQ(what.substr(0, path.size()), path);
    return what.substr(path.size());
  }
}

TEST(Recording, KnowsWhatStandsWhere) {
  const Folder folder;
  const std::string path = folder.Path("file");
  Write(path, kBeginning + " { \"unknown\" : [ {\"a\\\"b\":[]}, null, -1.5e3 ] , " +
                  Line(kRest + ",\"output\":\"00ff\"").substr(1) + kEnd);
  const Recording recording(path);
  ASSERT_EQ(recording.commands().size(), 1U);
  const vdrsim::Recorded& command = recording.commands()[0];
  EXPECT_EQ(command.line, 2U);
  EXPECT_EQ(command.node, vdrsim::Node::Upgrade);
  EXPECT_EQ(command.code, 9U);
  EXPECT_EQ(command.capacity, 4U);
  EXPECT_EQ(command.error, ENOENT);
  EXPECT_EQ(command.length, 5U);
  EXPECT_EQ(command.produced, 2U);
  EXPECT_TRUE(command.hasOutput);
  EXPECT_EQ(recording.Input(command), (wire::Bytes{std::byte{1}, std::byte{0xfe}}));
  wire::Bytes output(2);
  EXPECT_TRUE(recording.Read(command.output, 0, output));
  EXPECT_EQ(output, (wire::Bytes{std::byte{0}, std::byte{0xff}}));
  EXPECT_TRUE(recording.Read(command.output, 1, std::span(output).first(1)));
  EXPECT_EQ(output[0], std::byte{0xff});
}

// A member that every command has.
std::string Member(const std::string& name) {
  const std::pair<std::string, std::string> values[] = {
      {"node", "\"normal\""}, {"code", "9"},     {"input", "\"\""},
      {"capacity", "4"},      {"errno", "4095"}, {"length", "4294967295"},
      {"produced", "0"}};
  std::string members;
  for (const auto& [member, value] : values) {
    if (member != name) members.append(",\"").append(member).append("\":").append(value);
  }
  return members;
}

TEST(Recording, NeedsEveryMemberOfACommand) {
  const Folder folder;
  EXPECT_EQ(Refusal(folder, kBeginning + "{\"seq\":1" + Member("") + "}\n" + kEnd), "");
  for (const std::string name :
       {"node", "code", "input", "capacity", "errno", "length", "produced"}) {
    EXPECT_EQ(Refusal(folder, kBeginning + "{\"seq\":1" + Member(name) + "}\n" + kEnd),
              ":2: the member " + name + " is missing");
  }
}

TEST(Recording, TakesJsonAsOthersWriteIt) {
  const Folder folder;
  const std::string path = folder.Path("file");
  Write(path,
        "\t{ \"x\\\\\\\"\" :\t[ ] ,\r\"version\" : 1 , \"y\" : {}, \"format\" : \"vdrsim-journal\" "
        "} \t\r\n"
        "\r{\t\"seq\" : 1" +
            Member("") + ",\"a\":[0,9,az,AZ,1e+0,-1.5E9,\"\\\"]\",{}]\t,\"output\":\"\"\r}\r\n" +
            kEnd);
  const Recording recording(path);
  ASSERT_EQ(recording.commands().size(), 1U);
  EXPECT_EQ(recording.commands()[0].node, vdrsim::Node::Normal);
  EXPECT_EQ(recording.commands()[0].error, 4095);
  EXPECT_EQ(recording.commands()[0].length, 4294967295);
}

TEST(Recording, ReadsAllDigits) {
  const Folder folder;
  const std::string path = folder.Path("file");
  const std::string line =
      "{\"seq\":1" + Member("input") + ",\"input\":\"0123456789abcdefABCDEF\"}\n";
  const std::string content = kBeginning + line + kEnd;
  Write(path, content);
  const Recording recording(path);
  const vdrsim::Recorded& command = recording.commands()[0];
  const uint8_t bytes[] = {0x01, 0x23, 0x45, 0x67, 0x89, 0xab, 0xcd, 0xef, 0xab, 0xcd, 0xef};
  const auto expected = std::as_bytes(std::span(bytes));
  EXPECT_EQ(recording.Input(command), wire::Bytes(expected.begin(), expected.end()));
  // What became something else meanwhile is no digit any more, wherever it stands.
  for (const char other : {'/', ':', '@', 'G', '`', 'g', '\0', '\xff'}) {
    for (const size_t place : {0UL, 1UL, 21UL}) {
      std::string changed = content;
      changed[changed.find("0123456789abc") + place] = other;
      Write(path, changed);
      EXPECT_EQ(recording.Input(command), std::nullopt) << other << place;
    }
  }
}

TEST(Recording, MarksAreNoCommands) {
  const Folder folder;
  const std::string path = folder.Path("file");
  Write(path, kBeginning + "{\"mark\":\"here\",\"seq\":1,\"time\":1}\n" + kEnd);
  EXPECT_TRUE(Recording(path).commands().empty());
}

TEST(Recording, WhatIsWrongIsSaidWithItsLine) {
  const Folder folder;
  const std::pair<std::string, std::string> refusals[] = {
      {"", ":1: the file is empty"},
      {"{}\n", ":1: this is no journal and no recording"},
      {"[]\n", ":1: '{' is missing"},
      {"{\"format\":\"vdrsim-journal\",\"version\":2}\n", ":1: the version is not 1"},
      {"{\"format\":\"vdrsim-journal\"}\n", ":1: the version is not 1"},
      {kBeginning.substr(0, 20), ":1: the file ends within the line: it was cut"},
      {kBeginning, ":2: the line that ends a recording is missing: it was cut"},
      {kBeginning + "\n", ":2: the line ends before its value does"},
      {kBeginning + "{\"end\":1}\n", ":2: 1 entries are announced, and 0 are there"},
      {kBeginning + "{\"end\":0}\n{\"end\":0}\n", ":3: something stands behind the end"},
      {kBeginning + "{\"end\":0}x\n", ":2: something stands behind the value"},
      {kBeginning + "{\"end\":0} {}\n", ":2: something stands behind the value"},
      {kBeginning + "{\"end\":\n0}\n", ":2: the line ends before its value does"},
      {kBeginning + "{\"end\":0,}\n", ":2: '\"' is missing"},
      {kBeginning + "{\"end\" 0}\n", ":2: ':' is missing"},
      {kBeginning + "{\"end\":-1}\n", ":2: a number is missing"},
      {kBeginning + "{\"end\":[]}\n", ":2: a number is missing"},
      {kBeginning + "{\"end\":0.5}\n", ":2: a number is not whole"},
      {kBeginning + "{\"seq\":2}\n", ":2: seq 1 was to come"},
      {kBeginning + "{\"mark\":\"x\"}\n", ":2: seq 1 was to come"},
      {kBeginning + "{\"seq\":1}\n", ":2: the member node is missing"},
      {kBeginning + Line("\"errno\":0,\"length\":4294967296"), ":2: a number is beyond 4294967295"},
      {kBeginning + Line("\"errno\":4096"), ":2: a number is beyond 4095"},
      {kBeginning + Line("\"errno\":\"EWHAT\""), ":2: errno has no name EWHAT"},
      {kBeginning + Line("\"node\":\"other\""), ":2: there is no node other"},
      {kBeginning + Line("\"input\":\"0\""), ":2: a hexadecimal digit is missing"},
      {kBeginning + Line("\"input\":\"0g\""), ":2: something else than hexadecimal digits"},
      {kBeginning + Line("\"input\":0"), ":2: '\"' is missing"},
      {kBeginning + Line(kRest + ",\"output\":\"00\""),
       ":2: output has 1 bytes, and produced says 2"},
      {kBeginning + Line("\"x\":" + std::string(33, '[') + std::string(33, ']')),
       ":2: the member errno is missing"},
      {kBeginning + Line("\"x\":" + std::string(34, '[')), ":2: values are nested too deep"},
      {kBeginning + Line("\"x\":" + Nested(33)), ":2: the member errno is missing"},
      {kBeginning + Line("\"x\":" + Nested(34)), ":2: values are nested too deep"},
      {kBeginning + Line("\"x\":@"), ":2: a value is missing"},
      {kBeginning + Line("\"x\":`"), ":2: a value is missing"},
      {kBeginning + Line("\"x\":_"), ":2: a value is missing"},
      {kBeginning + Line("\"x\":/"), ":2: a value is missing"},
      {kBeginning + Line("\"x\"::"), ":2: a value is missing"},
      {kBeginning + Line("\"x\":~"), ":2: a value is missing"},
      {kBeginning + Line("\"x\":?"), ":2: a value is missing"},
      {kBeginning + Line("\"x\":[1 2]"), ":2: ']' is missing"},
      {kBeginning + Line("\"" + std::string(257, 'n') + "\":1"), ":2: a text is too long"},
      {kBeginning + Line("\"" + std::string(256, 'n') + "\":1"), ":2: the member errno is missing"},
      {kBeginning + "{\"seq\":18446744073709551615}\n", ":2: seq 1 was to come"},
      {kBeginning + "{\"seq\":18446744073709551616}\n",
       ":2: a number is beyond 18446744073709551615"},
      {kBeginning + "{\"end\":18446744073709551620}\n",
       ":2: a number is beyond 18446744073709551615"},
      {kBeginning + "{\"end\":0", ":2: the file ends within the line: it was cut"},
      {kBeginning + "{\"end\":0}", ":2: the file ends within the line: it was cut"},
      {"{\"format\":\"vdrsim-journal\",\"version\":4294967297}\n",
       ":1: a number is beyond 4294967295"},
      {kBeginning + "{\"x\":\"", ":2: the file ends within the line: it was cut"},
      {kBeginning + "{\"x\":\"\n", ":2: the line ends within a text"},
  };
  for (const auto& [content, why] : refusals) EXPECT_EQ(Refusal(folder, content), why) << content;
}

// A recording of every command.
std::string Record(const Folder& folder) {
  Write(folder.Path("whole"), "");
  vdrsim::Datapath datapath;
  vdrsim::Journal::Logs logs;
  logs.push_back(
      std::make_unique<vdrsim::RecordingLog>(folder.Path("whole"), vdrsim::JournalForm("vdrsim")));
  vdrsim::Journal journal(datapath, std::move(logs), vdrsim::Journal::Keeps::Outputs);
  for (const auto& [code, input, capacity] : replay_test::EveryCommand()) {
    in_process::Execute(journal, code, input, capacity);
  }
  journal.Mark("the \xff end");
  EXPECT_TRUE(journal.Finish());
  return Content(folder.Path("whole"));
}

void ExpectCutRefused(const Folder& folder, const std::string& whole, size_t at) {
  const std::string cut = whole.substr(0, at);
  const auto line = 1 + std::ranges::count(cut, '\n');
  const std::string refusal = Refusal(folder, cut);
  EXPECT_EQ(refusal.substr(0, refusal.find(' ')), ":" + std::to_string(line) + ":") << at;
  EXPECT_TRUE(at == 0 || refusal.ends_with(": it was cut")) << refusal;
}

TEST(Recording, IsRefusedWhereverItWasCut) {
  const Folder folder;
  const std::string small = kBeginning + Line(kRest + ",\"output\":\"00ff\"") + kEnd;
  EXPECT_EQ(Refusal(folder, small), "");
  for (size_t at = 0; at < small.size(); ++at) ExpectCutRefused(folder, small, at);
}

TEST(Recording, ALargeOneIsRefusedWhereverItWasCut) {
  const Folder folder;
  const std::string large = Record(folder);
  EXPECT_EQ(Refusal(folder, large), "");
  std::mt19937 random(1);  // NOLINT(bugprone-random-generator-seed,cert-*): the same each time
  for (int round = 0; round < 200; ++round) {
    ExpectCutRefused(folder, large, random() % large.size());
  }
}

TEST(Recording, AFileThatCannotBeReadIsRefused) {
  const Folder folder;
  const auto refusal = [](const std::string& path) -> std::string {
    try {
      const Recording recording(path);
      return "";
    } catch (const std::runtime_error& failure) {
      return failure.what();
    }
  };
  const std::string missing = folder.Path("missing");
  EXPECT_EQ(refusal(missing), missing + ": No such file or directory");
  EXPECT_EQ(refusal("/proc"), "/proc: Is a directory");
  EXPECT_EQ(refusal("/dev/null"), "/dev/null: not a plain file");
  EXPECT_EQ(refusal("/proc/self/mem"), "/proc/self/mem: Input/output error");
}

TEST(Recording, AFileThatWasCutMeanwhileIsSeen) {
  const Folder folder;
  const std::string path = folder.Path("file");
  Write(path, kBeginning + Line(kRest + ",\"output\":\"00ff\"") + kEnd);
  const Recording recording(path);
  Write(path, kBeginning);
  EXPECT_EQ(recording.Input(recording.commands()[0]), std::nullopt);
}

}  // namespace
