#include "given.h"

#include <cstdint>
#include <cstring>

namespace vdrctl {

namespace {

// Before each text stands how many bytes it has, with the zero at its end; 0 when none was given.
using Size = uint32_t;

Size SizeOf(const std::optional<std::string>& value) {
  return value ? static_cast<Size>(value->size() + 1) : 0;
}

}  // namespace

Given::Given(std::span<const std::optional<std::string>> values) {
  std::size_t all = 0;
  for (const auto& value : values) all += sizeof(Size) + SizeOf(value);
  block_.resize(all);
  char* rest = block_.data();
  for (const auto& value : values) {
    const Size size = SizeOf(value);
    std::memcpy(rest, &size, sizeof size);
    rest += sizeof size;
    if (value) std::memcpy(rest, value->c_str(), size);
    rest += size;
  }
}

Values Given::In(Room& room) const {
  const char* rest = block_.data();
  const char* const end = rest + block_.size();
  std::size_t count = 0;
  for (; rest != end; ++count) {
    Size size = 0;
    std::memcpy(&size, rest, sizeof size);
    rest += sizeof size;
    room[count] = size > 0 ? rest : nullptr;
    rest += size;
  }
  return std::span(room).first(count);
}

}  // namespace vdrctl
