#pragma once

#include <bitset>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "call.h"
#include "requests/requests.h"

namespace vdrsim {

// Which commands a rule is for.
struct Selection {
  std::bitset<requests::kRequests.size()> requests{};
  std::bitset<requests::kHighestCode + 1> codes{};  // asked where a code has no request

  // `request` is the index of the request that the command is, or requests::Meanings::kNone.
  bool Has(size_t request, uint32_t code) const {
    return request == requests::Meanings::kNone ? codes[code & requests::kHighestCode]
                                                : requests[request];
  }
};

// A field of a request that is or is not what a rule says. In requests without that field it is
// neither.
struct FieldCondition {
  struct Expected {
    uint16_t offset;
    std::vector<std::byte> bytes;
  };

  std::map<size_t, Expected> byRequest{};
  bool isEqual = true;

  bool Holds(size_t request, std::span<const std::byte> input) const;
};

// The first, every `step`th behind it, and none behind the last; counted from 1.
struct Counting {
  uint64_t first = 1;
  uint64_t last = std::numeric_limits<uint64_t>::max();
  uint64_t step = 1;

  bool Has(uint64_t number) const {
    return number >= first && number <= last && (number - first) % step == 0;
  }
};

// What a rule does to a command.
struct Actions {
  std::chrono::nanoseconds delay{};
  bool kills = false;
  int error = 0;
  std::optional<uint32_t> length{};   // claimed
  std::optional<uint32_t> written{};  // bytes of the reply at most
};

struct Rule {
  std::string text{};
  Selection selection{};
  std::vector<FieldCondition> conditions{};
  Counting counting{};
  std::optional<double> probability{};  // above 0, at most 1
  Actions actions{};
};

// What is wrong with a rule: a sentence, and below it the rule with a mark at the place.
class RuleError : public std::runtime_error {
 public:
  // `place` is a part of `rule`.
  RuleError(std::string_view rule, std::string_view place, std::string_view sentence);
};

// Reads WHICH:ACTION[:ACTION | :CONDITION]... Throws RuleError.
Rule ReadRule(std::string_view text);

}  // namespace vdrsim
