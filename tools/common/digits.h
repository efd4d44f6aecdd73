#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace tools {

// A number that is digits of this base and nothing else, and that the type can hold.
template <typename Number>
std::optional<Number> ParseDigits(std::string_view text, int base) {
  Number number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, base);
  if (error != std::errc{} || stop != end) return std::nullopt;
  return number;
}

// The value of a hexadecimal digit; -1 for all else.
constexpr int HexDigit(char character) {
  if (character >= '0' && character <= '9') return character - '0';
  if (character >= 'a' && character <= 'f') return character - 'a' + 10;
  if (character >= 'A' && character <= 'F') return character - 'A' + 10;
  return -1;
}

}  // namespace tools
