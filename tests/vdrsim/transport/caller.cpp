#include "caller.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <vector>

#include "transport/filter.h"

namespace transport_test {

namespace {

[[noreturn]] void Call(const std::function<void()>& calls, std::vector<sock_filter>& filter,
                       int listenerTold) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  const int listener = vdrsim::InstallFilter(filter);
  (void)!write(listenerTold, &listener, sizeof listener);
  calls();
  _exit(0);
}

}  // namespace

SharedPages::SharedPages(size_t count) : size_(count * PageSize()) {
  void* const pages =
      mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (pages == MAP_FAILED) throw std::runtime_error("no pages");
  start_ = static_cast<std::byte*>(pages);
}

SharedPages::~SharedPages() { munmap(start_, size_); }

size_t SharedPages::PageSize() { return static_cast<size_t>(sysconf(_SC_PAGESIZE)); }

uint64_t SharedPages::Address(size_t offset) const {
  return std::bit_cast<uint64_t>(start_ + offset);
}

Caller::Caller(const std::function<void()>& calls) {
  auto filter = vdrsim::SupervisedCallsFilter(vdrsim::Scope::ReadWriteOpens);
  int told[2];
  if (pipe(told) != 0) throw std::runtime_error("no pipe");
  const vdrsim::UniqueFd heard(told[0]);
  vdrsim::UniqueFd said(told[1]);
  process_ = fork();
  if (process_ == 0) Call(calls, filter, said.get());
  said.Close();
  int listener = -1;
  (void)!read(heard.get(), &listener, sizeof listener);
  const vdrsim::UniqueFd process(static_cast<int>(syscall(SYS_pidfd_open, process_, 0)));
  listener_ =
      vdrsim::UniqueFd(static_cast<int>(syscall(SYS_pidfd_getfd, process.get(), listener, 0)));
  if (!listener_) throw std::runtime_error("no listener");
  call_.emplace(listener_.get(), rests_);
}

Caller::~Caller() {
  Kill();
  waitpid(process_, nullptr, 0);
}

vdrsim::HeldUpCall& Caller::Next() {
  EXPECT_TRUE(call_->Receive());
  return *call_;
}

void Caller::Kill() const { kill(process_, SIGKILL); }

bool HasOpen(const std::string& path) {
  return std::ranges::any_of(std::filesystem::directory_iterator("/proc/self/fd"),
                             [&path](const auto& descriptor) {
                               std::error_code isGone;
                               return std::filesystem::read_symlink(descriptor, isGone) == path;
                             });
}

// What is mapped at address 0 is asked so, in the 104 bytes that begin with their number.
bool KernelTells() {
  const vdrsim::UniqueFd map(open("/proc/self/maps", O_RDONLY));
  uint64_t query[13] = {104};
  return ioctl(map.get(), 0xc0686611, query) != 0 && errno == ENOENT;
}

void Command(uint64_t envelope) { syscall(SYS_ioctl, 0, 1, envelope); }

}  // namespace transport_test
