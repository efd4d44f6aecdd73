#pragma once

#include <vdrzax/bridge.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kBridgeEndpointRows[] = {
    Skipped("skipped0", 0, 64), Bytes("nameArea", 64, 64),
    U16("half128", 128),        U8("flag", 130),
    U32("word131", 131),        U32("word135", 135),
    Bytes("bytes139", 139, 96),
};

inline constexpr RecordLayout kBridgeEndpointRecord{
    "BridgeEndpointRecord", sizeof(BridgeEndpointRecord), kBridgeEndpointRows};
static_assert(Tiles(kBridgeEndpointRecord));

}  // namespace vdrzax
