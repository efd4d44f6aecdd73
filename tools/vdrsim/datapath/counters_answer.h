#pragma once

#include <cstdint>

#include "datapath/answers.h"
#include "datapath/counters.h"
#include "instance/stats_record.h"

namespace vdrsim {

// Counts as a StatsRecord of one of three types: from its first slot on sets, deletes, lookups and
// failures.
template <const vdrzax::RecordLayout& Layout, requests::Name FirstSlots>
Answer CountsAnswer(uint32_t type, const Counts& counts) {
  Answer answer;
  RecordWriter<Layout>(answer.reply.Fill(Layout.size))
      .Number("type", type)
      .Number(FirstSlots.text, 0, counts.sets)
      .Number(FirstSlots.text, 1, counts.deletes)
      .Number(FirstSlots.text, 2, counts.lookups)
      .Number(FirstSlots.text, 3, counts.failures);
  return answer;
}

inline Answer LifCountsAnswer(const Counts& counts) {
  return CountsAnswer<vdrzax::kStatsOfType0, "slots0">(0, counts);
}

inline Answer InstanceCountsAnswer(const Counts& counts) {
  return CountsAnswer<vdrzax::kStatsOfType1, "slots0">(1, counts);
}

inline Answer DatapathCountsAnswer(const Counts& counts) {
  return CountsAnswer<vdrzax::kStatsOfType3, "slots1">(3, counts);
}

}  // namespace vdrsim
