#pragma once

#include "caller.h"
#include "transport/workers.h"

namespace transport_test {

// Answers the calls of another process, none of which is a command, to the end of this one: threads
// use them that long.
vdrsim::Workers& WorkersOf(const Caller& caller);

}  // namespace transport_test
