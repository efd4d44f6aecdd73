#include "datapath/answers.h"
#include "datapath/services_handlers.h"

namespace vdrsim {

namespace {

// How often it was saved, and in the low byte with which flag.
Answer StatusAnswer(const FullSyncSaves& saves) {
  return NumberAnswer(saves.count << 8 | saves.lastFlag);
}

}  // namespace

Answer Handle(State& state, const Input<"PerformFullSyncSave">& input) {
  ++state.fullSyncSaves.count;
  state.fullSyncSaves.lastFlag = input.Byte("flag");
  return StatusAnswer(state.fullSyncSaves);
}

Answer Handle(const State& state, const Input<"GetFullSyncSaveStatus">&) {
  return StatusAnswer(state.fullSyncSaves);
}

}  // namespace vdrsim
