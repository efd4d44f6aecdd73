// Prints the record tables of docs/protocol.md from the layouts that the library decodes by.

#include <fmt/format.h>

#include <string>
#include <string_view>

#include "bridge/bridge_bfd_session_record.h"
#include "bridge/bridge_cluster_node_record.h"
#include "bridge/bridge_cluster_record.h"
#include "bridge/bridge_endpoint_record.h"
#include "bridge/bridge_fdb_record.h"
#include "bridge/bridge_instance_record.h"
#include "bridge/bridge_network_record.h"
#include "bridge/bridge_port_record.h"
#include "e2i/e2i_entry_record.h"
#include "instance/control_plane_record.h"
#include "instance/instance_record.h"
#include "instance/stats_record.h"
#include "lif/lif_record.h"
#include "mcast/mrouting_domain_record.h"
#include "mcast/mrouting_local_rcvr_record.h"
#include "mcast/mrouting_mcast_group_record.h"
#include "mcast/vtep_entry_record.h"
#include "policy/lif_policy_table_ref_record.h"
#include "policy/policy_record.h"
#include "policy/policy_table_record.h"
#include "route/demux_route_record.h"
#include "route/route_record.h"
#include "services/soft_rss_stats_record.h"
#include "services/soft_rss_tunables_record.h"
#include "services/vm_public_ip_record.h"

namespace {

using vdrzax::Field;
using vdrzax::RecordLayout;

struct Table {
  const RecordLayout& layout;
  const char* variant = "";  // which of several layouts of one record
};

constexpr Table kTables[] = {
    {vdrzax::kInstanceRecord},
    {vdrzax::kStatsOfType0, " of type 0"},
    {vdrzax::kStatsOfType1, " of type 1"},
    {vdrzax::kStatsOfType3, " of type 3"},
    {vdrzax::kStatsOfOtherTypes, " of any other type"},
    {vdrzax::kCPSyncStateEntry},
    {vdrzax::kLifRecord},
    {vdrzax::kLifSubEntry},
    {vdrzax::kRouteRecord},
    {vdrzax::kRouteNextHop},
    {vdrzax::kDemuxRouteRecord},
    {vdrzax::kPolicyRecord},
    {vdrzax::kPolicyTableRecord},
    {vdrzax::kLifPolicyTableRef},
    {vdrzax::kPolicyTableRefEntry},
    {vdrzax::kBridgeInstanceRecord},
    {vdrzax::kBridgeNetworkRecord},
    {vdrzax::kBridgePortRecord},
    {vdrzax::kBridgeFdbRecord},
    {vdrzax::kBridgeClusterRecord},
    {vdrzax::kBridgeClusterNodeRecord},
    {vdrzax::kBridgeEndpointRecord},
    {vdrzax::kBridgeBfdSessionRecord},
    {vdrzax::kE2IEntry},
    {vdrzax::kMRoutingDomain},
    {vdrzax::kMRoutingLocalRcvr},
    {vdrzax::kMRoutingMcastGroup},
    {vdrzax::kVtepEntry},
    {vdrzax::kSoftRssStats},
    {vdrzax::kQueueWord},
    {vdrzax::kQueueQword},
    {vdrzax::kSoftRssTunables},
    {vdrzax::kVMPublicIPEntry},
    {vdrzax::kVMPublicIPItem},
};

void Print(const Table& table);
std::string Handling(const RecordLayout& layout, const Field& row);
std::string_view NameAt(const RecordLayout& layout, uint32_t offset);

}  // namespace

int main() {
  for (const Table& table : kTables) Print(table);
}

namespace {

void Print(const Table& table) {
  fmt::print("\n### `{}`{}, {} bytes\n\n", table.layout.name, table.variant, table.layout.size);
  fmt::print("| Offset | Width | Field | Handling |\n|---|---|---|---|\n");
  for (const Field& row : table.layout.rows) {
    fmt::print("| {} | {} | `{}` | {} |\n", row.offset, row.width, row.name,
               Handling(table.layout, row));
  }
}

std::string Handling(const RecordLayout& layout, const Field& row) {
  switch (row.kind) {
    case Field::Kind::Number:
      return row.elements == 1
                 ? std::string("number")
                 : fmt::format("{} numbers of {} bytes", row.elements, row.ElementWidth());
    case Field::Kind::Text:
      return "text";
    case Field::Kind::Bytes:
      return "bytes";
    case Field::Kind::Mac:
      return "hardware address";
    case Field::Kind::Entries:
      return fmt::format("{} of `{}`, the first `{}` of them copied", row.elements, row.entry->name,
                         NameAt(layout, row.countOffset));
    case Field::Kind::Skipped:
      return "skipped";
  }
  return {};
}

std::string_view NameAt(const RecordLayout& layout, uint32_t offset) {
  for (const Field& row : layout.rows) {
    if (row.offset == offset) return row.name;
  }
  return {};
}

}  // namespace
