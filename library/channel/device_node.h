#pragma once

#include <cstdlib>

namespace vdrzax {

inline constexpr const char* kNormalNode = "/qorv/devices/char/zaxdriver/ryn_vdr";

// The kernel module registers its second node with this spelling.
inline constexpr const char* kUpgradeNode = "/qorv/devices/char/zaxdriver/ryn_vdr_ugrade";

// The node that commands go to. The environment is read afresh each time, so that a process may
// switch between two commands; an empty value counts like any other.
inline const char* DeviceNode() {
  return std::getenv("USE_UPGRADE_DEV") ? kUpgradeNode : kNormalNode;
}

}  // namespace vdrzax
