#pragma once

#include <fcntl.h>
#include <unistd.h>

namespace vdrsim {

// Puts something in the place of each standard descriptor that is closed, so that no file of this
// process gets its number and is taken for it. It can be used no more than a closed one, and a
// program that is executed finds it closed again.
inline void FillStandardDescriptors() {
  constexpr int kUseless[] = {O_WRONLY, O_RDONLY, O_RDONLY};
  for (int descriptor = 0; descriptor <= 2; ++descriptor) {
    if (fcntl(descriptor, F_GETFD) < 0) (void)open("/dev/null", kUseless[descriptor] | O_CLOEXEC);
  }
}

}  // namespace vdrsim
