#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <array>
#include <cstdint>
#include <optional>

#include "call.h"
#include "unique_fd.h"

namespace vdrsim {

// What a descriptor of a caller refers to.
struct Behind {
  enum class What : uint8_t {
    SimulatedNode,
    RealDevice,  // a node of the host's own
    OtherFile,   // or nothing
    Unknown,     // the caller can't be looked at
  };
  What what;
  Node node = Node::Normal;
};

// The files that stand for the two device nodes in the callers: empty, sealed, and in no directory,
// so that nothing of them stays when the run is over. And what is known of the host's own.
class DeviceNodes {
 public:
  // Refuses where the host has a node of its own, unless the run may go on beside it. Throws
  // StartFailure.
  explicit DeviceNodes(bool isBesideRealDevice);

  // Opens a node anew with the access mode and the blocking mode of `flags`, so that callers share
  // no file status. The result holds no descriptor, and errno says why, when that fails.
  UniqueFd Open(Node node, int flags) const;

  // Tells what a descriptor of another thread refers to, however it came there: by open, dup, fork
  // or from another process.
  Behind Identify(pid_t thread, uint32_t descriptor) const;

  // A node as stat and statx show it: a character device.
  struct stat Status(Node node) const;
  struct statx ExtendedStatus(Node node, unsigned mask) const;

 private:
  struct Simulated {
    UniqueFd file{};
    struct statx status {};
  };

  const Simulated& Of(Node node) const { return simulated_[static_cast<size_t>(node)]; }

  std::array<Simulated, 2> simulated_{};
  std::array<std::optional<dev_t>, 2> real_{};
};

}  // namespace vdrsim
