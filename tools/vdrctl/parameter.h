#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace vdrctl {

// Of one command.
inline constexpr std::size_t kMostParameters = 13;

// A parameter of a command. It stands in its place ("NAME") or is an option with the word that help
// shows for its value ("--second N"; a switch that is given or not has no such word). A parameter in
// its place is required, an option is not.
struct Parameter {
  enum class Kind : uint8_t {
    Text,
    Number,
    Ipv4,
    Prefix,
    Ipv6,
    Prefix6,
    Mac,
    Switch,
    File,
    Choice,
  };

  const char* name = nullptr;
  Kind kind = Kind::Text;
  uint64_t limit = 0;  // the longest text in bytes, the largest number, else 0
  const char* meaning = nullptr;
  bool optional = false;
  const char* excludes = nullptr;  // an option that stands earlier in the row: "--value"
  const char* choices = nullptr;   // the words of a choice: "bash|zsh|fish"
  const char* form = nullptr;      // of a text that is read by more than its length: "numbers"
  bool (*accepts)(std::string_view text) = nullptr;  // whether a text has this form

  constexpr bool IsOption() const { return name[0] == '-'; }
  // The name of an option without the word that stands for its value.
  constexpr std::string_view LongName() const {
    const std::string_view all = name;
    return all.substr(0, all.find(' '));
  }
  constexpr bool IsCalled(std::string_view word) const {
    const char* own = name;
    for (const char character : word) {
      if (*own == '\0' || *own++ != character) return false;
    }
    return *own == '\0' || *own == ' ';
  }
  // An option that is given or not, without a value behind it.
  constexpr bool IsFlag() const { return IsOption() && LongName() == name; }
};

constexpr Parameter MakeParameter(Parameter::Kind kind, const char* name, const char* meaning,
                                  uint64_t limit = 0) {
  return {name, kind, limit, meaning, name[0] == '-'};
}

constexpr Parameter Text(const char* name, uint64_t longest, const char* meaning) {
  return MakeParameter(Parameter::Kind::Text, name, meaning, longest);
}

// The library would cut a longer name, and the operator would not learn of it.
constexpr Parameter Name(const char* name, const char* meaning) { return Text(name, 63, meaning); }

constexpr Parameter Number(const char* name, uint64_t largest, const char* meaning) {
  return MakeParameter(Parameter::Kind::Number, name, meaning, largest);
}
template <typename Type>
constexpr Parameter NumberOf(const char* name, const char* meaning) {
  return Number(name, std::numeric_limits<Type>::max(), meaning);
}
constexpr Parameter U8(const char* name, const char* meaning) {
  return NumberOf<uint8_t>(name, meaning);
}
constexpr Parameter U16(const char* name, const char* meaning) {
  return NumberOf<uint16_t>(name, meaning);
}
constexpr Parameter U32(const char* name, const char* meaning) {
  return NumberOf<uint32_t>(name, meaning);
}
constexpr Parameter U64(const char* name, const char* meaning) {
  return NumberOf<uint64_t>(name, meaning);
}

constexpr Parameter Ipv4Address(const char* name, const char* meaning) {
  return MakeParameter(Parameter::Kind::Ipv4, name, meaning);
}
constexpr Parameter Ipv4Prefix(const char* name, const char* meaning) {
  return MakeParameter(Parameter::Kind::Prefix, name, meaning);
}
constexpr Parameter Ipv6Address(const char* name, const char* meaning) {
  return MakeParameter(Parameter::Kind::Ipv6, name, meaning);
}
constexpr Parameter Ipv6Prefix(const char* name, const char* meaning) {
  return MakeParameter(Parameter::Kind::Prefix6, name, meaning);
}
constexpr Parameter Mac(const char* name, const char* meaning) {
  return MakeParameter(Parameter::Kind::Mac, name, meaning);
}

// "--cached" is given or not; "--flag on|off" and "STATE" say it in a word.
constexpr Parameter Switch(const char* name, const char* meaning) {
  return MakeParameter(Parameter::Kind::Switch, name, meaning);
}

// The name of a file. "-" is standard input or standard output.
constexpr Parameter File(const char* name, const char* meaning) {
  return MakeParameter(Parameter::Kind::File, name, meaning);
}

constexpr Parameter Choice(const char* name, const char* choices, const char* meaning) {
  Parameter parameter = MakeParameter(Parameter::Kind::Choice, name, meaning);
  parameter.choices = choices;
  return parameter;
}

// A text of a form of its own; `form` names it in complaints.
constexpr Parameter FormedText(const char* name, uint64_t longest, const char* meaning,
                               const char* form, bool (*accepts)(std::string_view text)) {
  Parameter parameter = Text(name, longest, meaning);
  parameter.form = form;
  parameter.accepts = accepts;
  return parameter;
}

constexpr Parameter Optional(Parameter parameter) {
  parameter.optional = true;
  return parameter;
}

constexpr Parameter Excluding(const char* option, Parameter parameter) {
  parameter.excludes = option;
  return parameter;
}

// What commands of several families take.
inline constexpr Parameter kInstance = Name("INSTANCE", "Name of the router instance");
inline constexpr Parameter kLif = Name("LIF", "Name of the logical interface");
inline constexpr Parameter kAnswer =
    File("--answer FILE", "Write the 88 bytes of the kernel's answer to FILE");
inline constexpr Parameter kOutput =
    File("--output FILE", "Write the bytes of the reply to FILE instead of showing them");
inline constexpr Parameter kIfExists =
    Switch("--if-exists", "Succeed also when there is nothing to delete");

// "text", "number", "ipv4", ...
const char* KindName(Parameter::Kind kind);

// Says what is wrong with a text that was given for a parameter; empty when nothing is.
std::string Complaint(const Parameter& parameter, std::string_view text);

}  // namespace vdrctl
