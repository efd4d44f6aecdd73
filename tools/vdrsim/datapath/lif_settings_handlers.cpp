#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

#include "datapath/caps.h"
#include "datapath/lif_handlers.h"
#include "datapath/lif_record.h"
#include "datapath/objects.h"

namespace vdrsim {

namespace {

// The address alone says which one is meant.
auto FindAddress(Lif& lif, const LifAddress& sought) {
  return std::ranges::find_if(lif.addresses, [&](const LifAddress& known) {
    return known.family == sought.family && known.address == sought.address;
  });
}

int SetAddress(Lif& lif, const LifAddress& address) {
  const auto known = FindAddress(lif, address);
  if (known != lif.addresses.end()) {
    *known = address;
    return 0;
  }
  if (lif.addresses.size() == kMostLifAddresses) return ENOSPC;
  lif.addresses.push_back(address);
  return 0;
}

int DeleteAddress(Lif& lif, const LifAddress& address) {
  const auto known = FindAddress(lif, address);
  if (known == lif.addresses.end()) return ENOENT;
  lif.addresses.erase(known);
  return 0;
}

template <size_t Index>
LifAddress Ipv4Of(const InputOf<Index>& input) {
  return {.address = {input.Word("ip")}, .mask = input.Word("mask")};
}

template <size_t Index>
LifAddress Ipv6Of(const InputOf<Index>& input) {
  LifAddress address{.family = LifAddress::kIpv6, .prefixLength = input.Byte("prefixLength")};
  const uint64_t parts[] = {input.Quad("addrHigh"), input.Quad("addrLow")};
  std::memcpy(address.address.data(), parts, sizeof parts);
  return address;
}

RelayServer RelayServerAt(std::span<const std::byte> slots, size_t index) {
  RelayServer server{};
  const auto slot = slots.subspan(index * 20, 20);
  std::memcpy(server.address.data(), slot.data(), 16);
  std::memcpy(&server.family, slot.subspan(16).data(), 4);
  return server;
}

bool HasKnownFamily(const RelayServer& server) {
  return server.family == LifAddress::kIpv4 || server.family == LifAddress::kIpv6;
}

}  // namespace

int Handle(State& state, const Input<"SetLifIp">& input) {
  return OnLif(state, input, [&](Lif& lif) { return SetAddress(lif, Ipv4Of(input)); });
}

int Handle(State& state, const Input<"DelLifIp">& input) {
  return OnLif(state, input, [&](Lif& lif) { return DeleteAddress(lif, Ipv4Of(input)); });
}

int Handle(State& state, const Input<"SetLifIpv6">& input) {
  return OnLif(state, input, [&](Lif& lif) { return SetAddress(lif, Ipv6Of(input)); });
}

int Handle(State& state, const Input<"DelLifIpv6">& input) {
  return OnLif(state, input, [&](Lif& lif) { return DeleteAddress(lif, Ipv6Of(input)); });
}

int Handle(State& state, const Input<"SetLifDIIp">& input) {
  return OnLif(state, input, [&](Lif& lif) { lif.diIp = input.Word("ip"); });
}

int Handle(State& state, const Input<"SetLifVxlanMulticastIp">& input) {
  return OnLif(state, input, [&](Lif& lif) { lif.vxlanMulticastIp = input.Word("ip"); });
}

int Handle(State& state, const Input<"SetLifVxlanCP">& input) {
  return OnLif(state, input, [](Lif& lif) { lif.isUnderVxlanControl = true; });
}

int Handle(State& state, const Input<"DelLifVxlanCP">& input) {
  return OnLif(state, input, [](Lif& lif) { lif.isUnderVxlanControl = false; });
}

int Handle(State& state, const Input<"EnableLif">& input) {
  return OnLif(state, input, [](Lif& lif) { lif.isEnabled = true; });
}

int Handle(State& state, const Input<"DisableLif">& input) {
  return OnLif(state, input, [](Lif& lif) { lif.isEnabled = false; });
}

int Handle(State& state, const Input<"RAMTUSetv6">& input) {
  return OnLif(state, input, [&](Lif& lif) { lif.mtu = input.Word("mtu"); });
}

int Handle(State& state, const Input<"SetLifMcastRouting", 125>& input) {
  return OnLif(state, input, [](Lif& lif) { lif.routesMulticast = true; });
}

int Handle(State& state, const Input<"SetLifMcastRouting", 126>& input) {
  return OnLif(state, input, [](Lif& lif) { lif.routesMulticast = false; });
}

int Handle(State& state, const Input<"SetMcastRouting">& input) {
  return OnInstance(state, input, [&](Instance& instance) {
    instance.mcastRouting = {.name2 = std::string(input.Text("name2")),
                             .value1 = input.Word("value1"),
                             .value2 = input.Word("value2"),
                             .value3 = input.Half("value3"),
                             .flag = input.Byte("flag")};
  });
}

// The library sends none, which clears them.
int Handle(State& state, const Input<"ConfigureLifDhcpRelay">& input) {
  return OnLif(state, input, [&](Lif& lif) {
    const uint32_t count = input.Word("count");
    if (count > kMostRelayServers) return EINVAL;
    std::vector<RelayServer> servers;
    for (size_t index = 0; index < count; ++index) {
      servers.push_back(RelayServerAt(input.Bytes("servers"), index));
    }
    if (!std::ranges::all_of(servers, HasKnownFamily)) return EINVAL;
    lif.relayServers = std::move(servers);
    return 0;
  });
}

}  // namespace vdrsim
