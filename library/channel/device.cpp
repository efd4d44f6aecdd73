#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vdrzax/channel.h>

#include "channel/device_node.h"

// One open, one ioctl and one close a command: no descriptor outlives a call, so the module can be
// unloaded, or replaced by way of the upgrade node, between any two commands.
int VDRZAXIoctl(int request, IoctlEnvelope* env) {
  const int device = open64(vdrzax::DeviceNode(), O_RDWR);
  if (device < 0) return -1;
  const int result = ioctl(device, static_cast<unsigned long>(request), env);
  close(device);
  return result < 0 ? -1 : 0;
}
