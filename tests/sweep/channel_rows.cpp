#include "sweep/sweep.h"

namespace sweep {

Rows ChannelRows() {
  return {
      Command("VDRZAXIoctl",
              [] {
                IoctlEnvelope envelope{};
                return VDRZAXIoctl(173, &envelope);
              }),
      Quiet("VDRZAXGetUuidOrName",
            [] {
              char name[64];
              VDRZAXGetUuidOrName("edge-1", name);
              return 0;
            }),
  };
}

}  // namespace sweep
