#include "datapath/route_handlers.h"

#include <bit>
#include <cerrno>
#include <optional>
#include <utility>
#include <vector>

#include "datapath/answers.h"
#include "datapath/caps.h"
#include "datapath/objects.h"
#include "datapath/route_record.h"

namespace vdrsim {

namespace {

using vdrzax::kRouteRecord;
using Routes = Table<RouteKey, Route>;
using RouteRow = std::pair<const RouteKey, Route>;

template <size_t Index>
std::optional<RouteKey> RouteKeyOf(const InputOf<Index>& input) {
  const auto interface = input.OptionalName("ifName");
  if (!interface) return std::nullopt;
  return RouteKey{.destination = Ipv4Of(input.Word("routeArg1")),
                  .mask = Ipv4Of(input.Word("routeArg2")),
                  .third = Ipv4Of(input.Word("routeArg3")),
                  .interface = std::string(*interface)};
}

// Does `action` on the table of routes and the key that a command names, and answers with the key.
template <size_t Index, typename Action>
Answer OnRoute(State& state, const InputOf<Index>& input, const Action& action) {
  return OnInstance(state, input, [&](Instance& instance) -> Answer {
    const auto key = RouteKeyOf(input);
    if (!key) return {.error = EINVAL};
    if (const int error = action(instance.routes, *key)) return {.error = error};
    return RecordAnswer<kRouteResult>(ShowRouteResult, *key);
  });
}

// What is asked for: a network, or an address alone.
struct Query {
  uint32_t address;
  uint32_t mask;
};

bool Covers(const RouteKey& route, const Query& query) {
  const uint32_t mask = WordOf(route.mask);
  return (mask & ~query.mask) == 0 && ((WordOf(route.destination) ^ query.address) & mask) == 0;
}

int PrefixLength(const RouteKey& route) { return std::popcount(WordOf(route.mask)); }

// Of several of the same length the first. NULL when no route leads there.
const RouteRow* LongestPrefix(const Routes& routes, const Query& query) {
  const RouteRow* longest = nullptr;
  for (const RouteRow& row : routes) {
    if (!Covers(row.first, query)) continue;
    if (!longest || PrefixLength(row.first) > PrefixLength(longest->first)) longest = &row;
  }
  return longest;
}

std::vector<const RouteRow*> RoutesOverLifs(const Instance& instance) {
  std::vector<const RouteRow*> found;
  for (const RouteRow& row : instance.routes) {
    if (instance.lifs.Find(row.first.interface)) found.push_back(&row);
  }
  return found;
}

}  // namespace

Answer Handle(State& state, const Input<"SetRoute">& input) {
  return OnRoute(state, input, [&](Routes& routes, const RouteKey& key) {
    return routes.Set(key, kMostRoutes, [&](Route& route) {
      route.flags = input.Word("routeFlags");
      return 0;
    });
  });
}

Answer Handle(State& state, const Input<"DelRoute">& input) {
  return OnRoute(state, input,
                 [](Routes& routes, const RouteKey& key) { return routes.Delete(key); });
}

Answer Handle(const State& state, const Input<"GetRoutes">& input) {
  return OnInstance(state, input, [](const Instance& instance) {
    return TableAnswer<kRouteRecord>(instance.routes, ShowRoute);
  });
}

// The third argument says nothing here.
Answer Handle(const State& state, const Input<"GetResolveRoute">& input) {
  return OnInstance(state, input, [&](const Instance& instance) -> Answer {
    const uint32_t mask = input.Word("resolveArg2");
    const Query query{.address = input.Word("resolveArg1"), .mask = mask != 0 ? mask : ~0U};
    const RouteRow* found = LongestPrefix(instance.routes, query);
    if (!found) return {.error = ENOENT};
    return RecordAnswer<kRouteRecord>(ShowRoute, found->first, found->second);
  });
}

Answer Handle(const State& state, const Input<"GetLifSelectionRoutes">& input) {
  return OnInstance(state, input, [](const Instance& instance) {
    return SelectionAnswer<kRouteRecord>(
        instance, RoutesOverLifs,
        [](auto record, const RouteRow* row) { ShowRoute(record, row->first, row->second); });
  });
}

}  // namespace vdrsim
