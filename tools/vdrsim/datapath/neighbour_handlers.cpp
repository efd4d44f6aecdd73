#include <cerrno>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "datapath/answers.h"
#include "datapath/caps.h"
#include "datapath/mac_text.h"
#include "datapath/neighbour_record.h"
#include "datapath/objects.h"
#include "datapath/route_handlers.h"

namespace vdrsim {

namespace {

// One kind of neighbours of a LIF.
using Kind = Neighbours Lif::*;
// The kinds that a list shows, one after another for each LIF.
using Kinds = std::span<const Kind>;

constexpr Kind kArps[] = {&Lif::arps};
constexpr Kind kProxyArps[] = {&Lif::proxyArps};
// No getter asks for IPv6 proxies alone, so they stand with the neighbours.
constexpr Kind kIpv6Neighbours[] = {&Lif::ipv6Neighbours, &Lif::ipv6Proxies};

size_t CountOf(const Instance& instance, Kinds kinds) {
  size_t count = 0;
  for (const auto& [name, lif] : instance.lifs) {
    for (const Kind kind : kinds) count += (lif.*kind).size();
  }
  return count;
}

// There is room for as many of an instance as its list holds.
template <size_t Index>
int SetNeighbour(State& state, const InputOf<Index>& input, Kind kind, Kinds listed,
                 const std::optional<Neighbour>& neighbour) {
  return OnInstance(state, input, [&](Instance& instance) {
    const size_t left = kMostNeighbours - CountOf(instance, listed);
    return OnCounted(input, instance.lifs, input.ObjectName("ifName"), [&](Lif& lif) {
      if (!neighbour) return EINVAL;
      Neighbours& known = lif.*kind;
      return known.Set(AddressOf(input), known.size() + left, [&](Neighbour& updated) {
        updated = *neighbour;
        return 0;
      });
    });
  });
}

template <size_t Index>
int DeleteNeighbour(State& state, const InputOf<Index>& input, Kind kind) {
  return OnInstance(state, input, [&](Instance& instance) {
    return OnCounted(input, instance.lifs, input.ObjectName("ifName"),
                     [&](Lif& lif) { return (lif.*kind).Delete(AddressOf(input)); });
  });
}

std::optional<Neighbour> NeighbourOf(std::string_view macText) {
  const auto mac = ParseMac(macText);
  if (!mac) return std::nullopt;
  return Neighbour{.macText = std::string(macText), .mac = *mac};
}

// A neighbour and where it is, as they stand in a snapshot.
struct NamedNeighbour {
  std::string_view interface;
  const IpAddress* address;
  const Neighbour* neighbour;
};

// Those of one LIF, or of all when none is named.
std::vector<NamedNeighbour> NeighboursOf(const Table<std::string, Lif>& lifs,
                                         std::string_view interface, Kinds kinds) {
  std::vector<NamedNeighbour> found;
  for (const auto& [name, lif] : lifs) {
    if (!interface.empty() && interface != name) continue;
    for (const Kind kind : kinds) {
      for (const auto& [address, neighbour] : lif.*kind) {
        found.push_back({name, &address, &neighbour});
      }
    }
  }
  return found;
}

Answer NeighboursAnswer(const Table<std::string, Lif>& lifs, std::string_view interface,
                        Kinds kinds) {
  return SelectionAnswer<kNeighbourRecord>(
      lifs,
      [interface = std::string(interface), kinds](const auto& snapshot) {
        return NeighboursOf(snapshot, interface, kinds);
      },
      [](auto record, const NamedNeighbour& row) {
        ShowNeighbour(record, row.interface, *row.address, *row.neighbour);
      });
}

template <size_t Index>
Answer ListNeighbours(const State& state, const InputOf<Index>& input, Kinds kinds) {
  return OnInstance(state, input, [&](const Instance& instance) -> Answer {
    const auto name = input.OptionalName("ifName");
    if (!name) return {.error = EINVAL};
    const auto list = [&](const auto&) { return NeighboursAnswer(instance.lifs, *name, kinds); };
    return name->empty() ? list(instance) : OnCounted(input, instance.lifs, name, list);
  });
}

template <size_t Index>
int ClearNeighbours(State& state, const InputOf<Index>& input, Kind kind) {
  return OnInstance(state, input, [&](Instance& instance) {
    const auto name = input.OptionalName("ifName");
    if (!name) return EINVAL;
    const auto clear = [&](Lif& lif) { (lif.*kind).Clear(); };
    if (!name->empty()) return OnCounted(input, instance.lifs, name, clear);
    instance.lifs.ForEach(clear);
    return 0;
  });
}

}  // namespace

int Handle(State& state, const Input<"SetArp">& input) {
  return SetNeighbour(state, input, &Lif::arps, kArps, NeighbourOf(input.Text("macText")));
}

int Handle(State& state, const Input<"SetProxyArp">& input) {
  return SetNeighbour(state, input, &Lif::proxyArps, kProxyArps, Neighbour{});
}

int Handle(State& state, const Input<"SetArpv6">& input) {
  return SetNeighbour(state, input, &Lif::ipv6Neighbours, kIpv6Neighbours,
                      NeighbourOf(input.Text("macText")));
}

int Handle(State& state, const Input<"SetProxyArpv6">& input) {
  return SetNeighbour(state, input, &Lif::ipv6Proxies, kIpv6Neighbours, Neighbour{});
}

int Handle(State& state, const Input<"DelArp">& input) {
  return DeleteNeighbour(state, input, &Lif::arps);
}

int Handle(State& state, const Input<"DelProxyArp">& input) {
  return DeleteNeighbour(state, input, &Lif::proxyArps);
}

int Handle(State& state, const Input<"DelArpv6">& input) {
  return DeleteNeighbour(state, input, &Lif::ipv6Neighbours);
}

int Handle(State& state, const Input<"DelProxyArpv6">& input) {
  return DeleteNeighbour(state, input, &Lif::ipv6Proxies);
}

Answer Handle(const State& state, const Input<"GetArps">& input) {
  return ListNeighbours(state, input, kArps);
}

Answer Handle(const State& state, const Input<"GetProxyArps">& input) {
  return ListNeighbours(state, input, kProxyArps);
}

Answer Handle(const State& state, const Input<"GetArpsv6">& input) {
  return ListNeighbours(state, input, kIpv6Neighbours);
}

int Handle(State& state, const Input<"ClearArp">& input) {
  return ClearNeighbours(state, input, &Lif::arps);
}

int Handle(State& state, const Input<"ClearArpv6">& input) {
  return ClearNeighbours(state, input, &Lif::ipv6Neighbours);
}

}  // namespace vdrsim
