#include "commands.h"

#include <vdrzax.h>

#include <cstdlib>

#include "device.h"
#include "floor.h"
#include "rounds.h"

namespace {

constexpr uint8_t kLevel[] = {3, 0, 0, 0};

void Require(bool holds) {
  if (!holds) std::abort();
}

void SetInstance(benchmark::State& state, const void* /*subject*/) {
  device::Answer(device::Calls::Kernel, device::Verdict::Serve, {});
  rounds::Compare(
      state, [] { Require(VDRZAX_SetVdrInstance("edge-1", 2, "text", 4, 1) == 0); },
      [] { Require(floor_of::Command(2, nullptr, 0) == 0); });
}

void GetLogLevel(benchmark::State& state, const void* /*subject*/) {
  device::Answer(device::Calls::Kernel, device::Verdict::Serve, kLevel);
  rounds::Compare(
      state,
      [] {
        uint32_t level = 0;
        Require(VDRZAX_GetLogLevel(&level) == 0 && level == 3);
      },
      [] {
        uint32_t level = 0;
        Require(floor_of::Command(9, &level, sizeof level) == 0 && level == 3);
      });
}

void RefusedDelete(benchmark::State& state, const void* /*subject*/) {
  device::Answer(device::Calls::Kernel, device::Verdict::Refuse, {});
  rounds::Compare(
      state, [] { Require(VDRZAX_DelVdrInstance("edge-1") == -1); },
      [] { Require(floor_of::Command(3, nullptr, 0) == -1); });
}

}  // namespace

void RegisterCommands() {
  constexpr double kTarget = 1.05;
  rounds::Register({.name = "VDRZAX_SetVdrInstance", .device = "kernel", .target = kTarget},
                   SetInstance, nullptr);
  rounds::Register({.name = "VDRZAX_GetLogLevel", .device = "kernel", .target = kTarget},
                   GetLogLevel, nullptr);
  rounds::Register(
      {.name = "VDRZAX_DelVdrInstance", .device = "kernel, refuses", .target = kTarget},
      RefusedDelete, nullptr);
}
