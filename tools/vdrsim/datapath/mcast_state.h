#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "datapath/table.h"
#include "requests/input.h"

namespace vdrsim {

// There is nothing to say of it but its name.
struct LocalReceiver {
  bool operator==(const LocalReceiver&) const = default;
};

struct RemoteReceiver {
  MacAddress c{};
  uint32_t d = 0;
  uint32_t e = 0;

  bool operator==(const RemoteReceiver&) const = default;
};

// A multicast group: it is there as long as it has receivers.
struct McastGroup {
  Table<std::string, LocalReceiver> localReceivers{};
  Table<uint32_t, RemoteReceiver> remoteReceivers{};  // by b

  bool IsEmpty() const { return localReceivers.IsEmpty() && remoteReceivers.IsEmpty(); }

  bool operator==(const McastGroup&) const = default;
};

// The multicast routing of an instance.
struct Multicast {
  Table<uint32_t, McastGroup> groups{};
  std::optional<uint32_t> router{};

  bool operator==(const Multicast&) const = default;
};

}  // namespace vdrsim
