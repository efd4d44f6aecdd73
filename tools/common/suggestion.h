#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tools {

// " (did you mean 'delete'?)" for the candidate that a slip of the hand made `word` of, else "".
std::string Suggestion(std::string_view word, std::span<const std::string_view> candidates);

}  // namespace tools
