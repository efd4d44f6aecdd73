#pragma once

#include <sys/types.h>

#include "record/host_device.h"

namespace replay_test {

// A host with a device: another process with a simulated datapath, behind a socket.
class SocketDevice final : public vdrsim::HostDevice {
 public:
  SocketDevice();
  SocketDevice(const SocketDevice&) = delete;
  ~SocketDevice();

  Outcome Command(vdrsim::Node node, uint32_t code, std::span<const std::byte> input,
                  std::span<std::byte> room) noexcept override;

 private:
  int socket_ = -1;
  pid_t host_ = -1;
};

}  // namespace replay_test
