#pragma once

#include <array>
#include <string>

#include "record/host_device.h"

namespace vdrsim {

// The device behind two nodes of this host. As the library does, it opens a node for each command.
class NodeDevice final : public HostDevice {
 public:
  // The paths of both nodes, in the order of Node.
  using Paths = std::array<std::string, 2>;

  // Throws std::runtime_error when the normal node can't be opened.
  explicit NodeDevice(Paths paths);

  Outcome Command(Node node, uint32_t code, std::span<const std::byte> input,
                  std::span<std::byte> room) noexcept override;

 private:
  Paths paths_;
};

}  // namespace vdrsim
