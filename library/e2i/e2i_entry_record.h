#pragma once

#include <vdrzax/e2i.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kE2IEntryRows[] = {
    Bytes("bytes", 0, 26),
};

inline constexpr RecordLayout kE2IEntry{"E2IEntry", sizeof(E2IEntry), kE2IEntryRows};
static_assert(Tiles(kE2IEntry));

}  // namespace vdrzax
