#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace vdrsim {

// A router instance, as the commands that made it described it.
struct Instance {
  uint32_t second = 0;
  uint32_t fourth = 0;
  uint8_t flag = 0;
  std::string text{};
  std::string tunables{};
  uint32_t tunablesValue = 0;
};

// All that the simulated datapath remembers. It lives as long as the run.
struct State {
  std::map<std::string, Instance> instances{};

  uint32_t logLevel = 0;
  uint32_t extendedLogLevel = 0;
  uint32_t statsLevel = 0;
  uint32_t txDispatchQueueSize = 0;
  bool preUnloadAnnounced = false;
};

}  // namespace vdrsim
