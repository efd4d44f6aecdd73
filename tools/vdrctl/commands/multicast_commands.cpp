#include <vdrzax/lif.h>
#include <vdrzax/mcast.h>

#include "commands.h"
#include "commands/reading.h"
#include "mcast/mrouting_domain_record.h"
#include "mcast/mrouting_local_rcvr_record.h"
#include "mcast/mrouting_mcast_group_record.h"
#include "mcast/vtep_entry_record.h"

namespace vdrctl {

namespace {

using vdrzax::kMRoutingDomain;
using vdrzax::kMRoutingLocalRcvr;
using vdrzax::kMRoutingMcastGroup;
using vdrzax::kVtepEntry;

constexpr Object kObjects[] = {
    {"multicast", "Multicast routing of a router instance"},
    {"multicast domain", "Multicast routing domain"},
    {"multicast group", "Multicast groups"},
    {"multicast local-receiver", "Local receivers of a group"},
    {"multicast remote-receiver", "Remote receivers of a group"},
    {"multicast replication-address", "Replication address of a group"},
    {"multicast router", "Multicast router"},
};

constexpr Parameter kGroup = Ipv4Address("GROUP", "Group: the key of its receivers");
constexpr Parameter kReceiver = Name("RECEIVER", "Name of the receiver");

int ListRemoteReceivers(Output& out, const char* instance, uint32_t key) {
  VTEPTable* table = nullptr;
  if (VDRZAX_GetMRoutingRemoteRcvrs(instance, key, &table) != 0) return -1;
  const Owned<VTEPTable, VDRZAX_ReleaseVTEPTable> owned(table);
  out.List(table->entries, static_cast<std::size_t>(table->count));
  return 0;
}

constexpr Command kCommands[] = {
    {"multicast",
     "set",
     "Configure multicast routing of a router instance; what is not given becomes 0 or empty",
     {"VDRZAX_SetMcastRouting"},
     {127},
     {kInstance, Name("--second-name TEXT", "Text with a meaning of the kernel's"),
      U32("--value1 N", "Word with a meaning of the kernel's"),
      U32("--value2 N", "Word with a meaning of the kernel's"),
      U16("--value3 N", "Number of 16 bits with a meaning of the kernel's"),
      U8("--flag N", "Byte with a meaning of the kernel's")},
     Run<[](const char* instance, const char* second, uint32_t value1, uint32_t value2,
            uint16_t value3, uint8_t flag) {
       return VDRZAX_SetMcastRouting(instance, OrEmpty(second), value1, value2, value3, flag);
     }>},
    {"multicast domain",
     "show",
     "Show the multicast routing domain of a router instance",
     {"VDRZAX_GetMRoutingDomain"},
     {130},
     {kInstance},
     Shows<MRoutingDomain, VDRZAX_GetMRoutingDomain, VDRZAX_ReleaseMRoutingDomainData,
           kMRoutingDomain>,
     RecordReply<kMRoutingDomain>()},
    {"multicast group",
     "list",
     "List the multicast groups of a router instance",
     {"VDRZAX_GetMRoutingAllMcastGroups"},
     {135},
     {kInstance},
     Lists<VDRZAX_GetMRoutingAllMcastGroups, VDRZAX_ReleaseMRoutingMcastGroups>,
     ListReply<kMRoutingMcastGroup>()},
    {"multicast local-receiver",
     "list",
     "List the local receivers of a group",
     {"VDRZAX_GetMRoutingLocalRcvrs"},
     {128},
     {kInstance, kGroup},
     Lists<VDRZAX_GetMRoutingLocalRcvrs, VDRZAX_ReleaseMRoutingLocalRcvrs>,
     ListReply<kMRoutingLocalRcvr>()},
    {"multicast local-receiver",
     "add",
     "Add a local receiver to a group",
     {"VDRZAX_AddMRoutingLocalRcvrs"},
     {133},
     {kInstance, kGroup, kReceiver},
     Run<VDRZAX_AddMRoutingLocalRcvrs>},
    {"multicast local-receiver",
     "delete",
     "Delete a local receiver of a group",
     {"VDRZAX_DelMRoutingLocalRcvrs"},
     {134},
     {kInstance, kGroup, kReceiver},
     Run<VDRZAX_DelMRoutingLocalRcvrs>},
    {"multicast remote-receiver",
     "list",
     "List the remote receivers of a group",
     {"VDRZAX_GetMRoutingRemoteRcvrs"},
     {129},
     {kInstance, kGroup},
     Run<ListRemoteReceivers>,
     ListReply<kVtepEntry>()},
    {"multicast remote-receiver",
     "add",
     "Add a remote receiver to a group, or replace all of it: what is not given becomes 0",
     {"VDRZAX_AddMRoutingRemoteRcvrs"},
     {131},
     {kInstance, kGroup, U32("B", "Word that the receiver is known by in its group"),
      Mac("MAC", "Hardware address"), U32("--d N", "Word with a meaning of the kernel's"),
      U32("--e N", "Word with a meaning of the kernel's")},
     Run<VDRZAX_AddMRoutingRemoteRcvrs>},
    {"multicast remote-receiver",
     "delete",
     "Delete a remote receiver of a group",
     {"VDRZAX_DelMRoutingRemoteRcvrs"},
     {132},
     {kInstance, kGroup, U32("B", "Word that the receiver is known by in its group")},
     Run<VDRZAX_DelMRoutingRemoteRcvrs>},
    {"multicast replication-address",
     "show",
     "Show the replication address of a group",
     {"VDRZAX_GetMRoutingReplicationIP"},
     {136},
     {kInstance, kGroup},
     ShowsAddress<VDRZAX_GetMRoutingReplicationIP>,
     AddressReply("address")},
    {"multicast router",
     "show",
     "Show the address of the multicast router of a router instance",
     {"VDRZAX_GetMRoutingMRouterIP"},
     {139},
     {kInstance, kGroup},
     ShowsAddress<VDRZAX_GetMRoutingMRouterIP>,
     AddressReply("address")},
    {"multicast router",
     "add",
     "Add a multicast router to a router instance",
     {"VDRZAX_AddMRoutingMRouter"},
     {137},
     {kInstance, Ipv4Address("ADDRESS", "IPv4 address of the router")},
     Run<VDRZAX_AddMRoutingMRouter>},
    {"multicast router",
     "delete",
     "Delete the multicast router of a router instance",
     {"VDRZAX_DelMRoutingMRouter"},
     {138},
     {kInstance},
     Run<VDRZAX_DelMRoutingMRouter>},
};

}  // namespace

constinit const Family kMulticastFamily{kObjects, kCommands};

}  // namespace vdrctl
