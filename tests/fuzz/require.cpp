#include "require.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

void Require(bool holds, const char* promise) {
  if (holds) return;
  static_cast<void>(std::fprintf(stderr, "broken: %s\n", promise));
  std::abort();
}

bool AreSame(const void* left, const void* right, std::size_t size) {
  return size == 0 || std::memcmp(left, right, size) == 0;
}
