#pragma once

#include <vdrzax/bridge.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kBridgeNetworkRows[] = {
    U64("qword0", 0),
    U32("word8", 8),
    U16("half12", 12),
    U32("word14", 14),
    U16("half18", 18),
    U32("word20", 20),
    U32("word24", 24),
    U8("byte28", 28),
    Numbers("qwords29", 29, 8, 12),
    Skipped("skipped125", 125, 8),
};

inline constexpr RecordLayout kBridgeNetworkRecord{"BridgeNetworkRecord",
                                                   sizeof(BridgeNetworkRecord), kBridgeNetworkRows};
static_assert(Tiles(kBridgeNetworkRecord));

}  // namespace vdrzax
