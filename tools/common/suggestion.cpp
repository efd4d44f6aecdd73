#include "common/suggestion.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace tools {

namespace {

// How many characters must be put in, left out, replaced or swapped with their neighbour.
std::size_t Distance(std::string_view left, std::string_view right) {
  std::vector<std::size_t> before;
  std::vector<std::size_t> last(right.size() + 1);
  std::iota(last.begin(), last.end(), 0);
  for (std::size_t row = 1; row <= left.size(); ++row) {
    std::vector<std::size_t> now(right.size() + 1, row);
    for (std::size_t column = 1; column <= right.size(); ++column) {
      const bool same = left[row - 1] == right[column - 1];
      now[column] =
          std::min({last[column] + 1, now[column - 1] + 1, last[column - 1] + (same ? 0 : 1)});
      const bool swapped = row > 1 && column > 1 && left[row - 1] == right[column - 2] &&
                           left[row - 2] == right[column - 1];
      if (swapped) now[column] = std::min(now[column], before[column - 2] + 1);
    }
    before = std::exchange(last, std::move(now));
  }
  return last.back();
}

}  // namespace

std::string Suggestion(std::string_view word, std::span<const std::string_view> candidates) {
  std::string_view best;
  std::size_t nearest = std::max<std::size_t>(1, word.size() / 3) + 1;
  for (const std::string_view candidate : candidates) {
    if (const std::size_t distance = Distance(word, candidate); distance < nearest) {
      nearest = distance;
      best = candidate;
    }
  }
  return best.empty() ? "" : fmt::format(" (did you mean '{}'?)", best);
}

}  // namespace tools
