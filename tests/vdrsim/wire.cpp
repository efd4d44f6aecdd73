#include "wire.h"

#include <algorithm>

namespace wire {

std::string Difference(const Bytes& actual, const Bytes& expected) {
  if (actual.size() != expected.size()) return std::to_string(actual.size()) + " bytes";
  const auto [differing, wanted] = std::ranges::mismatch(actual, expected);
  if (wanted == expected.end()) return "";
  return "byte " + std::to_string(wanted - expected.begin()) + " is " +
         std::to_string(std::to_integer<int>(*differing)) + ", not " +
         std::to_string(std::to_integer<int>(*wanted));
}

}  // namespace wire
