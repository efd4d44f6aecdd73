#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "output/writer.h"

namespace vdrctl {

// Puts a text of the kernel's so that it can't drive the operator's terminal, and so that it can be
// typed back: printable ASCII stands for itself, and so does printable UTF-8 where the locale shows
// it; every other byte is \xNN, and the backslash \\.
void PutEscaped(Writer& out, std::string_view text);
std::string Escaped(std::string_view text);

// The columns of a terminal that an escaped text takes.
std::size_t DisplayWidth(std::string_view text);

// As much of the start of an escaped text as fits into so many columns, in whole characters.
std::string_view FirstColumns(std::string_view text, std::size_t columns);

bool IsUtf8(std::string_view text);

// Puts a text between quotes. All of it is ASCII then, so that a JSON document is as harmless as a
// table. A text that is no UTF-8 is put as PutEscaped would without a locale.
void PutJsonText(Writer& out, std::string_view text);

// Lines of sixteen bytes each, in hexadecimal and as characters. Of equal lines in a row the first
// is shown, and a '*' for all others.
void PutHexDump(Writer& out, std::span<const uint8_t> bytes);

}  // namespace vdrctl
