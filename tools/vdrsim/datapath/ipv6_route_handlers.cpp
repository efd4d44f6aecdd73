#include <cerrno>
#include <optional>

#include "datapath/answers.h"
#include "datapath/caps.h"
#include "datapath/objects.h"
#include "datapath/route_handlers.h"
#include "datapath/route_record.h"

namespace vdrsim {

namespace {

template <size_t Index>
std::optional<Ipv6RouteKey> RouteKeyOf(const InputOf<Index>& input) {
  const auto interface = input.OptionalName("ifName");
  if (!interface) return std::nullopt;
  return Ipv6RouteKey{
      .destination = IpAddressOf(input.Quad("destPart1"), input.Quad("destPart2")),
      .prefixLength = input.Byte("prefixLength"),
      .gateway = IpAddressOf(input.Quad("gatewayPart1"), input.Quad("gatewayPart2")),
      .interface = std::string(*interface)};
}

}  // namespace

// All that a route says is its key, so there is nothing to update.
int Handle(State& state, const Input<"SetRoutev6">& input) {
  return OnInstance(state, input, [&](Instance& instance) {
    const auto key = RouteKeyOf(input);
    if (!key) return EINVAL;
    return instance.ipv6Routes.Set(*key, kMostIpv6Routes, [](Ipv6Route&) { return 0; });
  });
}

int Handle(State& state, const Input<"DelRoutev6">& input) {
  return OnInstance(state, input, [&](Instance& instance) {
    const auto key = RouteKeyOf(input);
    return key ? instance.ipv6Routes.Delete(*key) : EINVAL;
  });
}

Answer Handle(const State& state, const Input<"GetRoutesv6", 115>& input) {
  return OnInstance(state, input, [](const Instance& instance) {
    return NumberAnswer(static_cast<uint32_t>(instance.ipv6Routes.size()));
  });
}

Answer Handle(const State& state, const Input<"GetRoutesv6", 114>& input) {
  return OnInstance(state, input, [](const Instance& instance) {
    return TableAnswer<kIpv6RouteRecord>(instance.ipv6Routes, ShowIpv6Route);
  });
}

}  // namespace vdrsim
