#pragma once

#include "channel/request.h"

namespace vdrzax {

// A bridge is asked for by two names that belong to the same field, so the kernel sees the second
// alone. The first is copied all the same: a caller that passes a wrong one is to learn of it with
// every compiler, also with one that sees that nobody reads the copy.
inline Request& PutBothNames(Request& request, const char* name1, const char* name2) {
  request.Text(kInstanceName, name1);
  asm volatile("" : : "r"(&request) : "memory");
  return request.Text(kInstanceName, name2);
}

}  // namespace vdrzax
