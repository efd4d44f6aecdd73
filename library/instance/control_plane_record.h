#pragma once

#include <vdrzax/instance.h>

#include "channel/record_layout.h"

namespace vdrzax {

// A control-plane sync state is five of these and nothing else.
inline constexpr Field kCPSyncStateEntryRows[] = {
    U64("qword0", 0),
    Numbers("words8", 8, 4, 5),
    Numbers("qwords28", 28, 8, 8),
    Skipped("skipped92", 92, 8),
    Numbers("qwords100", 100, 8, 23),
};

inline constexpr RecordLayout kCPSyncStateEntry{"CPSyncStateEntry", sizeof(CPSyncStateEntry),
                                                kCPSyncStateEntryRows};
static_assert(Tiles(kCPSyncStateEntry));

}  // namespace vdrzax
