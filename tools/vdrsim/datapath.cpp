#include "datapath.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "command.h"

namespace vdrsim {

namespace {

const Command* FindCommand(uint32_t code) {
  for (const std::span<const Command> family : {InstanceCommands(), SettingsCommands()}) {
    const auto command = std::ranges::find(family, code, &Command::code);
    if (command != family.end()) return &*command;
  }
  return nullptr;
}

class Bytes final : public Reply::Source {
 public:
  explicit Bytes(std::vector<std::byte> bytes) : bytes_(std::move(bytes)) {}

  std::span<const std::byte> Next() noexcept override {
    return std::span(bytes_).first(std::exchange(isTaken_, true) ? 0 : bytes_.size());
  }

 private:
  std::vector<std::byte> bytes_;
  bool isTaken_ = false;
};

Reply ReplyOf(std::vector<std::byte> bytes) {
  if (bytes.size() <= Reply::kInlineRoom) return Reply(bytes);
  const auto size = static_cast<uint32_t>(bytes.size());
  return {size, std::make_unique<Bytes>(std::move(bytes))};
}

}  // namespace

Answer Datapath::Execute(const Call& call) noexcept {
  const Command* command = FindCommand(call.code);
  if (!command) return {.error = ENOTTY};
  if (call.input.size() != InputLength(command->form)) return {.error = EINVAL};
  if (!call.destination.Takes(0)) return {.error = EFAULT};
  try {
    const std::lock_guard lock(mutex_);
    Outcome outcome = command->handler(state_, Input(call.input));
    if (outcome.error != 0) return {.error = outcome.error};
    if (outcome.reply.size() > call.capacity) return {.error = EINVAL};
    return {.reply = ReplyOf(std::move(outcome.reply))};
  } catch (const std::bad_alloc&) {
    return {.error = ENOMEM};
  }
}

}  // namespace vdrsim
