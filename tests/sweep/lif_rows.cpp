#include "sweep/sweep.h"

namespace sweep {

namespace {

constexpr MacValue kMac{{2, 0, 0, 0, 0, 1}};

int ConfigureRelay(std::string servers) {
  return VDRZAX_ConfigureLifDhcpRelay("edge-1", "uplink", servers.data());
}

}  // namespace

Rows LifRows() {
  return {
      Command("VDRZAX_SetLif",
              [] {
                return VDRZAX_SetLif("uplink", "aux", 3, 4, 5, 6, 7, 0x20000005, "edge-1", &kMac);
              }),
      Command("VDRZAX_DelLif", [] { return VDRZAX_DelLif("uplink", "aux", "edge-1"); }),
      Release("VDRZAX_ReleaseLif", VDRZAX_ReleaseLif, 961),
      Release("VDRZAX_ReleaseLifs", VDRZAX_ReleaseLifs, 16),

      Command("VDRZAX_SetLifDIIp",
              [] { return VDRZAX_SetLifDIIp("edge-1", "uplink", 0x0A000001); }),
      Command("VDRZAX_SetLifVxlanMulticastIp",
              [] { return VDRZAX_SetLifVxlanMulticastIp("edge-1", "uplink", 0xE0000001); }),
      Command("VDRZAX_SetLifIp",
              [] { return VDRZAX_SetLifIp("edge-1", "uplink", 0x0A000001, 24); }),
      Command("VDRZAX_DelLifIp",
              [] { return VDRZAX_DelLifIp("edge-1", "uplink", 0x0A000001, 24); }),
      Command("VDRZAX_SetLifIpv6", [] { return VDRZAX_SetLifIpv6("edge-1", "uplink", 1, 2, 64); }),
      Command("VDRZAX_DelLifIpv6", [] { return VDRZAX_DelLifIpv6("edge-1", "uplink", 1, 2, 64); }),
      Command("VDRZAX_SetLifVxlanCP", [] { return VDRZAX_SetLifVxlanCP("edge-1", "uplink"); }),
      Command("VDRZAX_DelLifVxlanCP", [] { return VDRZAX_DelLifVxlanCP("edge-1", "uplink"); }),
      Command("VDRZAX_EnableLif", [] { return VDRZAX_EnableLif("edge-1", "uplink"); }),
      Command("VDRZAX_DisableLif", [] { return VDRZAX_DisableLif("edge-1", "uplink"); }),
      Command("VDRZAX_ConfigureLifDhcpRelay",
              [] { return VDRZAX_ConfigureLifDhcpRelay("edge-1", "uplink", nullptr); }),
      // No list of servers is accepted.
      Quiet(
          "VDRZAX_ConfigureLifDhcpRelay", [] { return ConfigureRelay("10.0.0.1,10.0.0.2"); },
          EINVAL),
      Command("VDRZAX_RAMTUSetv6", [] { return VDRZAX_RAMTUSetv6("edge-1", "uplink", 1500); }),
      Command("VDRZAX_SetLifMcastRouting",
              [] { return VDRZAX_SetLifMcastRouting("edge-1", "uplink", 1); }),
      Command("VDRZAX_SetLifMcastRouting",
              [] { return VDRZAX_SetLifMcastRouting("edge-1", "uplink", 0); }),
      Command("VDRZAX_SetMcastRouting",
              [] { return VDRZAX_SetMcastRouting("edge-1", "second", 1, 2, 3, 1); }),
  };
}

}  // namespace sweep
