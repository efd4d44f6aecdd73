#pragma once

#include <vdrzax/channel.h>

#include <vdrzax/cxx/call.hpp>

// The road to the datapath itself, for commands that have no call of their own.
namespace vdrzax {
inline namespace v1 {

class ChannelCalls {
 public:
  // Sends one command of any number. Gives the bytes that the kernel says it produced, which may be more
  // than `output` holds.
  result<std::uint32_t> try_send(int request, std::span<const std::uint8_t> input,
                                 std::span<std::uint8_t> output) const noexcept {
    IoctlEnvelope envelope{};
    envelope.inLength = static_cast<std::uint32_t>(input.size());
    envelope.inBuffer = input.empty() ? nullptr : input.data();
    envelope.outLength = static_cast<std::uint32_t>(output.size());
    envelope.outBuffer = output.empty() ? nullptr : output.data();
    const Failure failure = detail::Call("VDRZAXIoctl", VDRZAXIoctl, request, &envelope);
    if (failure.code != 0) return failure;
    return std::uint32_t{envelope.outLength};
  }
  // The name of an object as requests hold it: the text, a terminator, zeros. Touches no device.
  result<Bytes<64>> try_uuid_or_name(Text text) const noexcept {
    const detail::Name name(text);
    if (name.refusal() != Refusal::None) {
      return Failure{"VDRZAXGetUuidOrName", detail::CodeOf(name.refusal()), name.refusal()};
    }
    char copied[64];
    VDRZAXGetUuidOrName(name.passed(), copied);
    Bytes<64> bytes;
    std::memcpy(bytes.data(), copied, sizeof copied);
    return bytes;
  }

#ifdef __cpp_exceptions
  std::uint32_t send(int request, std::span<const std::uint8_t> input,
                     std::span<std::uint8_t> output) const {
    return try_send(request, input, output).value();
  }
  Bytes<64> uuid_or_name(Text text) const { return try_uuid_or_name(text).value(); }
#endif
};

}  // namespace v1
}  // namespace vdrzax
