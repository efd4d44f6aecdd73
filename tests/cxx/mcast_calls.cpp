#include "cxx/calls.h"

namespace cxx {

Rows McastCalls() {
  return {
      {"VDRZAX_GetMRoutingLocalRcvrs",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetMRoutingLocalRcvrs("text-1", 0x21223340U, &out), out,
                     VDRZAX_ReleaseMRoutingLocalRcvrs);
       },
       FACE(mrouting_local_rcvrs, "text-1", 0x21223340U), 0},
      {"VDRZAX_AddMRoutingLocalRcvrs",
       [] { return VDRZAX_AddMRoutingLocalRcvrs("text-1", 0x21223340U, "text-3"); },
       FACE(add_mrouting_local_rcvr, "text-1", 0x21223340U, "text-3"), 0},
      {"VDRZAX_DelMRoutingLocalRcvrs",
       [] { return VDRZAX_DelMRoutingLocalRcvrs("text-1", 0x21223340U, "text-3"); },
       FACE(delete_mrouting_local_rcvr, "text-1", 0x21223340U, "text-3"), 0},
      {"VDRZAX_GetMRoutingRemoteRcvrs",
       [] {
         VTEPTable* out = nullptr;
         return Done(VDRZAX_GetMRoutingRemoteRcvrs("text-1", 0x21223340U, &out), out,
                     VDRZAX_ReleaseVTEPTable);
       },
       FACE(mrouting_remote_rcvrs, "text-1", 0x21223340U), 4},
      {"VDRZAX_AddMRoutingRemoteRcvrs",
       [] {
         return VDRZAX_AddMRoutingRemoteRcvrs("text-1", 0x21223340U, 0x31223340U, &kMac,
                                              0x51223340U, 0x61223340U);
       },
       FACE(add_mrouting_remote_rcvr, "text-1",
            {.a = 0x21223340U,
             .b = 0x31223340U,
             .c = kMacBytes,
             .d = 0x51223340U,
             .e = 0x61223340U}),
       0},
      {"VDRZAX_DelMRoutingRemoteRcvrs",
       [] { return VDRZAX_DelMRoutingRemoteRcvrs("text-1", 0x21223340U, 0x31223340U); },
       FACE(delete_mrouting_remote_rcvr, "text-1", 0x21223340U, 0x31223340U), 0},
      {"VDRZAX_GetMRoutingDomain",
       [] {
         MRoutingDomain* out = nullptr;
         return Done(VDRZAX_GetMRoutingDomain("text-1", &out), out,
                     VDRZAX_ReleaseMRoutingDomainData);
       },
       FACE(mrouting_domain, "text-1"), sizeof(MRoutingDomain)},
      {"VDRZAX_GetMRoutingDomain",
       [] {
         MRoutingDomain* out = nullptr;
         return Done(VDRZAX_GetMRoutingDomain("text-1", &out), out,
                     VDRZAX_ReleaseMRoutingDomainData);
       },
       FACE(find_mrouting_domain, "text-1"), sizeof(MRoutingDomain)},
      {"VDRZAX_GetMRoutingAllMcastGroups",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetMRoutingAllMcastGroups("text-1", &out), out,
                     VDRZAX_ReleaseMRoutingMcastGroups);
       },
       FACE(mrouting_mcast_groups, "text-1"), 0},
      {"VDRZAX_GetMRoutingReplicationIP",
       [] {
         std::uint32_t number = 0;
         return VDRZAX_GetMRoutingReplicationIP("text-1", 0x21223340U, &number);
       },
       FACE(mrouting_replication_ip, "text-1", 0x21223340U), 4},
      {"VDRZAX_GetMRoutingMRouterIP",
       [] {
         std::uint32_t number = 0;
         return VDRZAX_GetMRoutingMRouterIP("text-1", 0x21223340U, &number);
       },
       FACE(mrouting_mrouter_ip, "text-1", 0x21223340U), 4},
      {"VDRZAX_AddMRoutingMRouter", [] { return VDRZAX_AddMRoutingMRouter("text-1", 0x21223340U); },
       FACE(add_mrouting_mrouter, "text-1", 0x21223340U), 0},
      {"VDRZAX_DelMRoutingMRouter", [] { return VDRZAX_DelMRoutingMRouter("text-1"); },
       FACE(delete_mrouting_mrouter, "text-1"), 0},
      {"VDRZAX_AddMRoutingLocalRcvrs",
       [] { return VDRZAX_AddMRoutingLocalRcvrs("text-1", 2, nullptr); },
       FACE(add_mrouting_local_rcvr, "text-1", 2), 0},
  };
}

}  // namespace cxx
