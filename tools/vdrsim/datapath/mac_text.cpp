#include "datapath/mac_text.h"

#include <charconv>
#include <cstdint>

namespace vdrsim {

namespace {

constexpr size_t kGroup = 3;  // two digits, and what separates them from the next two

bool IsSeparator(char character) { return character == ':' || character == '-'; }

}  // namespace

std::optional<MacAddress> ParseMac(std::string_view text) {
  MacAddress address{};
  if (text.size() != address.size() * kGroup - 1) return std::nullopt;
  for (size_t index = 0; index < address.size(); ++index) {
    const std::string_view group = text.substr(index * kGroup, kGroup);
    if (group.size() == kGroup && !IsSeparator(group.back())) return std::nullopt;
    const char* const end = group.data() + 2;
    uint8_t byte = 0;
    if (std::from_chars(group.data(), end, byte, 16).ptr != end) return std::nullopt;
    address[index] = std::byte{byte};
  }
  return address;
}

}  // namespace vdrsim
