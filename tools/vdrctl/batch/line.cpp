#include "batch/line.h"

#include <algorithm>
#include <array>
#include <cstdint>

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

// By character: whether it stands for itself.
constexpr auto kIsPlain = [] {
  std::array<bool, 256> isPlain{};
  isPlain.fill(true);
  for (const char character : {' ', '\t', '\r', '\\', '\'', '"'}) {
    isPlain[static_cast<uint8_t>(character)] = false;
  }
  return isPlain;
}();

bool IsPlain(char character) { return kIsPlain[static_cast<uint8_t>(character)]; }

// Takes what stands for itself, or else what has a meaning of its own; false when the word ends.
bool TakePart(std::string_view& rest, std::string& word) {
  const auto plain = std::ranges::find_if_not(rest, IsPlain);
  word.append(rest.begin(), plain);
  rest.remove_prefix(static_cast<std::size_t>(plain - rest.begin()));
  if (rest.empty() || IsBlank(rest.front())) return false;
  const char character = rest.front();
  rest.remove_prefix(1);
  if (character == '\\') {
    if (rest.empty()) throw WrongLine("a character is missing behind the last backslash");
    word += rest.front();
    rest.remove_prefix(1);
  } else {
    TakeQuoted(rest, character, word);
  }
  return true;
}

}  // namespace

std::vector<std::string> SplitLine(std::string_view line) {
  std::vector<std::string> words;
  words.reserve(16);
  const bool hasZeros = line.find('\0') != std::string_view::npos;
  while (true) {
    while (!line.empty() && IsBlank(line.front())) line.remove_prefix(1);
    if (line.empty() || line.front() == '#') return words;
    std::string& word = words.emplace_back();
    while (!line.empty() && TakePart(line, word)) {
    }
    // The library would take the word for shorter than it is.
    if (hasZeros && word.find('\0') != std::string::npos) {
      throw WrongLine("a byte of zero can't be a part of a word");
    }
  }
}

}  // namespace vdrctl
