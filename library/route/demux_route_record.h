#pragma once

#include <vdrzax/route.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kDemuxRouteRows[] = {
    U32("demuxWord0", 0),  U32("demuxWord1", 4),       U32("demuxWord2", 8),
    U64("demuxQword", 12), Text("demuxName1", 20, 64), Text("demuxName2", 84, 64),
};

inline constexpr RecordLayout kDemuxRouteRecord{"DemuxRouteRecord", sizeof(DemuxRouteRecord),
                                                kDemuxRouteRows};
static_assert(Tiles(kDemuxRouteRecord));

}  // namespace vdrzax
