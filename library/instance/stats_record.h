#pragma once

#include <vdrzax/instance.h>

#include "channel/record_layout.h"

// The type of a StatsRecord tells which slots its set of counters has; each set is a layout of its
// own. Rows of slots are named by their first slot, skipped rows by their offset.

namespace vdrzax {

inline constexpr Field kStatsRowsOfType0[] = {
    U32("type", 0),
    Numbers("slots0", 4, 8, 8),
    Skipped("skipped68", 68, 8),
    Numbers("slots9", 76, 8, 19),
    Skipped("skipped228", 228, 624),
};

inline constexpr Field kStatsRowsOfType1[] = {
    U32("type", 0),
    Numbers("slots0", 4, 8, 77),
    Skipped("skipped620", 620, 8),
    Numbers("slots78", 628, 8, 5),
    Skipped("skipped668", 668, 8),
    Numbers("slots84", 676, 8, 22),
};

inline constexpr Field kStatsRowsOfType3[] = {
    U32("type", 0),
    Skipped("skipped4", 4, 8),
    Numbers("slots1", 12, 8, 19),
    Skipped("skipped164", 164, 688),
};

inline constexpr Field kStatsRowsOfOtherTypes[] = {
    U32("type", 0),
    Skipped("skipped4", 4, 848),
};

inline constexpr RecordLayout kStatsOfType0{"StatsRecord", sizeof(StatsRecord), kStatsRowsOfType0};
inline constexpr RecordLayout kStatsOfType1{"StatsRecord", sizeof(StatsRecord), kStatsRowsOfType1};
inline constexpr RecordLayout kStatsOfType3{"StatsRecord", sizeof(StatsRecord), kStatsRowsOfType3};
inline constexpr RecordLayout kStatsOfOtherTypes{"StatsRecord", sizeof(StatsRecord),
                                                 kStatsRowsOfOtherTypes};
static_assert(Tiles(kStatsOfType0));
static_assert(Tiles(kStatsOfType1));
static_assert(Tiles(kStatsOfType3));
static_assert(Tiles(kStatsOfOtherTypes));

}  // namespace vdrzax
