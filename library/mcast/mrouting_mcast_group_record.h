#pragma once

#include <vdrzax/mcast.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kMRoutingMcastGroupRows[] = {
    U32("group0", 0),
    U32("group1", 4),
    U32("group2", 8),
};

inline constexpr RecordLayout kMRoutingMcastGroup{"MRoutingMcastGroup", sizeof(MRoutingMcastGroup),
                                                  kMRoutingMcastGroupRows};
static_assert(Tiles(kMRoutingMcastGroup));

}  // namespace vdrzax
