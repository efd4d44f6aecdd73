#pragma once

#include <memory>

#include "datapath/state.h"
#include "scenario/amounts.h"
#include "state/shape.h"

// States of any size, made of the amounts that they are to have. The same amounts give the same
// state.
namespace vdrsim {

// All but the instances.
State MakeHost(const Amounts& amounts);

// The instances, each made when its turn comes, so that there is never more than one.
std::unique_ptr<shape::Cursor> MakeInstances(const Amounts& amounts);

}  // namespace vdrsim
