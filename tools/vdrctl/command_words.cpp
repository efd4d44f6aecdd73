#include "command_words.h"

#include <algorithm>

namespace vdrctl {

bool BeginsWith(std::string_view words, std::string_view beginning) {
  return words.starts_with(beginning) &&
         (beginning.empty() || words.size() == beginning.size() || words[beginning.size()] == ' ');
}

namespace {

// The word of a command behind those that were understood; "" when it is no such command.
std::string_view NextWord(const Command& command, std::string_view understood) {
  std::string_view object = command.object;
  if (!BeginsWith(object, understood)) return {};
  if (object.size() == understood.size()) return command.verb ? command.verb : "";
  object.remove_prefix(understood.empty() ? 0 : understood.size() + 1);
  return object.substr(0, object.find(' '));
}

bool Follows(std::string_view understood, std::string_view word) {
  bool follows = false;
  ForEachCommand(
      [&](const Command& command) { follows = follows || NextWord(command, understood) == word; });
  return follows;
}

}  // namespace

std::vector<std::string_view> NextWords(std::string_view understood) {
  std::vector<std::string_view> words;
  ForEachCommand([&](const Command& command) {
    const std::string_view word = NextWord(command, understood);
    if (!word.empty() && std::ranges::find(words, word) == words.end()) words.push_back(word);
  });
  return words;
}

const Command* FindCommand(std::string_view words) {
  const Command* found = nullptr;
  ForEachCommand([&](const Command& command) {
    const std::string_view object = command.object;
    if (!command.verb) {
      if (words == object) found = &command;
      return;
    }
    const std::string_view verb = command.verb;
    if (words.size() == object.size() + 1 + verb.size() && words.starts_with(object) &&
        words[object.size()] == ' ' && words.ends_with(verb)) {
      found = &command;
    }
  });
  return found;
}

std::string_view Accepted(std::string_view understood, std::string_view word) {
  if (word.empty()) return {};
  if (Follows(understood, word)) return word;
  for (const Synonym& synonym : kSynonyms) {
    if (word == synonym.word && Follows(understood, synonym.verb)) return synonym.verb;
  }
  return {};
}

std::string FullName(const Command& command) {
  return command.verb ? std::string(command.object) + " " + command.verb : command.object;
}

}  // namespace vdrctl
