#include "commands.h"

#include <vdrzax.h>

#include <cstdlib>

#include "device.h"
#include "floor.h"

namespace {

constexpr double kTarget = 1.04;

constexpr uint8_t kLevel[] = {3, 0, 0, 0};

void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

std::vector<Case> CommandCases() {
  return {
      {.name = "VDRZAX_SetVdrInstance",
       .device = "kernel",
       .target = kTarget,
       .prepare = [] { device::Answer(device::Calls::Kernel, device::Verdict::Serve, {}); },
       .library = [] { Require(VDRZAX_SetVdrInstance("edge-1", 2, "text", 4, 1) == 0); },
       .floor = [] { Require(floor_of::Command(2, nullptr, 0) == 0); }},
      {.name = "VDRZAX_GetLogLevel",
       .device = "kernel",
       .target = kTarget,
       .prepare = [] { device::Answer(device::Calls::Kernel, device::Verdict::Serve, kLevel); },
       .library =
           [] {
             uint32_t level = 0;
             Require(VDRZAX_GetLogLevel(&level) == 0 && level == 3);
           },
       .floor =
           [] {
             uint32_t level = 0;
             Require(floor_of::Command(9, &level, sizeof level) == 0 && level == 3);
           }},
      {.name = "VDRZAX_DelVdrInstance",
       .device = "kernel, refuses",
       .target = kTarget,
       .prepare = [] { device::Answer(device::Calls::Kernel, device::Verdict::Refuse, {}); },
       .library = [] { Require(VDRZAX_DelVdrInstance("edge-1") == -1); },
       .floor = [] { Require(floor_of::Command(3, nullptr, 0) == -1); }},
  };
}
