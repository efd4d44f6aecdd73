#include "journal/put.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <nlohmann/json.hpp>

#include "common/escapes.h"

namespace vdrsim {

namespace {

// Both digits of every byte, one behind the other.
constexpr auto kDigits = [] {
  std::array<char, 512> digits{};
  for (size_t index = 0; index < digits.size(); ++index) {
    const size_t byte = index / 2;
    digits[index] = "0123456789abcdef"[index % 2 == 0 ? byte >> 4 : byte & 15];
  }
  return digits;
}();

template <typename Number>
void PutDecimal(std::string& out, Number number) {
  std::array<char, 20> digits;
  out.append(digits.data(), std::to_chars(digits.begin(), digits.end(), number).ptr);
}

void PutDigits(char* to, std::span<const std::byte> bytes) {
  for (const std::byte byte : bytes) {
    std::memcpy(to, &kDigits[2 * std::to_integer<size_t>(byte)], 2);
    to += 2;
  }
}

// Most of an input is zeros.
void PutAllDigits(std::string& out, std::span<const std::byte> bytes) {
  const size_t start = out.size();
  out.append(2 * bytes.size(), '0');
  char* to = out.data() + start;
  uint64_t word = 0;
  for (; bytes.size() >= sizeof word; bytes = bytes.subspan(sizeof word)) {
    std::memcpy(&word, bytes.data(), sizeof word);
    if (word != 0) PutDigits(to, bytes.first(sizeof word));
    to += 2 * sizeof word;
  }
  PutDigits(to, bytes);
}

bool NeedsNoEscape(char character) {
  return character >= ' ' && character <= '~' && character != '"' && character != '\\';
}

}  // namespace

void PutNumber(std::string& out, uint64_t number) { PutDecimal(out, number); }

void PutSigned(std::string& out, int64_t number) { PutDecimal(out, number); }

void PutHex(std::string& out, std::span<const std::byte> bytes, std::string_view separator) {
  if (separator.empty()) return PutAllDigits(out, bytes);
  for (size_t index = 0; index < bytes.size(); ++index) {
    if (index > 0) out += separator;
    PutHex(out, bytes.subspan(index, 1));
  }
}

bool PutJsonText(std::string& out, std::string_view text) {
  if (std::ranges::all_of(text, NeedsNoEscape)) {
    out += '"';
    out += text;
    out += '"';
    return true;
  }
  try {
    out += nlohmann::json(text).dump(-1, ' ', true);
    return true;
  } catch (const nlohmann::json::type_error&) {
    out += nlohmann::json(tools::Printable(text)).dump();
    return false;
  }
}

}  // namespace vdrsim
