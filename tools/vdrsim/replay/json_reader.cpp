#include "replay/json_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace vdrsim {

namespace {

// Names and the like; what is longer is read otherwise or not at all.
constexpr size_t kLongestText = 256;

constexpr int kDeepest = 32;

constexpr auto kIsHexDigit = [] {
  std::array<bool, 256> are{};
  for (const char digit : std::string_view("0123456789abcdefABCDEF")) {
    are[static_cast<unsigned char>(digit)] = true;
  }
  return are;
}();

bool IsOfWord(int character) {
  return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
         (character >= 'A' && character <= 'Z') || character == '+' || character == '-' ||
         character == '.';
}

}  // namespace

BadRecording::BadRecording(const std::string& path, uint64_t line, const std::string& what)
    : std::runtime_error(fmt::format("{}:{}: {}", path, line, what)) {}

void JsonReader::Fail(const std::string& what) const {
  throw BadRecording(file_.path(), line_, what);
}

// The next character that is no space. A line goes on to its end.
int JsonReader::Next() {
  int character = file_.Peek();
  while (character == ' ' || character == '\t' || character == '\r') {
    file_.Skip();
    character = file_.Peek();
  }
  if (character == FileBytes::kEnd) Fail("the file ends within the line: it was cut");
  if (character == '\n') Fail("the line ends before its value does");
  return character;
}

bool JsonReader::Accept(char character) {
  if (Next() != character) return false;
  file_.Skip();
  return true;
}

void JsonReader::Expect(char character) {
  if (!Accept(character)) Fail(fmt::format("'{}' is missing", character));
}

void JsonReader::EndOfLine() {
  while (file_.Peek() == ' ' || file_.Peek() == '\t' || file_.Peek() == '\r') file_.Skip();
  if (file_.Peek() == FileBytes::kEnd) Fail("the file ends within the line: it was cut");
  if (file_.Peek() != '\n') Fail("something stands behind the value");
  file_.Skip();
  ++line_;
}

// A character of a text, whatever it is.
char JsonReader::Character() {
  const int character = file_.Peek();
  if (character == FileBytes::kEnd) Fail("the file ends within the line: it was cut");
  if (character == '\n') Fail("the line ends within a text");
  file_.Skip();
  return static_cast<char>(character);
}

// Escapes stay what they are: no text that is looked for has one.
std::string JsonReader::Text() {
  Expect('"');
  std::string text;
  for (char character = Character(); character != '"'; character = Character()) {
    text += character;
    if (character == '\\') text += Character();
    if (text.size() > kLongestText) Fail("a text is too long");
  }
  return text;
}

uint64_t JsonReader::Number(uint64_t most) {
  uint64_t number = 0;
  int character = Next();
  if (character < '0' || character > '9') Fail("a number is missing");
  for (; character >= '0' && character <= '9'; character = file_.Peek()) {
    const auto digit = static_cast<uint64_t>(character - '0');
    if (number > (most - digit) / 10) {
      Fail(fmt::format("a number is beyond {}", most));
    }
    number = number * 10 + digit;
    file_.Skip();
  }
  if (IsOfWord(character)) Fail("a number is not whole");
  return number;
}

template <typename Is>
void JsonReader::SkipWhile(Is is) {
  for (auto bytes = file_.AtHand(); !bytes.empty(); bytes = file_.AtHand()) {
    const auto other = std::ranges::find_if_not(bytes, is);
    file_.Skip(static_cast<size_t>(other - bytes.begin()));
    if (other != bytes.end()) return;
  }
}

HexPlace JsonReader::Hex() {
  Expect('"');
  const uint64_t offset = file_.position();
  SkipWhile([](char digit) { return kIsHexDigit[static_cast<unsigned char>(digit)]; });
  const uint64_t digits = file_.position() - offset;
  if (Character() != '"') Fail("something else than hexadecimal digits");
  if (digits % 2 != 0) Fail("a hexadecimal digit is missing");
  if (digits / 2 > UINT32_MAX) Fail("more bytes than a reply can have");
  return {.offset = offset, .size = static_cast<uint32_t>(digits / 2)};
}

void JsonReader::SkipText() {
  Expect('"');
  for (char character = Character(); character != '"'; character = Character()) {
    if (character == '\\') Character();
  }
}

void JsonReader::SkipWord() {
  if (!IsOfWord(Next())) Fail("a value is missing");
  SkipWhile(IsOfWord);
}

void JsonReader::Skip(int depth) {
  if (depth > kDeepest) Fail("values are nested too deep");
  switch (Next()) {
    case '"':
      return SkipText();
    case '{':
      return Object([&](std::string_view) { Skip(depth + 1); });
    case '[':
      file_.Skip();
      if (Accept(']')) return;
      do {
        Skip(depth + 1);
      } while (Accept(','));
      return Expect(']');
    default:
      return SkipWord();
  }
}

}  // namespace vdrsim
