#include "support/fake_device.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "support/hooks.h"

namespace fake {

namespace {

// Which node the user's environment asks for is nothing to a test; tests of the variable set it.
[[maybe_unused]] const int kNodeVariableIsUnset = unsetenv("USE_UPGRADE_DEV");

uint32_t Word(const uint8_t* bytes) {
  uint32_t value;
  std::memcpy(&value, bytes, 4);
  return value;
}

void* Pointer(const uint8_t* bytes) {
  void* value;
  std::memcpy(&value, bytes, 8);
  return value;
}

}  // namespace

Reply Failure(int error) {
  Reply reply;
  reply.result = -1;
  reply.error = error;
  reply.keepsLength = true;
  return reply;
}

Device::Device() { hooks::Install(this); }

Device::~Device() { hooks::Install(nullptr); }

void Device::AnswerWith(Reply reply) {
  answer = [reply = std::move(reply)](const Command&) { return reply; };
}

std::vector<std::size_t> Device::Live() const {
  const std::lock_guard lock(mutex_);
  std::vector<std::size_t> sizes;
  for (const auto& [memory, size] : live_) sizes.push_back(size);
  return sizes;
}

void Device::FreeLost() {
  const std::map<void*, std::size_t> lost = live_;
  for (const auto& [memory, size] : lost) std::free(memory);
}

int Device::Open(const char* node, int flags) {
  const std::lock_guard lock(mutex_);
  steps.emplace_back("open64");
  if (openError != 0) {
    errno = openError;
    return -1;
  }
  const int descriptor = firstDescriptor + opened_++;
  open_[descriptor] = Command{.node = node, .openFlags = flags};
  return descriptor;
}

int Device::Ioctl(int descriptor, unsigned long request, void* argument) {
  std::unique_lock lock(mutex_);
  steps.emplace_back("ioctl");
  const auto found = open_.find(descriptor);
  if (found == open_.end()) {
    ADD_FAILURE() << "ioctl on a descriptor that is not open";
    errno = EBADF;
    return -1;
  }
  Command command = found->second;
  auto* envelope = static_cast<uint8_t*>(argument);
  command.request = request;
  command.inLength = Word(envelope);
  command.inBuffer = Pointer(envelope + 4);
  command.outLength = Word(envelope + 12);
  command.outBuffer = Pointer(envelope + 16);
  const auto* input = static_cast<const uint8_t*>(command.inBuffer);
  if (input) command.input.assign(input, input + command.inLength);
  commands.push_back(command);

  lock.unlock();
  const Reply reply = answer ? answer(command) : Reply{};
  if (reply.bytes.size() > command.outLength) {
    ADD_FAILURE() << "the reply is scripted beyond the capacity of " << command.outLength;
    return -1;
  }
  if (!reply.bytes.empty()) {
    std::memcpy(command.outBuffer, reply.bytes.data(), reply.bytes.size());
  }
  if (!reply.keepsLength) {
    const uint32_t length = reply.length.value_or(static_cast<uint32_t>(reply.bytes.size()));
    std::memcpy(envelope + 12, &length, 4);
  }
  if (reply.result < 0) errno = reply.error;
  return reply.result;
}

int Device::Close(int descriptor) {
  const std::lock_guard lock(mutex_);
  steps.emplace_back("close");
  if (open_.erase(descriptor) == 0) {
    ADD_FAILURE() << "close of a descriptor that is not open";
    errno = EBADF;
    return -1;
  }
  if (closeError != 0) {
    errno = closeError;
    return -1;
  }
  return 0;
}

bool Device::Allocate(std::string step) {
  const std::lock_guard lock(mutex_);
  steps.push_back(std::move(step));
  return ++allocations != failingAllocation;
}

void Device::Remember(void* memory, std::size_t size) {
  const std::lock_guard lock(mutex_);
  live_[memory] = size;
}

void Device::Forget(void* memory) {
  const std::lock_guard lock(mutex_);
  const auto found = live_.find(memory);
  if (found == live_.end()) return;
  steps.push_back(fmt::format("free({})", found->second));
  if (keepFreedContent) {
    const auto* bytes = static_cast<const uint8_t*>(memory);
    freed.push_back({found->second, Bytes(bytes, bytes + found->second)});
  }
  live_.erase(found);
}

}  // namespace fake
