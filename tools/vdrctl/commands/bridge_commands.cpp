#include <vdrzax/bridge.h>
#include <vdrzax/lif.h>

#include "bridge/bridge_fdb_record.h"
#include "bridge/bridge_instance_record.h"
#include "bridge/bridge_network_record.h"
#include "bridge/bridge_port_record.h"
#include "commands.h"
#include "commands/reading.h"
#include "lif/lif_record.h"

namespace vdrctl {

namespace {

using vdrzax::kBridgeFdbRecord;
using vdrzax::kBridgeInstanceRecord;
using vdrzax::kBridgeNetworkRecord;
using vdrzax::kBridgePortRecord;
using vdrzax::kLifRecord;

constexpr Object kObjects[] = {
    {"bridge", "Bridges of router instances"},   {"bridge network", "Networks of a bridge"},
    {"bridge port", "Ports of a bridge"},        {"fdb", "Forwarding database of a bridge"},
    {"bridge-lif", "LIFs that are bridge LIFs"}, {"bridge-endpoint", "Bridge endpoints of LIFs"},
};

constexpr const char* kLifColumns[] = {"name",    "auxName", "word128", "word132",
                                       "byte158", "byte159", "word572", "description"};
constexpr const char* kInstanceColumns[] = {"name",   "qword0", "word8",   "word76",
                                            "word80", "text84", "word305", "word309"};
constexpr const char* kNetworkColumns[] = {"qword0", "word8",  "half12", "word14",
                                           "half18", "word20", "word24", "byte28"};
constexpr const char* kPortColumns[] = {"qword0", "word8", "half12", "word14"};

constexpr Parameter kValue = U32("VALUE", "Number of the bridge");
constexpr Parameter kByte = U8("VALUE", "Byte with a meaning of the kernel's");
constexpr Parameter kBridgeName = Name("BRIDGE", "Name that selects the bridge");
constexpr Parameter kSegment = U32("SEGMENT", "Number of the segment");
constexpr Parameter kSelector = U32("SELECTOR", "Word with a meaning of the kernel's");
constexpr Parameter kSecondName = Name("--second-name TEXT", "Text with a meaning of the kernel's");
constexpr Parameter kEndpoint = Name("ENDPOINT", "Name of the endpoint");

// The first name is read and never sent.
int ListNetworks(Output& out, const char* bridge) {
  return PrintList<VDRZAX_ReleaseBridgeNetworks>(
      out, [&](RecordList** list) { return VDRZAX_GetBridgeNetworks("", bridge, list); });
}

int ListPorts(Output& out, const char* bridge, uint16_t network, uint32_t value) {
  return PrintList<VDRZAX_ReleaseBridgePorts>(out, [&](RecordList** list) {
    return VDRZAX_GetBridgePorts("", bridge, network, value, list);
  });
}

template <int kSet>
int MarkLif(const char* instance, const char* lif, const char* secondName, uint32_t value1,
            uint32_t value2, uint32_t value3) {
  return VDRZAX_SetBridgeLif(lif, OrEmpty(secondName), value1, value2, value3, instance, kSet);
}

int AddEndpoint(const char* lif, const char* endpoint, const char* secondName,
                const char* fourthName, const char* fifthName, uint32_t value1, uint32_t value2,
                uint16_t tag, uint8_t flag1, uint8_t flag2) {
  return VDRZAX_AddBridgeEndpoint(lif, OrEmpty(secondName), endpoint, value1, value2,
                                  OrEmpty(fourthName), tag, flag1, OrEmpty(fifthName), flag2);
}

// Room for as many endpoints as the datapath has.
constexpr std::size_t kEndpointSize = 235;
constexpr uint32_t kEndpointRoom = 28672 * kEndpointSize;

int ListEndpoints(Output& out, const char* file) {
  const OwnedBytes bytes(static_cast<uint8_t*>(std::calloc(kEndpointRoom, 1)));
  if (!bytes) {
    errno = ENOMEM;
    return -1;
  }
  ReplyFile output(file);
  uint32_t count = 0;
  if (VDRZAX_GetBeAll(bytes.get(), kEndpointRoom, &count) != 0) return -1;
  // The kernel's length is not compared with the room.
  const std::size_t length = std::min<std::size_t>(count * kEndpointSize, kEndpointRoom);
  output.Put(out, count * kEndpointSize, {bytes.get(), length});
  return 0;
}

constexpr Command kCommands[] = {
    {"bridge",
     "list",
     "List the bridges of all router instances",
     {"VDRZAX_GetBridgeInstances", "VDRZAXGetBridgeInstances"},
     {61},
     {},
     Lists<VDRZAX_GetBridgeInstances, VDRZAX_ReleaseBridgeInstances>,
     ListReply<kBridgeInstanceRecord>(kInstanceColumns)},
    {"bridge",
     "show",
     "Show all fields of the bridge of a router instance",
     {"VDRZAX_GetBridgeInstance"},
     {62},
     {kInstance},
     Shows<BridgeInstanceRecord, VDRZAX_GetBridgeInstance, VDRZAX_ReleaseBridgeInstance,
           kBridgeInstanceRecord>,
     RecordReply<kBridgeInstanceRecord>()},
    {"bridge",
     "create",
     "Add a bridge to a router instance",
     {"VDRZAX_BridgeAdd"},
     {53},
     {kInstance, kValue},
     Run<VDRZAX_BridgeAdd>},
    {"bridge",
     "delete",
     "Delete a bridge of a router instance",
     {"VDRZAX_BridgeDel"},
     {54},
     {kInstance, kValue},
     Run<VDRZAX_BridgeDel>},
    {"bridge",
     "enable",
     "Enable a bridge of a router instance",
     {"VDRZAX_BridgeEnable"},
     {55},
     {kInstance, kByte},
     Run<VDRZAX_BridgeEnable>},
    {"bridge",
     "disable",
     "Disable a bridge of a router instance",
     {"VDRZAX_BridgeDisable"},
     {56},
     {kInstance, kByte},
     Run<VDRZAX_BridgeDisable>},
    {"bridge",
     "set-replication-mode",
     "Set the replication mode of a bridge",
     {"VDRZAX_SetBridgeRepMode"},
     {49},
     {kInstance, U32("MODE", "Number of the mode")},
     Run<VDRZAX_SetBridgeRepMode>},
    {"bridge",
     "set-ha-state",
     "Set the administrative state of the high availability of bridges",
     {"VDRZAX_BridgeSetHAAdminState"},
     {118},
     {kInstance, U32("STATE", "Number of the state")},
     Run<VDRZAX_BridgeSetHAAdminState>},
    {"bridge",
     "configure",
     "Send a configuration command for bridges by its number",
     {"VDRZAX_BridgeSetConfig"},
     {},
     {kInstance, U32("CODE", "Number of the command"), U32("VALUE", "Value of the command")},
     Run<VDRZAX_BridgeSetConfig>},
    {"bridge network",
     "list",
     "List the networks of a bridge",
     {"VDRZAX_GetBridgeNetworks", "VDRZAXGetBridgeNetworks"},
     {63},
     {kBridgeName},
     Run<ListNetworks>,
     ListReply<kBridgeNetworkRecord>(kNetworkColumns)},
    {"bridge port",
     "list",
     "List the ports of a bridge",
     {"VDRZAX_GetBridgePorts", "VDRZAXGetBridgePorts"},
     {64},
     {kBridgeName, U16("NETWORK", "Number of the network"),
      U32("--value N", "Word with a meaning of the kernel's")},
     Run<ListPorts>,
     ListReply<kBridgePortRecord>(kPortColumns)},

    {"fdb",
     "list",
     "List the forwarding database of a bridge",
     {"VDRZAX_GetBridgeFdbEntries", "VDRZAXGetBridgeFdbEntries"},
     {65},
     {kInstance, U16("SEGMENT", "Number of the segment"), kSelector},
     Lists<VDRZAX_GetBridgeFdbEntries, VDRZAX_ReleaseBridgeFdbEntries>,
     ListReply<kBridgeFdbRecord>()},
    {"fdb",
     "set",
     "Set an entry of the forwarding database, or replace it",
     {"VDRZAX_BridgeSetFdbEntry"},
     {66},
     {kInstance, kSegment, kSelector, Mac("MAC", "Hardware address"),
      U32("--value N", "Word with a meaning of the kernel's"),
      U8("--flag N", "Byte with a meaning of the kernel's")},
     Run<[](const char* instance, uint32_t segment, uint32_t selector, MacValue mac, uint32_t value,
            uint8_t flag) {
       return VDRZAX_BridgeSetFdbEntry(instance, MacText(mac).c_str(), segment, selector, value,
                                       flag);
     }>},
    {"fdb",
     "clear",
     "Clear the forwarding database of a bridge",
     {"VDRZAX_BridgeClearFdbTable"},
     {67},
     {kInstance, kSegment, kSelector},
     Run<VDRZAX_BridgeClearFdbTable>},

    {"bridge-lif",
     "list",
     "List the bridge LIFs of a router instance",
     {"VDRZAX_GetBridgeLifs"},
     {59},
     {kInstance},
     Lists<VDRZAX_GetBridgeLifs, VDRZAX_ReleaseLifs>,
     ListReply<kLifRecord>(kLifColumns)},
    {"bridge-lif",
     "show",
     "Show all fields of a bridge LIF",
     {"VDRZAX_GetBridgeLif"},
     {60},
     {kInstance, kLif},
     Shows<LifRecord, VDRZAX_GetBridgeLif, VDRZAX_ReleaseLif, kLifRecord>,
     RecordReply<kLifRecord>()},
    {"bridge-lif",
     "set",
     "Mark a LIF as a bridge LIF",
     {"VDRZAX_SetBridgeLif"},
     {57},
     {kInstance, kLif, kSecondName, U32("--value1 N", "Word with a meaning of the kernel's"),
      U32("--value2 N", "Word with a meaning of the kernel's"),
      U32("--value3 N", "Word with a meaning of the kernel's")},
     Run<MarkLif<1>>},
    {"bridge-lif",
     "clear",
     "Clear the mark of a bridge LIF",
     {"VDRZAX_SetBridgeLif"},
     {58},
     {kInstance, kLif, kSecondName, U32("--value1 N", "Word with a meaning of the kernel's"),
      U32("--value2 N", "Word with a meaning of the kernel's"),
      U32("--value3 N", "Word with a meaning of the kernel's")},
     Run<MarkLif<0>>},

    {"bridge-endpoint",
     "list",
     "Show all bridge endpoints, in the kernel's own layout",
     {"VDRZAX_GetBeAll"},
     {52},
     {kOutput},
     Run<ListEndpoints>,
     BytesReply()},
    {"bridge-endpoint",
     "add",
     "Add a bridge endpoint to a LIF",
     {"VDRZAX_AddBridgeEndpoint"},
     {45},
     {kLif, kEndpoint, kSecondName,
      Name("--fourth-name TEXT", "Text with a meaning of the kernel's"),
      Name("--fifth-name TEXT", "Text with a meaning of the kernel's"),
      U32("--value1 N", "Word with a meaning of the kernel's"),
      U32("--value2 N", "Word with a meaning of the kernel's"),
      U16("--tag N", "Number of 16 bits with a meaning of the kernel's"),
      U8("--flag1 N", "Byte with a meaning of the kernel's"),
      U8("--flag2 N", "Byte with a meaning of the kernel's")},
     Run<AddEndpoint>},
    {"bridge-endpoint",
     "delete",
     "Delete a bridge endpoint of a LIF",
     {"VDRZAX_DelBridgeEndpoint"},
     {46},
     {kLif, kEndpoint},
     Run<VDRZAX_DelBridgeEndpoint>},
    {"bridge-endpoint",
     "flush",
     "Flush bridge endpoints; the kernel chooses which unless it is told all",
     {"VDRZAX_FlushBridgeEndpoint"},
     {47, 48},
     {Switch("--all", "Flush all of them")},
     Run<VDRZAX_FlushBridgeEndpoint>},
    {"bridge-endpoint",
     "stats",
     "Show the statistics of the bridge endpoint of a LIF, in the kernel's own layout",
     {"VDRZAX_GetBeStats"},
     {50},
     {kLif, kOutput},
     ShowsBytes<VDRZAX_GetBeStats, 146>,
     BytesReply()},
    {"bridge-endpoint",
     "status",
     "Show the status of the bridge endpoint of a LIF, in the kernel's own layout",
     {"VDRZAX_GetBeStatus"},
     {51},
     {kLif, kOutput},
     ShowsBytes<VDRZAX_GetBeStatus, 229>,
     BytesReply()},
};

}  // namespace

constinit const Family kBridgeFamily{kObjects, kCommands};

}  // namespace vdrctl
