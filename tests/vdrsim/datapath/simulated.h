#pragma once

#include <gtest/gtest.h>

#include <span>

#include "datapath/datapath.h"
#include "in_process.h"

namespace in_process {

// A test with a datapath of its own.
class Simulated : public testing::Test {
 protected:
  // The errno value of a command without reply.
  int Do(uint32_t code, std::span<const std::byte> input) {
    return Execute(datapath_, code, input).error;
  }

  vdrsim::Datapath datapath_{};
};

}  // namespace in_process
