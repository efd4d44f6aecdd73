#include "record/forward.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <utility>

namespace vdrsim {

namespace {

// What is asked of a caller's memory beforehand. Lists leave most of their room as it is, and to look
// at all of it would take that memory.
constexpr uint32_t kLookedAt = 4096;

class DeviceReply final : public Reply::Source {
 public:
  DeviceReply(std::unique_ptr<ReplyMemory> memory, uint32_t size)
      : memory_(std::move(memory)), size_(size) {}

  uint32_t Prepare() override { return size_; }

  std::span<const std::byte> Next() noexcept override {
    return memory_->room().first(std::exchange(isTaken_, true) ? 0 : size_);
  }

 private:
  std::unique_ptr<ReplyMemory> memory_;
  uint32_t size_;
  bool isTaken_ = false;
};

}  // namespace

Answer Forward::Execute(const Call& call) noexcept try {
  auto memory = std::make_unique<ReplyMemory>(call.capacity);
  if (!*memory) return {.error = ENOMEM};
  if (!call.destination.Takes(std::min(call.capacity, kLookedAt))) return {.error = EFAULT};
  return Carry(call, std::move(memory));
} catch (const std::bad_alloc&) {
  return {.error = ENOMEM};
}

// A device may write without saying so, and may write before it fails.
Answer Forward::Carry(const Call& call, std::unique_ptr<ReplyMemory> memory) {
  auto reply = std::make_unique<DeviceReply>(nullptr, 0);
  HostDevice::Outcome outcome{};
  {
    const std::lock_guard lock(mutex_);
    call.TakePlace();
    outcome = device_.Command(call.node, call.code, call.input, memory->room());
  }
  const uint32_t told = outcome.error == 0 ? std::min(outcome.length, call.capacity) : 0;
  const uint32_t written = std::max(told, memory->Written());
  Answer answer{.error = outcome.error};
  *reply = DeviceReply(std::move(memory), written);
  answer.reply.Become(std::move(reply));
  if (written > 0 || outcome.length != call.capacity) answer.claimed = outcome.length;
  return answer;
}

}  // namespace vdrsim
