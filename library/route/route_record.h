#pragma once

#include <vdrzax/route.h>

#include "channel/getters.h"
#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kRouteNextHopRows[] = {
    Skipped("skipped0", 0, 4),
    U32("hopWord", 4),
    Text("hopName", 8, 64),
    U64("hopQword", 72),
};

inline constexpr RecordLayout kRouteNextHop{"RouteNextHop", sizeof(RouteNextHop),
                                            kRouteNextHopRows};
static_assert(Tiles(kRouteNextHop));

inline constexpr Field kRouteRows[] = {
    U32("routeWord0", 0),
    U32("routeWord1", 4),
    U32("routeWord2", 8),
    U32("routeWord3", 12),
    U8("routeByte", 16),
    U8("nextHopCount", 17),
    Skipped("skipped18", 18, 2),
    U64("routeQword", 20),
    Entries("nextHops", 28, 8, kRouteNextHop, 17, 1),
};

inline constexpr RecordLayout kRouteRecord{"RouteRecord", sizeof(RouteRecord), kRouteRows};
static_assert(Tiles(kRouteRecord));

// Every table of routes; the kernel reports the policies of a LIF in the same form.
inline constexpr ListKind<RouteRecord, kRouteRecord> kRoutes{.cap = 20000,
                                                             .release = VDRZAX_ReleaseRoutes};

}  // namespace vdrzax
