#pragma once

#include <vdrzax/channel.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "channel/command_code.h"
#include "channel/text.h"

namespace vdrzax {

// Sends one command through an envelope of its own. `outLength` is the capacity of `output` and
// becomes what the kernel left in the envelope, also after a failure.
inline int Exchange(CommandCode code, const void* input, uint32_t inLength, void* output,
                    uint32_t& outLength) {
  IoctlEnvelope envelope{inLength, input, outLength, output};
  const int result = VDRZAXIoctl(static_cast<int>(code), &envelope);
  outLength = envelope.outLength;
  return result;
}

// A command without input and output.
inline int SendNothing(CommandCode code) {
  uint32_t noOutput = 0;
  return Exchange(code, nullptr, 0, nullptr, noOutput);
}

// A command whose whole input is one u32.
inline int SendScalar(CommandCode code, uint32_t value) {
  uint32_t noOutput = 0;
  return Exchange(code, &value, sizeof value, nullptr, noOutput);
}

// A text field of the parameter block.
template <std::size_t kOffset, std::size_t kWidth = 64>
struct TextSlot {
  static_assert(kWidth > 0 && kOffset + kWidth <= sizeof(IoctlParams));
};

// The fields that many commands share.
inline constexpr TextSlot<0> kInstanceName;
inline constexpr TextSlot<384> kLifName;

// What the kernel may answer to commands that change routes and policies. Cleared before anything
// else, so that the caller reads zeros after a failure.
inline constexpr uint32_t kResultSize = 88;

inline void ClearResult(void* result) {
  if (result) std::memset(result, 0, kResultSize);
}

// Asks for a block that is not cleared.
struct Uncleared {};

// The parameter block of one command, on the stack of the operation that sends it. Every byte that
// is not set reaches the kernel as zero, unless the block is made uncleared.
class Request {
 public:
  Request() : params_{} {}

  // Bytes that are not set are unspecified.
  explicit Request(Uncleared /*tag*/) {}

  template <std::size_t kOffset, std::size_t kWidth>
  Request& Text(TextSlot<kOffset, kWidth> /*slot*/, const char* text) {
    CopyBoundedString(params_.bytes + kOffset, text, kWidth);
    return *this;
  }

  // The field is a width to the kernel: a text that fills it is sent without a terminator.
  template <std::size_t kOffset, std::size_t kWidth>
  Request& PlainText(TextSlot<kOffset, kWidth> /*slot*/, const char* text) {
    CopyPlainString(params_.bytes + kOffset, text, kWidth);
    return *this;
  }

  template <std::size_t kOffset, std::size_t kWidth>
  Request& OptionalText(TextSlot<kOffset, kWidth> slot, const char* text) {
    return text ? Text(slot, text) : *this;
  }

  template <std::size_t kOffset, std::size_t kWidth>
  Request& OptionalPlainText(TextSlot<kOffset, kWidth> slot, const char* text) {
    return text ? PlainText(slot, text) : *this;
  }

  // Stores a number as wide as its type.
  template <std::size_t kOffset, std::integral Number>
  Request& Put(Number value) {
    return Bytes<kOffset, sizeof value>(&value);
  }

  template <std::size_t kOffset>
  Request& Mac(const MacValue* mac) {
    return Bytes<kOffset, sizeof *mac>(mac);
  }

  template <std::size_t kOffset>
  Request& OptionalMac(const MacValue* mac) {
    return mac ? Mac<kOffset>(mac) : *this;
  }

  template <std::size_t kOffset, std::size_t kWidth>
  Request& Bytes(const void* bytes) {
    static_assert(kOffset + kWidth <= sizeof(IoctlParams));
    std::memcpy(params_.bytes + kOffset, bytes, kWidth);
    return *this;
  }

  // As many bytes as the caller says. Nothing keeps them inside their area: the counts that stand
  // beside such arrays are the caller's to keep.
  template <std::size_t kOffset>
  Request& CountedBytes(const void* bytes, std::size_t size) {
    if (size == 0) return *this;  // An empty array may come without an address.
    std::memcpy(params_.bytes + kOffset, bytes, size);
    return *this;
  }

  int Send(CommandCode code) const { return SendInto(code, nullptr, 0); }

  // The kernel writes straight into `output`; how much it wrote is not kept.
  int SendInto(CommandCode code, void* output, uint32_t capacity) const {
    return Receive(code, output, capacity);
  }

  // The optional answer of a command that changes something: NULL asks for none.
  int SendForResult(CommandCode code, void* result) const {
    return SendInto(code, result, result ? kResultSize : 0);
  }

  // `length` is the capacity of `output` and becomes the kernel's byte count.
  int Receive(CommandCode code, void* output, uint32_t& length) const {
    return Exchange(code, params_.bytes, sizeof params_, output, length);
  }

 private:
  IoctlParams params_;
};

// Completes the request of a getter that sends the instance name alone.
inline auto NamedInstance(const char* name) {
  return [name](Request& request) { request.Text(kInstanceName, name); };
}

}  // namespace vdrzax
