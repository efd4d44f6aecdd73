#include "datapath/route_record.h"

namespace vdrsim {

void ShowRoute(RecordWriter<vdrzax::kRouteRecord> record, const RouteKey& key, const Route& route) {
  record.Number("routeWord0", WordOf(key.destination))
      .Number("routeWord1", WordOf(key.mask))
      .Number("routeWord2", WordOf(key.third))
      .Number("routeWord3", route.flags);
  if (!key.interface.empty()) record.Append<"nextHops">().Text("hopName", key.interface);
}

void ShowRouteResult(RecordWriter<kRouteResult> record, const RouteKey& key) {
  record.Number("destination", WordOf(key.destination))
      .Number("mask", WordOf(key.mask))
      .Number("third", WordOf(key.third))
      .Text("interface", key.interface);
}

void ShowIpv6Route(RecordWriter<kIpv6RouteRecord> record, const Ipv6RouteKey& key,
                   const Ipv6Route&) {
  record.Bytes("destination", key.destination).Number("prefixLength", key.prefixLength);
  record.Append<"nextHops">().Bytes("gateway", key.gateway).Text("interface", key.interface);
}

}  // namespace vdrsim
