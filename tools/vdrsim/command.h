#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "call.h"
#include "state.h"

namespace vdrsim {

// What a handler says to one command: an errno value, or 0 and the bytes of the reply.
struct Outcome {
  int error = 0;
  std::vector<std::byte> reply{};
};

// The three shapes of input that the datapath knows.
enum class InputForm : uint8_t { None, Scalar, Block };

constexpr uint32_t InputLength(InputForm form) {
  switch (form) {
    case InputForm::Scalar:
      return 4;
    case InputForm::Block:
      return 968;
    default:
      return 0;
  }
}

// The input of one command, of the length that its form demands. Offsets are the handler's own
// reading of the protocol, not the library's, so that a wrong offset there can't agree with itself.
class Input {
 public:
  explicit Input(std::span<const std::byte> bytes) : bytes_(bytes) {}

  uint32_t Word(size_t offset) const {
    uint32_t value = 0;
    std::memcpy(&value, bytes_.subspan(offset, sizeof value).data(), sizeof value);
    return value;
  }

  uint8_t Byte(size_t offset) const { return std::to_integer<uint8_t>(bytes_[offset]); }

  // The characters up to the terminator, or all `width` of them where there is none.
  std::string Text(size_t offset, size_t width) const {
    const auto field = bytes_.subspan(offset, width);
    const char* first = reinterpret_cast<const char*>(field.data());
    return {first, strnlen(first, field.size())};
  }

  // The name of 64 bytes that says which object is meant. An empty one names nothing, and one
  // without terminator can't come from a well-behaved caller.
  std::optional<std::string> Name(size_t offset) const {
    std::string name = Text(offset, 64);
    if (name.empty() || name.size() == 64) return std::nullopt;
    return name;
  }

 private:
  std::span<const std::byte> bytes_;
};

// One row of the datapath's table: a command code, the input it takes and who answers it.
struct Command {
  uint32_t code;
  InputForm form;
  Outcome (*handler)(State& state, const Input& input);
};

// The rows of each family of commands.
std::span<const Command> InstanceCommands();
std::span<const Command> SettingsCommands();

}  // namespace vdrsim
