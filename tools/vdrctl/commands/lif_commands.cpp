#include <vdrzax/instance.h>
#include <vdrzax/lif.h>

#include "commands.h"
#include "commands/reading.h"
#include "commands/stats.h"
#include "lif/lif_record.h"

namespace vdrctl {

namespace {

using vdrzax::kLifRecord;

constexpr Object kObjects[] = {
    {"lif", "Logical interfaces (LIFs) of a router instance"},
    {"lif stats", "Counters of a LIF"},
    {"lif address", "IPv4 addresses of a LIF"},
    {"lif address6", "IPv6 addresses of a LIF"},
    {"lif designated-address", "IPv4 address of the designated instance of a LIF"},
    {"lif dhcp-relay", "DHCP relay servers of a LIF"},
    {"lif vxlan", "VXLAN settings of a LIF"},
    {"lif mtu6", "IPv6 MTU of a LIF"},
    {"lif multicast", "Multicast routing on a LIF"},
    {"lif external-vlan", "LIFs of an external VLAN"},
};

constexpr const char* kColumns[] = {"name",    "auxName", "word128", "word132",
                                    "byte158", "byte159", "word572", "description"};

constexpr Parameter kAuxName = Name("--aux-name TEXT", "Second name of the LIF");
constexpr Parameter kAddress = Ipv4Address("ADDRESS", "IPv4 address");
constexpr Parameter kPrefix = Ipv4Prefix("ADDRESS/LENGTH", "IPv4 address and its netmask");
constexpr Parameter kPrefix6 = Ipv6Prefix("ADDRESS/LENGTH", "IPv6 address and its prefix length");

constexpr uint32_t kFlagBits = 29;

// The high three bits of the word choose the mode.
int32_t FlagsWord(uint32_t flags, uint32_t mode) {
  const uint32_t bit = mode == 0 ? 0 : 1U << (kFlagBits + mode - 1);
  return static_cast<int32_t>(flags | bit);
}

constexpr Command kCommands[] = {
    {"lif",
     "list",
     "List the LIFs of a router instance",
     {"VDRZAX_GetLifs"},
     {21},
     {kInstance},
     Lists<VDRZAX_GetLifs, VDRZAX_ReleaseLifs>,
     ListReply<kLifRecord>(kColumns)},
    {"lif",
     "show",
     "Show all fields of a LIF",
     {"VDRZAX_GetLif"},
     {22},
     {kInstance, kLif},
     Shows<LifRecord, VDRZAX_GetLif, VDRZAX_ReleaseLif, kLifRecord>,
     RecordReply<kLifRecord>()},
    {"lif",
     "set",
     "Create a LIF, or replace all of it: what is not given becomes 0 or empty",
     {"VDRZAX_SetLif"},
     {19},
     {kInstance, kLif, kAuxName, U32("--a3 N", "Word with a meaning of the kernel's"),
      U32("--a4 N", "Word with a meaning of the kernel's"),
      U32("--a5 N", "Word with a meaning of the kernel's"),
      U32("--a6 N", "Word with a meaning of the kernel's"),
      U32("--a7 N", "Word with a meaning of the kernel's"),
      Number("--flags N", (1U << kFlagBits) - 1, "29 bits with a meaning of the kernel's"),
      Number("--mode N", 3, "Mode of the LIF"), Mac("--mac MAC", "Hardware address")},
     Run<[](const char* instance, const char* lif, const char* aux, uint32_t a3, uint32_t a4,
            uint32_t a5, uint32_t a6, uint32_t a7, uint32_t flags, uint32_t mode,
            const MacValue* mac) {
       return VDRZAX_SetLif(lif, OrEmpty(aux), a3, a4, a5, a6, a7, FlagsWord(flags, mode), instance,
                            mac);
     }>},
    {"lif",
     "delete",
     "Delete a LIF",
     {"VDRZAX_DelLif"},
     {20},
     {kInstance, kLif, kAuxName},
     Run<[](const char* instance, const char* lif, const char* aux) {
       return VDRZAX_DelLif(lif, OrEmpty(aux), instance);
     }>},
    {"lif",
     "enable",
     "Bring a LIF up",
     {"VDRZAX_EnableLif"},
     {30},
     {kInstance, kLif},
     Run<VDRZAX_EnableLif>},
    {"lif",
     "disable",
     "Bring a LIF down",
     {"VDRZAX_DisableLif"},
     {31},
     {kInstance, kLif},
     Run<VDRZAX_DisableLif>},

    {"lif stats",
     "show",
     "Show the counters of a LIF",
     {"VDRZAX_GetLifStats", "VDRZAX_GetLifStatsCached"},
     {23},
     {kInstance, kLif, Switch("--cached", "Show those that the kernel has cached")},
     Run<[](Output& out, const char* instance, const char* lif, bool cached) {
       return PrintStats(out, [&](StatsRecord** record) {
         return cached ? VDRZAX_GetLifStatsCached(instance, lif, record)
                       : VDRZAX_GetLifStats(instance, lif, record);
       });
     }>,
     StatsReply()},
    {"lif stats",
     "reset",
     "Reset the counters of a LIF",
     {"VDRZAX_ResetLifStats"},
     {24},
     {kInstance, kLif},
     Run<VDRZAX_ResetLifStats>},

    {"lif address",
     "set",
     "Set an IPv4 address of a LIF",
     {"VDRZAX_SetLifIp"},
     {26},
     {kInstance, kLif, kPrefix},
     Run<[](const char* instance, const char* lif, Prefix prefix) {
       return VDRZAX_SetLifIp(instance, lif, prefix.address, prefix.mask);
     }>},
    {"lif address",
     "delete",
     "Delete an IPv4 address of a LIF",
     {"VDRZAX_DelLifIp"},
     {27},
     {kInstance, kLif, kPrefix},
     Run<[](const char* instance, const char* lif, Prefix prefix) {
       return VDRZAX_DelLifIp(instance, lif, prefix.address, prefix.mask);
     }>},
    {"lif address6",
     "set",
     "Set an IPv6 address of a LIF",
     {"VDRZAX_SetLifIpv6"},
     {108},
     {kInstance, kLif, kPrefix6},
     Run<[](const char* instance, const char* lif, Prefix6 prefix) {
       return VDRZAX_SetLifIpv6(instance, lif, prefix.address.high, prefix.address.low,
                                prefix.length);
     }>},
    {"lif address6",
     "delete",
     "Delete an IPv6 address of a LIF",
     {"VDRZAX_DelLifIpv6"},
     {109},
     {kInstance, kLif, kPrefix6},
     Run<[](const char* instance, const char* lif, Prefix6 prefix) {
       return VDRZAX_DelLifIpv6(instance, lif, prefix.address.high, prefix.address.low,
                                prefix.length);
     }>},
    {"lif designated-address",
     "set",
     "Set the IPv4 address of the designated instance of a LIF",
     {"VDRZAX_SetLifDIIp"},
     {25},
     {kInstance, kLif, kAddress},
     Run<VDRZAX_SetLifDIIp>},
    {"lif dhcp-relay",
     "clear",
     "Clear the DHCP relay servers of a LIF; the library takes no servers",
     {"VDRZAX_ConfigureLifDhcpRelay"},
     {33},
     {kInstance, kLif},
     Run<[](const char* instance, const char* lif) {
       return VDRZAX_ConfigureLifDhcpRelay(instance, lif, nullptr);
     }>},
    {"lif vxlan",
     "enable",
     "Put a LIF under the VXLAN control plane",
     {"VDRZAX_SetLifVxlanCP"},
     {28},
     {kInstance, kLif},
     Run<VDRZAX_SetLifVxlanCP>},
    {"lif vxlan",
     "disable",
     "Take a LIF from the VXLAN control plane",
     {"VDRZAX_DelLifVxlanCP"},
     {29},
     {kInstance, kLif},
     Run<VDRZAX_DelLifVxlanCP>},
    {"lif vxlan",
     "set-multicast",
     "Set the VXLAN multicast address of a LIF",
     {"VDRZAX_SetLifVxlanMulticastIp"},
     {32},
     {kInstance, kLif, kAddress},
     Run<VDRZAX_SetLifVxlanMulticastIp>},
    {"lif mtu6",
     "set",
     "Set the IPv6 MTU of a LIF",
     {"VDRZAX_RAMTUSetv6"},
     {152},
     {kInstance, kLif, U32("MTU", "MTU in bytes")},
     Run<VDRZAX_RAMTUSetv6>},
    {"lif multicast",
     "enable",
     "Enable multicast routing on a LIF",
     {"VDRZAX_SetLifMcastRouting"},
     {125},
     {kInstance, kLif},
     Run<[](const char* instance, const char* lif) {
       return VDRZAX_SetLifMcastRouting(instance, lif, 1);
     }>},
    {"lif multicast",
     "disable",
     "Disable multicast routing on a LIF",
     {"VDRZAX_SetLifMcastRouting"},
     {126},
     {kInstance, kLif},
     Run<[](const char* instance, const char* lif) {
       return VDRZAX_SetLifMcastRouting(instance, lif, 0);
     }>},
    {"lif external-vlan",
     "list",
     "List the LIFs of an external VLAN",
     {"VDRZAX_GetExtVlanLifs"},
     {172},
     {U16("VLAN", "VLAN identifier")},
     Lists<VDRZAX_GetExtVlanLifs, VDRZAX_ReleaseLifs>,
     ListReply<kLifRecord>(kColumns)},
};

}  // namespace

constinit const Family kLifFamily{kObjects, kCommands};

}  // namespace vdrctl
