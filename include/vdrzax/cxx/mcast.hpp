#pragma once

#include <vdrzax/mcast.h>

#include <vdrzax/cxx/call.hpp>

// Multicast routing of a router instance.
namespace vdrzax {
inline namespace v1 {

// A local receiver.
class LocalReceiver : public View<MRoutingLocalRcvr> {
 public:
  using View::View;

  std::string_view rcvr_name() const noexcept { return text(raw().rcvrName); }
  std::uint32_t value64() const noexcept { return raw().value64; }
  std::uint32_t value68() const noexcept { return raw().value68; }
  Bytes<16> address() const noexcept { return copy<Bytes<16>>(offsetof(Record, address)); }

  static void release(RecordList* list) noexcept { VDRZAX_ReleaseMRoutingLocalRcvrs(list); }
};

// A remote receiver.
class RemoteReceiver : public View<VtepEntry> {
 public:
  using View::View;

  static void release(VTEPTable* table) noexcept { VDRZAX_ReleaseVTEPTable(table); }
};

// The multicast routing domain of an instance.
class McastDomain : public View<MRoutingDomain> {
 public:
  using View::View;

  std::string_view domain_name() const noexcept { return text(raw().domainName); }
  std::string_view domain_label() const noexcept { return text(raw().domainLabel); }
  Bytes<32> domain_data() const noexcept { return copy<Bytes<32>>(offsetof(Record, domainData)); }
  std::uint32_t domain_value() const noexcept { return raw().domainValue; }

  static void release(MRoutingDomain* record) noexcept { VDRZAX_ReleaseMRoutingDomainData(record); }
};

// A multicast group.
class McastGroup : public View<MRoutingMcastGroup> {
 public:
  using View::View;

  std::uint32_t group0() const noexcept { return raw().group0; }
  std::uint32_t group1() const noexcept { return raw().group1; }
  std::uint32_t group2() const noexcept { return raw().group2; }

  static void release(RecordList* list) noexcept { VDRZAX_ReleaseMRoutingMcastGroups(list); }
};

// What a remote receiver is added with.
struct RemoteReceiverSettings {
  std::uint32_t a = 0;
  std::uint32_t b = 0;
  Mac c = {};
  std::uint32_t d = 0;
  std::uint32_t e = 0;
};

class McastCalls {
 public:
  result<List<LocalReceiver>> try_mrouting_local_rcvrs(Text instance_name,
                                                       std::uint32_t key) const noexcept {
    return detail::ReadList<LocalReceiver>("VDRZAX_GetMRoutingLocalRcvrs",
                                           VDRZAX_GetMRoutingLocalRcvrs,
                                           detail::Name(instance_name), key);
  }
  result<void> try_add_mrouting_local_rcvr(Text instance_name, std::uint32_t key,
                                           Text rcvr_name = {}) const noexcept {
    return detail::Command("VDRZAX_AddMRoutingLocalRcvrs", VDRZAX_AddMRoutingLocalRcvrs,
                           detail::Name(instance_name), key, detail::OptionalName(rcvr_name));
  }
  result<void> try_delete_mrouting_local_rcvr(Text instance_name, std::uint32_t key,
                                              Text rcvr_name = {}) const noexcept {
    return detail::Command("VDRZAX_DelMRoutingLocalRcvrs", VDRZAX_DelMRoutingLocalRcvrs,
                           detail::Name(instance_name), key, detail::OptionalName(rcvr_name));
  }
  result<List<RemoteReceiver, VTEPTable>> try_mrouting_remote_rcvrs(
      Text instance_name, std::uint32_t key) const noexcept {
    return detail::ReadList<RemoteReceiver, VTEPTable>("VDRZAX_GetMRoutingRemoteRcvrs",
                                                       VDRZAX_GetMRoutingRemoteRcvrs,
                                                       detail::Name(instance_name), key);
  }
  result<void> try_add_mrouting_remote_rcvr(Text instance_name,
                                            const RemoteReceiverSettings& settings) const noexcept {
    return detail::Command("VDRZAX_AddMRoutingRemoteRcvrs", VDRZAX_AddMRoutingRemoteRcvrs,
                           detail::Name(instance_name), settings.a, settings.b,
                           detail::Address(settings.c), settings.d, settings.e);
  }
  result<void> try_delete_mrouting_remote_rcvr(Text instance_name, std::uint32_t a,
                                               std::uint32_t b) const noexcept {
    return detail::Command("VDRZAX_DelMRoutingRemoteRcvrs", VDRZAX_DelMRoutingRemoteRcvrs,
                           detail::Name(instance_name), a, b);
  }
  result<Owned<McastDomain>> try_mrouting_domain(Text instance_name) const noexcept {
    return detail::Record<McastDomain>("VDRZAX_GetMRoutingDomain", VDRZAX_GetMRoutingDomain,
                                       detail::Name(instance_name));
  }
  result<Owned<McastDomain>> try_find_mrouting_domain(Text instance_name) const noexcept {
    return detail::Found(try_mrouting_domain(instance_name));
  }
  result<List<McastGroup>> try_mrouting_mcast_groups(Text instance_name) const noexcept {
    return detail::ReadList<McastGroup>("VDRZAX_GetMRoutingAllMcastGroups",
                                        VDRZAX_GetMRoutingAllMcastGroups,
                                        detail::Name(instance_name));
  }
  result<std::uint32_t> try_mrouting_replication_ip(Text instance_name,
                                                    std::uint32_t key) const noexcept {
    return detail::Number("VDRZAX_GetMRoutingReplicationIP", VDRZAX_GetMRoutingReplicationIP,
                          detail::Name(instance_name), key);
  }
  result<std::uint32_t> try_mrouting_mrouter_ip(Text instance_name,
                                                std::uint32_t key) const noexcept {
    return detail::Number("VDRZAX_GetMRoutingMRouterIP", VDRZAX_GetMRoutingMRouterIP,
                          detail::Name(instance_name), key);
  }
  result<void> try_add_mrouting_mrouter(Text instance_name, std::uint32_t ip) const noexcept {
    return detail::Command("VDRZAX_AddMRoutingMRouter", VDRZAX_AddMRoutingMRouter,
                           detail::Name(instance_name), ip);
  }
  result<void> try_delete_mrouting_mrouter(Text instance_name) const noexcept {
    return detail::Command("VDRZAX_DelMRoutingMRouter", VDRZAX_DelMRoutingMRouter,
                           detail::Name(instance_name));
  }

#ifdef __cpp_exceptions
  List<LocalReceiver> mrouting_local_rcvrs(Text instance_name, std::uint32_t key) const {
    return try_mrouting_local_rcvrs(instance_name, key).value();
  }
  void add_mrouting_local_rcvr(Text instance_name, std::uint32_t key, Text rcvr_name = {}) const {
    return try_add_mrouting_local_rcvr(instance_name, key, rcvr_name).value();
  }
  void delete_mrouting_local_rcvr(Text instance_name, std::uint32_t key,
                                  Text rcvr_name = {}) const {
    return try_delete_mrouting_local_rcvr(instance_name, key, rcvr_name).value();
  }
  List<RemoteReceiver, VTEPTable> mrouting_remote_rcvrs(Text instance_name,
                                                        std::uint32_t key) const {
    return try_mrouting_remote_rcvrs(instance_name, key).value();
  }
  void add_mrouting_remote_rcvr(Text instance_name, const RemoteReceiverSettings& settings) const {
    return try_add_mrouting_remote_rcvr(instance_name, settings).value();
  }
  void delete_mrouting_remote_rcvr(Text instance_name, std::uint32_t a, std::uint32_t b) const {
    return try_delete_mrouting_remote_rcvr(instance_name, a, b).value();
  }
  Owned<McastDomain> mrouting_domain(Text instance_name) const {
    return try_mrouting_domain(instance_name).value();
  }
  Owned<McastDomain> find_mrouting_domain(Text instance_name) const {
    return try_find_mrouting_domain(instance_name).value();
  }
  List<McastGroup> mrouting_mcast_groups(Text instance_name) const {
    return try_mrouting_mcast_groups(instance_name).value();
  }
  std::uint32_t mrouting_replication_ip(Text instance_name, std::uint32_t key) const {
    return try_mrouting_replication_ip(instance_name, key).value();
  }
  std::uint32_t mrouting_mrouter_ip(Text instance_name, std::uint32_t key) const {
    return try_mrouting_mrouter_ip(instance_name, key).value();
  }
  void add_mrouting_mrouter(Text instance_name, std::uint32_t ip) const {
    return try_add_mrouting_mrouter(instance_name, ip).value();
  }
  void delete_mrouting_mrouter(Text instance_name) const {
    return try_delete_mrouting_mrouter(instance_name).value();
  }
#endif
};

}  // namespace v1
}  // namespace vdrzax
