#include "control/message.h"

namespace vdrsim::control {

namespace {

// No block of a command begins so: it would be a name that nobody gives an object.
constexpr std::string_view kMark("vdrsim control\n\0", 16);

}  // namespace

std::string Encode(const Order& order) {
  std::string input(kMark);
  input.append(order.word).push_back('\0');
  return input.append(order.body);
}

std::optional<Order> Decode(std::span<const std::byte> input) {
  const std::string_view text(reinterpret_cast<const char*>(input.data()), input.size());
  if (!text.starts_with(kMark)) return std::nullopt;
  const std::string_view rest = text.substr(kMark.size());
  const size_t end = rest.find('\0');
  if (end == std::string_view::npos) return std::nullopt;
  return Order{rest.substr(0, end), rest.substr(end + 1)};
}

}  // namespace vdrsim::control
