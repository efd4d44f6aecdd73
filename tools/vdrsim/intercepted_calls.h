#pragma once

#include <linux/seccomp.h>

#include <cstdint>
#include <memory>

#include "call.h"
#include "simulated_node.h"

namespace vdrsim {

// Answers the system calls of the run that the kernel holds up for this process: those that open a
// device node, and ioctl calls on what was opened so. Every other call goes on in the kernel as if
// nobody had looked.
class InterceptedCalls {
 public:
  // Throws std::bad_alloc.
  InterceptedCalls(int listener, const SimulatedNode& node, Executor& datapath);

  // Answers one waiting call. Call it when the listener is readable.
  void AnswerNext();

 private:
  void AnswerOpen(const seccomp_notif& call, uint64_t path, int flags);
  void AnswerOpenWithHow(const seccomp_notif& call);
  void AnswerIoctl(const seccomp_notif& call);

  // Carries out a command whose envelope is at `address`; returns an errno value or 0.
  int Exchange(const seccomp_notif& call, uint32_t code, uint64_t address);

  bool IsWaiting(const seccomp_notif& call) const;
  void Inject(const seccomp_notif& call, int flags);
  void Return(const seccomp_notif& call, int error);
  void Continue(const seccomp_notif& call);
  void Respond(const seccomp_notif& call, int error, uint32_t flags);

  struct FreeResponse {
    void operator()(seccomp_notif_resp* response) const;
  };

  int listener_;
  const SimulatedNode& node_;
  Executor& datapath_;
  std::unique_ptr<seccomp_notif_resp, FreeResponse> response_;
};

}  // namespace vdrsim
