#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace vdrzax {

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored \
    "-Wstringop-truncation"  // Filling a field without terminator is meant.
#endif

// Copies at most `width` bytes and fills the rest of the field with zeros. A text that fills the
// field stays without a terminator; the few fields that want this are read by the kernel as widths.
inline void CopyPlainString(void* destination, const char* source, std::size_t width) {
  std::strncpy(static_cast<char*>(destination), source, width);
}

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

// The same with a terminator at the last byte in every case, which cuts a text of `width`
// characters or more to width - 1.
inline void CopyBoundedString(void* destination, const char* source, std::size_t width) {
  CopyPlainString(destination, source, width);
  static_cast<char*>(destination)[width - 1] = '\0';
}

// True when the field ends in a terminator and nothing but zeros follows the first one, so that a
// bounded copy of it would be the field itself. Compares sixteen pairs of neighbours at a time, and
// answers false for a field that is too narrow for that.
template <std::size_t kWidth>
bool IsSeenPadded(const uint8_t* field) {
  using Lane = uint8_t __attribute__((vector_size(16)));
  constexpr std::size_t kPairs = kWidth - 1;
  if constexpr (kPairs < sizeof(Lane)) return false;
  if (field[kPairs] != 0) return false;
  Lane stray{};
#pragma GCC unroll 16  // The turns are so few that counting them takes longest.
  for (std::size_t done = 0; done < kPairs; done += sizeof(Lane)) {
    const std::size_t first = done + sizeof(Lane) <= kPairs ? done : kPairs - sizeof(Lane);
    Lane left;
    Lane right;
    std::memcpy(&left, field + first, sizeof left);
    std::memcpy(&right, field + first + 1, sizeof right);
    stray |= (left == 0) & right;
  }
  uint64_t halves[2];
  std::memcpy(halves, &stray, sizeof halves);
  return (halves[0] | halves[1]) == 0;
}

}  // namespace vdrzax
