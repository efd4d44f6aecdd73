#include "datapath.h"

#include <algorithm>
#include <cerrno>
#include <new>

namespace vdrsim {

namespace {

const Command* FindCommand(uint32_t code) {
  for (const std::span<const Command> family : {InstanceCommands(), SettingsCommands()}) {
    const auto command = std::ranges::find(family, code, &Command::code);
    if (command != family.end()) return &*command;
  }
  return nullptr;
}

}  // namespace

bool Datapath::Handles(uint32_t code) const { return FindCommand(code) != nullptr; }

Answer Datapath::Handle(uint32_t code, std::span<const std::byte> input,
                        uint32_t capacity) noexcept {
  const Command* command = FindCommand(code);
  if (!command) return {.error = ENOTTY};
  if (input.size() != InputLength(command->form)) return {.error = EINVAL};
  try {
    Answer answer = command->handler(state_, Input(input));
    if (answer.reply.size() > capacity) return {.error = EINVAL};
    return answer;
  } catch (const std::bad_alloc&) {
    return {.error = ENOMEM};
  }
}

}  // namespace vdrsim
