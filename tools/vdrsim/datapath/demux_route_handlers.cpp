#include <string_view>
#include <vector>

#include "datapath/answers.h"
#include "datapath/route_handlers.h"
#include "route/demux_route_record.h"

namespace vdrsim {

namespace {

using vdrzax::kDemuxRouteRecord;

// An IPv4 address of a LIF, as it stands in a snapshot.
struct DemuxRoute {
  std::string_view instance;
  std::string_view name;
  const Lif* lif;
  const LifAddress* address;
};

std::vector<DemuxRoute> DemuxRoutes(const Table<std::string, Instance>& instances) {
  std::vector<DemuxRoute> found;
  for (const auto& [instanceName, instance] : instances) {
    for (const auto& [name, lif] : instance.lifs) {
      for (const LifAddress& address : lif.addresses) {
        if (address.family != LifAddress::kIpv4) continue;
        found.push_back({instanceName, name, &lif, &address});
      }
    }
  }
  return found;
}

void ShowDemuxRoute(RecordWriter<kDemuxRouteRecord> record, const DemuxRoute& route) {
  record.Number("demuxWord0", route.address->address[0])
      .Number("demuxWord1", route.address->mask)
      .Number("demuxWord2", route.lif->a5)
      .Text("demuxName1", route.instance)
      .Text("demuxName2", route.name);
}

}  // namespace

Answer Handle(const State& state, const Input<"GetDemuxRoutes">&) {
  return SelectionAnswer<kDemuxRouteRecord>(state.instances, DemuxRoutes, ShowDemuxRoute);
}

}  // namespace vdrsim
