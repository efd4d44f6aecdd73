#pragma once

#include <vdrzax/route.h>

#include <vdrzax/cxx/call.hpp>

// Routes, neighbours and the flush of tables.
namespace vdrzax {
inline namespace v1 {

// A next hop of a route.
class NextHop : public View<RouteNextHop> {
 public:
  using View::View;

  std::uint32_t hop_word() const noexcept { return raw().hopWord; }
  std::string_view hop_name() const noexcept { return text(raw().hopName); }
  std::uint64_t hop_qword() const noexcept { return raw().hopQword; }
};

// An IPv4 route.
class Route : public View<RouteRecord> {
 public:
  using View::View;

  std::uint32_t route_word0() const noexcept { return raw().routeWord0; }
  std::uint32_t route_word1() const noexcept { return raw().routeWord1; }
  std::uint32_t route_word2() const noexcept { return raw().routeWord2; }
  std::uint32_t route_word3() const noexcept { return raw().routeWord3; }
  std::uint8_t route_byte() const noexcept { return raw().routeByte; }
  std::uint8_t next_hop_count() const noexcept { return raw().nextHopCount; }
  std::uint64_t route_qword() const noexcept { return raw().routeQword; }
  // At most the eight that there is room for.
  Range<NextHop> next_hops() const noexcept {
    return {raw().nextHops, std::min<std::size_t>(next_hop_count(), 8)};
  }

  static void release(RouteRecord* record) noexcept { VDRZAX_ReleaseRoute(record); }
  static void release(RecordList* list) noexcept { VDRZAX_ReleaseRoutes(list); }
};

// A demultiplexing route.
class DemuxRoute : public View<DemuxRouteRecord> {
 public:
  using View::View;

  std::uint32_t demux_word0() const noexcept { return raw().demuxWord0; }
  std::uint32_t demux_word1() const noexcept { return raw().demuxWord1; }
  std::uint32_t demux_word2() const noexcept { return raw().demuxWord2; }
  std::uint64_t demux_qword() const noexcept { return raw().demuxQword; }
  std::string_view demux_name1() const noexcept { return text(raw().demuxName1); }
  std::string_view demux_name2() const noexcept { return text(raw().demuxName2); }

  static void release(RecordList* list) noexcept { VDRZAX_ReleaseDemuxRoutes(list); }
};

// What an IPv4 route is set to; `if_name` may be left out.
struct RouteSettings {
  std::uint32_t route_arg1 = 0;
  std::uint32_t route_arg2 = 0;
  std::uint32_t route_arg3 = 0;
  Text if_name = {};
  std::uint32_t route_flags = 0;
};

// What an IPv4 route is found by.
struct RouteKey {
  std::uint32_t route_arg1 = 0;
  std::uint32_t route_arg2 = 0;
  std::uint32_t route_arg3 = 0;
  Text if_name = {};
};

// An IPv6 route: addresses in two halves that are stored as the numbers are given; `if_name` may be
// left out.
struct RouteV6 {
  std::uint64_t dest_part1 = 0;
  std::uint64_t dest_part2 = 0;
  std::uint8_t prefix_length = 0;
  std::uint64_t gateway_part1 = 0;
  std::uint64_t gateway_part2 = 0;
  Text if_name = {};
};

// What is flushed; the kernel alone knows. `flush_name` may be left out.
struct FlushSelection {
  std::uint32_t flush_target = 0;
  std::uint8_t flush_selector1 = 0;
  std::uint8_t flush_selector2 = 0;
  std::uint8_t flush_selector3 = 0;
  Text flush_name = {};
  std::uint32_t flush_value = 0;
};

// The IPv6 routes of an instance, as the kernel's own records.
using RoutesV6 = RawTable<776>;

class RouteCalls {
 public:
  result<void> try_set_route(Text instance_name, const RouteSettings& settings,
                             Answer* answer = nullptr) const noexcept {
    return detail::Command("VDRZAX_SetRoute", VDRZAX_SetRoute, settings.route_arg1,
                           settings.route_arg2, settings.route_arg3,
                           detail::OptionalName(settings.if_name), detail::Name(instance_name),
                           settings.route_flags, detail::Given(answer));
  }
  result<void> try_delete_route(Text instance_name, const RouteKey& key,
                                Answer* answer = nullptr) const noexcept {
    return detail::Command("VDRZAX_DelRoute", VDRZAX_DelRoute, key.route_arg1, key.route_arg2,
                           key.route_arg3, detail::OptionalName(key.if_name),
                           detail::Name(instance_name), detail::Given(answer));
  }
  result<List<Route>> try_routes(Text instance_name) const noexcept {
    return detail::ReadList<Route>("VDRZAX_GetRoutes", VDRZAX_GetRoutes,
                                   detail::Name(instance_name));
  }
  result<List<Route>> try_lif_selection_routes(Text instance_name) const noexcept {
    return detail::ReadList<Route>("VDRZAX_GetLifSelectionRoutes", VDRZAX_GetLifSelectionRoutes,
                                   detail::Name(instance_name));
  }
  result<Owned<Route>> try_resolved_route(Text instance_name, std::uint32_t resolve_arg1,
                                          std::uint32_t resolve_arg2,
                                          std::uint32_t resolve_arg3) const noexcept {
    return detail::Record<Route>("VDRZAX_GetResolveRoute", VDRZAX_GetResolveRoute,
                                 detail::Name(instance_name), resolve_arg1, resolve_arg2,
                                 resolve_arg3);
  }
  result<Owned<Route>> try_find_resolved_route(Text instance_name, std::uint32_t resolve_arg1,
                                               std::uint32_t resolve_arg2,
                                               std::uint32_t resolve_arg3) const noexcept {
    return detail::Found(
        try_resolved_route(instance_name, resolve_arg1, resolve_arg2, resolve_arg3));
  }
  result<List<DemuxRoute>> try_demux_routes() const noexcept {
    return detail::ReadList<DemuxRoute>("VDRZAX_GetDemuxRoutes", VDRZAX_GetDemuxRoutes);
  }
  result<void> try_set_route_v6(Text instance_name, const RouteV6& route) const noexcept {
    return detail::Command("VDRZAX_SetRoutev6", VDRZAX_SetRoutev6, route.dest_part1,
                           route.dest_part2, route.prefix_length, route.gateway_part1,
                           route.gateway_part2, detail::OptionalName(route.if_name),
                           detail::Name(instance_name));
  }
  result<void> try_delete_route_v6(Text instance_name, const RouteV6& route) const noexcept {
    return detail::Command("VDRZAX_DelRoutev6", VDRZAX_DelRoutev6, route.dest_part1,
                           route.dest_part2, route.prefix_length, route.gateway_part1,
                           route.gateway_part2, detail::OptionalName(route.if_name),
                           detail::Name(instance_name));
  }
  // Two commands: the number of routes, then the table.
  result<RoutesV6> try_routes_v6(Text instance_name) const noexcept {
    void* table = nullptr;
    std::uint32_t count = 0;
    const Failure failure = detail::Call("VDRZAX_GetRoutesv6", VDRZAX_GetRoutesv6,
                                         detail::Name(instance_name), &table, &count);
    if (failure.code != 0) return failure;
    return RoutesV6(table, count);
  }
  // `mac_text` has at most 17 characters, and 18 in the call for IPv6.
  result<void> try_set_arp(Text instance_name, Text if_name, std::uint32_t ip,
                           Text mac_text) const noexcept {
    return detail::Command("VDRZAX_SetArp", VDRZAX_SetArp, ip, detail::Required<17>(mac_text),
                           detail::Name(if_name), detail::Name(instance_name));
  }
  result<void> try_delete_arp(Text instance_name, Text if_name, std::uint32_t ip) const noexcept {
    return detail::Command("VDRZAX_DelArp", VDRZAX_DelArp, ip, detail::Name(if_name),
                           detail::Name(instance_name));
  }
  result<void> try_set_proxy_arp(Text instance_name, Text if_name,
                                 std::uint32_t ip) const noexcept {
    return detail::Command("VDRZAX_SetProxyArp", VDRZAX_SetProxyArp, ip, detail::Name(if_name),
                           detail::Name(instance_name));
  }
  result<void> try_delete_proxy_arp(Text instance_name, Text if_name,
                                    std::uint32_t ip) const noexcept {
    return detail::Command("VDRZAX_DelProxyArp", VDRZAX_DelProxyArp, ip, detail::Name(if_name),
                           detail::Name(instance_name));
  }
  // Of one interface, or of all.
  result<Buffer> try_arps(Text instance_name, Text if_name = {}) const noexcept {
    return detail::Raw<7667712>("VDRZAX_GetArps", VDRZAX_GetArps, detail::Name(instance_name),
                                detail::OptionalName(if_name));
  }
  result<Buffer> try_proxy_arps(Text instance_name, Text if_name = {}) const noexcept {
    return detail::Raw<7667712>("VDRZAX_GetProxyArps", VDRZAX_GetProxyArps,
                                detail::Name(instance_name), detail::OptionalName(if_name));
  }
  result<void> try_clear_arp(Text instance_name, Text if_name = {}) const noexcept {
    return detail::Command("VDRZAX_ClearArp", VDRZAX_ClearArp, detail::Name(instance_name),
                           detail::OptionalName(if_name));
  }
  result<void> try_set_arp_v6(Text instance_name, Text if_name, std::uint64_t ip_part1,
                              std::uint64_t ip_part2, Text mac_text) const noexcept {
    return detail::Command("VDRZAX_SetArpv6", VDRZAX_SetArpv6, ip_part1, ip_part2,
                           detail::Required<18>(mac_text), detail::Name(if_name),
                           detail::Name(instance_name));
  }
  result<void> try_delete_arp_v6(Text instance_name, Text if_name, std::uint64_t ip_part1,
                                 std::uint64_t ip_part2) const noexcept {
    return detail::Command("VDRZAX_DelArpv6", VDRZAX_DelArpv6, ip_part1, ip_part2,
                           detail::Name(if_name), detail::Name(instance_name));
  }
  result<void> try_set_proxy_arp_v6(Text instance_name, Text if_name, std::uint64_t ip_part1,
                                    std::uint64_t ip_part2) const noexcept {
    return detail::Command("VDRZAX_SetProxyArpv6", VDRZAX_SetProxyArpv6, ip_part1, ip_part2,
                           detail::Name(if_name), detail::Name(instance_name));
  }
  result<void> try_delete_proxy_arp_v6(Text instance_name, Text if_name, std::uint64_t ip_part1,
                                       std::uint64_t ip_part2) const noexcept {
    return detail::Command("VDRZAX_DelProxyArpv6", VDRZAX_DelProxyArpv6, ip_part1, ip_part2,
                           detail::Name(if_name), detail::Name(instance_name));
  }
  result<Buffer> try_arps_v6(Text instance_name, Text if_name = {}) const noexcept {
    return detail::Raw<7667712>("VDRZAX_GetArpsv6", VDRZAX_GetArpsv6, detail::Name(instance_name),
                                detail::OptionalName(if_name));
  }
  result<void> try_clear_arp_v6(Text instance_name, Text if_name = {}) const noexcept {
    return detail::Command("VDRZAX_ClearArpv6", VDRZAX_ClearArpv6, detail::Name(instance_name),
                           detail::OptionalName(if_name));
  }
  result<void> try_clear_pmtu_table_v6() const noexcept {
    return detail::Command("VDRZAX_PMTUTableCearv6", VDRZAX_PMTUTableCearv6);
  }
  result<void> try_generic_flush(const FlushSelection& flush) const noexcept {
    return detail::Command("VDRZAX_GenericFlush", VDRZAX_GenericFlush, flush.flush_target,
                           flush.flush_selector1, flush.flush_selector2, flush.flush_selector3,
                           detail::OptionalName(flush.flush_name), flush.flush_value);
  }

#ifdef __cpp_exceptions
  void set_route(Text instance_name, const RouteSettings& settings,
                 Answer* answer = nullptr) const {
    return try_set_route(instance_name, settings, answer).value();
  }
  void delete_route(Text instance_name, const RouteKey& key, Answer* answer = nullptr) const {
    return try_delete_route(instance_name, key, answer).value();
  }
  List<Route> routes(Text instance_name) const { return try_routes(instance_name).value(); }
  List<Route> lif_selection_routes(Text instance_name) const {
    return try_lif_selection_routes(instance_name).value();
  }
  Owned<Route> resolved_route(Text instance_name, std::uint32_t resolve_arg1,
                              std::uint32_t resolve_arg2, std::uint32_t resolve_arg3) const {
    return try_resolved_route(instance_name, resolve_arg1, resolve_arg2, resolve_arg3).value();
  }
  Owned<Route> find_resolved_route(Text instance_name, std::uint32_t resolve_arg1,
                                   std::uint32_t resolve_arg2, std::uint32_t resolve_arg3) const {
    return try_find_resolved_route(instance_name, resolve_arg1, resolve_arg2, resolve_arg3).value();
  }
  List<DemuxRoute> demux_routes() const { return try_demux_routes().value(); }
  void set_route_v6(Text instance_name, const RouteV6& route) const {
    return try_set_route_v6(instance_name, route).value();
  }
  void delete_route_v6(Text instance_name, const RouteV6& route) const {
    return try_delete_route_v6(instance_name, route).value();
  }
  RoutesV6 routes_v6(Text instance_name) const { return try_routes_v6(instance_name).value(); }
  void set_arp(Text instance_name, Text if_name, std::uint32_t ip, Text mac_text) const {
    return try_set_arp(instance_name, if_name, ip, mac_text).value();
  }
  void delete_arp(Text instance_name, Text if_name, std::uint32_t ip) const {
    return try_delete_arp(instance_name, if_name, ip).value();
  }
  void set_proxy_arp(Text instance_name, Text if_name, std::uint32_t ip) const {
    return try_set_proxy_arp(instance_name, if_name, ip).value();
  }
  void delete_proxy_arp(Text instance_name, Text if_name, std::uint32_t ip) const {
    return try_delete_proxy_arp(instance_name, if_name, ip).value();
  }
  Buffer arps(Text instance_name, Text if_name = {}) const {
    return try_arps(instance_name, if_name).value();
  }
  Buffer proxy_arps(Text instance_name, Text if_name = {}) const {
    return try_proxy_arps(instance_name, if_name).value();
  }
  void clear_arp(Text instance_name, Text if_name = {}) const {
    return try_clear_arp(instance_name, if_name).value();
  }
  void set_arp_v6(Text instance_name, Text if_name, std::uint64_t ip_part1, std::uint64_t ip_part2,
                  Text mac_text) const {
    return try_set_arp_v6(instance_name, if_name, ip_part1, ip_part2, mac_text).value();
  }
  void delete_arp_v6(Text instance_name, Text if_name, std::uint64_t ip_part1,
                     std::uint64_t ip_part2) const {
    return try_delete_arp_v6(instance_name, if_name, ip_part1, ip_part2).value();
  }
  void set_proxy_arp_v6(Text instance_name, Text if_name, std::uint64_t ip_part1,
                        std::uint64_t ip_part2) const {
    return try_set_proxy_arp_v6(instance_name, if_name, ip_part1, ip_part2).value();
  }
  void delete_proxy_arp_v6(Text instance_name, Text if_name, std::uint64_t ip_part1,
                           std::uint64_t ip_part2) const {
    return try_delete_proxy_arp_v6(instance_name, if_name, ip_part1, ip_part2).value();
  }
  Buffer arps_v6(Text instance_name, Text if_name = {}) const {
    return try_arps_v6(instance_name, if_name).value();
  }
  void clear_arp_v6(Text instance_name, Text if_name = {}) const {
    return try_clear_arp_v6(instance_name, if_name).value();
  }
  void clear_pmtu_table_v6() const { return try_clear_pmtu_table_v6().value(); }
  void generic_flush(const FlushSelection& flush) const { return try_generic_flush(flush).value(); }
#endif
};

}  // namespace v1
}  // namespace vdrzax
