#pragma once

#include "datapath/state.h"

// A state in which each member of each structure is set, and to a value that no other has.
vdrsim::State MakeFullState();
