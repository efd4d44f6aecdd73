#pragma once

#include <span>
#include <string>

#include "call.h"
#include "replay/recording.h"

namespace vdrsim {

// What is asked for and what was recorded, and where the two differ, field by field, as lines for
// people.
std::string Difference(const Recorded& recorded, std::span<const std::byte> input,
                       const Call& asked);

}  // namespace vdrsim
