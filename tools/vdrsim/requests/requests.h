#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <string_view>

#include "requests/bridge.h"
#include "requests/e2i.h"
#include "requests/instance.h"
#include "requests/lif.h"
#include "requests/mcast.h"
#include "requests/policy.h"
#include "requests/route.h"
#include "requests/services.h"

namespace vdrsim::requests {

struct Family {
  std::string_view name;
  std::span<const Request> requests;
};

inline constexpr Family kFamilies[] = {
    {"instance", kInstanceRequests}, {"lif", kLifRequests},           {"route", kRouteRequests},
    {"policy", kPolicyRequests},     {"bridge", kBridgeRequests},     {"e2i", kE2iRequests},
    {"mcast", kMcastRequests},       {"services", kServicesRequests},
};

consteval size_t CountRequests() {
  size_t count = 0;
  for (const Family& family : kFamilies) count += family.requests.size();
  return count;
}

consteval auto Join() {
  std::array<const Request*, CountRequests()> all{};
  size_t count = 0;
  for (const Family& family : kFamilies) {
    for (const Request& request : family.requests) all[count++] = &request;
  }
  return all;
}

inline constexpr auto kRequests = Join();

// The index of the request of this name. A function of two codes needs its code as well.
constexpr size_t IndexOf(Name name, uint32_t code) {
  constexpr uint32_t kAnyCode = std::numeric_limits<uint32_t>::max();
  size_t found = kRequests.size();
  for (size_t index = 0; index < kRequests.size(); ++index) {
    const Request& request = *kRequests[index];
    if (request.name != name || (code != kAnyCode && request.code != code)) continue;
    if (found != kRequests.size()) throw "two commands have this name: say which code is meant";
    found = index;
  }
  if (found == kRequests.size()) throw "no command has this name";
  return found;
}

// What one code can mean, as indexes.
struct Meanings {
  static constexpr size_t kNone = std::numeric_limits<size_t>::max();

  size_t plain = kNone;
  size_t variant = kNone;
};

inline constexpr uint32_t kHighestCode = 255;

constexpr auto MeaningsByCode(std::span<const Request* const> requests) {
  std::array<Meanings, kHighestCode + 1> byCode{};
  for (size_t index = 0; index < requests.size(); ++index) {
    const Request& request = *requests[index];
    Meanings& meanings = byCode[request.code];
    size_t& meaning = request.variant == 0 ? meanings.plain : meanings.variant;
    if (meaning != Meanings::kNone) throw "two commands have this code";
    meaning = index;
  }
  for (const Meanings& meanings : byCode) {
    if (meanings.plain == Meanings::kNone && meanings.variant != Meanings::kNone) {
      throw "a variant needs another command to be a variant of";
    }
  }
  return byCode;
}

inline constexpr auto kMeanings = MeaningsByCode(kRequests);

// The index of the request that a caller means, or Meanings::kNone for a code that does not exist.
constexpr size_t Identify(uint32_t code, std::span<const std::byte> input) {
  if (code > kHighestCode) return Meanings::kNone;
  const Meanings& meanings = kMeanings[code];
  if (meanings.variant == Meanings::kNone) return meanings.plain;
  const uint16_t offset = kRequests[meanings.variant]->variant;
  const bool isVariant = offset < input.size() && input[offset] != std::byte{0};
  return isVariant ? meanings.variant : meanings.plain;
}

}  // namespace vdrsim::requests
