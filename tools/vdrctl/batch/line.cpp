#include "batch/line.h"

#include <optional>

namespace vdrctl {

namespace {

bool IsBlank(char character) { return character == ' ' || character == '\t' || character == '\r'; }

// Takes what stands between quotes, the closing one included.
void TakeQuoted(std::string_view& rest, char quote, std::string& word) {
  while (true) {
    if (rest.empty()) throw WrongLine(std::string("a closing ") + quote + " is missing");
    char character = rest.front();
    rest.remove_prefix(1);
    if (character == quote) return;
    const bool escapes = quote == '"' && character == '\\' && !rest.empty() &&
                         (rest.front() == '"' || rest.front() == '\\');
    if (escapes) {
      character = rest.front();
      rest.remove_prefix(1);
    }
    word += character;
  }
}

// Takes one character outside of quotes; false when the word ends.
bool TakePlain(std::string_view& rest, std::string& word) {
  const char character = rest.front();
  if (IsBlank(character)) return false;
  rest.remove_prefix(1);
  if (character == '\\') {
    if (rest.empty()) throw WrongLine("a character is missing behind the last backslash");
    word += rest.front();
    rest.remove_prefix(1);
  } else if (character == '\'' || character == '"') {
    TakeQuoted(rest, character, word);
  } else if (character == '\0') {
    throw WrongLine("a byte of zero can't be a part of a word");
  } else {
    word += character;
  }
  return true;
}

}  // namespace

std::vector<std::string> SplitLine(std::string_view line) {
  std::vector<std::string> words;
  while (true) {
    while (!line.empty() && IsBlank(line.front())) line.remove_prefix(1);
    if (line.empty() || line.front() == '#') return words;
    std::string& word = words.emplace_back();
    while (!line.empty() && TakePlain(line, word)) {
    }
  }
}

}  // namespace vdrctl
