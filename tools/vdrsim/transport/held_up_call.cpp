#include "held_up_call.h"

#include <seccomp.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <thread>

#include "status_file.h"
#include "unique_fd.h"

namespace vdrsim {

namespace {

// How long it can take until it is seen that a caller that rests is gone.
constexpr std::chrono::milliseconds kLookInterval{100};

seccomp_notif_sizes KernelSizes() {
  seccomp_notif_sizes sizes{};
  syscall(SYS_seccomp, SECCOMP_GET_NOTIF_SIZES, 0, &sizes);
  return sizes;
}

bool IsOf(pid_t thread, pid_t process) {
  return syscall(SYS_tgkill, process, thread, 0) == 0 || errno == EPERM;
}

}  // namespace

template <typename Structure>
HeldUpCall::Extended<Structure>::Extended(size_t length)
    : size(std::max(length, sizeof(Structure))), bytes(new std::byte[size]{}) {}

HeldUpCall::HeldUpCall(int listener, Relief& relief)
    : listener_(listener),
      relief_(relief),
      call_(KernelSizes().seccomp_notif),
      response_(KernelSizes().seccomp_notif_resp) {}

bool HeldUpCall::Receive() {
  // The kernel takes none that is not clear.
  std::memset(call_.bytes.get(), 0, call_.size);
  process_ = 0;
  return seccomp_notify_receive(listener_, call_.operator->()) == 0;
}

pid_t HeldUpCall::Process() {
  if (process_ == 0) process_ = FindProcess();
  return process_;
}

// To look it up takes long, to ask whether it is what it was the last time does not.
pid_t HeldUpCall::FindProcess() {
  if (IsOf(thread(), thread())) return thread();
  pid_t& process = processes_[static_cast<size_t>(thread()) % processes_.size()];
  if (!IsOf(thread(), process)) {
    process = static_cast<pid_t>(StatusFile::Of(thread()).Number("Tgid:").value_or(0));
  }
  return process;
}

bool HeldUpCall::IsWaiting() const { return seccomp_notify_id_valid(listener_, call_->id) == 0; }

bool HeldUpCall::Rest(std::chrono::nanoseconds time) const {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + time;
  relief_.BeginRest();
  for (auto now = Clock::now(); now < end && IsWaiting(); now = Clock::now()) {
    std::this_thread::sleep_until(std::min<Clock::time_point>(end, now + kLookInterval));
  }
  relief_.EndRest();
  return IsWaiting();
}

// The descriptor stays with the process that had the number when it was opened, and as the caller
// still waits afterwards, that was its own.
void HeldUpCall::Kill() {
  const UniqueFd process(static_cast<int>(syscall(SYS_pidfd_open, Process(), 0)));
  if (process && IsWaiting()) {
    syscall(SYS_pidfd_send_signal, process.get(), SIGKILL, nullptr, 0);
  }
}

void HeldUpCall::Return(int error) { Respond(error, 0); }

void HeldUpCall::Continue() { Respond(0, SECCOMP_USER_NOTIF_FLAG_CONTINUE); }

void HeldUpCall::ReturnDescriptor(int descriptor, uint32_t flags) {
  seccomp_notif_addfd addition{};
  addition.id = call_->id;
  addition.flags = SECCOMP_ADDFD_FLAG_SEND;
  addition.srcfd = static_cast<uint32_t>(descriptor);
  addition.newfd_flags = flags;
  if (ioctl(listener_, SECCOMP_IOCTL_NOTIF_ADDFD, &addition) < 0) Return(errno);
}

void HeldUpCall::Respond(int error, uint32_t flags) {
  response_->id = call_->id;
  response_->error = -error;
  response_->flags = flags;
  seccomp_notify_respond(listener_, response_.operator->());
}

}  // namespace vdrsim
