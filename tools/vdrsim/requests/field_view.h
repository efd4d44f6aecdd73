#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "requests/requests.h"

namespace vdrsim::requests {

// A field of one input, for whoever doesn't know before which it will be.
struct FieldView {
  const Field& field;
  std::span<const std::byte> bytes;

  uint64_t Number() const {
    uint64_t value = 0;
    std::memcpy(&value, bytes.data(), bytes.size());
    return value;
  }

  int64_t Signed() const {
    int32_t value = 0;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
  }

  // The characters up to the terminator, or all of the field where there is none.
  std::string_view Text() const {
    const auto* first = reinterpret_cast<const char*>(bytes.data());
    return {first, strnlen(first, bytes.size())};
  }
};

// The request that an input means, or nullptr where the code has none.
inline const Request* Find(uint32_t code, std::span<const std::byte> input) {
  const size_t index = Identify(code, input);
  return index == Meanings::kNone ? nullptr : kRequests[index];
}

// Shows `use` the fields of an input, in their order; none when it has not the length that the
// request demands.
template <typename Use>
void ForEachField(const Request& request, std::span<const std::byte> input, const Use& use) {
  if (input.size() != InputLength(request.form)) return;
  for (const Field& field : request.fields()) {
    use(FieldView{field, input.subspan(field.offset, field.width)});
  }
}

}  // namespace vdrsim::requests
