#pragma once

#include <cstdint>
#include <vector>

#include "wire.h"

namespace replay_test {

struct Command {
  uint32_t code;
  wire::Bytes input;
  uint32_t capacity;
};

// A row of commands that has every one of the protocol: most of them succeed, some find nothing, some
// have not the room for their reply, and some are none.
std::vector<Command> EveryCommand();

}  // namespace replay_test
