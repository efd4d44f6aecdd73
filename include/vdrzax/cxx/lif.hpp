#pragma once

#include <vdrzax/lif.h>

#include <vdrzax/cxx/call.hpp>

// Logical interfaces (LIFs), their addresses and settings.
namespace vdrzax {
inline namespace v1 {

// A sub-entry of a LIF.
class LifSub : public View<LifSubEntry> {
 public:
  using View::View;

  std::array<std::uint32_t, 5> words0() const noexcept {
    return copy<std::array<std::uint32_t, 5>>(offsetof(Record, words0));
  }
  std::uint8_t byte20() const noexcept { return raw().byte20; }
};

// A LIF.
class Lif : public View<LifRecord> {
 public:
  using View::View;

  std::string_view name() const noexcept { return text(raw().name); }
  std::string_view aux_name() const noexcept { return text(raw().auxName); }
  std::uint32_t word128() const noexcept { return raw().word128; }
  std::uint32_t word132() const noexcept { return raw().word132; }
  std::uint32_t word136() const noexcept { return raw().word136; }
  std::uint32_t word140() const noexcept { return raw().word140; }
  std::uint16_t half144() const noexcept { return raw().half144; }
  std::uint32_t word146() const noexcept { return raw().word146; }
  std::uint32_t word150() const noexcept { return raw().word150; }
  std::uint32_t word154() const noexcept { return raw().word154; }
  std::uint8_t byte158() const noexcept { return raw().byte158; }
  std::uint8_t byte159() const noexcept { return raw().byte159; }
  std::uint8_t byte160() const noexcept { return raw().byte160; }
  std::uint8_t byte161() const noexcept { return raw().byte161; }
  Bytes<164> blob162() const noexcept { return copy<Bytes<164>>(offsetof(Record, blob162)); }
  // At most the ten that there is room for.
  Range<LifSub> sub_entries() const noexcept {
    return {raw().subEntries, std::min<std::size_t>(sub_entry_count(), 10)};
  }
  std::uint32_t sub_entry_count() const noexcept { return raw().subEntryCount; }
  std::uint8_t byte570() const noexcept { return raw().byte570; }
  std::uint8_t byte571() const noexcept { return raw().byte571; }
  std::uint32_t word572() const noexcept { return raw().word572; }
  std::uint8_t byte576() const noexcept { return raw().byte576; }
  std::string_view description() const noexcept { return text(raw().description); }

  static void release(LifRecord* record) noexcept { VDRZAX_ReleaseLif(record); }
  static void release(RecordList* list) noexcept { VDRZAX_ReleaseLifs(list); }
};

// What a LIF is set to. The low 29 bits of `flags_word` are flags, the high three choose the mode.
struct LifSettings {
  Text aux_name = "";
  std::uint32_t a3 = 0;
  std::uint32_t a4 = 0;
  std::uint32_t a5 = 0;
  std::uint32_t a6 = 0;
  std::uint32_t a7 = 0;
  std::int32_t flags_word = 0;
  std::optional<Mac> extra = {};
};

// An IPv6 address of a LIF, in two halves that are stored as the numbers are given.
struct LifIpv6 {
  std::uint64_t addr_high = 0;
  std::uint64_t addr_low = 0;
  std::uint8_t prefix_length = 0;
};

// How multicast is routed. `name2` is required.
struct McastRoutingSettings {
  Text name2 = "";
  std::uint32_t value1 = 0;
  std::uint32_t value2 = 0;
  std::uint16_t value3 = 0;
  std::uint8_t flag = 0;
};

namespace detail {

// The C function succeeds once the kernel has replied, also when the list could not be made; the header
// is then gone and errno tells. errno is 0 before.
inline int GetLifs(const char* instance_name, RecordList** out) noexcept {
  const int status = VDRZAX_GetLifs(instance_name, out);
  return errno == EBADMSG || errno == ENOMEM ? -1 : status;
}

}  // namespace detail

class LifCalls {
 public:
  result<Owned<Lif>> try_lif(Text instance_name, Text lif_name) const noexcept {
    return detail::Record<Lif>("VDRZAX_GetLif", VDRZAX_GetLif, detail::Name(instance_name),
                               detail::Name(lif_name));
  }
  result<Owned<Lif>> try_find_lif(Text instance_name, Text lif_name) const noexcept {
    return detail::Found(try_lif(instance_name, lif_name));
  }
  result<Owned<Lif>> try_bridge_lif(Text instance_name, Text lif_name) const noexcept {
    return detail::Record<Lif>("VDRZAX_GetBridgeLif", VDRZAX_GetBridgeLif,
                               detail::Name(instance_name), detail::Name(lif_name));
  }
  result<Owned<Lif>> try_find_bridge_lif(Text instance_name, Text lif_name) const noexcept {
    return detail::Found(try_bridge_lif(instance_name, lif_name));
  }
  // A reply that can't be made a list is a failure here, unlike in the C function.
  result<List<Lif>> try_lifs(Text instance_name) const noexcept {
    return detail::ReadList<Lif>("VDRZAX_GetLifs", detail::GetLifs, detail::Name(instance_name));
  }
  result<List<Lif>> try_ext_vlan_lifs(std::uint16_t vlan_id) const noexcept {
    return detail::ReadList<Lif>("VDRZAX_GetExtVlanLifs", VDRZAX_GetExtVlanLifs, vlan_id);
  }
  result<List<Lif>> try_bridge_lifs(Text instance_name) const noexcept {
    return detail::ReadList<Lif>("VDRZAX_GetBridgeLifs", VDRZAX_GetBridgeLifs,
                                 detail::Name(instance_name));
  }
  result<void> try_set_lif(Text instance_name, Text lif_name,
                           const LifSettings& settings = {}) const noexcept {
    return detail::Command("VDRZAX_SetLif", VDRZAX_SetLif, detail::Name(lif_name),
                           detail::Name(settings.aux_name), settings.a3, settings.a4, settings.a5,
                           settings.a6, settings.a7, settings.flags_word,
                           detail::Name(instance_name), detail::OptionalAddress(settings.extra));
  }
  result<void> try_delete_lif(Text instance_name, Text lif_name,
                              Text aux_name = "") const noexcept {
    return detail::Command("VDRZAX_DelLif", VDRZAX_DelLif, detail::Name(lif_name),
                           detail::Name(aux_name), detail::Name(instance_name));
  }
  result<void> try_set_lif_di_ip(Text instance_name, Text lif_name,
                                 std::uint32_t ip) const noexcept {
    return detail::Command("VDRZAX_SetLifDIIp", VDRZAX_SetLifDIIp, detail::Name(instance_name),
                           detail::Name(lif_name), ip);
  }
  result<void> try_set_lif_vxlan_multicast_ip(Text instance_name, Text lif_name,
                                              std::uint32_t ip) const noexcept {
    return detail::Command("VDRZAX_SetLifVxlanMulticastIp", VDRZAX_SetLifVxlanMulticastIp,
                           detail::Name(instance_name), detail::Name(lif_name), ip);
  }
  result<void> try_set_lif_ip(Text instance_name, Text lif_name, std::uint32_t ip,
                              std::uint32_t mask) const noexcept {
    return detail::Command("VDRZAX_SetLifIp", VDRZAX_SetLifIp, detail::Name(instance_name),
                           detail::Name(lif_name), ip, mask);
  }
  result<void> try_delete_lif_ip(Text instance_name, Text lif_name, std::uint32_t ip,
                                 std::uint32_t mask) const noexcept {
    return detail::Command("VDRZAX_DelLifIp", VDRZAX_DelLifIp, detail::Name(instance_name),
                           detail::Name(lif_name), ip, mask);
  }
  result<void> try_set_lif_ipv6(Text instance_name, Text lif_name,
                                const LifIpv6& address) const noexcept {
    return detail::Command("VDRZAX_SetLifIpv6", VDRZAX_SetLifIpv6, detail::Name(instance_name),
                           detail::Name(lif_name), address.addr_high, address.addr_low,
                           address.prefix_length);
  }
  result<void> try_delete_lif_ipv6(Text instance_name, Text lif_name,
                                   const LifIpv6& address) const noexcept {
    return detail::Command("VDRZAX_DelLifIpv6", VDRZAX_DelLifIpv6, detail::Name(instance_name),
                           detail::Name(lif_name), address.addr_high, address.addr_low,
                           address.prefix_length);
  }
  result<void> try_set_lif_vxlan_cp(Text instance_name, Text lif_name) const noexcept {
    return detail::Command("VDRZAX_SetLifVxlanCP", VDRZAX_SetLifVxlanCP,
                           detail::Name(instance_name), detail::Name(lif_name));
  }
  result<void> try_delete_lif_vxlan_cp(Text instance_name, Text lif_name) const noexcept {
    return detail::Command("VDRZAX_DelLifVxlanCP", VDRZAX_DelLifVxlanCP,
                           detail::Name(instance_name), detail::Name(lif_name));
  }
  result<void> try_enable_lif(Text instance_name, Text lif_name) const noexcept {
    return detail::Command("VDRZAX_EnableLif", VDRZAX_EnableLif, detail::Name(instance_name),
                           detail::Name(lif_name));
  }
  result<void> try_disable_lif(Text instance_name, Text lif_name) const noexcept {
    return detail::Command("VDRZAX_DisableLif", VDRZAX_DisableLif, detail::Name(instance_name),
                           detail::Name(lif_name));
  }
  // The library refuses every list of servers, so none can be given.
  result<void> try_clear_lif_dhcp_relay(Text instance_name, Text lif_name) const noexcept {
    return detail::Command("VDRZAX_ConfigureLifDhcpRelay", VDRZAX_ConfigureLifDhcpRelay,
                           detail::Name(instance_name), detail::Name(lif_name),
                           static_cast<char*>(nullptr));
  }
  result<void> try_set_ra_mtu_v6(Text instance_name, Text lif_name,
                                 std::uint32_t mtu) const noexcept {
    return detail::Command("VDRZAX_RAMTUSetv6", VDRZAX_RAMTUSetv6, detail::Name(instance_name),
                           detail::Name(lif_name), mtu);
  }
  result<void> try_set_lif_mcast_routing(Text instance_name, Text lif_name,
                                         bool enable) const noexcept {
    return detail::Command("VDRZAX_SetLifMcastRouting", VDRZAX_SetLifMcastRouting,
                           detail::Name(instance_name), detail::Name(lif_name), enable);
  }
  result<void> try_set_mcast_routing(Text instance_name,
                                     const McastRoutingSettings& settings = {}) const noexcept {
    return detail::Command("VDRZAX_SetMcastRouting", VDRZAX_SetMcastRouting,
                           detail::Name(instance_name), detail::Name(settings.name2),
                           settings.value1, settings.value2, settings.value3, settings.flag);
  }

#ifdef __cpp_exceptions
  Owned<Lif> lif(Text instance_name, Text lif_name) const {
    return try_lif(instance_name, lif_name).value();
  }
  Owned<Lif> find_lif(Text instance_name, Text lif_name) const {
    return try_find_lif(instance_name, lif_name).value();
  }
  Owned<Lif> bridge_lif(Text instance_name, Text lif_name) const {
    return try_bridge_lif(instance_name, lif_name).value();
  }
  Owned<Lif> find_bridge_lif(Text instance_name, Text lif_name) const {
    return try_find_bridge_lif(instance_name, lif_name).value();
  }
  List<Lif> lifs(Text instance_name) const { return try_lifs(instance_name).value(); }
  List<Lif> ext_vlan_lifs(std::uint16_t vlan_id) const {
    return try_ext_vlan_lifs(vlan_id).value();
  }
  List<Lif> bridge_lifs(Text instance_name) const { return try_bridge_lifs(instance_name).value(); }
  void set_lif(Text instance_name, Text lif_name, const LifSettings& settings = {}) const {
    return try_set_lif(instance_name, lif_name, settings).value();
  }
  void delete_lif(Text instance_name, Text lif_name, Text aux_name = "") const {
    return try_delete_lif(instance_name, lif_name, aux_name).value();
  }
  void set_lif_di_ip(Text instance_name, Text lif_name, std::uint32_t ip) const {
    return try_set_lif_di_ip(instance_name, lif_name, ip).value();
  }
  void set_lif_vxlan_multicast_ip(Text instance_name, Text lif_name, std::uint32_t ip) const {
    return try_set_lif_vxlan_multicast_ip(instance_name, lif_name, ip).value();
  }
  void set_lif_ip(Text instance_name, Text lif_name, std::uint32_t ip, std::uint32_t mask) const {
    return try_set_lif_ip(instance_name, lif_name, ip, mask).value();
  }
  void delete_lif_ip(Text instance_name, Text lif_name, std::uint32_t ip,
                     std::uint32_t mask) const {
    return try_delete_lif_ip(instance_name, lif_name, ip, mask).value();
  }
  void set_lif_ipv6(Text instance_name, Text lif_name, const LifIpv6& address) const {
    return try_set_lif_ipv6(instance_name, lif_name, address).value();
  }
  void delete_lif_ipv6(Text instance_name, Text lif_name, const LifIpv6& address) const {
    return try_delete_lif_ipv6(instance_name, lif_name, address).value();
  }
  void set_lif_vxlan_cp(Text instance_name, Text lif_name) const {
    return try_set_lif_vxlan_cp(instance_name, lif_name).value();
  }
  void delete_lif_vxlan_cp(Text instance_name, Text lif_name) const {
    return try_delete_lif_vxlan_cp(instance_name, lif_name).value();
  }
  void enable_lif(Text instance_name, Text lif_name) const {
    return try_enable_lif(instance_name, lif_name).value();
  }
  void disable_lif(Text instance_name, Text lif_name) const {
    return try_disable_lif(instance_name, lif_name).value();
  }
  void clear_lif_dhcp_relay(Text instance_name, Text lif_name) const {
    return try_clear_lif_dhcp_relay(instance_name, lif_name).value();
  }
  void set_ra_mtu_v6(Text instance_name, Text lif_name, std::uint32_t mtu) const {
    return try_set_ra_mtu_v6(instance_name, lif_name, mtu).value();
  }
  void set_lif_mcast_routing(Text instance_name, Text lif_name, bool enable) const {
    return try_set_lif_mcast_routing(instance_name, lif_name, enable).value();
  }
  void set_mcast_routing(Text instance_name, const McastRoutingSettings& settings = {}) const {
    return try_set_mcast_routing(instance_name, settings).value();
  }
#endif
};

}  // namespace v1
}  // namespace vdrzax
