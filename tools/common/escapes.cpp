#include "common/escapes.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace tools {

namespace {

constexpr size_t kByteLength = 4;  // \xNN

std::optional<char> ByteOf(std::string_view text) {
  if (!text.starts_with("\\x") || text.size() < kByteLength) return std::nullopt;
  const char* const end = text.data() + kByteLength;
  uint8_t byte = 0;
  if (std::from_chars(text.data() + 2, end, byte, 16).ptr != end || byte == 0) return std::nullopt;
  return static_cast<char>(byte);
}

}  // namespace

std::string Printable(std::string_view text) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string shown;
  for (const char character : text) {
    if (character == '\\') {
      shown += "\\\\";
    } else if (character >= ' ' && character <= '~') {
      shown += character;
    } else {
      const auto byte = static_cast<uint8_t>(character);
      shown += {'\\', 'x', kDigits[byte / 16], kDigits[byte % 16]};
    }
  }
  return shown;
}

std::string BackslashesDoubled(std::string_view text) {
  std::string doubled;
  for (const char character : text) doubled.append(character == '\\' ? 2 : 1, character);
  return doubled;
}

std::optional<std::string> Unescaped(std::string_view text) {
  std::string bytes;
  while (true) {
    const size_t plain = std::min(text.find('\\'), text.size());
    bytes += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) return bytes;
    if (text.starts_with("\\\\")) {
      bytes += '\\';
      text.remove_prefix(2);
    } else {
      const auto byte = ByteOf(text);
      if (!byte) return std::nullopt;
      bytes += *byte;
      text.remove_prefix(kByteLength);
    }
  }
}

}  // namespace tools
