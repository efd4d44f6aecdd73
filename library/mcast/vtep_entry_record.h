#pragma once

#include <vdrzax/mcast.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kVtepEntryRows[] = {
    Bytes("bytes", 0, 68),
};

inline constexpr RecordLayout kVtepEntry{"VtepEntry", sizeof(VtepEntry), kVtepEntryRows};
static_assert(Tiles(kVtepEntry));

}  // namespace vdrzax
