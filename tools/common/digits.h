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

}  // namespace tools
