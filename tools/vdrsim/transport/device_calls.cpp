#include "device_calls.h"

#include <array>
#include <cerrno>

#include "caller_memory.h"
#include "envelope.h"

namespace vdrsim {

namespace {

// Every code that a caller can mean as a command is one byte.
constexpr uint32_t kHighestCode = 0xff;

// The longest input that any command takes.
constexpr uint32_t kLongestInput = 968;

// Carries out a command whose envelope is at `address`; returns an errno value or 0.
int Exchange(HeldUpCall& call, Node node, uint32_t code, uint64_t address, Executor& executor) {
  CallerMemory memory(call);
  Envelope envelope(memory, address);
  if (!envelope.Read()) return EFAULT;
  if (envelope.inputLength() > kLongestInput) return EINVAL;
  std::array<std::byte, kLongestInput> room;
  const std::span input = std::span(room).first(envelope.inputLength());
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
