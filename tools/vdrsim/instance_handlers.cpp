#include <cerrno>

#include "command.h"
#include "instance/instance_record.h"
#include "record_writer.h"

namespace vdrsim {

namespace {

// As many as a caller has room for when it lists them: one more could never be listed.
constexpr size_t kMostInstances = 1001;

Outcome ListInstances(State& state, const Input& input);
Outcome GetInstance(State& state, const Input& input);
Outcome SetInstance(State& state, const Input& input);
Outcome DeleteInstance(State& state, const Input& input);
Outcome SetInstanceTunables(State& state, const Input& input);

constexpr Command kCommands[] = {
    {0, InputForm::Block, ListInstances},       {1, InputForm::Block, GetInstance},
    {2, InputForm::Block, SetInstance},         {3, InputForm::Block, DeleteInstance},
    {4, InputForm::Block, SetInstanceTunables},
};

void AppendInstance(std::vector<std::byte>& reply, const std::string& name,
                    const Instance& instance) {
  RecordWriter<vdrzax::kInstanceRecord>(reply)
      .Text("name", name)
      .Number("word64", instance.second)
      .Number("word68", instance.fourth)
      .Number("byte72", instance.flag)
      .Text("text73", instance.text)
      .Text("text329", instance.tunables)
      .Number("word399", instance.tunablesValue);
}

Outcome ListInstances(State& state, const Input& input) {
  Outcome outcome;
  if (input.Byte(368) != 0) {
    const auto name = input.Name(0);
    if (!name) return {.error = EINVAL};
    const auto found = state.instances.find(*name);
    if (found != state.instances.end()) AppendInstance(outcome.reply, *name, found->second);
    return outcome;
  }
  for (const auto& [name, instance] : state.instances) {
    AppendInstance(outcome.reply, name, instance);
  }
  return outcome;
}

Outcome GetInstance(State& state, const Input& input) {
  const auto name = input.Name(0);
  if (!name) return {.error = EINVAL};
  const auto found = state.instances.find(*name);
  if (found == state.instances.end()) return {.error = ENOENT};
  Outcome outcome;
  AppendInstance(outcome.reply, *name, found->second);
  return outcome;
}

// An update leaves the tunables as they are: they have a command of their own.
Outcome SetInstance(State& state, const Input& input) {
  const auto name = input.Name(0);
  if (!name) return {.error = EINVAL};
  std::string text = input.Text(332, 18);
  if (!state.instances.contains(*name) && state.instances.size() == kMostInstances) {
    return {.error = ENOSPC};
  }
  Instance& instance = state.instances[*name];
  instance.second = input.Word(256);
  instance.text = std::move(text);
  instance.fourth = input.Word(352);
  instance.flag = input.Byte(368);
  return {};
}

Outcome DeleteInstance(State& state, const Input& input) {
  const auto name = input.Name(0);
  if (!name) return {.error = EINVAL};
  return {.error = state.instances.erase(*name) == 1 ? 0 : ENOENT};
}

Outcome SetInstanceTunables(State& state, const Input& input) {
  const auto name = input.Name(0);
  if (!name) return {.error = EINVAL};
  const auto found = state.instances.find(*name);
  if (found == state.instances.end()) return {.error = ENOENT};
  found->second.tunables = input.Text(260, 64);
  found->second.tunablesValue = input.Word(324);
  return {};
}

}  // namespace

std::span<const Command> InstanceCommands() { return kCommands; }

}  // namespace vdrsim
