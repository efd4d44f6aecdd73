#include "record/node_device.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "transport/unique_fd.h"

namespace vdrsim {

namespace {

constexpr size_t kReplyLength = 12;

// The argument of a command: 24 bytes without gaps, addresses of nothing where there is nothing.
std::array<std::byte, 24> Envelope(std::span<const std::byte> input, std::span<std::byte> room) {
  std::array<std::byte, 24> bytes{};
  const auto put = [&](size_t offset, auto value) {
    std::memcpy(&bytes[offset], &value, sizeof value);
  };
  put(0, static_cast<uint32_t>(input.size()));
  put(4, input.empty() ? nullptr : input.data());
  put(kReplyLength, static_cast<uint32_t>(room.size()));
  put(16, room.data());
  return bytes;
}

UniqueFd Open(const std::string& path) { return UniqueFd(open(path.c_str(), O_RDWR | O_CLOEXEC)); }

}  // namespace

NodeDevice::NodeDevice(Paths paths) : paths_(std::move(paths)) {
  const std::string& normal = paths_.front();
  if (Open(normal)) return;
  throw std::runtime_error(
      fmt::format("{}: {}: this host has no device to record, or it can't be used (record "
                  "--simulated needs none)",
                  normal, std::strerror(errno)));
}

HostDevice::Outcome NodeDevice::Command(Node node, uint32_t code, std::span<const std::byte> input,
                                        std::span<std::byte> room) noexcept {
  const auto capacity = static_cast<uint32_t>(room.size());
  const UniqueFd opened = Open(paths_[static_cast<size_t>(node)]);
  if (!opened) return {.error = errno, .length = capacity};
  auto envelope = Envelope(input, room);
  const bool isDone = ioctl(opened.get(), static_cast<unsigned long>(code), envelope.data()) >= 0;
  Outcome outcome{.error = isDone ? 0 : errno, .length = 0};
  std::memcpy(&outcome.length, envelope.data() + kReplyLength, sizeof outcome.length);
  return outcome;
}

}  // namespace vdrsim
