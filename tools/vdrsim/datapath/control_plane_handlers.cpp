#include <vector>

#include "datapath/answers.h"
#include "datapath/connection_handlers.h"
#include "datapath/objects.h"
#include "instance/control_plane_record.h"

namespace vdrsim {

namespace {

constexpr uint32_t kSyncEntries = 5;

struct SyncEntry {
  uint32_t index;
  uint32_t state;
  uint32_t activation;
};

std::vector<SyncEntry> AllAlike(SyncEntry entry) {
  std::vector<SyncEntry> entries;
  for (entry.index = 0; entry.index < kSyncEntries; ++entry.index) entries.push_back(entry);
  return entries;
}

}  // namespace

int Handle(State& state, const Input<"CPActivate">& input) {
  state.cpActivation = input.Word("value");
  return 0;
}

int Handle(State& state, const Input<"SetCPIp">& input) {
  return OnInstance(state, input,
                    [&](Instance& instance) { instance.cpAddress = input.Word("address"); });
}

int Handle(State& state, const Input<"SetVdrInstanceCPSyncState">& input) {
  return OnInstance(state, input,
                    [&](Instance& instance) { instance.cpSyncState = input.Word("state"); });
}

Answer Handle(const State& state, const Input<"GetVdrInstanceCPSyncState">& input) {
  return OnInstance(state, input, [&](const Instance& instance) {
    const SyncEntry entry{
        .index = 0, .state = instance.cpSyncState, .activation = state.cpActivation};
    return SelectionAnswer<vdrzax::kCPSyncStateEntry>(entry, AllAlike,
                                                      [](auto record, const SyncEntry& shown) {
                                                        record.Number("qword0", shown.index)
                                                            .Number("words8", 0, shown.state)
                                                            .Number("words8", 1, shown.activation);
                                                      });
  });
}

}  // namespace vdrsim
