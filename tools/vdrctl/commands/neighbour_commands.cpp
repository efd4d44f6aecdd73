#include <vdrzax/route.h>

#include "commands.h"
#include "commands/reading.h"

namespace vdrctl {

namespace {

constexpr Object kObjects[] = {
    {"arp", "IPv4 neighbours of a router instance"},
    {"proxy-arp", "IPv4 addresses that a router instance answers for"},
    {"neighbour6", "IPv6 neighbours of a router instance"},
    {"proxy-neighbour6", "IPv6 addresses that a router instance answers for"},
};

constexpr Parameter kAddress = Ipv4Address("ADDRESS", "IPv4 address of the neighbour");
constexpr Parameter kAddress6 = Ipv6Address("ADDRESS", "IPv6 address of the neighbour");
constexpr Parameter kMac = Mac("MAC", "Hardware address of the neighbour");
constexpr Parameter kOnlyLif = Name("--interface LIF", "This interface alone");

constexpr std::size_t kTableSize = 7667712;

constexpr Command kCommands[] = {
    {"arp",
     "list",
     "Show the IPv4 neighbours of a router instance, in the kernel's own layout",
     {"VDRZAX_GetArps"},
     {40},
     {kInstance, kOnlyLif, kOutput},
     ShowsBytes<VDRZAX_GetArps, kTableSize>,
     BytesReply()},
    {"arp",
     "set",
     "Add an IPv4 neighbour, or replace it",
     {"VDRZAX_SetArp"},
     {38},
     {kInstance, kLif, kAddress, kMac},
     Run<[](const char* instance, const char* lif, uint32_t address, MacValue mac) {
       return VDRZAX_SetArp(address, MacText(mac).c_str(), lif, instance);
     }>},
    {"arp",
     "delete",
     "Delete an IPv4 neighbour",
     {"VDRZAX_DelArp"},
     {39},
     {kInstance, kLif, kAddress},
     Run<[](const char* instance, const char* lif, uint32_t address) {
       return VDRZAX_DelArp(address, lif, instance);
     }>},
    {"arp",
     "clear",
     "Delete all IPv4 neighbours of a router instance, or those of one interface",
     {"VDRZAX_ClearArp"},
     {41},
     {kInstance, kOnlyLif},
     Run<VDRZAX_ClearArp>},
    {"proxy-arp",
     "list",
     "Show the IPv4 addresses that a router instance answers for, in the kernel's own layout",
     {"VDRZAX_GetProxyArps"},
     {40},
     {kInstance, kOnlyLif, kOutput},
     ShowsBytes<VDRZAX_GetProxyArps, kTableSize>,
     BytesReply()},
    {"proxy-arp",
     "set",
     "Have a router instance answer for an IPv4 address",
     {"VDRZAX_SetProxyArp"},
     {38},
     {kInstance, kLif, kAddress},
     Run<[](const char* instance, const char* lif, uint32_t address) {
       return VDRZAX_SetProxyArp(address, lif, instance);
     }>},
    {"proxy-arp",
     "delete",
     "Have a router instance no longer answer for an IPv4 address",
     {"VDRZAX_DelProxyArp"},
     {39},
     {kInstance, kLif, kAddress},
     Run<[](const char* instance, const char* lif, uint32_t address) {
       return VDRZAX_DelProxyArp(address, lif, instance);
     }>},
    {"neighbour6",
     "list",
     "Show the IPv6 neighbours of a router instance, in the kernel's own layout",
     {"VDRZAX_GetArpsv6"},
     {116},
     {kInstance, kOnlyLif, kOutput},
     ShowsBytes<VDRZAX_GetArpsv6, kTableSize>,
     BytesReply()},
    {"neighbour6",
     "set",
     "Add an IPv6 neighbour, or replace it",
     {"VDRZAX_SetArpv6"},
     {112},
     {kInstance, kLif, kAddress6, kMac},
     Run<[](const char* instance, const char* lif, Ipv6 address, MacValue mac) {
       return VDRZAX_SetArpv6(address.high, address.low, MacText(mac).c_str(), lif, instance);
     }>},
    {"neighbour6",
     "delete",
     "Delete an IPv6 neighbour",
     {"VDRZAX_DelArpv6"},
     {113},
     {kInstance, kLif, kAddress6},
     Run<[](const char* instance, const char* lif, Ipv6 address) {
       return VDRZAX_DelArpv6(address.high, address.low, lif, instance);
     }>},
    {"neighbour6",
     "clear",
     "Delete all IPv6 neighbours of a router instance, or those of one interface",
     {"VDRZAX_ClearArpv6"},
     {117},
     {kInstance, kOnlyLif},
     Run<VDRZAX_ClearArpv6>},
    {"proxy-neighbour6",
     "set",
     "Have a router instance answer for an IPv6 address",
     {"VDRZAX_SetProxyArpv6"},
     {112},
     {kInstance, kLif, kAddress6},
     Run<[](const char* instance, const char* lif, Ipv6 address) {
       return VDRZAX_SetProxyArpv6(address.high, address.low, lif, instance);
     }>},
    {"proxy-neighbour6",
     "delete",
     "Have a router instance no longer answer for an IPv6 address",
     {"VDRZAX_DelProxyArpv6"},
     {113},
     {kInstance, kLif, kAddress6},
     Run<[](const char* instance, const char* lif, Ipv6 address) {
       return VDRZAX_DelProxyArpv6(address.high, address.low, lif, instance);
     }>},
};

}  // namespace

constinit const Family kNeighbourFamily{kObjects, kCommands};

}  // namespace vdrctl
