#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "journal/journal_form.h"
#include "journal/trace_form.h"
#include "memory_file.h"
#include "reader.h"
#include "replay/recording.h"
#include "requests/requests.h"

// An input is a row of what a journal tells. What is written is read by another reader of JSON, and
// is a recording.

namespace {

using Bytes = std::vector<std::byte>;
using vdrsim::Entry;

struct Row {
  std::vector<Entry> entries;
  std::vector<Bytes> inputs;
};

Bytes TakeInput(Reader& reader, uint32_t code) {
  const auto any = std::as_bytes(std::span(reader.Bytes(reader.Take<uint8_t>())));
  Bytes bytes(any.begin(), any.end());
  // Most have the length that their command demands.
  const auto how = reader.Take<uint8_t>();
  const size_t index = vdrsim::requests::Identify(code, bytes);
  if (how % 8 != 0 && index != vdrsim::requests::Meanings::kNone) {
    bytes.resize(InputLength(vdrsim::requests::kRequests[index]->form));
  }
  return bytes;
}

Row TakeRow(Reader& reader) {
  Row row;
  while (!reader.Ended()) {
    const auto what = reader.Take<uint8_t>();
    Entry entry{.kind = what % 8 == 7 ? Entry::Kind::Mark : Entry::Kind::Command,
                .node = what % 16 < 8 ? vdrsim::Node::Normal : vdrsim::Node::Upgrade,
                .seq = row.entries.size() + 1,
                .time = reader.Take<uint32_t>(),
                .process = reader.Take<uint16_t>(),
                .thread = reader.Take<uint16_t>(),
                .code = what < 240 ? reader.Take<uint8_t>() : reader.Take<uint32_t>(),
                .error = reader.Take<uint16_t>() % 4096,
                .capacity = reader.Take<uint32_t>(),
                .length = reader.Take<uint32_t>(),
                .produced = reader.Take<uint32_t>()};
    row.inputs.push_back(TakeInput(reader, entry.code));
    row.entries.push_back(entry);
  }
  for (size_t index = 0; index < row.entries.size(); ++index) {
    row.entries[index].input = row.inputs[index];
  }
  return row;
}

bool IsPrintable(char character) { return character >= ' ' && character <= '~'; }

// A line of its own, that drives no terminal.
void CheckLine(std::string_view line) {
  Require(!line.empty() && line.back() == '\n', "a line ends");
  line.remove_suffix(1);
  Require(std::ranges::all_of(line, IsPrintable), "a line is printable ASCII");
}

std::string Line(const vdrsim::Form& form, const Entry& entry) {
  std::string line;
  form.Put(entry, line);
  CheckLine(line);
  return line;
}

void CheckJson(const std::string& line, const Entry& entry) {
  const auto json = nlohmann::json::parse(line);
  Require(json.at("seq") == entry.seq, "the number is read back");
  if (entry.kind == Entry::Kind::Mark) return;
  Require(json.at("code") == entry.code, "the code is read back");
  const bool isKnown =
      vdrsim::requests::Identify(entry.code, entry.input) != vdrsim::requests::Meanings::kNone;
  Require(json.at("name").is_string() == isKnown, "a command that is known has a name");
  Require(isKnown || json.at("request").is_null(), "and no other has fields");
}

void CheckRecorded(const vdrsim::Recording& recording, const vdrsim::Recorded& command,
                   const Entry& entry) {
  const auto input = recording.Input(command);
  Require(input && std::ranges::equal(*input, entry.input), "the input is read back");
  Require(command.code == entry.code && command.node == entry.node, "the command is read back");
  Require(command.error == entry.error && command.capacity == entry.capacity &&
              command.length == entry.length && command.produced == entry.produced,
          "the result is read back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, std::size_t size) {
  Reader reader({input, size});
  const Row row = TakeRow(reader);
  const vdrsim::JournalForm form("fuzz");
  std::string text;
  form.PutBeginning(text);
  for (const Entry& entry : row.entries) {
    const std::string line = Line(form, entry);
    CheckJson(line, entry);
    text += line;
    Line(vdrsim::TraceForm(), entry);
  }
  text += Line(form, {.kind = Entry::Kind::End, .seq = row.entries.size()});

  const MemoryFile file(text);
  const vdrsim::Recording recording(file.Path());
  auto command = recording.commands().begin();
  for (const Entry& entry : row.entries) {
    if (entry.kind == Entry::Kind::Mark) continue;
    Require(command != recording.commands().end(), "no command is lost");
    CheckRecorded(recording, *command++, entry);
  }
  Require(command == recording.commands().end(), "no command is made up");
  return 0;
}
