#pragma once

#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "commands.h"

namespace vdrctl {

// What the operator gave for the options that hold for all commands, each as it was written.
struct GlobalValues {
  bool json = false;
  bool noHeader = false;
  std::optional<std::string> columns{};
  std::optional<std::string> sort{};
  std::optional<std::string> names{};
  std::optional<std::string> watch{};

  bool IsGiven() const { return json || noHeader || columns || sort || names || watch; }
};

// A command as the operator gave it.
struct Invocation {
  const Command* command = nullptr;
  GlobalValues globals{};
  Given given{};
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

using Words = std::span<const std::string>;

// Reads the words of a command line, without the name of the program, by the table of commands. The
// table is not searched where the words begin with those of `likely`. Throws WrongUsage.
std::variant<Invocation, Notice> Parse(Words words, const Command* likely = nullptr);

// The command in the operator's words, with the arguments that stand in their places.
std::string InWords(const Invocation& invocation);

}  // namespace vdrctl
