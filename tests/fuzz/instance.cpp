#include <vdrzax/instance.h>

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

getters::ListGetter AllInstances() {
  getters::ListGetter getter = getters::List("VDRZAX_GetInstances");
  getter.call = [](RecordList** out) { return VDRZAX_GetInstances(nullptr, 0, out); };
  getter.block = wire::Block();
  return getter;
}

}  // namespace

const std::vector<Subject>& Subjects() {
  static const auto subjects = SubjectsOf(getters::Instance(),
                                          {{"VDRZAX_GetInstance", Expected<kInstanceRecord>},
                                           {"VDRZAX_GetInstances", Expected<kInstanceRecord>},
                                           {"VDRZAX_GetVdrInstanceCPStats", ExpectedStats},
                                           {"VDRZAX_GetLifStats", ExpectedStats},
                                           {"VDRZAX_GetLifStatsCached", ExpectedStats},
                                           {"VDRZAX_GetVdrDiStats", ExpectedStats},
                                           {"VDRZAX_GetVdrInstanceCPSyncState", ExpectedSyncState}},
                                          {}, {AllInstances()});
  return subjects;
}
