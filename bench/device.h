#pragma once

#include <cstdint>
#include <span>

// The device of this program: open64, ioctl and close stand here, and the library finds them here.
namespace device {

enum class Calls {
  Program,  // nothing but the copy of the reply
  Kernel,   // also a true open, ioctl and close of /dev/null
};

// Whether commands succeed. A refused one fails by the true ioctl, so it needs Calls::Kernel.
enum class Verdict { Serve, Refuse };

// Decides how all further commands are answered. The reply is not copied here and must outlive
// them; an empty one leaves the output alone.
void Answer(Calls calls, Verdict verdict, std::span<const uint8_t> reply);

}  // namespace device
