#pragma once

#include <optional>
#include <string_view>

#include "requests/input.h"

namespace vdrsim {

// The six bytes of an address as text: six groups of two hexadecimal digits, with a colon or a dash
// between them.
std::optional<MacAddress> ParseMac(std::string_view text);

}  // namespace vdrsim
