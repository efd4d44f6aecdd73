#include <vdrzax/instance.h>

#include <cstdlib>
#include <cstring>

#include "getters.h"
#include "instance/control_plane_record.h"
#include "instance/instance_record.h"
#include "instance/stats_record.h"

namespace {

using namespace vdrzax;

void ExpectedStats(const uint8_t* source, uint8_t* record) {
  uint32_t type;
  std::memcpy(&type, source, sizeof type);
  switch (type) {
    case 0:
      return ExpectRows(kStatsOfType0, source, record);
    case 1:
      ExpectRows(kStatsOfType1, source, record);
      // Slot 90 repeats slot 89.
      std::memcpy(record + 724, source + 716, 8);
      return;
    case 3:
      return ExpectRows(kStatsOfType3, source, record);
    default:
      return ExpectRows(kStatsOfOtherTypes, source, record);
  }
}

void ExpectedSyncState(const uint8_t* source, uint8_t* record) {
  for (std::size_t offset = 0; offset < 1420; offset += 284) {
    ExpectRows(kCPSyncStateEntry, source + offset, record + offset);
  }
}

Subject Instances(int (*get)(RecordList** out)) {
  return ListGetter({.code = 0, .size = 577, .cap = 1001, .expected = Expected<kInstanceRecord>},
                    get, VDRZAX_ReleaseInstances);
}

Subject Stats(uint32_t code, int (*get)(StatsRecord** out)) {
  return RecordGetter<StatsRecord>({.code = code, .size = 852, .expected = ExpectedStats}, get,
                                   VDRZAX_ReleaseStats);
}

}  // namespace

std::span<const Subject> Subjects() {
  static const Subject subjects[] = {
      RecordGetter<InstanceRecord>(
          {.code = 1, .size = 577, .expected = Expected<kInstanceRecord>},
          [](InstanceRecord** out) { return VDRZAX_GetInstance("edge-1", out); },
          VDRZAX_ReleaseInstance),
      Instances([](RecordList** out) { return VDRZAX_GetInstances(nullptr, 0, out); }),
      Instances([](RecordList** out) { return VDRZAX_GetInstances("edge-1", 1, out); }),
      Stats(5, [](StatsRecord** out) { return VDRZAX_GetVdrInstanceCPStats("edge-1", out); }),
      Stats(23, [](StatsRecord** out) { return VDRZAX_GetLifStats("edge-1", "lif-1", out); }),
      Stats(23, [](StatsRecord** out) { return VDRZAX_GetLifStatsCached("edge-1", "lif-1", out); }),
      Stats(43, VDRZAX_GetVdrDiStats),
      RecordGetter<CPSyncStateRecord>(
          {.code = 87, .size = 1420, .expected = ExpectedSyncState},
          [](CPSyncStateRecord** out) { return VDRZAX_GetVdrInstanceCPSyncState("edge-1", out); },
          [](CPSyncStateRecord* record) { std::free(record); }),
      ScalarGetter(9, VDRZAX_GetLogLevel),
      ScalarGetter(11, VDRZAX_GetExtendedLogLevel),
      ScalarGetter(13, VDRZAX_GetStatsLevel),
      ScalarGetter(159, VDRZAX_GetTxDispQueueSize),
      ScalarGetter(85, VDRZAX_VDRDevCheckConnDeletion),
      RawGetter(17, 131072, VDRZAX_GetConnections),
      RawGetter(18, 152, [](void* buffer) { return VDRZAX_GetConnection("uplink", buffer); }),
      RawGetter(149, 6, [](void* buffer) { return VDRZAX_GetVMAC("uplink", buffer); }),
  };
  return subjects;
}
