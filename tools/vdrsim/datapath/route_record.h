#pragma once

#include <cstddef>

#include "datapath/record_writer.h"
#include "datapath/route_state.h"
#include "route/route_record.h"

namespace vdrsim {

// What the command that sets or deletes a route answers with.
inline constexpr vdrzax::Field kRouteResultRows[] = {
    vdrzax::U32("status", 0),
    vdrzax::U32("destination", 4),
    vdrzax::U32("mask", 8),
    vdrzax::U32("third", 12),
    vdrzax::Text("interface", 16, 64),
    vdrzax::Skipped("skipped80", 80, 8),
};
inline constexpr vdrzax::RecordLayout kRouteResult{"RouteResult", 88, kRouteResultRows};
static_assert(vdrzax::Tiles(kRouteResult));

// The kernel's own table of IPv6 routes, as the simulation lays it out.
inline constexpr vdrzax::Field kIpv6NextHopRows[] = {
    vdrzax::Skipped("skipped0", 0, 4),
    vdrzax::Bytes("gateway", 4, 16),
    vdrzax::Text("interface", 20, 64),
    vdrzax::Skipped("skipped84", 84, 8),
};
inline constexpr vdrzax::RecordLayout kIpv6NextHop{"Ipv6NextHop", 92, kIpv6NextHopRows};
static_assert(vdrzax::Tiles(kIpv6NextHop));

inline constexpr vdrzax::Field kIpv6RouteRows[] = {
    vdrzax::Bytes("destination", 0, 16),
    vdrzax::U8("prefixLength", 16),
    vdrzax::U8("nextHopCount", 17),
    vdrzax::Skipped("skipped18", 18, 22),
    vdrzax::Entries("nextHops", 40, 8, kIpv6NextHop, 17, 1),
};
inline constexpr vdrzax::RecordLayout kIpv6RouteRecord{"Ipv6RouteRecord", 776, kIpv6RouteRows};
static_assert(vdrzax::Tiles(kIpv6RouteRecord));

void ShowRoute(RecordWriter<vdrzax::kRouteRecord> record, const RouteKey& key, const Route& route);
void ShowRouteResult(RecordWriter<kRouteResult> record, const RouteKey& key);
void ShowIpv6Route(RecordWriter<kIpv6RouteRecord> record, const Ipv6RouteKey& key,
                   const Ipv6Route& route);

}  // namespace vdrsim
