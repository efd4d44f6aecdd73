#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "call.h"
#include "caller_memory.h"

namespace vdrsim {

// The argument of every ioctl on the device, which says where a caller's input and the room for its
// reply are.
class Envelope final : public Destination {
 public:
  // The envelope is at `address` of a memory that must outlive it.
  Envelope(CallerMemory& memory, uint64_t address) : memory_(memory), address_(address) {}

  // Fetches it; false when it can't be read. Everything else needs it.
  bool Read() { return memory_.Read(address_, bytes_); }

  uint32_t inputLength() const;
  uint64_t input() const;
  uint32_t capacity() const;

  bool Takes(uint32_t length) override;

  // Writes a reply and its length, or what is claimed to be its length. Returns an errno value or 0.
  int Deliver(Answer& answer);

 private:
  uint64_t LengthAddress() const;
  uint64_t ReplyAddress() const;
  bool WriteReply(Reply& reply, uint32_t claimed);

  CallerMemory& memory_;
  uint64_t address_;
  // 24 bytes without gaps.
  std::array<std::byte, 24> bytes_{};
  bool takesLength_ = false;
};

}  // namespace vdrsim
