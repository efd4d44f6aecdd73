#include <vdrzax/route.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "getters.h"
#include "require.h"
#include "route/demux_route_record.h"
#include "route/route_record.h"

namespace {

using namespace vdrzax;

// The array of next hops ends with the record.
constexpr Trust kTrust = TrustCounts<668, 17, uint8_t, 8>;

Subject Routes(uint32_t code, int (*get)(RecordList** out)) {
  return ListGetter({.code = code,
                     .size = 668,
                     .cap = 20000,
                     .expected = Expected<kRouteRecord>,
                     .trust = kTrust},
                    get, VDRZAX_ReleaseRoutes);
}

// Two commands: the first four bytes of the payload answer the count, the rest is the table.
void Ipv6Routes(const Case& input) {
  constexpr uint32_t kNoCount = 0x5C5C5C5C;
  const auto first = input.payload.first(std::min<std::size_t>(4, input.payload.size()));
  device::Reply counted = {.bytes = {first.begin(), first.end()}, .length = 4};
  // Trusted to be written: the variable behind it is not set before.
  counted.bytes.resize(4);
  const auto routes = NumberAt<int32_t>(counted, 0);
  const uint32_t capacity = routes < 20000 ? 15520000 : 23280000;
  device::Reply replies[] = {counted, input.Answer(capacity, input.payload.subspan(first.size()))};
  if (!input.failsLater) {
    replies[0].result = std::exchange(replies[1].result, 0);
    replies[0].error = input.error;
  }

  void* table = Untouched();
  uint32_t count = kNoCount;
  const Outcome outcome =
      Call(input, replies, [&] { return VDRZAX_GetRoutesv6("edge-1", &table, &count); });
  if (input.openError != 0 || replies[0].Fails() || routes >= 30000) {
    Require(device::Commands().size() == (input.openError != 0 ? 0 : 1), "the count alone is sent");
    RequireFailure(outcome, ENOMEM);
    Require(table == Untouched(), "the table is not touched without a count");
    return Require(count == kNoCount, "the count is not touched without a count");
  }
  if (input.failingAllocation == 1) {
    Require(device::Commands().size() == 1, "the count alone is sent");
    RequireFailure(outcome, ENOMEM);
    Require(table == nullptr, "the table is NULL without memory");
    return Require(count == kNoCount, "the count is not touched without memory");
  }
  Require(device::Commands().size() == 2, "two commands are sent");
  Require(device::Commands()[0].code == 115 && device::Commands()[0].capacity == 4,
          "the first asks for the count");
  Require(device::Commands()[1].code == 114 && device::Commands()[1].capacity == capacity,
          "the second asks for the table");
  Require(count == replies[1].length / 776, "the count is the length in records");
  if (replies[1].Fails()) return RequireFailure(outcome, input.error);
  RequireSuccess(outcome);
  RequireLive({capacity});
  RequireWritten(table, capacity, replies[1]);
  std::free(table);
}

}  // namespace

std::span<const Subject> Subjects() {
  static const Subject subjects[] = {
      RecordGetter<RouteRecord>(
          {.code = 37, .size = 668, .expected = Expected<kRouteRecord>, .trust = kTrust},
          [](RouteRecord** out) { return VDRZAX_GetResolveRoute("edge-1", 1, 2, 3, out); },
          VDRZAX_ReleaseRoute),
      Routes(36, [](RecordList** out) { return VDRZAX_GetRoutes("edge-1", out); }),
      Routes(174, [](RecordList** out) { return VDRZAX_GetLifSelectionRoutes("edge-1", out); }),
      ListGetter({.code = 173, .size = 148, .cap = 30000, .expected = Expected<kDemuxRouteRecord>},
                 VDRZAX_GetDemuxRoutes, VDRZAX_ReleaseDemuxRoutes),
      Ipv6Routes,
      RawGetter(40, 7667712,
                [](void* buffer) { return VDRZAX_GetArps("edge-1", nullptr, buffer); }),
      RawGetter(40, 7667712,
                [](void* buffer) { return VDRZAX_GetProxyArps("edge-1", "lif-1", buffer); }),
      RawGetter(116, 7667712,
                [](void* buffer) { return VDRZAX_GetArpsv6("edge-1", "lif-1", buffer); }),
      RawGetter(
          34, 88,
          [](void* result) { return VDRZAX_SetRoute(1, 2, 3, "lif-1", "edge-1", 4, result); },
          true),
      RawGetter(
          35, 88, [](void* result) { return VDRZAX_DelRoute(1, 2, 3, "lif-1", "edge-1", result); },
          true),
  };
  return subjects;
}
