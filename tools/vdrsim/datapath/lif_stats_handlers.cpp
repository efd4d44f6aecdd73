#include "datapath/counters_answer.h"
#include "datapath/lif_handlers.h"
#include "datapath/objects.h"

namespace vdrsim {

namespace {

// What asks for counters leaves them as they are.
template <typename AnyState, size_t Index, typename Action>
auto OnUncountedLif(AnyState& state, const InputOf<Index>& input, const Action& action) {
  return OnNamed(state.instances, input.ObjectName("instanceName"), [&](auto& instance) {
    return OnNamed(instance.lifs, input.ObjectName("interfaceName"), action);
  });
}

}  // namespace

Answer Handle(State& state, const Input<"GetLifStats">& input) {
  return OnUncountedLif(state, input, [](Lif& lif) {
    lif.cachedCounts = lif.counters.counts();
    return LifCountsAnswer(lif.cachedCounts);
  });
}

Answer Handle(const State& state, const Input<"GetLifStatsCached">& input) {
  return OnUncountedLif(state, input,
                        [](const Lif& lif) { return LifCountsAnswer(lif.cachedCounts); });
}

int Handle(State& state, const Input<"ResetLifStats">& input) {
  return OnUncountedLif(state, input, [](Lif& lif) { lif.counters.Reset(); });
}

}  // namespace vdrsim
