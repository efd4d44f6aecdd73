#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "command_line.h"

namespace vdrctl {

// Reads the words behind the name of one command: arguments in their places, options of the command
// and of all commands in any order, "--option VALUE" or "--option=VALUE", and "--" before words that
// are arguments whatever they look like.
class ArgumentParser {
 public:
  using Arguments = std::span<const std::string_view>;

  // `understood` is what the operator has said up to there: "vdrctl instance show".
  ArgumentParser(const Command& command, std::string understood)
      : command_(command), understood_(std::move(understood)) {}

  // Nothing when one of the arguments asks for help. Throws WrongUsage.
  std::optional<Invocation> Parse(Arguments words);

 private:
  struct Option {
    const Parameter* parameter = nullptr;
    std::optional<std::string>* place = nullptr;
  };

  Option FindOption(std::string_view name);
  void TakeOption(Arguments& words);
  void TakeArgument(std::string_view word);
  void Store(const Parameter& parameter, std::optional<std::string>& place,
             std::string_view value) const;
  void CheckWhatIsMissing() const;
  std::optional<std::string>& GlobalPlace(std::string_view name);
  [[noreturn]] void RefuseOption(std::string_view name) const;
  [[noreturn]] void Refuse(const std::string& complaint) const;

  const Command& command_;
  std::string understood_;
  Invocation invocation_{};
  std::vector<std::optional<std::string>> values_{};  // one a parameter
  std::size_t nextArgument_ = 0;
  std::optional<std::string> json_{};
  std::optional<std::string> noHeader_{};
};

}  // namespace vdrctl
