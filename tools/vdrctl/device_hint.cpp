#include "device_hint.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

#include "channel/device_node.h"

namespace vdrctl {

namespace {

std::string_view Advice(int error) {
  switch (error) {
    case ENOENT:
    case ENXIO:
    case ENODEV:
      return "is the kernel module loaded? Without it, try vdrsim run -- vdrctl ...";
    case EACCES:
    case EPERM:
      return "reading and writing it needs rights that you lack; are you root?";
    default:
      return "";
  }
}

}  // namespace

// The kernel reports an unknown object with the same errors, so the node itself is asked.
std::string DeviceHint(int error) {
  const std::string_view advice = Advice(error);
  if (advice.empty()) return "";
  const char* node = vdrzax::DeviceNode();
  const int device = open(node, O_RDWR | O_CLOEXEC);
  if (device >= 0) {
    close(device);
    return "";
  }
  return errno == error ? fmt::format("{} cannot be opened: {}", node, advice) : "";
}

}  // namespace vdrctl
