#pragma once

#include <vdrzax/bridge.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kBridgeClusterNodeRows[] = {
    Bytes("nameArea", 0, 64),
    U32("word64", 64),
    U16("half68", 68),
    U8("byte70", 70),
};

inline constexpr RecordLayout kBridgeClusterNodeRecord{
    "BridgeClusterNodeRecord", sizeof(BridgeClusterNodeRecord), kBridgeClusterNodeRows};
static_assert(Tiles(kBridgeClusterNodeRecord));

}  // namespace vdrzax
