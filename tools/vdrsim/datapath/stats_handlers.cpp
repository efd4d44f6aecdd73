#include "datapath/counters_answer.h"
#include "datapath/instance_handlers.h"
#include "datapath/objects.h"

namespace vdrsim {

// What asks for counters leaves them as they are.

Answer Handle(const State& state, const Input<"GetVdrInstanceCPStats">& input) {
  return OnNamed(state.instances, input.ObjectName("name"), [](const Instance& instance) {
    return InstanceCountsAnswer(instance.counters.counts());
  });
}

int Handle(State& state, const Input<"ResetVdrInstanceCPStats">& input) {
  return OnNamed(state.instances, input.ObjectName("name"),
                 [](Instance& instance) { instance.counters.Reset(); });
}

Answer Handle(const State& state, const Input<"GetVdrDiStats">&) {
  return DatapathCountsAnswer(state.counters.counts());
}

int Handle(State& state, const Input<"ResetVdrDiStats">&) {
  state.counters.Reset();
  return 0;
}

}  // namespace vdrsim
