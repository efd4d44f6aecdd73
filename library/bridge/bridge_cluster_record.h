#pragma once

#include <vdrzax/bridge.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kBridgeClusterRows[] = {
    Bytes("nameArea", 0, 64), Skipped("skipped64", 64, 8), U32("word72", 72),
    Bytes("bytes76", 76, 96), U16("half172", 172),         U16("half174", 174),
    U16("half176", 176),      U8("byte178", 178),          U32("word179", 179),
};

inline constexpr RecordLayout kBridgeClusterRecord{"BridgeClusterRecord",
                                                   sizeof(BridgeClusterRecord), kBridgeClusterRows};
static_assert(Tiles(kBridgeClusterRecord));

}  // namespace vdrzax
