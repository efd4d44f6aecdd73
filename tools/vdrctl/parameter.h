#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace vdrctl {

// A parameter of a command. It stands in its place ("NAME") or is an option with the word that help
// shows for its value ("--second N"). A parameter in its place is required, an option is not.
struct Parameter {
  enum class Kind : uint8_t { Text, Number };

  const char* name = nullptr;
  Kind kind = Kind::Text;
  uint64_t limit = 0;  // the longest text in bytes, the largest number
  const char* meaning = nullptr;
  bool optional = false;
  const char* excludes = nullptr;  // an option that stands earlier in the row: "--value"

  constexpr bool IsOption() const { return name[0] == '-'; }
};

constexpr Parameter Text(const char* name, uint64_t longest, const char* meaning) {
  return {name, Parameter::Kind::Text, longest, meaning, name[0] == '-'};
}

template <typename Number>
constexpr Parameter NumberOf(const char* name, const char* meaning) {
  return {name, Parameter::Kind::Number, std::numeric_limits<Number>::max(), meaning,
          name[0] == '-'};
}
constexpr Parameter U8(const char* name, const char* meaning) {
  return NumberOf<uint8_t>(name, meaning);
}
constexpr Parameter U32(const char* name, const char* meaning) {
  return NumberOf<uint32_t>(name, meaning);
}

// The name of a file. "-" is standard input or standard output.
constexpr Parameter File(const char* name, const char* meaning) {
  return Text(name, std::numeric_limits<uint64_t>::max(), meaning);
}

constexpr Parameter Optional(Parameter parameter) {
  parameter.optional = true;
  return parameter;
}

constexpr Parameter Excluding(const char* option, Parameter parameter) {
  parameter.excludes = option;
  return parameter;
}

// The texts that commands of several families take. The library would cut a longer text, and the
// operator would not learn of it.
inline constexpr Parameter kInstanceName = Text("NAME", 63, "Name of the router instance");

// Says what is wrong with a text that was given for a parameter; empty when nothing is.
std::string Complaint(const Parameter& parameter, std::string_view text);

// Reads a decimal number, or a hexadecimal one after 0x, and nothing around it.
std::optional<uint64_t> ParseNumber(std::string_view text);

}  // namespace vdrctl
