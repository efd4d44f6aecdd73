#pragma once

#include <linux/seccomp.h>
#include <sys/types.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace vdrsim {

// Sees to it that the calls of others are answered while one rests.
class Relief {
 public:
  virtual void BeginRest() noexcept = 0;
  virtual void EndRest() noexcept = 0;

 protected:
  ~Relief() = default;
};

// A system call of the run that the kernel holds up until it is answered. One object serves many
// calls, one after another.
class HeldUpCall {
 public:
  // Throws std::bad_alloc.
  HeldUpCall(int listener, Relief& relief);

  // Waits for a call. Returns false when it got none: its caller was killed, or nobody is left to
  // make one.
  bool Receive();

  int number() const { return call_->data.nr; }
  uint64_t argument(size_t index) const { return call_->data.args[index]; }
  pid_t thread() const { return static_cast<pid_t>(call_->pid); }

  // The process that the calling thread belongs to.
  pid_t Process();

  // Tells whether the caller still waits. As it can't do anything meanwhile, its number was its own
  // up to now; a moment later it may have been killed, and its number be another's.
  bool IsWaiting() const;

  // Lets the caller wait for so long, or until it is gone. Returns false when it is.
  bool Rest(std::chrono::nanoseconds time) const;

  // Kills the process of the caller, if it still waits.
  void Kill();

  // Each answers the call. That fails only when the caller was killed, and then nobody needs it.
  void Return(int error);
  void Continue();
  // With a copy of a descriptor of this process; the caller's own limits hold.
  void ReturnDescriptor(int descriptor, uint32_t flags);

 private:
  pid_t FindProcess();
  void Respond(int error, uint32_t flags);

  // As long as the running kernel says, which may be longer than in these headers.
  template <typename Structure>
  struct Extended {
    size_t size;
    std::unique_ptr<std::byte[]> bytes;

    explicit Extended(size_t length);
    Structure* operator->() const { return reinterpret_cast<Structure*>(bytes.get()); }
  };

  int listener_;
  Relief& relief_;
  Extended<seccomp_notif> call_;
  Extended<seccomp_notif_resp> response_;
  pid_t process_ = 0;  // of this call, where it is known
  // The processes of the threads that called last.
  std::array<pid_t, 64> processes_{};
};

}  // namespace vdrsim
