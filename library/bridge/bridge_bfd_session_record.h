#pragma once

#include <vdrzax/bridge.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kBridgeBfdSessionRows[] = {
    U16("half0", 0),   U32("word2", 2),  U16("half6", 6),   U32("word8", 8),    U16("half12", 12),
    U32("word14", 14), U8("byte18", 18), U32("word19", 19), U64("qword23", 23), U64("qword31", 31),
};

inline constexpr RecordLayout kBridgeBfdSessionRecord{
    "BridgeBfdSessionRecord", sizeof(BridgeBfdSessionRecord), kBridgeBfdSessionRows};
static_assert(Tiles(kBridgeBfdSessionRecord));

}  // namespace vdrzax
