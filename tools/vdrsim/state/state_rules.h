#pragma once

#include "datapath/state.h"

namespace vdrsim {

// Judges what no member says by itself: caps of what several objects hold together, and objects that
// are there as long as they hold something. Adds what follows from the rest. Throws shape::Unfit
// with the path of what is wrong.
void Complete(State& state);

}  // namespace vdrsim
