#pragma once

#include <vdrzax/mcast.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kMRoutingLocalRcvrRows[] = {
    Text("rcvrName", 0, 64),
    U32("value64", 64),
    U32("value68", 68),
    Bytes("address", 72, 16),
};

inline constexpr RecordLayout kMRoutingLocalRcvr{"MRoutingLocalRcvr", sizeof(MRoutingLocalRcvr),
                                                 kMRoutingLocalRcvrRows};
static_assert(Tiles(kMRoutingLocalRcvr));

}  // namespace vdrzax
