#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "call.h"
#include "replay/file_bytes.h"
#include "replay/json_reader.h"

namespace vdrsim {

// A command of a recording: what was asked and what became of it. Bytes stay in the file.
struct Recorded {
  uint64_t line = 0;
  HexPlace input{};
  HexPlace output{};
  uint32_t code = 0;
  uint32_t capacity = 0;
  uint32_t length = 0;
  uint32_t produced = 0;
  uint16_t error = 0;
  Node node = Node::Normal;
  bool hasOutput = false;
};

// A file of recorded commands, read once to its end; then it is known where what stands. For use by
// several threads at once.
class Recording {
 public:
  // Throws std::runtime_error, and BadRecording for what can't be understood, is out of order or was
  // cut.
  explicit Recording(const std::string& path);

  const std::string& path() const { return file_.path(); }
  std::span<const Recorded> commands() const { return commands_; }

  // The input of a command; nothing when the file can't be read any more.
  std::optional<std::vector<std::byte>> Input(const Recorded& command) const;

  // Reads a part of what stands there. Returns false when the file can't be read any more.
  bool Read(HexPlace place, uint32_t from, std::span<std::byte> bytes) const noexcept;

 private:
  void ReadBeginning(JsonReader& reader);
  bool ReadLine(JsonReader& reader);

  FileBytes file_;
  std::vector<Recorded> commands_{};
  uint64_t entries_ = 0;
};

}  // namespace vdrsim
