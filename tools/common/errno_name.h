#pragma once

#include <optional>
#include <string_view>
#include <vector>

// Symbolic names of errno values, as ENOENT.

namespace tools {

// The kernel takes a larger one for an address.
inline constexpr int kHighestErrno = 4095;

// Empty where it has none.
std::string_view ErrnoName(int error);

// By its name, or by the second name that some have.
std::optional<int> ErrnoOf(std::string_view name);

std::vector<std::string_view> ErrnoNames();

}  // namespace tools
