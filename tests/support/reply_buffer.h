#pragma once

#include <cerrno>
#include <cstddef>
#include <string>

#include "support/contract.h"

namespace contract {

// The reply buffer of a getter that none of the usual shapes fits.
struct ReplyBuffer {
  std::string allocation;  // the step that makes it
  std::size_t size;
  bool isDropped = false;  // it is lost when the command fails
};

// What such a getter does when the buffer or the device fails.
inline void ExpectFailuresAround(const Call& call, const ReplyBuffer& buffer) {
  {
    SCOPED_TRACE("the reply buffer cannot be allocated");
    fake::Device device;
    device.failingAllocation = 1;
    ExpectFailure(device, call, ENOMEM, {buffer.allocation});
  }
  for (const bool opens : {false, true}) {
    SCOPED_TRACE(opens ? "the ioctl fails" : "the node is missing");
    fake::Device device;
    if (!opens) device.openError = ENOENT;
    device.AnswerWith(fake::Failure(EXDEV));
    Steps steps{buffer.allocation, "open64"};
    if (opens) steps.insert(steps.end(), {"ioctl", "close"});
    if (!buffer.isDropped) steps.push_back("free(" + std::to_string(buffer.size) + ")");
    ExpectFailure(device, call, opens ? EXDEV : ENOENT, steps);
    EXPECT_EQ(device.Live(), std::vector<std::size_t>(buffer.isDropped ? 1 : 0, buffer.size));
    device.FreeLost();
  }
}

}  // namespace contract
