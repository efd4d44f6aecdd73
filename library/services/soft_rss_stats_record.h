#pragma once

#include <vdrzax/services.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kQueueWordRows[] = {
    U32("word", 0),
};

inline constexpr RecordLayout kQueueWord{"QueueWord", 4, kQueueWordRows};
static_assert(Tiles(kQueueWord));

inline constexpr Field kQueueQwordRows[] = {
    U64("qword", 0),
};

inline constexpr RecordLayout kQueueQword{"QueueQword", 8, kQueueQwordRows};
static_assert(Tiles(kQueueQword));

inline constexpr Field kSoftRssStatsRows[] = {
    Skipped("skipped0", 0, 4),
    U32("queueCount", 4),
    Entries("words8", 8, 16, kQueueWord, 4, 4),
    Skipped("skipped72", 72, 4),
    Entries("qwords76", 76, 16, kQueueQword, 4, 4),
    Entries("qwords204", 204, 16, kQueueQword, 4, 4),
    Entries("qwords332", 332, 16, kQueueQword, 4, 4),
    Skipped("skipped460", 460, 392),
};

inline constexpr RecordLayout kSoftRssStats{"SoftRssStats", sizeof(SoftRssStats),
                                            kSoftRssStatsRows};
static_assert(Tiles(kSoftRssStats));

}  // namespace vdrzax
