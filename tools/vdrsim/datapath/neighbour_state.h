#pragma once

#include <string>

#include "datapath/ip_address.h"
#include "datapath/table.h"

namespace vdrsim {

// A neighbour of a LIF. A proxy has no hardware address.
struct Neighbour {
  std::string macText{};
  MacAddress mac{};

  bool operator==(const Neighbour&) const = default;
};

using Neighbours = Table<IpAddress, Neighbour>;

}  // namespace vdrsim
