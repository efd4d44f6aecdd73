#include "journal/put.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <nlohmann/json.hpp>

namespace vdrsim {

namespace {

constexpr char kDigits[] = "0123456789abcdef";

template <typename Number>
void PutDecimal(std::string& out, Number number) {
  std::array<char, 20> digits;
  out.append(digits.data(), std::to_chars(digits.begin(), digits.end(), number).ptr);
}

bool IsPrintable(char character) { return character >= ' ' && character <= '~'; }

bool NeedsNoEscape(char character) {
  return IsPrintable(character) && character != '"' && character != '\\';
}

}  // namespace

void PutNumber(std::string& out, uint64_t number) { PutDecimal(out, number); }

void PutSigned(std::string& out, int64_t number) { PutDecimal(out, number); }

void PutHex(std::string& out, std::span<const std::byte> bytes, std::string_view separator) {
  if (separator.empty()) {
    const size_t start = out.size();
    out.resize(start + 2 * bytes.size());
    char* to = out.data() + start;
    for (const std::byte byte : bytes) {
      *to++ = kDigits[std::to_integer<unsigned>(byte) >> 4];
      *to++ = kDigits[std::to_integer<unsigned>(byte) & 15];
    }
    return;
  }
  for (size_t index = 0; index < bytes.size(); ++index) {
    if (index > 0) out += separator;
    PutHex(out, bytes.subspan(index, 1));
  }
}

void PutEscaped(std::string& out, std::string_view text) {
  for (const char character : text) {
    if (character == '\\') {
      out += "\\\\";
    } else if (IsPrintable(character)) {
      out += character;
    } else {
      out += "\\x";
      PutHex(out, std::as_bytes(std::span(&character, 1)));
    }
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
    std::string escaped;
    PutEscaped(escaped, text);
    out += nlohmann::json(escaped).dump(-1, ' ', true);
    return false;
  }
}

std::string_view ErrorName(int error) {
  const char* name = strerrorname_np(error);
  return name ? name : std::string_view();
}

}  // namespace vdrsim
