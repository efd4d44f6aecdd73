#pragma once

#include <cstdint>
#include <vector>

#include "output/record_view.h"
#include "output/writer.h"

// Counters that are watched: what they are, how much they grew since the turn before, and how fast.

namespace vdrctl {

// A line a counter.
void PutChanges(Writer& out, const std::vector<const Member*>& members, const uint8_t* before,
                const uint8_t* now, double seconds);

// An object with the record, its differences and its rates a second, arrays where it has arrays.
void PutJsonChanges(Writer& out, const std::vector<const Member*>& members, const uint8_t* before,
                    const uint8_t* now, double seconds);

}  // namespace vdrctl
