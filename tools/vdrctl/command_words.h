#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "commands.h"

namespace vdrctl {

// Calls `visit` with each row of the table, in the order of help.
template <typename Visit>
void ForEachCommand(Visit visit) {
  for (const Family* family : kFamilies) {
    for (const Command& command : family->commands) visit(command);
  }
}

// "lif address" begins with "lif", and with itself.
bool BeginsWith(std::string_view words, std::string_view beginning);

// What may follow the words that were understood so far: the next word of every command that begins
// with them, in the order of the table, each once.
std::vector<std::string_view> NextWords(std::string_view understood);

// The command of just these words; NULL when there is none, or when they are only its beginning.
const Command* FindCommand(std::string_view words);

// The word itself where it may follow, else the one that it is a synonym of there, else "".
std::string_view Accepted(std::string_view understood, std::string_view word);

// Object and verb.
std::string FullName(const Command& command);

}  // namespace vdrctl
