#pragma once

#include <initializer_list>
#include <string_view>

// What the tools tell the person in front of them. Nothing here throws or allocates: an operator
// whose standard error is full or closed learns nothing, but the exit status stays what it is.

namespace tools {

// Writes "PROGRAM: LINE" on standard error, and `advice` as a line below it unless that is empty,
// all in one piece.
void Complain(std::string_view program, std::string_view line,
              std::string_view advice = {}) noexcept;

// The same of a line in at most eight parts, for where there may be no memory to put them together.
void Complain(std::string_view program, std::initializer_list<std::string_view> line) noexcept;

// Writes a text of whole lines on standard error as it stands.
void Tell(std::string_view text) noexcept;

// Writes a text on standard output to its last byte. Returns 0, or the errno value that kept a part
// of it back: whoever reads must not take that for the whole.
int Print(std::string_view text) noexcept;

}  // namespace tools
