#include "cxx/calls.h"

namespace cxx {

Rows LifCalls() {
  return {
      {"VDRZAX_GetLif",
       [] {
         LifRecord* out = nullptr;
         return Done(VDRZAX_GetLif("text-1", "text-2", &out), out, VDRZAX_ReleaseLif);
       },
       FACE(lif, "text-1", "text-2"), sizeof(LifRecord)},
      {"VDRZAX_GetLif",
       [] {
         LifRecord* out = nullptr;
         return Done(VDRZAX_GetLif("text-1", "text-2", &out), out, VDRZAX_ReleaseLif);
       },
       FACE(find_lif, "text-1", "text-2"), sizeof(LifRecord)},
      {"VDRZAX_GetBridgeLif",
       [] {
         LifRecord* out = nullptr;
         return Done(VDRZAX_GetBridgeLif("text-1", "text-2", &out), out, VDRZAX_ReleaseLif);
       },
       FACE(bridge_lif, "text-1", "text-2"), sizeof(LifRecord)},
      {"VDRZAX_GetBridgeLif",
       [] {
         LifRecord* out = nullptr;
         return Done(VDRZAX_GetBridgeLif("text-1", "text-2", &out), out, VDRZAX_ReleaseLif);
       },
       FACE(find_bridge_lif, "text-1", "text-2"), sizeof(LifRecord)},
      {"VDRZAX_GetLifs",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetLifs("text-1", &out), out, VDRZAX_ReleaseLifs);
       },
       FACE(lifs, "text-1"), 0},
      {"VDRZAX_GetExtVlanLifs",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetExtVlanLifs(0x1122, &out), out, VDRZAX_ReleaseLifs);
       },
       FACE(ext_vlan_lifs, 0x1122), 0},
      {"VDRZAX_GetBridgeLifs",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetBridgeLifs("text-1", &out), out, VDRZAX_ReleaseLifs);
       },
       FACE(bridge_lifs, "text-1"), 0},
      {"VDRZAX_SetLif",
       [] {
         return VDRZAX_SetLif("text-1", "text-2", 0x31223340U, 0x41223340U, 0x51223340U,
                              0x61223340U, 0x71223340U, 0x8122334, "text-9", &kMac);
       },
       FACE(set_lif, "text-9", "text-1",
            {.aux_name = "text-2",
             .a3 = 0x31223340U,
             .a4 = 0x41223340U,
             .a5 = 0x51223340U,
             .a6 = 0x61223340U,
             .a7 = 0x71223340U,
             .flags_word = 0x8122334,
             .extra = kMacBytes}),
       0},
      {"VDRZAX_DelLif", [] { return VDRZAX_DelLif("text-1", "text-2", "text-3"); },
       FACE(delete_lif, "text-3", "text-1", "text-2"), 0},
      {"VDRZAX_SetLifDIIp", [] { return VDRZAX_SetLifDIIp("text-1", "text-2", 0x31223340U); },
       FACE(set_lif_di_ip, "text-1", "text-2", 0x31223340U), 0},
      {"VDRZAX_SetLifVxlanMulticastIp",
       [] { return VDRZAX_SetLifVxlanMulticastIp("text-1", "text-2", 0x31223340U); },
       FACE(set_lif_vxlan_multicast_ip, "text-1", "text-2", 0x31223340U), 0},
      {"VDRZAX_SetLifIp",
       [] { return VDRZAX_SetLifIp("text-1", "text-2", 0x31223340U, 0x41223340U); },
       FACE(set_lif_ip, "text-1", "text-2", 0x31223340U, 0x41223340U), 0},
      {"VDRZAX_DelLifIp",
       [] { return VDRZAX_DelLifIp("text-1", "text-2", 0x31223340U, 0x41223340U); },
       FACE(delete_lif_ip, "text-1", "text-2", 0x31223340U, 0x41223340U), 0},
      {"VDRZAX_SetLifIpv6",
       [] {
         return VDRZAX_SetLifIpv6("text-1", "text-2", 0x3122334455667788U, 0x4122334455667788U,
                                  0x51);
       },
       FACE(set_lif_ipv6, "text-1", "text-2",
            {.addr_high = 0x3122334455667788U,
             .addr_low = 0x4122334455667788U,
             .prefix_length = 0x51}),
       0},
      {"VDRZAX_DelLifIpv6",
       [] {
         return VDRZAX_DelLifIpv6("text-1", "text-2", 0x3122334455667788U, 0x4122334455667788U,
                                  0x51);
       },
       FACE(delete_lif_ipv6, "text-1", "text-2",
            {.addr_high = 0x3122334455667788U,
             .addr_low = 0x4122334455667788U,
             .prefix_length = 0x51}),
       0},
      {"VDRZAX_SetLifVxlanCP", [] { return VDRZAX_SetLifVxlanCP("text-1", "text-2"); },
       FACE(set_lif_vxlan_cp, "text-1", "text-2"), 0},
      {"VDRZAX_DelLifVxlanCP", [] { return VDRZAX_DelLifVxlanCP("text-1", "text-2"); },
       FACE(delete_lif_vxlan_cp, "text-1", "text-2"), 0},
      {"VDRZAX_EnableLif", [] { return VDRZAX_EnableLif("text-1", "text-2"); },
       FACE(enable_lif, "text-1", "text-2"), 0},
      {"VDRZAX_DisableLif", [] { return VDRZAX_DisableLif("text-1", "text-2"); },
       FACE(disable_lif, "text-1", "text-2"), 0},
      {"VDRZAX_ConfigureLifDhcpRelay",
       [] { return VDRZAX_ConfigureLifDhcpRelay("text-1", "text-2", nullptr); },
       FACE(clear_lif_dhcp_relay, "text-1", "text-2"), 0},
      {"VDRZAX_RAMTUSetv6", [] { return VDRZAX_RAMTUSetv6("text-1", "text-2", 0x31223340U); },
       FACE(set_ra_mtu_v6, "text-1", "text-2", 0x31223340U), 0},
      {"VDRZAX_SetLifMcastRouting",
       [] { return VDRZAX_SetLifMcastRouting("text-1", "text-2", 0x31); },
       FACE(set_lif_mcast_routing, "text-1", "text-2", true), 0},
      {"VDRZAX_SetMcastRouting",
       [] {
         return VDRZAX_SetMcastRouting("text-1", "text-2", 0x31223340U, 0x41223340U, 0x5122, 0x61);
       },
       FACE(set_mcast_routing, "text-1",
            {.name2 = "text-2",
             .value1 = 0x31223340U,
             .value2 = 0x41223340U,
             .value3 = 0x5122,
             .flag = 0x61}),
       0},
      {"VDRZAX_SetLif",
       [] { return VDRZAX_SetLif("text-1", "", 0, 0, 0, 0, 0, 0, "text-9", nullptr); },
       FACE(set_lif, "text-9", "text-1"), 0},
      {"VDRZAX_SetLifMcastRouting", [] { return VDRZAX_SetLifMcastRouting("text-1", "text-2", 0); },
       FACE(set_lif_mcast_routing, "text-1", "text-2", false), 0},
      {"VDRZAX_SetMcastRouting", [] { return VDRZAX_SetMcastRouting("text-1", "", 0, 0, 0, 0); },
       FACE(set_mcast_routing, "text-1"), 0},
  };
}

}  // namespace cxx
