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
  if (object.size() == understood.size()) return command.verb;
  object.remove_prefix(understood.empty() ? 0 : understood.size() + 1);
  return object.substr(0, object.find(' '));
}

// The first row of the table that is right; NULL without one.
template <typename IsRight>
const Command* FirstCommand(IsRight isRight) {
  for (const Family* family : kFamilies) {
    const auto found = std::ranges::find_if(family->commands, isRight);
    if (found != family->commands.end()) return &*found;
  }
  return nullptr;
}

bool Follows(std::string_view understood, std::string_view word) {
  return FirstCommand(
      [&](const Command& command) { return NextWord(command, understood) == word; });
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
  return FirstCommand([&](const Command& command) {
    const std::string_view object = command.object;
    const std::string_view verb = command.verb;
    if (verb.empty()) return words == object;
    return words.size() == object.size() + 1 + verb.size() && words[object.size()] == ' ' &&
           words.ends_with(verb) && words.starts_with(object);
  });
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
  std::string name(command.object);
  if (!command.verb.empty()) name.append(" ").append(command.verb);
  return name;
}

}  // namespace vdrctl
