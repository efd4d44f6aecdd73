#pragma once

#include <cstddef>
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

}  // namespace vdrzax
