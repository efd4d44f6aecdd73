#pragma once

#include <optional>
#include <string>
#include <string_view>

// Texts that may hold any bytes, as people see and type them.

namespace tools {

// Printable ASCII as it stands, but a backslash as \\; every other byte as \xNN.
std::string Printable(std::string_view text);

// What a backslash begins stays apart from what begins with \xNN.
std::string BackslashesDoubled(std::string_view text);

// Reads \xNN and \\ as the byte that they stand for, which is how tables print what can't be shown.
// Any other backslash, and a byte of zero, which would end the text, is refused.
std::optional<std::string> Unescaped(std::string_view text);

}  // namespace tools
