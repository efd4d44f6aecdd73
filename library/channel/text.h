#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

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

// The widest field that CopyTextField takes.
inline constexpr std::size_t kWidestText = 256;

namespace lanes {

inline constexpr std::size_t kLane = 16;

// Where the lane begins that takes over from `done`: the last one of a field may reach back.
constexpr std::size_t LaneFrom(std::size_t done, std::size_t width) {
  return std::min(done, width - kLane);
}

struct Window {
  uint8_t bytes[2 * kWidestText];
};

constexpr Window OnesThenZeros() {
  Window window{};
  for (std::size_t index = 0; index < kWidestText; ++index) window.bytes[index] = 0xFF;
  return window;
}

inline constexpr Window kWindow = OnesThenZeros();

// The length of a text: up to its first zero, or up to the last byte of the field, where a
// terminator is due in every case.
template <std::size_t kWidth>
std::size_t LengthByLibc(const uint8_t* field) {
  return strnlen(reinterpret_cast<const char*>(field), kWidth - 1);
}

#ifdef __SSE2__

// A bit for each of at most 64 bytes, set where the byte is zero.
template <std::size_t kWidth>
[[gnu::always_inline]] inline uint64_t ZeroBytes(const uint8_t* bytes) {
  static_assert(kLane <= kWidth && kWidth <= 64);
  uint64_t zeros = 0;
#pragma GCC unroll 4
  for (std::size_t done = 0; done < kWidth; done += kLane) {
    const std::size_t first = LaneFrom(done, kWidth);
    const __m128i lane = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + first));
    const int mask = _mm_movemask_epi8(_mm_cmpeq_epi8(lane, _mm_setzero_si128()));
    zeros |= uint64_t{static_cast<uint32_t>(mask)} << first;
  }
  return zeros;
}

// The same length. All of the field is looked at, from its end, and the first zero wins.
template <std::size_t kWidth>
[[gnu::always_inline]] inline std::size_t Length(const uint8_t* field) {
  constexpr std::size_t kGroup = std::min<std::size_t>(kWidth, 64);
  constexpr std::size_t kLast = kWidth - kGroup;
  const uint64_t zeros = ZeroBytes<kGroup>(field + kLast) | uint64_t{1} << (kGroup - 1);
  std::size_t length = kLast + static_cast<std::size_t>(__builtin_ctzll(zeros));
#pragma GCC unroll 3
  for (std::size_t left = (kWidth - 1) / 64; left > 0; --left) {
    const std::size_t first = (left - 1) * 64;
    const uint64_t before = ZeroBytes<kGroup>(field + first);
    if (before != 0) length = first + static_cast<std::size_t>(__builtin_ctzll(before));
  }
  return length;
}

#else

template <std::size_t kWidth>
std::size_t Length(const uint8_t* field) {
  return LengthByLibc<kWidth>(field);
}

#endif

}  // namespace lanes

// A bounded copy of a field all of whose bytes may be read. It has no branch, so that a text costs
// the same wherever it ends and whatever lies behind.
template <std::size_t kWidth>
[[gnu::always_inline]] inline void CopyTextField(uint8_t* __restrict destination,
                                                 const uint8_t* __restrict source) {
  static_assert(kWidth <= kWidestText);
  if constexpr (kWidth < lanes::kLane) {
    CopyBoundedString(destination, reinterpret_cast<const char*>(source), kWidth);
  } else {
    using Lane = uint8_t __attribute__((vector_size(lanes::kLane)));
    const uint8_t* window = lanes::kWindow.bytes + kWidestText - lanes::Length<kWidth>(source);
    asm("" : "+r"(window));  // Else gcc works out the place in the window anew for each lane.
#pragma GCC unroll 16
    for (std::size_t done = 0; done < kWidth; done += lanes::kLane) {
      const std::size_t first = lanes::LaneFrom(done, kWidth);
      Lane characters;
      Lane kept;
      std::memcpy(&characters, source + first, sizeof characters);
      std::memcpy(&kept, window + first, sizeof kept);
      characters &= kept;
      std::memcpy(destination + first, &characters, sizeof characters);
    }
  }
}

}  // namespace vdrzax
