#include "datapath/instance_handlers.h"

#include "datapath/answers.h"
#include "datapath/caps.h"
#include "datapath/objects.h"
#include "instance/instance_record.h"

namespace vdrsim {

namespace {

using Instances = Table<std::string, Instance>;

void ShowInstance(RecordWriter<vdrzax::kInstanceRecord> record, std::string_view name,
                  const Instance& instance) {
  record.Text("name", name)
      .Number("word64", instance.second)
      .Number("word68", instance.fourth)
      .Number("byte72", instance.flag)
      .Text("text73", instance.text)
      .Text("text329", instance.tunables)
      .Number("word399", instance.tunablesValue)
      .Number("word403", instance.cpAddress)
      .Text("text457", instance.mcastRouting.name2)
      .Number("half521", instance.mcastRouting.value3)
      .Number("word563", instance.mcastRouting.value1)
      .Number("byte567", instance.mcastRouting.flag)
      .Number("word568", instance.mcastRouting.value2);
}

// The named one alone, or nothing.
Answer ListInstance(const Instances& instances, std::string_view name) {
  const Instance* instance = instances.Find(name);
  return instance ? RecordAnswer<vdrzax::kInstanceRecord>(ShowInstance, name, *instance) : Answer{};
}

}  // namespace

Answer Handle(const State& state, const Input<"GetInstances">& input) {
  if (input.Byte("filter") == 0) {
    return TableAnswer<vdrzax::kInstanceRecord>(state.instances, ShowInstance);
  }
  const auto name = input.ObjectName("name");
  return name ? ListInstance(state.instances, *name) : Answer{.error = EINVAL};
}

Answer Handle(const State& state, const Input<"GetInstance">& input) {
  return OnInstance(state, input, [&](const Instance& instance) {
    return RecordAnswer<vdrzax::kInstanceRecord>(ShowInstance, input.Text("name"), instance);
  });
}

// An update leaves alone what has a command of its own.
int Handle(State& state, const Input<"SetVdrInstance">& input) {
  const auto name = input.ObjectName("name");
  return SetNamed(state.instances, name, kMostInstances, [&](Instance& instance) {
    instance.text = input.Text("text");
    instance.second = input.Word("second");
    instance.fourth = input.Word("fourth");
    instance.flag = input.Byte("flag");
  });
}

int Handle(State& state, const Input<"DelVdrInstance">& input) {
  return DeleteNamed(state.instances, input.ObjectName("name"));
}

int Handle(State& state, const Input<"SetVdrInstanceTunables">& input) {
  return OnInstance(state, input, [&](Instance& instance) {
    instance.tunables = input.Text("tunables");
    instance.tunablesValue = input.Word("value");
  });
}

}  // namespace vdrsim
