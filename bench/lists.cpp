#include "lists.h"

#include <vdrzax.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

#include "bridge/bridge_bfd_session_record.h"
#include "bridge/bridge_cluster_node_record.h"
#include "bridge/bridge_cluster_record.h"
#include "bridge/bridge_endpoint_record.h"
#include "bridge/bridge_fdb_record.h"
#include "bridge/bridge_instance_record.h"
#include "bridge/bridge_network_record.h"
#include "bridge/bridge_port_record.h"
#include "device.h"
#include "e2i/e2i_entry_record.h"
#include "floor.h"
#include "instance/instance_record.h"
#include "lif/lif_record.h"
#include "mcast/mrouting_local_rcvr_record.h"
#include "mcast/mrouting_mcast_group_record.h"
#include "mcast/vtep_entry_record.h"
#include "policy/policy_record.h"
#include "policy/policy_table_record.h"
#include "route/demux_route_record.h"
#include "route/route_record.h"
#include "support/getters/table.h"

namespace {

using vdrzax::Field;
using vdrzax::RecordLayout;

struct Getter {
  const char* name;
  const RecordLayout* layout;
  int32_t (*readAndRelease)();  // returns the count, -1 when the getter failed
  std::size_t header = 16;
  bool isTable = false;  // a count stands before the records, and no more entries are allocated
};

template <auto kRelease, typename List, typename... Arguments, typename... Given>
int32_t Read(int (*get)(Arguments...), Given... given) {
  List* list = nullptr;
  if (get(given..., &list) != 0) return -1;
  const int32_t count = list->count;
  kRelease(list);
  return count;
}

template <auto kGet, auto kRelease, typename... Given>
int32_t ReadList(Given... given) {
  return Read<kRelease, RecordList>(kGet, given...);
}

const Getter kGetters[] = {
    {"VDRZAX_GetInstances", &vdrzax::kInstanceRecord,
     [] { return ReadList<VDRZAX_GetInstances, VDRZAX_ReleaseInstances>("edge-1", uint8_t{1}); }},
    {"VDRZAX_GetLifs", &vdrzax::kLifRecord,
     [] { return ReadList<VDRZAX_GetLifs, VDRZAX_ReleaseLifs>("edge-1"); }},
    {"VDRZAX_GetBridgeLifs", &vdrzax::kLifRecord,
     [] { return ReadList<VDRZAX_GetBridgeLifs, VDRZAX_ReleaseLifs>("edge-1"); }},
    {"VDRZAX_GetRoutes", &vdrzax::kRouteRecord,
     [] { return ReadList<VDRZAX_GetRoutes, VDRZAX_ReleaseRoutes>("edge-1"); }},
    {"VDRZAX_GetDemuxRoutes", &vdrzax::kDemuxRouteRecord,
     [] { return ReadList<VDRZAX_GetDemuxRoutes, VDRZAX_ReleaseDemuxRoutes>(); }},
    {"VDRZAX_GetPolicy", &vdrzax::kPolicyRecord,
     [] { return ReadList<VDRZAX_GetPolicy, VDRZAX_ReleaseAllPolicy>(1U); }},
    {"VDRZAX_GetPolicyTable", &vdrzax::kPolicyTableRecord,
     [] { return ReadList<VDRZAX_GetPolicyTable, VDRZAX_ReleaseAllPolicyTable>(); }},
    {"VDRZAX_GetLifPolicies", &vdrzax::kRouteRecord,
     [] { return ReadList<VDRZAX_GetLifPolicies, VDRZAX_ReleaseRoutes>("edge-1", 4U, "uplink"); }},
    {"VDRZAX_GetBridgeInstances", &vdrzax::kBridgeInstanceRecord,
     [] { return ReadList<VDRZAX_GetBridgeInstances, VDRZAX_ReleaseBridgeInstances>(); }},
    {"VDRZAX_GetBridgeNetworks", &vdrzax::kBridgeNetworkRecord,
     [] {
       return ReadList<VDRZAX_GetBridgeNetworks, VDRZAX_ReleaseBridgeNetworks>("edge-1", "net");
     }},
    {"VDRZAX_GetBridgePorts", &vdrzax::kBridgePortRecord,
     [] {
       return ReadList<VDRZAX_GetBridgePorts, VDRZAX_ReleaseBridgePorts>("edge-1", "net",
                                                                         uint16_t{3}, 4U);
     }},
    {"VDRZAX_GetBridgeFdbEntries", &vdrzax::kBridgeFdbRecord,
     [] {
       return ReadList<VDRZAX_GetBridgeFdbEntries, VDRZAX_ReleaseBridgeFdbEntries>("edge-1",
                                                                                   uint16_t{2}, 3U);
     }},
    {"VDRZAX_GetBridgeClusters", &vdrzax::kBridgeClusterRecord,
     [] { return ReadList<VDRZAX_GetBridgeClusters, VDRZAX_ReleaseBridgeClusters>("cluster"); }},
    {"VDRZAX_GetBridgeClusterNodes", &vdrzax::kBridgeClusterNodeRecord,
     [] {
       return ReadList<VDRZAX_GetBridgeClusterNodes, VDRZAX_ReleaseBridgeClusterNodes>("cluster");
     }},
    {"VDRZAX_GetBridgeEndpoints", &vdrzax::kBridgeEndpointRecord,
     [] { return ReadList<VDRZAX_GetBridgeEndpoints, VDRZAX_ReleaseBridgeEndpoints>("edge-1"); }},
    {"VDRZAX_GetBridgeBFDSessions", &vdrzax::kBridgeBfdSessionRecord,
     [] {
       return ReadList<VDRZAX_GetBridgeBFDSessions, VDRZAX_ReleaseBridgeBFDSessions>("edge-1");
     }},
    {"VDRZAX_GetE2ITable", &vdrzax::kE2IEntry,
     [] { return Read<VDRZAX_ReleaseE2ITable, E2ITable>(VDRZAX_GetE2ITable); }, sizeof(E2ITable),
     true},
    {"VDRZAX_GetMRoutingLocalRcvrs", &vdrzax::kMRoutingLocalRcvr,
     [] {
       return ReadList<VDRZAX_GetMRoutingLocalRcvrs, VDRZAX_ReleaseMRoutingLocalRcvrs>("edge-1",
                                                                                       1U);
     }},
    {"VDRZAX_GetMRoutingRemoteRcvrs", &vdrzax::kVtepEntry,
     [] {
       return Read<VDRZAX_ReleaseVTEPTable, VTEPTable>(VDRZAX_GetMRoutingRemoteRcvrs, "edge-1", 1U);
     },
     sizeof(VTEPTable), true},
    {"VDRZAX_GetMRoutingAllMcastGroups", &vdrzax::kMRoutingMcastGroup,
     [] {
       return ReadList<VDRZAX_GetMRoutingAllMcastGroups, VDRZAX_ReleaseMRoutingMcastGroups>(
           "edge-1");
     }},
};

uint32_t CapOf(const Getter& getter) {
  return static_cast<uint32_t>(getter.isTable ? getters::Other(getter.name).cap
                                              : getters::List(getter.name).cap);
}

bool HasText(const RecordLayout& layout) {
  return std::any_of(layout.rows.begin(), layout.rows.end(), [](const Field& row) {
    return row.kind == Field::Kind::Text ||
           (row.kind == Field::Kind::Entries && HasText(*row.entry));
  });
}

// What the kernel leaves in the field of a text.
enum class Texts { Padded, JunkBehind, Unterminated };

// Names are of 4 to 31 characters, so that no processor learns where they end.
void FillText(uint8_t* field, uint32_t width, Texts texts) {
  static std::minstd_rand random;
  const std::size_t length = 4 + random() % 28;
  std::memset(field, 'a', width);
  if (texts == Texts::Padded) std::memset(field + length, 0, width - length);
  if (texts == Texts::JunkBehind) field[length] = 0;
}

// Every array of entries is full.
void FillRecord(const RecordLayout& layout, uint8_t* record, Texts texts) {
  for (const Field& row : layout.rows) {
    if (row.kind == Field::Kind::Text) {
      FillText(record + row.offset, row.width, texts);
    } else if (row.kind == Field::Kind::Entries) {
      for (uint32_t index = 0; index < row.elements; ++index) {
        FillRecord(*row.entry, record + row.offset + index * row.entry->size, texts);
      }
    }
  }
  for (const Field& row : layout.rows) {
    if (row.kind == Field::Kind::Entries) {
      std::memcpy(record + row.countOffset, &row.elements, row.countWidth);
    }
  }
}

std::vector<uint8_t> MakeReply(const Getter& getter, uint32_t records, Texts texts) {
  const std::size_t prefix = getter.isTable ? sizeof records : 0;
  const std::size_t size = getter.layout->size;
  std::vector<uint8_t> reply(prefix + records * size, 0x5A);
  if (getter.isTable) std::memcpy(reply.data(), &records, sizeof records);
  for (uint32_t index = 0; index < records; ++index) {
    FillRecord(*getter.layout, reply.data() + prefix + index * size, texts);
  }
  return reply;
}

Case MakeCase(const Getter& getter, uint32_t records, device::Calls calls, double target,
              Texts texts = Texts::Padded) {
  const floor_of::List list{.header = getter.header,
                            .prefix = getter.isTable ? sizeof(uint32_t) : 0U,
                            .record = getter.layout->size,
                            .cap = CapOf(getter),
                            .fitsEntries = getter.isTable};
  // One for all, made when a case is run: the full replies would fill the memory together.
  static std::vector<uint8_t> reply;
  return {.name = getter.name,
          .device = calls == device::Calls::Kernel ? "kernel" : "program",
          .records = records,
          .target = target,
          .prepare =
              [=, &getter] {
                reply = MakeReply(getter, records, texts);
                device::Answer(calls, device::Verdict::Serve, reply);
              },
          .library =
              [=, &getter] {
                if (getter.readAndRelease() != static_cast<int32_t>(records)) std::abort();
              },
          .floor =
              [=] {
                if (floor_of::ReadList(list) != records) std::abort();
              }};
}

}  // namespace

