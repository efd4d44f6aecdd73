#include "cxx/calls.h"

namespace cxx {

namespace {

constexpr std::array<std::uint8_t, 3> kInput{7, 8, 9};
std::array<std::uint8_t, 5> output;

int Send() {
  IoctlEnvelope envelope{3, kInput.data(), 5, output.data()};
  return VDRZAXIoctl(0x123, &envelope);
}
int SendNothing() {
  IoctlEnvelope envelope{};
  return VDRZAXIoctl(0x456, &envelope);
}

}  // namespace

Rows ChannelCalls() {
  return {
      {"VDRZAXIoctl", Send, FACE(send, 0x123, kInput, output), 0},
      {"VDRZAXIoctl", SendNothing, FACE(send, 0x456, {}, {}), 0},

  };
}

}  // namespace cxx
