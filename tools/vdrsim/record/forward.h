#pragma once

#include <memory>
#include <mutex>

#include "call.h"
#include "record/host_device.h"
#include "record/reply_memory.h"

namespace vdrsim {

// An end of the chain: hands every command on to the device of the host, with an envelope and a reply
// of its own, so that the caller's memory is never the device's. One command at a time, so that their
// order is known.
class Forward final : public Executor {
 public:
  explicit Forward(HostDevice& device) : device_(device) {}

  Answer Execute(const Call& call) noexcept override;

 private:
  Answer Carry(const Call& call, std::unique_ptr<ReplyMemory> memory);

  HostDevice& device_;
  std::mutex mutex_{};
};

}  // namespace vdrsim
