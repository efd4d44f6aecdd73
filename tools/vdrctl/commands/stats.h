#pragma once

#include <vdrzax/instance.h>

#include "commands/reading.h"
#include "instance/stats_record.h"
#include "reply.h"

// Counters: the type of a record tells which layout it has.

namespace vdrctl {

inline constexpr const char* kStatsTitles[] = {"StatsRecord of type 0", "StatsRecord of type 1",
                                               "StatsRecord of type 3",
                                               "StatsRecord of other types"};

constexpr Reply StatsReply() {
  Reply reply = RecordReply<vdrzax::kStatsOfType0, vdrzax::kStatsOfType1, vdrzax::kStatsOfType3,
                            vdrzax::kStatsOfOtherTypes>();
  reply.titles = kStatsTitles;
  return reply;
}

inline const vdrzax::RecordLayout& StatsLayout(uint32_t type) {
  switch (type) {
    case 0:
      return vdrzax::kStatsOfType0;
    case 1:
      return vdrzax::kStatsOfType1;
    case 3:
      return vdrzax::kStatsOfType3;
    default:
      return vdrzax::kStatsOfOtherTypes;
  }
}

template <typename Get>
int PrintStats(Output& out, Get get) {
  StatsRecord* record = nullptr;
  if (get(&record) != 0) return -1;
  const Owned<StatsRecord, VDRZAX_ReleaseStats> owned(record);
  out.Record(StatsLayout(record->type), record);
  return 0;
}

}  // namespace vdrctl
