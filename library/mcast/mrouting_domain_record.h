#pragma once

#include <vdrzax/mcast.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kMRoutingDomainRows[] = {
    Text("domainName", 0, 64),
    Text("domainLabel", 64, 48),
    Bytes("domainData", 112, 32),
    U32("domainValue", 144),
};

inline constexpr RecordLayout kMRoutingDomain{"MRoutingDomain", sizeof(MRoutingDomain),
                                              kMRoutingDomainRows};
static_assert(Tiles(kMRoutingDomain));

}  // namespace vdrzax
