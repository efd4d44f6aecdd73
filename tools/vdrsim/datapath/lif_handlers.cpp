#include "datapath/lif_handlers.h"

#include <vector>

#include "datapath/answers.h"
#include "datapath/caps.h"
#include "datapath/lif_record.h"
#include "datapath/objects.h"

namespace vdrsim {

namespace {

using vdrzax::kLifRecord;

// A LIF and its name, as they stand in a snapshot.
struct NamedLif {
  std::string_view name;
  const Lif* lif;
};

std::vector<NamedLif> LifsOfVlan(const Table<std::string, Instance>& instances, uint32_t vlan) {
  std::vector<NamedLif> found;
  for (const auto& [instanceName, instance] : instances) {
    for (const auto& [name, lif] : instance.lifs) {
      if (lif.a5 == vlan) found.push_back({name, &lif});
    }
  }
  return found;
}

}  // namespace

// An update leaves alone what has a command of its own.
int Handle(State& state, const Input<"SetLif">& input) {
  return OnInstance(state, input, [&](Instance& instance) {
    return SetNamed(instance.lifs, input.ObjectName("lifName"), kMostLifs, [&](Lif& lif) {
      lif.auxName = input.Text("auxName");
      lif.a3 = input.Word("a3");
      lif.a4 = input.Word("a4");
      lif.a5 = input.Word("a5");
      lif.a6 = input.Word("a6");
      lif.a7 = input.Word("a7");
      lif.extra = input.Mac("extra");
      lif.flags = input.Word("flagsWord");
      lif.mode = input.Byte("mode");
    });
  });
}

// The second name is no part of what names a LIF.
int Handle(State& state, const Input<"DelLif">& input) {
  return OnInstance(state, input, [&](Instance& instance) {
    return DeleteNamed(instance.lifs, input.ObjectName("lifName"));
  });
}

Answer Handle(const State& state, const Input<"GetLif">& input) {
  return OnLif(state, input, [&](const Lif& lif) {
    return RecordAnswer<kLifRecord>(ShowLif, input.Text("lifName"), lif);
  });
}

Answer Handle(const State& state, const Input<"GetLifs">& input) {
  return OnInstance(state, input, [](const Instance& instance) {
    return TableAnswer<kLifRecord>(instance.lifs, ShowLif);
  });
}

Answer Handle(const State& state, const Input<"GetExtVlanLifs">& input) {
  return SelectionAnswer<kLifRecord>(
      state.instances,
      [vlan = input.Word("vlanId")](const auto& instances) { return LifsOfVlan(instances, vlan); },
      [](auto record, const NamedLif& row) { ShowLif(record, row.name, *row.lif); });
}

}  // namespace vdrsim
