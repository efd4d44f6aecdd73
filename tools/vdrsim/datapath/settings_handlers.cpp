#include "datapath/answers.h"
#include "datapath/instance_handlers.h"

namespace vdrsim {

Answer Handle(const State& state, const Input<"GetLogLevel">&) {
  return NumberAnswer(state.logLevel);
}

int Handle(State& state, const Input<"SetLogLevel">& input) {
  state.logLevel = input.Word("value");
  return 0;
}

Answer Handle(const State& state, const Input<"GetExtendedLogLevel">&) {
  return NumberAnswer(state.extendedLogLevel);
}

int Handle(State& state, const Input<"SetExtendedLogLevel">& input) {
  state.extendedLogLevel = input.Word("value");
  return 0;
}

Answer Handle(const State& state, const Input<"GetStatsLevel">&) {
  return NumberAnswer(state.statsLevel);
}

int Handle(State& state, const Input<"SetStatsLevel">& input) {
  state.statsLevel = input.Word("value");
  return 0;
}

// The notice changes nothing: the simulated module stays where it is.
int Handle(State& state, const Input<"PreUnload">&) {
  state.preUnloadAnnounced = true;
  return 0;
}

Answer Handle(const State& state, const Input<"GetTxDispQueueSize">&) {
  return NumberAnswer(state.txDispatchQueueSize);
}

int Handle(State& state, const Input<"SetTxDispQueueSize">& input) {
  state.txDispatchQueueSize = input.Word("value");
  return 0;
}

}  // namespace vdrsim
