#pragma once

#include <vdrzax/services.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kSoftRssTunablesRows[] = {
    U64("qword0", 0),
    U32("word8", 8),
};

inline constexpr RecordLayout kSoftRssTunables{"SoftRssTunables", sizeof(SoftRssTunables),
                                               kSoftRssTunablesRows};
static_assert(Tiles(kSoftRssTunables));

}  // namespace vdrzax
