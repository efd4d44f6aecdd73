#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "sweep/sweep.h"

// The column Input of the protocol page against what each function sends.

namespace {

struct Input {
  std::string text;
  std::set<std::size_t> bytes = {};   // of the block, that fields cover
  std::set<std::size_t> starts = {};  // where fields begin
};

std::size_t WidthOf(const std::string& form) {
  if (form == "mac") return 6;
  if (form == "entryCount") return 128;
  if (form == "refCount") return 480;
  const auto number = static_cast<std::size_t>(std::stoul(form.substr(1)));
  return form[0] == 'u' || form[0] == 'i' ? number / 8 : number;
}

void AddFields(Input& input) {
  static const std::regex field(R"((\d+) ([tpbui]\d+|mac|entryCount|refCount)\b)");
  for (std::sregex_iterator found(input.text.begin(), input.text.end(), field), end; found != end;
       ++found) {
    const std::size_t offset = std::stoul((*found)[1]);
    input.starts.insert(offset);
    for (std::size_t byte = 0; byte < WidthOf((*found)[2]); ++byte) {
      input.bytes.insert(offset + byte);
    }
  }
}

// By function; a row that refers to another has the fields of that one, less what it leaves out.
std::map<std::string, Input> ReadPage() {
  static const std::regex row(R"(^\| `(VDRZAX\w+)` \| [^|]+ \| ([^|]+) \|)");
  static const std::regex reference(R"(^as (?:`(\w+)`|the getter)(?:, without (\d+))?)");
  std::ifstream page(SOURCE_TREE "/docs/protocol.md");
  std::map<std::string, Input> inputs;
  std::smatch match;
  for (std::string line; std::getline(page, line);) {
    if (!std::regex_search(line, match, row)) continue;
    const std::string name = match[1];
    Input input{.text = match[2]};
    if (const std::string text = input.text; std::regex_search(text, match, reference)) {
      const std::string other =
          match[1].matched ? match[1].str() : "VDRZAX_" + name.substr(std::string("VDRZAX").size());
      input = inputs.at(other);
      if (match[2].matched) {
        const std::size_t offset = std::stoul(match[2]);
        input.starts.erase(offset);
        for (std::size_t byte = 0; byte < 4; ++byte) input.bytes.erase(offset + byte);
      }
    } else {
      AddFields(input);
    }
    inputs[name] = input;
  }
  return inputs;
}

TEST(ProtocolPage, WhatEachFunctionSendsFillsTheFieldsOfItsRowAndNothingElse) {
  const auto inputs = ReadPage();
  std::size_t compared = 0;
  std::map<std::string, std::set<std::size_t>> used;
  for (const sweep::Row& row : sweep::AllRows()) {
    // These two send what the caller made, and a block that is not cleared.
    if (row.name == "VDRZAXIoctl" || row.name == "VDRZAX_DelMRoutingRemoteRcvrs") continue;
    SCOPED_TRACE(row.name);
    fake::Device device;
    device.AnswerWith(fake::Failure(EXDEV));
    row.call(device);
    device.FreeLost();
    if (device.commands.empty()) continue;
    ASSERT_TRUE(inputs.contains(row.name)) << "docs/protocol.md has no row for it";
    const Input& input = inputs.at(row.name);
    const fake::Bytes& sent = device.commands.front().input;
    const std::size_t length = input.text.starts_with("none")   ? 0
                               : input.text.starts_with("bare") ? 4
                                                                : 968;
    ASSERT_EQ(sent.size(), length) << "bytes of input, by its row in docs/protocol.md";
    ++compared;
    if (length != 968) continue;
    for (std::size_t byte = 0; byte < length; ++byte) {
      if (sent[byte] == 0) continue;
      EXPECT_TRUE(input.bytes.contains(byte)) << "docs/protocol.md names no field at byte " << byte;
      used[row.name].insert(byte);
    }
  }
  EXPECT_GT(compared, 160u);
  // A field at a wrong offset on the page would stay empty, or lose its first byte.
  for (const auto& [name, bytes] : used) {
    for (const std::size_t start : inputs.at(name).starts) {
      EXPECT_TRUE(bytes.contains(start))
          << name << " sends nothing at " << start << ", which docs/protocol.md names; or the "
          << "arguments of its call in tests/sweep or tests/support/getters are zero";
    }
  }
}

}  // namespace