std::vector<Case> ListCases() {
  constexpr uint32_t kFew = 3;
  std::vector<Case> cases;
  for (const Getter& getter : kGetters) {
    const double fullTarget = HasText(*getter.layout) ? 1.2 : 1.05;
    cases.push_back(MakeCase(getter, kFew, device::Calls::Program, 0));
    cases.push_back(MakeCase(getter, kFew, device::Calls::Kernel, 1.05));
    cases.push_back(MakeCase(getter, CapOf(getter), device::Calls::Kernel, fullTarget));
  }
  return cases;
}

std::vector<Case> PolledListCases() {
  std::vector<Case> cases;
  const auto add = [&](const Getter& getter, double target, Texts texts, const char* label) {
    cases.push_back(MakeCase(getter, CapOf(getter), device::Calls::Kernel, target, texts));
    cases.back().device += label;
  };
  for (const Getter& getter : kGetters) {
    if (!HasText(*getter.layout)) {
      add(getter, 1.05, Texts::Padded, "");
      continue;
    }
    add(getter, 1.4, Texts::Padded, ", texts padded");
    add(getter, 1.4, Texts::JunkBehind, ", junk behind texts");
    add(getter, 1.4, Texts::Unterminated, ", no terminators");
  }
  return cases;
}

Case ListCase(const char* name, uint32_t records, device::Calls calls) {
  const auto getter =
      std::find_if(std::begin(kGetters), std::end(kGetters),
                   [&](const Getter& one) { return std::strcmp(one.name, name) == 0; });
  if (getter == std::end(kGetters)) std::abort();
  return MakeCase(*getter, records, calls, 0);
}
