#include "command_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "argument_parser.h"
#include "command_words.h"
#include "common/suggestion.h"
#include "globals.h"
#include "help.h"
#include "output/text.h"
#include "values.h"

namespace vdrctl {

namespace {

// The words of a command line that name the command, and all others.
struct Split {
  std::string understood{};  // in the words of the table: "lif address"
  const Command* command = nullptr;
  std::vector<std::string_view> rest{};
  bool wantsHelp = false;
  bool wantsVersion = false;
};

Split SplitWords(Words words, const Command* likely);
std::size_t WordsOf(const std::string& name, Words words);
std::optional<std::size_t> WordsOfGlobal(Words words);
[[noreturn]] void RefuseWord(const Split& split, std::string_view word);
std::optional<Invocation> ParseArguments(const Split& split);
std::string WithProgram(std::string_view understood);

}  // namespace

std::variant<Invocation, Notice> Parse(Words words, const Command* likely) {
  const Split split = SplitWords(words, likely);
  if (split.wantsVersion) return Notice{"vdrctl " TOOL_VERSION "\n"};
  if (split.wantsHelp) return Notice{HelpText(split.understood)};
  if (!split.command) {
    const std::string complete = WithProgram(split.understood);
    throw WrongUsage(fmt::format("'{}' is not a complete command", complete), complete);
  }
  auto invocation = ParseArguments(split);
  if (!invocation) return Notice{HelpText(split.understood)};
  return std::move(*invocation);
}

std::string InWords(const Invocation& invocation) {
  std::string words = FullName(*invocation.command);
  const auto parameters = invocation.command->Parameters();
  Given::Room room;
  const Values values = invocation.given.In(room);
  for (std::size_t index = 0; index < parameters.size(); ++index) {
    const char* const value = values[index];
    if (!value || parameters[index].IsOption()) continue;
    words += fmt::format(" {}", *value == '\0' ? "''" : value);
  }
  return words;
}

namespace {

// The object and the verb come first, but for options that hold for all commands. A name that
// follows is never taken for another object or verb.
Split SplitWords(Words words, const Command* likely) {
  Split split;
  split.rest.reserve(words.size());
  if (likely) {
    std::string name = FullName(*likely);
    if (const std::size_t count = WordsOf(name, words)) {
      split.command = likely;
      split.understood = std::move(name);
      words = words.subspan(count);
    }
  }
  bool onlyArguments = false;
  for (; !words.empty(); words = words.subspan(1)) {
    const std::string_view word = words.front();
    if (onlyArguments) {
      split.rest.push_back(word);
    } else if (word == "--help" || word == "-h" || (word == "help" && !split.command)) {
      split.wantsHelp = true;
    } else if (word == "--version" || word == "-V") {
      split.wantsVersion = true;
    } else if (word.starts_with('-') || split.command) {
      const std::size_t taken = split.command ? 1 : WordsOfGlobal(words).value_or(0);
      if (taken == 0) RefuseWord(split, word);
      onlyArguments = word == "--";
      for (std::size_t index = 0; index < taken; ++index) split.rest.push_back(words[index]);
      words = words.subspan(taken - 1);
    } else {
      const std::string_view accepted = Accepted(split.understood, word);
      if (accepted.empty()) RefuseWord(split, word);
      if (!split.understood.empty()) split.understood += ' ';
      split.understood += accepted;
      split.command = FindCommand(split.understood);
    }
  }
  return split;
}

// How many words the name of a command has; 0 when others come first.
std::size_t WordsOf(const std::string& name, Words words) {
  std::size_t count = 0;
  for (const std::string_view part : SplitAt(name, ' ')) {
    if (count == words.size() || words[count] != part) return 0;
    ++count;
  }
  return count;
}

// How many words an option that holds for all commands takes, with its value.
std::optional<std::size_t> WordsOfGlobal(Words words) {
  const std::string_view word = words.front();
  for (const Global& global : kGlobals) {
    const std::string_view longName = global.parameter.LongName();
    if (global.shortName && word == global.shortName) return 1;
    if (word == longName)
      return global.parameter.IsFlag() ? 1 : std::min<std::size_t>(2, words.size());
    if (!global.parameter.IsFlag() && word.starts_with(longName) && word[longName.size()] == '=') {
      return 1;
    }
  }
  return std::nullopt;
}

void RefuseWord(const Split& split, std::string_view word) {
  const std::string complete = WithProgram(split.understood);
  std::vector<std::string_view> candidates;
  if (word.starts_with('-')) {
    for (const Global& global : kGlobals) candidates.push_back(global.parameter.LongName());
  } else {
    candidates = NextWords(split.understood);
  }
  throw WrongUsage(fmt::format("'{}' has no '{}'{}", complete, Escaped(word),
                               tools::Suggestion(word, candidates)),
                   complete);
}

std::string WithProgram(std::string_view understood) {
  return understood.empty() ? "vdrctl" : "vdrctl " + std::string(understood);
}

std::optional<Invocation> ParseArguments(const Split& split) {
  ArgumentParser parser(*split.command, WithProgram(split.understood));
  return parser.Parse(split.rest);
}

}  // namespace

}  // namespace vdrctl
