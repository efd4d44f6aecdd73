#include "parameter.h"

#include <fmt/format.h>

#include <charconv>

namespace vdrctl {

std::string Complaint(const Parameter& parameter, std::string_view text) {
  if (parameter.kind == Parameter::Kind::Text) {
    if (text.size() <= parameter.limit) return "";
    return fmt::format("the text is {} bytes long, and at most {} are taken", text.size(),
                       parameter.limit);
  }
  const auto number = ParseNumber(text);
  if (number && *number <= parameter.limit) return "";
  return fmt::format("'{}' is not a number from 0 to {}", text, parameter.limit);
}

std::optional<uint64_t> ParseNumber(std::string_view text) {
  int base = 10;
  if (text.starts_with("0x") || text.starts_with("0X")) {
    text.remove_prefix(2);
    base = 16;
  }
  uint64_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, base);
  if (error != std::errc{} || stop != end) return std::nullopt;
  return number;
}

}  // namespace vdrctl
