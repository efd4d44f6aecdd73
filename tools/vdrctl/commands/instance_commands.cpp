#include <vdrzax/instance.h>

#include "commands.h"
#include "commands/reading.h"
#include "commands/stats.h"
#include "instance/control_plane_record.h"
#include "instance/instance_record.h"

namespace vdrctl {

namespace {

using vdrzax::kCPSyncStateEntry;
using vdrzax::kInstanceRecord;

constexpr Object kObjects[] = {
    {"instance", "Router instances"},
    {"control-plane", "The control plane of a router instance"},
    {"control-plane stats", "Counters of the control plane"},
    {"control-plane sync-state", "Sync state of the control plane"},
    {"datapath", "The datapath as a whole"},
    {"datapath stats", "Counters of the datapath as a whole"},
    {"connection", "Connections of the datapath"},
};

constexpr const char* kColumns[] = {"name",   "word64",  "word68",  "byte72",
                                    "text73", "text329", "word399", "word568"};

constexpr Parameter kConnection = Name("CONNECTION", "Name of the connection");

constexpr Command kCommands[] = {
    {"instance",
     "list",
     "List all router instances, or the one that is named",
     {"VDRZAX_GetInstances"},
     {0},
     {Optional(kInstance)},
     Run<[](Output& out, const char* name) {
       return PrintList<VDRZAX_ReleaseInstances>(
           out, [&](RecordList** list) { return VDRZAX_GetInstances(name, name ? 1 : 0, list); });
     }>,
     ListReply<kInstanceRecord>(kColumns)},
    {"instance",
     "show",
     "Show all fields of a router instance",
     {"VDRZAX_GetInstance"},
     {1},
     {kInstance},
     Shows<InstanceRecord, VDRZAX_GetInstance, VDRZAX_ReleaseInstance, kInstanceRecord>,
     RecordReply<kInstanceRecord>()},
    {"instance",
     "set",
     "Create a router instance, or replace all of it: what is not given becomes 0 or empty",
     {"VDRZAX_SetVdrInstance"},
     {2},
     {kInstance, U32("--second N", "Word with a meaning of the kernel's"),
      Text("--text TEXT", 18, "Text of at most 18 bytes"),
      U32("--fourth N", "Word with a meaning of the kernel's"),
      U8("--flag N", "Byte with a meaning of the kernel's")},
     Run<VDRZAX_SetVdrInstance>},
    {"instance",
     "delete",
     "Delete a router instance",
     {"VDRZAX_DelVdrInstance"},
     {3},
     {kInstance},
     Run<VDRZAX_DelVdrInstance>},
    {"instance",
     "tune",
     "Set the tunables of a router instance",
     {"VDRZAX_SetVdrInstanceTunables"},
     {4},
     {kInstance, Text("TUNABLES", 63, "Text with a meaning of the kernel's"),
      U32("VALUE", "Word with a meaning of the kernel's")},
     Run<VDRZAX_SetVdrInstanceTunables>},

    {"control-plane stats",
     "show",
     "Show the control-plane counters of a router instance",
     {"VDRZAX_GetVdrInstanceCPStats"},
     {5},
     {kInstance},
     Run<[](Output& out, const char* name) {
       return PrintStats(
           out, [&](StatsRecord** record) { return VDRZAX_GetVdrInstanceCPStats(name, record); });
     }>,
     StatsReply()},
    {"control-plane stats",
     "reset",
     "Reset the control-plane counters of a router instance",
     {"VDRZAX_ResetVdrInstanceCPStats"},
     {6},
     {kInstance},
     Run<VDRZAX_ResetVdrInstanceCPStats>},
    {"control-plane",
     "activate",
     "Activate the control plane",
     {"VDRZAX_CPActivate"},
     {7},
     {U32("VALUE", "Word with a meaning of the kernel's")},
     Run<VDRZAX_CPActivate>},
    {"control-plane",
     "set-address",
     "Set the control-plane address of a router instance",
     {"VDRZAX_SetCPIp"},
     {8},
     {kInstance, Ipv4Address("ADDRESS", "IPv4 address")},
     Run<VDRZAX_SetCPIp>},
    {"control-plane sync-state",
     "show",
     "Show the five parts of the sync state of a router instance",
     {"VDRZAX_GetVdrInstanceCPSyncState"},
     {87},
     {kInstance},
     Run<[](Output& out, const char* name) {
       CPSyncStateRecord* record = nullptr;
       if (VDRZAX_GetVdrInstanceCPSyncState(name, &record) != 0) return -1;
       const Owned<CPSyncStateRecord, std::free> owned(record);
       out.List(record, std::size(CPSyncStateRecord{}.entries));
       return 0;
     }>,
     ListReply<kCPSyncStateEntry>()},
    {"control-plane sync-state",
     "set",
     "Set the sync state of a router instance",
     {"VDRZAX_SetVdrInstanceCPSyncState"},
     {88},
     {kInstance, U32("STATE", "Word with a meaning of the kernel's")},
     Run<VDRZAX_SetVdrInstanceCPSyncState>},

    {"datapath stats",
     "show",
     "Show the counters of the datapath as a whole",
     {"VDRZAX_GetVdrDiStats"},
     {43},
     {},
     Run<[](Output& out) { return PrintStats(out, VDRZAX_GetVdrDiStats); }>,
     StatsReply()},
    {"datapath stats",
     "reset",
     "Reset the counters of the datapath as a whole",
     {"VDRZAX_ResetVdrDiStats"},
     {44},
     {},
     Run<VDRZAX_ResetVdrDiStats>},

    {"connection",
     "plumb",
     "Create a connection in the datapath",
     {"VDRZAX_PlumbVdrConnection"},
     {15},
     {kConnection, Text("--second TEXT", 15, "Text with a meaning of the kernel's"),
      Text("--fourth TEXT", 17, "Text with a meaning of the kernel's"),
      Text("--fifth TEXT", 31, "Text with a meaning of the kernel's"),
      Text("--sixth TEXT", 255, "Text with a meaning of the kernel's"),
      U32("--seventh N", "Word with a meaning of the kernel's")},
     Run<[](const char* name, const char* second, const char* fourth, const char* fifth,
            const char* sixth, uint32_t seventh) {
       constexpr uint64_t kIgnored = 0;
       return VDRZAX_PlumbVdrConnection(name, OrEmpty(second), kIgnored, fourth, fifth, sixth,
                                        seventh);
     }>},
    {"connection",
     "unplumb",
     "Remove a connection from the datapath",
     {"VDRZAX_UnPlumbVdrConnection"},
     {16},
     {kConnection},
     Run<VDRZAX_UnPlumbVdrConnection>},
    {"connection",
     "list",
     "Show all connections, in the kernel's own layout",
     {"VDRZAX_GetConnections"},
     {17},
     {kOutput},
     ShowsBytes<VDRZAX_GetConnections, 131072>,
     BytesReply()},
    {"connection",
     "show",
     "Show a connection, in the kernel's own layout",
     {"VDRZAX_GetConnection"},
     {18},
     {kConnection, kOutput},
     ShowsBytes<VDRZAX_GetConnection, 152>,
     BytesReply()},
    {"connection",
     "mac",
     "Show the virtual hardware address of a connection",
     {"VDRZAX_GetVMAC"},
     {149},
     {kConnection},
     Run<[](Output& out, const char* name) {
       MacValue mac{};
       if (VDRZAX_GetVMAC(name, mac.bytes) != 0) return -1;
       out.Mac(mac.bytes);
       return 0;
     }>,
     MacReply("address")},
    {"connection",
     "deletion-pending",
     "Show whether the deletion of connections is pending",
     {"VDRZAX_VDRDevCheckConnDeletion"},
     {85},
     {},
     ShowsNumber<VDRZAX_VDRDevCheckConnDeletion>,
     NumberReply("pending")},
};

}  // namespace

constinit const Family kInstanceFamily{kObjects, kCommands};

}  // namespace vdrctl
