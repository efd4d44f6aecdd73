#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "commands.h"

namespace vdrctl {

// A command as the operator gave it.
struct Invocation {
  const Command* command;
  Output::Form form;
  std::vector<std::optional<std::string>> values;  // one a parameter of the command
};

// Help or the version, to be printed instead of carrying out a command.
struct Notice {
  std::string text;
};

// The command line makes no command. `words` is the part that was understood.
class WrongUsage : public std::runtime_error {
 public:
  WrongUsage(const std::string& message, std::string words)
      : std::runtime_error(message), words_(std::move(words)) {}

  const std::string& words() const { return words_; }

 private:
  std::string words_;
};

// Reads the command line by the table of commands. Throws WrongUsage.
std::variant<Invocation, Notice> Parse(int argc, const char* const* argv);

// The command in the operator's words, with the arguments that stand in their places.
std::string Words(const Invocation& invocation);

}  // namespace vdrctl
