#include "common/values.h"

#include <fmt/format.h>

#include <utility>

#include "common/digits.h"
#include "common/errno_name.h"
#include "common/suggestion.h"
#include "faults/rule_text.h"

namespace vdrsim {

namespace {

using tools::ParseDigits;

constexpr std::pair<std::string_view, std::chrono::nanoseconds> kUnits[] = {
    {"us", std::chrono::microseconds(1)},
    {"ms", std::chrono::milliseconds(1)},
    {"s", std::chrono::seconds(1)},
};

constexpr std::chrono::hours kLongestDelay{24};

// Cuts off the digits at the front.
uint64_t TakeCount(const RulePart& part, std::string_view& rest) {
  const size_t length = std::min(rest.find_first_not_of("0123456789"), rest.size());
  const uint64_t number = ParseDigits<uint64_t>(rest.substr(0, length), 10).value_or(0);
  if (number == 0) {
    part.At(rest).Refuse(
        "here belongs a number of 1 or more: when=3, when=2..4, when=3+, when=1+2 (the first and "
        "every second behind it), when=2..8+2");
  }
  rest.remove_prefix(length);
  return number;
}

}  // namespace

int ReadErrno(const RulePart& part) {
  if (const auto number = tools::ParseNumber(part.text)) {
    if (*number < 1 || *number > tools::kHighestErrno) {
      part.Refuse(fmt::format("an errno value is 1 to {}", tools::kHighestErrno));
    }
    return static_cast<int>(*number);
  }
  if (const auto error = tools::ErrnoOf(part.text)) return *error;
  part.Refuse(fmt::format("there is no errno '{}'{}; it takes a name, as ENOMEM, or a number",
                          part.text, tools::Suggestion(part.text, tools::ErrnoNames())));
}

uint32_t ReadLength(const RulePart& part) {
  const uint64_t length = tools::ParseNumber(part.text).value_or(UINT64_MAX);
  if (length > std::numeric_limits<uint32_t>::max()) {
    part.Refuse("it takes a number of bytes, of 32 bits");
  }
  return static_cast<uint32_t>(length);
}

std::chrono::nanoseconds ReadTime(const RulePart& part) {
  const size_t digits = std::min(part.text.find_first_not_of("0123456789"), part.text.size());
  const auto number = ParseDigits<uint64_t>(part.text.substr(0, digits), 10);
  for (const auto& [unit, time] : kUnits) {
    if (!number || part.text.substr(digits) != unit) continue;
    if (*number > static_cast<uint64_t>(kLongestDelay / time))
      part.Refuse("a delay is a day at most");
    return static_cast<int64_t>(*number) * time;
  }
  part.Refuse("it takes a whole number with its unit: 500us, 50ms or 2s");
}

double ReadProbability(const RulePart& part) {
  const std::string_view number = part.text.substr(0, part.text.find('%'));
  double percent = 0;
  const char* end = number.data() + number.size();
  // What is no number, or beyond all of them, leaves 0.
  const bool isWhole = std::from_chars(number.data(), end, percent).ptr == end &&
                       number.size() + 1 == part.text.size();
  if (!isWhole || !(percent > 0 && percent <= 100)) {
    part.Refuse("it takes a percentage above 0% and up to 100%, as 10% or 0.5%");
  }
  return percent / 100;
}

Counting ReadCounting(const RulePart& part) {
  std::string_view rest = part.text;
  Counting counting{.first = TakeCount(part, rest)};
  const bool isRange = rest.starts_with("..");
  if (isRange) {
    rest.remove_prefix(2);
    const std::string_view last = rest;
    counting.last = TakeCount(part, rest);
    if (counting.last < counting.first) part.At(last).Refuse("the last comes before the first");
  }
  const bool isStepped = rest.starts_with('+');
  if (isStepped) {
    rest.remove_prefix(1);
    if (!rest.empty()) counting.step = TakeCount(part, rest);
  } else if (!isRange) {
    counting.last = counting.first;
  }
  if (!rest.empty()) part.At(rest).Refuse("nothing can follow here but .. and a number, or +");
  return counting;
}

}  // namespace vdrsim
