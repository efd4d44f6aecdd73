// Measures lists through the C++ face against the same lists in C, with one field of each record read,
// and prints the table of docs/speed.md. All flags of Google Benchmark serve.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdint>
#include <cstdlib>
#include <vdrzax.hpp>

#include "device.h"
#include "lists.h"
#include "rounds.h"
#include "table_reporter.h"

namespace {

using vdrzax::Client;

constexpr double kTarget = 1.02;

// Both give the sum of what they read, so that neither can leave it out.
struct Pair {
  const char* name;
  uint32_t cap;
  uint64_t (*face)(const Client& vdr);
  uint64_t (*inC)();
};

template <typename List, typename Read>
uint64_t SumOf(const List& list, Read read) {
  uint64_t sum = 0;
  for (const auto& element : list) sum += read(element);
  return sum;
}

template <typename Record, typename List, typename Read>
uint64_t SumInC(int status, List* const& list, void (*release)(List*), Read read) {
  if (status != 0) std::abort();
  uint64_t sum = 0;
  const auto* records = static_cast<const Record*>(static_cast<const void*>(list->entries));
  for (int32_t index = 0; index < list->count; ++index) sum += read(records[index]);
  release(list);
  return sum;
}

const Pair kPairs[] = {
    {"VDRZAX_GetInstances", 1001,
     [](const Client& vdr) {
       return SumOf(vdr.instances("edge-1"), [](const auto& i) { return i.word64(); });
     },
     [] {
       RecordList* list = nullptr;
       return SumInC<InstanceRecord>(VDRZAX_GetInstances("edge-1", 1, &list), list,
                                     VDRZAX_ReleaseInstances,
                                     [](const auto& i) { return i.word64; });
     }},
    {"VDRZAX_GetLifs", 10000,
     [](const Client& vdr) {
       return SumOf(vdr.lifs("edge-1"), [](const auto& lif) { return lif.word128(); });
     },
     [] {
       RecordList* list = nullptr;
       return SumInC<LifRecord>(VDRZAX_GetLifs("edge-1", &list), list, VDRZAX_ReleaseLifs,
                                [](const auto& lif) { return lif.word128; });
     }},
    {"VDRZAX_GetRoutes", 20000,
     [](const Client& vdr) {
       return SumOf(vdr.routes("edge-1"), [](const auto& route) {
         return SumOf(route.next_hops(), [](const auto& hop) { return hop.hop_word(); });
       });
     },
     [] {
       RecordList* list = nullptr;
       return SumInC<RouteRecord>(VDRZAX_GetRoutes("edge-1", &list), list, VDRZAX_ReleaseRoutes,
                                  [](const auto& route) {
                                    uint64_t sum = 0;
                                    for (int hop = 0; hop < route.nextHopCount; ++hop) {
                                      sum += route.nextHops[hop].hopWord;
                                    }
                                    return sum;
                                  });
     }},
    {"VDRZAX_GetDemuxRoutes", 30000,
     [](const Client& vdr) {
       return SumOf(vdr.demux_routes(), [](const auto& route) { return route.demux_qword(); });
     },
     [] {
       RecordList* list = nullptr;
       return SumInC<DemuxRouteRecord>(VDRZAX_GetDemuxRoutes(&list), list,
                                       VDRZAX_ReleaseDemuxRoutes,
                                       [](const auto& route) { return route.demuxQword; });
     }},
    {"VDRZAX_GetBridgeFdbEntries", 10240,
     [](const Client& vdr) {
       return SumOf(vdr.bridge_fdb_entries("edge-1", 2, 3),
                    [](const auto& entry) { return entry.word0(); });
     },
     [] {
       RecordList* list = nullptr;
       return SumInC<BridgeFdbRecord>(VDRZAX_GetBridgeFdbEntries("edge-1", 2, 3, &list), list,
                                      VDRZAX_ReleaseBridgeFdbEntries,
                                      [](const auto& entry) { return entry.word0; });
     }},
    {"VDRZAX_GetBridgeClusters", 10,
     [](const Client& vdr) {
       return SumOf(vdr.bridge_clusters("cluster"),
                    [](const auto& cluster) { return cluster.word72(); });
     },
     [] {
       RecordList* list = nullptr;
       return SumInC<BridgeClusterRecord>(VDRZAX_GetBridgeClusters("cluster", &list), list,
                                          VDRZAX_ReleaseBridgeClusters,
                                          [](const auto& cluster) { return cluster.word72; });
     }},
    {"VDRZAX_GetMRoutingRemoteRcvrs", 2048,
     [](const Client& vdr) {
       return SumOf(vdr.mrouting_remote_rcvrs("edge-1", 1),
                    [](const auto& receiver) { return receiver.bytes()[0]; });
     },
     [] {
       VTEPTable* table = nullptr;
       return SumInC<VtepEntry>(VDRZAX_GetMRoutingRemoteRcvrs("edge-1", 1, &table), table,
                                VDRZAX_ReleaseVTEPTable,
                                [](const auto& receiver) { return receiver.bytes[0]; });
     }},
    {"VDRZAX_GetMRoutingAllMcastGroups", 4096,
     [](const Client& vdr) {
       return SumOf(vdr.mrouting_mcast_groups("edge-1"),
                    [](const auto& group) { return group.group2(); });
     },
     [] {
       RecordList* list = nullptr;
       return SumInC<MRoutingMcastGroup>(VDRZAX_GetMRoutingAllMcastGroups("edge-1", &list), list,
                                         VDRZAX_ReleaseMRoutingMcastGroups,
                                         [](const auto& group) { return group.group2; });
     }},
};

Case MakeCase(const Pair& pair, uint32_t records) {
  Case subject = ListCase(pair.name, records, device::Calls::Kernel);
  subject.target = kTarget;
  subject.library = [&pair] { benchmark::DoNotOptimize(pair.face(Client())); };
  subject.floor = [&pair] { benchmark::DoNotOptimize(pair.inC()); };
  return subject;
}

}  // namespace

int main(int count, char** arguments) {
  if (mallopt(M_MMAP_THRESHOLD, 131072) != 1) return 1;
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 1;
  for (const Pair& pair : kPairs) {
    rounds::Register(MakeCase(pair, 3));
    rounds::Register(MakeCase(pair, pair.cap));
  }
  TableReporter table("C++", "C");
  benchmark::RunSpecifiedBenchmarks(&table);
  benchmark::Shutdown();
  return 0;
}
