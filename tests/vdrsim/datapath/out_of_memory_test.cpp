#include <gtest/gtest.h>

#include <cerrno>

#include "allocations.h"
#include "datapath/datapath.h"
#include "in_process.h"
#include "support/any_memory.h"

// What a command does when there is no memory for it, wherever in it that is.

namespace {

using in_process::Block;
using in_process::Wire;
using vdrsim::Datapath;

struct Command {
  uint32_t code;
  Wire input;
  uint32_t capacity = 0;
};

int Execute(Datapath& datapath, const Command& command, long count) {
  AnyMemory memory;
  allocations::allowed = count;
  const int error = datapath
                        .Execute({.process = 1,
                                  .thread = 1,
                                  .node = vdrsim::Node::Normal,
                                  .code = command.code,
                                  .input = command.input,
                                  .capacity = command.capacity,
                                  .destination = memory})
                        .error;
  allocations::allowed = -1;
  return error;
}

Wire OnLif() { return Block("edge-1").Text(384, "uplink"); }
Wire OnEndpoint() { return Wire(968).Text(320, "end").Text(384, "bridged"); }

TEST(OutOfMemory, ACommandFailsWithoutEffectAndThenSucceeds) {
  const Command commands[] = {
      {2, Block("edge-1")},                                     // an instance
      {19, OnLif().Text(256, "a second name of some length")},  // a LIF
      {26, OnLif().U32(512, 1)},                                // an address
      {33, OnLif().U32(556, 2).U32(576, 1).U32(596, 1)},        // relay servers
      {34, Block("edge-1").U32(256, 1).Text(272, "uplink")},    // a route
      {53, Block("edge-1").U32(256, 7)},                        // a bridge
      {57, Block("edge-1").Text(384, "bridged")},               // a bridge LIF
      {45, OnEndpoint().U32(544, 7)},                           // an endpoint
      {66, Block("edge-1").U32(260, 1).U32(268, 1).Text(276, "02:00:00:00:00:01")},  // a MAC
      {90, Block("owner")},                                                          // a cluster
      {93, Block("owner").Text(256, "a node of a cluster, with a long name")},
      {166, Block().U32(256, 1).U32(272, 1)},                   // a public address
      {156, Block().Text(256, "software RSS of some length")},  // tunables
      {0, Block(), 1001 * 577},                                 // lists
      {21, Block("edge-1"), 10000 * 852},
      {61, Block(), 4096 * 393},
      {63, Block("edge-1"), 32768 * 133},
      {96, Block("edge-1"), 2867200 * 39},
  };
  Datapath datapath;
  for (const Command& command : commands) {
    long count = 0;
    int error = ENOMEM;
    for (; error == ENOMEM && count < 1000; ++count) {
      const vdrsim::State before = datapath.state();
      error = Execute(datapath, command, count);
      EXPECT_TRUE(error == 0 || datapath.state() == before) << command.code << ' ' << count;
    }
    EXPECT_EQ(error, 0) << command.code;
    EXPECT_GT(count, 1) << command.code << " takes no memory";
  }
}

}  // namespace
