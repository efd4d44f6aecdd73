#include "output/text.h"

#include <langinfo.h>
#include <wchar.h>

#include <algorithm>
#include <array>
#include <clocale>

#include "common/escapes.h"

namespace vdrctl {

namespace {

// One character of a text: how many bytes it takes and which it is. A byte that begins no character
// of UTF-8 is none.
struct Character {
  std::size_t length = 1;
  char32_t value = kNone;

  static constexpr char32_t kNone = 0xFFFFFFFF;
  bool IsUtf8() const { return value != kNone; }
};

bool IsPlain(char character) { return character >= ' ' && character <= '~'; }

uint8_t ByteAt(std::string_view text, std::size_t index) {
  return static_cast<uint8_t>(text[index]);
}

// Refuses what has a shorter form, surrogates, and what is beyond the last character.
Character FirstCharacter(std::string_view text) {
  const uint8_t lead = ByteAt(text, 0);
  if (lead < 0x80) return {1, lead};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return {};
  char32_t value = lead & (0x7F >> length);
  for (std::size_t index = 1; index < length; ++index) {
    const uint8_t byte = ByteAt(text, index);
    if ((byte & 0xC0) != 0x80) return {};
    value = value << 6 | (byte & 0x3F);
  }
  constexpr std::array<char32_t, 3> kLeast{0x80, 0x800, 0x10000};
  if (value < kLeast[length - 2] || value > 0x10FFFF || (value >= 0xD800 && value < 0xE000))
    return {};
  return {length, value};
}

// Asked when the first text comes along that is not all printable ASCII, which is seldom.
bool LocaleIsUtf8() {
  static const bool utf8 =
      std::setlocale(LC_CTYPE, "") && std::string_view(nl_langinfo(CODESET)) == "UTF-8";
  return utf8;
}

// Columns of a character that a terminal shows; none above 0 for all that a reader would not see.
int Columns(char32_t character) {
  return LocaleIsUtf8() ? wcwidth(static_cast<wchar_t>(character)) : 0;
}

std::size_t WidthOf(const Character& character) {
  return character.value < 0x80 ? 1 : static_cast<std::size_t>(Columns(character.value));
}

// Puts the characters at the start of a text that stand for themselves: mostly that is all of it.
template <typename IsSpecial>
void TakePlain(Writer& out, std::string_view& text, IsSpecial isSpecial) {
  const auto end = std::find_if(text.begin(), text.end(), [&](char character) {
    return !IsPlain(character) || isSpecial(character);
  });
  const auto length = static_cast<std::size_t>(end - text.begin());
  out.Put(text.substr(0, length));
  text.remove_prefix(length);
}

void PutCodeUnit(Writer& out, char32_t unit) {
  const std::array<uint8_t, 2> bytes{static_cast<uint8_t>(unit >> 8), static_cast<uint8_t>(unit)};
  out.Put("\\u");
  out.Hex(bytes);
}

void PutJsonCharacter(Writer& out, char32_t character) {
  if (character < 0x10000) return PutCodeUnit(out, character);
  PutCodeUnit(out, 0xD800 + ((character - 0x10000) >> 10));
  PutCodeUnit(out, 0xDC00 + ((character - 0x10000) & 0x3FF));
}

}  // namespace

void PutEscaped(Writer& out, std::string_view text) {
  while (true) {
    TakePlain(out, text, [](char character) { return character == '\\'; });
    if (text.empty()) return;
    const Character first = FirstCharacter(text);
    const std::string_view bytes = text.substr(0, first.length);
    const bool isShown = bytes != "\\" && Columns(first.value) > 0;
    if (isShown) {
      out.Put(bytes);
    } else {
      out.Put(tools::Printable(bytes));
    }
    text.remove_prefix(first.length);
  }
}

std::string Escaped(std::string_view text) {
  Writer out;
  PutEscaped(out, text);
  return out.text();
}

std::size_t DisplayWidth(std::string_view text) {
  if (std::all_of(text.begin(), text.end(), IsPlain)) return text.size();
  std::size_t width = 0;
  while (!text.empty()) {
    const Character first = FirstCharacter(text);
    width += WidthOf(first);
    text.remove_prefix(first.length);
  }
  return width;
}

std::string_view FirstColumns(std::string_view text, std::size_t columns) {
  std::size_t length = 0;
  for (std::size_t width = 0; length < text.size();) {
    const Character next = FirstCharacter(text.substr(length));
    width += WidthOf(next);
    if (width > columns) break;
    length += next.length;
  }
  return text.substr(0, length);
}

bool IsUtf8(std::string_view text) {
  if (std::ranges::all_of(text, IsPlain)) return true;
  while (!text.empty()) {
    const Character first = FirstCharacter(text);
    if (!first.IsUtf8()) return false;
    text.remove_prefix(first.length);
  }
  return true;
}

void PutJsonText(Writer& out, std::string_view text) {
  std::string escaped;
  if (!IsUtf8(text)) {
    escaped = tools::Printable(text);
    text = escaped;
  }
  out.Put('"');
  while (true) {
    TakePlain(out, text, [](char character) { return character == '"' || character == '\\'; });
    if (text.empty()) break;
    const Character first = FirstCharacter(text);
    if (IsPlain(text.front())) {
      out.Put('\\');
      out.Put(text.front());
    } else {
      PutJsonCharacter(out, first.value);
    }
    text.remove_prefix(first.length);
  }
  out.Put('"');
}

void PutHexDump(Writer& out, std::span<const uint8_t> bytes) {
  constexpr std::size_t kPerLine = 16;
  bool repeats = false;
  for (std::size_t offset = 0; offset < bytes.size(); offset += kPerLine) {
    const auto line = bytes.subspan(offset, std::min(kPerLine, bytes.size() - offset));
    const bool last = offset + kPerLine >= bytes.size();
    if (offset > 0 && !last &&
        std::ranges::equal(line, bytes.subspan(offset - kPerLine, kPerLine))) {
      if (!repeats) out.Put("*\n");
      repeats = true;
      continue;
    }
    repeats = false;
    const std::array<uint8_t, 4> place{
        static_cast<uint8_t>(offset >> 24), static_cast<uint8_t>(offset >> 16),
        static_cast<uint8_t>(offset >> 8), static_cast<uint8_t>(offset)};
    out.Hex(place);
    out.Put("  ");
    out.Hex(line, " ");
    out.Fill(3 * (kPerLine - line.size()) + 2);
    out.Put('|');
    for (const uint8_t byte : line) {
      const auto character = static_cast<char>(byte);
      out.Put(IsPlain(character) ? character : '.');
    }
    out.Put("|\n");
    out.Part();
  }
}

}  // namespace vdrctl
