#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "call.h"
#include "caller_memory.h"
#include "held_up_call.h"

namespace vdrsim {

// The argument of every ioctl on the device, which says where a caller's input and the room for its
// reply are.
class Envelope final : public Destination {
 public:
  // The envelope is at `address` of the memory of a caller; both must outlive it.
  Envelope(HeldUpCall& call, CallerMemory& memory, uint64_t address)
      : call_(call), memory_(memory), address_(address) {}

  // Fetches it; false when it can't be read. Everything else needs it.
  bool Read() { return memory_.Read(address_, bytes_); }

  uint32_t inputLength() const;
  uint64_t input() const;
  uint32_t capacity() const;

  bool Takes(uint32_t length) override;
  bool HoldUp(std::chrono::nanoseconds time) noexcept override { return call_.Rest(time); }
  void Kill() noexcept override { call_.Kill(); }

  // Writes a reply and its length, or what is claimed to be its length. Returns an errno value or 0.
  int Deliver(Answer& answer);

 private:
  uint64_t LengthAddress() const;
  uint64_t ReplyAddress() const;
  bool WriteReply(Reply& reply, uint32_t claimed);

  HeldUpCall& call_;
  CallerMemory& memory_;
  uint64_t address_;
  // 24 bytes without gaps.
  std::array<std::byte, 24> bytes_{};
  bool takesLength_ = false;
};

}  // namespace vdrsim
