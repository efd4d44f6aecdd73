#include <vdrzax/route.h>

#include "commands.h"
#include "commands/reading.h"
#include "route/demux_route_record.h"
#include "route/route_record.h"

namespace vdrctl {

namespace {

using vdrzax::kDemuxRouteRecord;
using vdrzax::kRouteRecord;

constexpr Object kObjects[] = {
    {"route", "IPv4 routes of a router instance"},
    {"route6", "IPv6 routes of a router instance"},
    {"demux-route", "Demultiplexing routes of the datapath"},
    {"path-mtu6", "IPv6 path MTU table of the datapath"},
};

constexpr const char* kColumns[] = {"routeWord0", "routeWord1", "routeWord2", "routeWord3",
                                    "routeByte",  "routeQword", "nextHops"};

constexpr Parameter kDestination =
    Ipv4Prefix("PREFIX", "Destination and netmask: the first two words of a route");
constexpr Parameter kGateway = Ipv4Address("--gateway ADDRESS", "The third word of a route");
constexpr Parameter kInterface = Name("--interface LIF", "Name of the interface");
constexpr Parameter kDestination6 = Ipv6Prefix("PREFIX", "Destination");
constexpr Parameter kGateway6 = Ipv6Address("--gateway ADDRESS", "Address of the next hop");

constexpr std::size_t kRoute6Size = 776;

int ListRoutes6(Output& out, const char* instance, const char* file) {
  ReplyFile output(file);
  void* table = nullptr;
  uint32_t count = 0;
  if (VDRZAX_GetRoutesv6(instance, &table, &count) != 0) return -1;
  const OwnedBytes bytes(static_cast<uint8_t*>(table));
  const std::size_t length = count * kRoute6Size;
  output.Put(out, length, {bytes.get(), length});
  return 0;
}

constexpr Command kCommands[] = {
    {"route",
     "list",
     "List the IPv4 routes of a router instance",
     {"VDRZAX_GetRoutes"},
     {36},
     {kInstance},
     Lists<VDRZAX_GetRoutes, VDRZAX_ReleaseRoutes>,
     ListReply<kRouteRecord>(kColumns)},
    {"route",
     "selection",
     "List the routes for LIF selection of a router instance",
     {"VDRZAX_GetLifSelectionRoutes"},
     {174},
     {kInstance},
     Lists<VDRZAX_GetLifSelectionRoutes, VDRZAX_ReleaseRoutes>,
     ListReply<kRouteRecord>(kColumns)},
    {"route",
     "resolve",
     "Show the IPv4 route that the datapath resolves a query to",
     {"VDRZAX_GetResolveRoute"},
     {37},
     {kInstance, Ipv4Prefix("PREFIX", "Address and netmask: the first two words of the query"),
      Ipv4Address("--third ADDRESS", "The third word of the query")},
     Run<[](Output& out, const char* instance, Prefix prefix, uint32_t third) {
       return PrintRecord<VDRZAX_ReleaseRoute, RouteRecord>(
           out, kRouteRecord, [&](RouteRecord** record) {
             return VDRZAX_GetResolveRoute(instance, prefix.address, prefix.mask, third, record);
           });
     }>,
     RecordReply<kRouteRecord>()},
    {"route",
     "set",
     "Add an IPv4 route, or replace all of it: what is not given becomes 0 or empty",
     {"VDRZAX_SetRoute"},
     {34},
     {kInstance, kDestination, kGateway, kInterface,
      U32("--flags N", "Word with a meaning of the kernel's"), kAnswer},
     Run<[](const char* instance, Prefix prefix, uint32_t gateway, const char* interface,
            uint32_t flags, const char* file) {
       return SendForAnswer(file, [&](void* answer) {
         return VDRZAX_SetRoute(prefix.address, prefix.mask, gateway, interface, instance, flags,
                                answer);
       });
     }>},
    {"route",
     "delete",
     "Delete an IPv4 route",
     {"VDRZAX_DelRoute"},
     {35},
     {kInstance, kDestination, kGateway, kInterface, kAnswer},
     Run<[](const char* instance, Prefix prefix, uint32_t gateway, const char* interface,
            const char* file) {
       return SendForAnswer(file, [&](void* answer) {
         return VDRZAX_DelRoute(prefix.address, prefix.mask, gateway, interface, instance, answer);
       });
     }>},
    {"route6",
     "list",
     "Show the IPv6 routes of a router instance, in the kernel's own layout",
     {"VDRZAX_GetRoutesv6"},
     {115, 114},
     {kInstance, kOutput},
     Run<ListRoutes6>,
     BytesReply()},
    {"route6",
     "set",
     "Add an IPv6 route, or replace all of it: what is not given becomes 0 or empty",
     {"VDRZAX_SetRoutev6"},
     {110},
     {kInstance, kDestination6, kGateway6, kInterface},
     Run<[](const char* instance, Prefix6 prefix, Ipv6 gateway, const char* interface) {
       return VDRZAX_SetRoutev6(prefix.address.high, prefix.address.low, prefix.length,
                                gateway.high, gateway.low, interface, instance);
     }>},
    {"route6",
     "delete",
     "Delete an IPv6 route",
     {"VDRZAX_DelRoutev6"},
     {111},
     {kInstance, kDestination6, kGateway6, kInterface},
     Run<[](const char* instance, Prefix6 prefix, Ipv6 gateway, const char* interface) {
       return VDRZAX_DelRoutev6(prefix.address.high, prefix.address.low, prefix.length,
                                gateway.high, gateway.low, interface, instance);
     }>},
    {"demux-route",
     "list",
     "List the demultiplexing routes of the datapath",
     {"VDRZAX_GetDemuxRoutes"},
     {173},
     {},
     Lists<VDRZAX_GetDemuxRoutes, VDRZAX_ReleaseDemuxRoutes>,
     ListReply<kDemuxRouteRecord>()},
    {"path-mtu6",
     "clear",
     "Clear the IPv6 path MTU table of the whole datapath",
     {"VDRZAX_PMTUTableCearv6"},
     {151},
     {},
     Run<VDRZAX_PMTUTableCearv6>},
    {"flush",
     nullptr,
     "Flush a table that the kernel selects from the arguments",
     {"VDRZAX_GenericFlush"},
     {80},
     {U32("TARGET", "Word with a meaning of the kernel's"),
      U8("--selector1 N", "Byte with a meaning of the kernel's"),
      U8("--selector2 N", "Byte with a meaning of the kernel's"),
      U8("--selector3 N", "Byte with a meaning of the kernel's"),
      Name("--name TEXT", "Text with a meaning of the kernel's"),
      U32("--value N", "Word with a meaning of the kernel's")},
     Run<VDRZAX_GenericFlush>},
};

}  // namespace

constinit const Family kRouteFamily{kObjects, kCommands};

}  // namespace vdrctl
