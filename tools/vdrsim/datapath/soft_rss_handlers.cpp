#include <algorithm>

#include "datapath/answers.h"
#include "datapath/caps.h"
#include "datapath/objects.h"
#include "datapath/services_handlers.h"
#include "services/soft_rss_stats_record.h"
#include "services/soft_rss_tunables_record.h"

namespace vdrsim {

namespace {

// For each kind of commands one queue, in the order of all counters.
void ShowSoftRssCounts(RecordWriter<vdrzax::kSoftRssStats> record, const Counts& counts) {
  for (const uint64_t count : {counts.sets, counts.deletes, counts.lookups, counts.failures}) {
    record.Append<"qwords76">().Number("qword", count);
  }
}

}  // namespace

// What asks for the counters leaves them as they are.
Answer Handle(const State& state, const Input<"SoftRSSGetStats">& input) {
  return OnNamed(state.softRss, input.ObjectName("name"), [](const SoftRss& object) {
    return RecordAnswer<vdrzax::kSoftRssStats>(ShowSoftRssCounts, object.counters.counts());
  });
}

int Handle(State& state, const Input<"SoftRSSStatsReset">& input) {
  return OnNamed(state.softRss, input.ObjectName("name"),
                 [](SoftRss& object) { object.counters.Reset(); });
}

Answer Handle(const State& state, const Input<"SoftRSSGetTunables">& input) {
  return OnCounted(input, state.softRss, input.ObjectName("name"), [](const SoftRss& object) {
    return RecordAnswer<vdrzax::kSoftRssTunables>([&](auto record) {
      record.Number("qword0", object.qword0).Number("word8", object.entryCount);
    });
  });
}

int Handle(State& state, const Input<"SoftRSSSetTunables">& input) {
  return SetNamed(state.softRss, input.ObjectName("name"), kNoCap,
                  [&](SoftRss& object) { object.qword0 = input.Quad("qword0"); });
}

Answer Handle(const State& state, const Input<"SoftRSSGetIndTable">& input) {
  return OnCounted(input, state.softRss, input.ObjectName("name"), [](const SoftRss& object) {
    Answer answer;
    const auto length = static_cast<uint32_t>(object.indirection.size());
    std::ranges::copy(object.indirection, answer.reply.Fill(length).begin());
    return answer;
  });
}

int Handle(State& state, const Input<"SoftRSSTableSet">& input) {
  return SetNamed(state.softRss, input.ObjectName("name"), kNoCap, [&](SoftRss& object) {
    const auto count = static_cast<uint32_t>(input.Signed("entryCount"));
    if (count > object.indirection.size()) return EINVAL;
    object.entryCount = count;
    object.indirection = {};
    std::ranges::copy(input.Bytes("bytes").first(object.entryCount), object.indirection.begin());
    return 0;
  });
}

}  // namespace vdrsim
