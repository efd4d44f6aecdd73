#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string_view>

#include "call.h"
#include "held_up_call.h"

namespace vdrsim {

// Where each device node is found.
const char* NodePath(Node node);

// The device node that a caller names by the text at `address`, relative to one of its directories
// (AT_FDCWD for the working directory) unless it begins with a slash. Nothing when it names another
// file or can't be read.
//
// Repeated slashes, "." and ".." count as they do to the kernel; symbolic links are not looked for.
std::optional<Node> NamedNode(HeldUpCall& call, int directory, uint64_t address);

}  // namespace vdrsim
