#include "datapath/answers.h"
#include "datapath/caps.h"
#include "datapath/lif_handlers.h"
#include "datapath/lif_record.h"
#include "datapath/objects.h"

namespace vdrsim {

using vdrzax::kLifRecord;

int Handle(State& state, const Input<"SetBridgeLif", 57>& input) {
  return OnInstance(state, input, [&](Instance& instance) {
    return SetNamed(instance.bridgeLifs, input.ObjectName("lifName"), kMostLifs, [&](Lif& lif) {
      lif.auxName = input.Text("secondName");
      lif.a5 = input.Word("value1");
      lif.a6 = input.Word("value2");
      lif.a7 = input.Word("value3");
    });
  });
}

int Handle(State& state, const Input<"SetBridgeLif", 58>& input) {
  return OnInstance(state, input, [&](Instance& instance) {
    return DeleteNamed(instance.bridgeLifs, input.ObjectName("lifName"));
  });
}

Answer Handle(const State& state, const Input<"GetBridgeLif">& input) {
  return OnInstance(state, input, [&](const Instance& instance) {
    return OnCounted(input, instance.bridgeLifs, input.ObjectName("lifName"), [&](const Lif& lif) {
      return RecordAnswer<kLifRecord>(ShowBridgeLif, input.Text("lifName"), lif);
    });
  });
}

Answer Handle(const State& state, const Input<"GetBridgeLifs">& input) {
  return OnInstance(state, input, [](const Instance& instance) {
    return TableAnswer<kLifRecord>(instance.bridgeLifs, ShowBridgeLif);
  });
}

}  // namespace vdrsim
