#include "replay/recording.h"

#include <fmt/format.h>

#include <array>

#include "common/errno_name.h"
#include "journal/journal_form.h"

namespace vdrsim {

namespace {

constexpr uint64_t kMost32 = UINT32_MAX;

// What a line has, whatever kind it is of.
struct Line {
  Recorded command{};
  std::optional<uint64_t> seq{};
  std::optional<uint64_t> end{};
  bool isMark = false;
  unsigned members = 0;  // of a command
};

// A member that every command has, and how it is read.
struct Member {
  std::string_view name;
  void (*read)(JsonReader&, Recorded&);
};

uint32_t Number32(JsonReader& reader) { return static_cast<uint32_t>(reader.Number(kMost32)); }

uint16_t ErrorNumber(JsonReader& reader) {
  if (!reader.IsText()) return static_cast<uint16_t>(reader.Number(tools::kHighestErrno));
  const std::string name = reader.Text();
  if (const auto error = tools::ErrnoOf(name)) return static_cast<uint16_t>(*error);
  reader.Fail(fmt::format("errno has no name {}", name));
}

Node NodeOf(JsonReader& reader) {
  const std::string name = reader.Text();
  if (name != "normal" && name != "upgrade") reader.Fail(fmt::format("there is no node {}", name));
  return name == "normal" ? Node::Normal : Node::Upgrade;
}

constexpr Member kMembers[] = {
    {"node", [](JsonReader& reader, Recorded& to) { to.node = NodeOf(reader); }},
    {"code", [](JsonReader& reader, Recorded& to) { to.code = Number32(reader); }},
    {"input", [](JsonReader& reader, Recorded& to) { to.input = reader.Hex(); }},
    {"capacity", [](JsonReader& reader, Recorded& to) { to.capacity = Number32(reader); }},
    {"errno", [](JsonReader& reader, Recorded& to) { to.error = ErrorNumber(reader); }},
    {"length", [](JsonReader& reader, Recorded& to) { to.length = Number32(reader); }},
    {"produced", [](JsonReader& reader, Recorded& to) { to.produced = Number32(reader); }},
};

bool ReadOfCommand(JsonReader& reader, std::string_view name, Line& line) {
  for (size_t index = 0; index < std::size(kMembers); ++index) {
    if (kMembers[index].name != name) continue;
    kMembers[index].read(reader, line.command);
    line.members |= 1U << index;
    return true;
  }
  return false;
}

void ReadMember(JsonReader& reader, std::string_view name, Line& line) {
  if (name == "seq") {
    line.seq = reader.Number(UINT64_MAX);
  } else if (name == "end") {
    line.end = reader.Number(UINT64_MAX);
  } else if (name == "output") {
    line.command.output = reader.Hex();
    line.command.hasOutput = true;
  } else if (!ReadOfCommand(reader, name, line)) {
    line.isMark |= name == "mark";
    reader.Skip();
  }
}

// Every member that a command must have.
void Require(const JsonReader& reader, const Line& line) {
  for (size_t index = 0; index < std::size(kMembers); ++index) {
    if ((line.members >> index & 1) == 0) {
      reader.Fail(fmt::format("the member {} is missing", kMembers[index].name));
    }
  }
  const Recorded& command = line.command;
  if (command.hasOutput && command.output.size != command.produced) {
    reader.Fail(fmt::format("output has {} bytes, and produced says {}", command.output.size,
                            command.produced));
  }
}

}  // namespace

Recording::Recording(const std::string& path) : file_(path) {
  JsonReader reader(file_);
  ReadBeginning(reader);
  while (ReadLine(reader)) {
  }
  if (!reader.IsAtEnd()) reader.Fail("something stands behind the end");
}

void Recording::ReadBeginning(JsonReader& reader) {
  if (reader.IsAtEnd()) reader.Fail("the file is empty");
  std::string format;
  std::optional<uint64_t> version;
  reader.Object([&](std::string_view name) {
    if (name == "format") {
      format = reader.Text();
    } else if (name == "version") {
      version = reader.Number(kMost32);
    } else {
      reader.Skip();
    }
  });
  if (format != JournalForm::kFormat) reader.Fail("this is no journal and no recording");
  if (version != JournalForm::kVersion) {
    reader.Fail(fmt::format("the version is not {}", JournalForm::kVersion));
  }
  reader.EndOfLine();
}

// Returns false after the last line.
bool Recording::ReadLine(JsonReader& reader) {
  if (reader.IsAtEnd()) reader.Fail("the line that ends a recording is missing: it was cut");
  Line line;
  line.command.line = reader.line();
  reader.Object([&](std::string_view name) { ReadMember(reader, name, line); });
  if (line.end && *line.end != entries_) {
    reader.Fail(fmt::format("{} entries are announced, and {} are there", *line.end, entries_));
  }
  if (!line.end) {
    ++entries_;
    if (line.seq != entries_) reader.Fail(fmt::format("seq {} was to come", entries_));
    if (!line.isMark) Require(reader, line);
  }
  reader.EndOfLine();
  if (!line.end && !line.isMark) commands_.push_back(line.command);
  return !line.end;
}

std::optional<std::vector<std::byte>> Recording::Input(const Recorded& command) const {
  std::vector<std::byte> input(command.input.size);
  if (!Read(command.input, 0, input)) return std::nullopt;
  return input;
}

namespace {

int DigitValue(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  return digit >= 'A' && digit <= 'F' ? digit - 'A' + 10 : -1;
}

// False for what is no digit any more.
bool Decode(std::span<const char> digits, std::span<std::byte> bytes) {
  for (size_t index = 0; index < bytes.size(); ++index) {
    const int high = DigitValue(digits[2 * index]);
    const int low = DigitValue(digits[2 * index + 1]);
    if (high < 0 || low < 0) return false;
    bytes[index] = static_cast<std::byte>(high << 4 | low);
  }
  return true;
}

}  // namespace

bool Recording::Read(HexPlace place, uint32_t from, std::span<std::byte> bytes) const noexcept {
  uint64_t offset = place.offset + uint64_t{2} * from;
  while (!bytes.empty()) {
    std::array<char, 4096> digits;
    const auto part = bytes.first(std::min(bytes.size(), digits.size() / 2));
    const auto some = std::span(digits).first(2 * part.size());
    if (!file_.ReadAt(offset, some) || !Decode(some, part)) return false;
    offset += some.size();
    bytes = bytes.subspan(part.size());
  }
  return true;
}

}  // namespace vdrsim
