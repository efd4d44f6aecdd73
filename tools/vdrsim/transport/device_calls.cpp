#include "device_calls.h"

#include <array>
#include <cerrno>
#include <memory>
#include <new>

#include "caller_memory.h"
#include "envelope.h"

namespace vdrsim {

namespace {

// Every code that a caller can mean as a command is one byte.
constexpr uint32_t kHighestCode = 0xff;

// The longest input that any command takes.
constexpr uint32_t kLongestInput = 968;

// The kernel copies no more at once.
constexpr uint32_t kLongestControlInput = 0x7ffff000;

// Room for an input, which for all commands is in place.
class InputRoom {
 public:
  // None without memory.
  std::byte* For(uint32_t length) {
    if (length <= kLongestInput) return inPlace_.data();
    large_.reset(new (std::nothrow) std::byte[length]);
    return large_.get();
  }

 private:
  std::array<std::byte, kLongestInput> inPlace_;
  std::unique_ptr<std::byte[]> large_{};
};

// Carries out a command whose envelope is at `address`; returns an errno value or 0.
int Exchange(HeldUpCall& call, Node node, uint32_t code, uint64_t address, Executor& executor) {
  CallerMemory memory(call);
  Envelope envelope(call, memory, address);
  if (!envelope.Read()) return EFAULT;
  const uint32_t length = envelope.inputLength();
  if (length > (code == kControlCode ? kLongestControlInput : kLongestInput)) return EINVAL;
  InputRoom room;
  std::byte* const bytes = room.For(length);
  if (!bytes) return ENOMEM;
  const std::span input(bytes, length);
  if (!memory.Read(envelope.input(), input)) return EFAULT;
  // What was read may be another program's if the caller was killed, and must have no effect.
  const pid_t process = call.Process();
  if (!call.IsWaiting()) return ESRCH;
  Answer answer = executor.Execute({.process = process,
                                    .thread = call.thread(),
                                    .node = node,
                                    .code = code,
                                    .input = input,
                                    .capacity = envelope.capacity(),
                                    .destination = envelope});
  // A device may have written before it failed, and leaves a length of its own then.
  if (answer.error != 0 && !answer.claimed) return answer.error;
  const int failure = envelope.Deliver(answer);
  return answer.error != 0 ? answer.error : failure;
}

}  // namespace

void AnswerIoctl(HeldUpCall& call, const DeviceNodes& nodes, Executor& executor) {
  const auto code = static_cast<uint32_t>(call.argument(1));
  const Behind behind = nodes.Identify(call.thread(), static_cast<uint32_t>(call.argument(0)));
  if (code > kHighestCode) {
    // One that Linux would answer for a plain file.
    return behind.what == Behind::What::SimulatedNode ? call.Return(ENOTTY) : call.Continue();
  }
  switch (behind.what) {
    case Behind::What::SimulatedNode:
      return call.Return(Exchange(call, behind.node, code, call.argument(2), executor));
    case Behind::What::OtherFile:
      return call.Continue();
    default:
      return call.Return(EACCES);
  }
}

}  // namespace vdrsim
