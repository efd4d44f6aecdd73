#include "transport/filter.h"

#include <gtest/gtest.h>
#include <linux/seccomp.h>
#include <seccomp.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "failures.h"
#include "kernel.h"

namespace {

using transport_test::WatchedKernel;
using vdrsim::Scope;

constexpr uint32_t kHeldUp = 0x7fc00000;
constexpr uint32_t kPasses = 0x7fff0000;

// What the kernel decides about a call, by the instructions of classic BPF.
uint32_t Decide(const std::vector<sock_filter>& program, const seccomp_data& call) {
  uint32_t value = 0;
  for (size_t at = 0;; ++at) {
    const sock_filter& step = program.at(at);
    const uint32_t number = step.k;
    const auto jump = [&](bool isTrue) { at += isTrue ? step.jt : step.jf; };
    switch (step.code) {
      case BPF_LD | BPF_W | BPF_ABS:
        std::memcpy(&value, reinterpret_cast<const std::byte*>(&call) + number, sizeof value);
        break;
      case BPF_ALU | BPF_AND | BPF_K:
        value &= number;
        break;
      case BPF_JMP | BPF_JA:
        at += number;
        break;
      case BPF_JMP | BPF_JEQ | BPF_K:
        jump(value == number);
        break;
      case BPF_JMP | BPF_JGT | BPF_K:
        jump(value > number);
        break;
      case BPF_JMP | BPF_JGE | BPF_K:
        jump(value >= number);
        break;
      case BPF_JMP | BPF_JSET | BPF_K:
        jump((value & number) != 0);
        break;
      case BPF_RET | BPF_K:
        return number;
      default:
        throw std::runtime_error("an instruction that is new here");
    }
  }
}

struct Call {
  long number;
  std::array<uint64_t, 6> arguments;
};

seccomp_data Data(const Call& call, uint32_t architecture = seccomp_arch_native()) {
  seccomp_data data{.nr = static_cast<int>(call.number),
                    .arch = architecture,
                    .instruction_pointer = 0,
                    .args = {}};
  std::memcpy(data.args, call.arguments.data(), sizeof data.args);
  return data;
}

void ExpectOf(Scope scope, const std::vector<Call>& calls, uint32_t expected) {
  const auto program = vdrsim::SupervisedCallsFilter(scope);
  for (const Call& call : calls) {
    EXPECT_EQ(Decide(program, Data(call)), expected)
        << call.number << std::hex << " " << call.arguments[0] << " " << call.arguments[1] << " "
        << call.arguments[2];
  }
}

// Requests that Linux answers for a plain file.
constexpr uint64_t kOfPlainFiles[] = {0x541b,     0x5460,     0x80086601, 0x40086602,
                                      0x801c581f, 0x401c5820, 0x80111500};

std::vector<Call> Requests() {
  std::vector<Call> calls;
  for (const uint64_t request : {0UL, 1UL, 9UL, 128UL, 254UL, 255UL})
    calls.push_back({SYS_ioctl, {7, request}});
  for (const uint64_t request : kOfPlainFiles) calls.push_back({SYS_ioctl, {7, request}});
  return calls;
}

TEST(Filter, HoldsUpWhatMayBeACommandAndWhatLinuxWouldAnswerForAPlainFile) {
  for (const Scope scope : {Scope::ReadWriteOpens, Scope::EveryOpenAndLook}) {
    ExpectOf(scope, Requests(), kHeldUp);
  }
}

// The kernel knows 32 bits of them.
TEST(Filter, DoesNotLookAtTheUpperHalfOfARequest) {
  std::vector<Call> calls = Requests();
  for (Call& call : calls) call.arguments[1] |= 0xffffffff00000000;
  ExpectOf(Scope::ReadWriteOpens, calls, kHeldUp);
}

TEST(Filter, LetsOtherRequestsPass) {
  std::vector<Call> calls;
  for (const uint64_t request :
       {0x100UL, 0x109UL, 0x1ffUL, 0x8000UL, 0x5401UL, 0x5421UL, 0x5451UL}) {
    calls.push_back({SYS_ioctl, {7, request, 9}});
  }
  for (const uint64_t request : kOfPlainFiles) {
    calls.push_back({SYS_ioctl, {request, request + 1, request}});
    calls.push_back({SYS_ioctl, {request, request - 1, request}});
  }
  calls.push_back({SYS_ioctl, {7, 0x80000000}});
  calls.push_back({SYS_ioctl, {7, uint64_t{1} << 40 | 0x5401}});
  for (const Scope scope : {Scope::ReadWriteOpens, Scope::EveryOpenAndLook}) {
    ExpectOf(scope, calls, kPasses);
  }
}

// With the flags, of which 2 is for reading and writing, where each call has them.
std::vector<Call> Opens(uint64_t flags, uint64_t others) {
  return {
#ifdef SYS_open
      {SYS_open, {others, flags, others}},
#endif
      {SYS_openat, {others, others, flags, others}},
  };
}

TEST(Filter, HoldsUpOpensForReadingAndWriting) {
  for (const uint64_t flags : {0x2UL, 0x3UL, 0x80002UL, 0x80842UL, 0x200002UL}) {
    ExpectOf(Scope::ReadWriteOpens, Opens(flags, 0), kHeldUp);
    ExpectOf(Scope::EveryOpenAndLook, Opens(flags, 0), kHeldUp);
  }
}

TEST(Filter, HoldsUpOtherOpensOnDemand) {
  for (const uint64_t flags : {0x0UL, 0x1UL, 0x80000UL, 0x80801UL, 0x241UL}) {
    ExpectOf(Scope::ReadWriteOpens, Opens(flags, 2), kPasses);
    ExpectOf(Scope::EveryOpenAndLook, Opens(flags, 2), kHeldUp);
  }
}

TEST(Filter, HoldsUpOpensWhoseFlagsAreNotSeenAndLooksOnDemand) {
  const std::vector<Call> opens = {
#ifdef SYS_creat
      {SYS_creat, {}},
#endif
      {SYS_openat2, {}},
  };
  const std::vector<Call> looks = {
#ifdef SYS_stat
      {SYS_stat, {}},       {SYS_lstat, {}}, {SYS_access, {}},
#endif
      {SYS_newfstatat, {}}, {SYS_statx, {}}, {SYS_faccessat, {}}, {SYS_faccessat2, {}},
  };
  for (const auto& calls : {opens, looks}) ExpectOf(Scope::EveryOpenAndLook, calls, kHeldUp);
  ExpectOf(Scope::ReadWriteOpens, opens, kHeldUp);
  ExpectOf(Scope::ReadWriteOpens, looks, kPasses);
}

TEST(Filter, LetsEveryOtherCallPass) {
  std::vector<Call> calls;
  for (const long number : {SYS_read, SYS_write, SYS_close, SYS_fstat, SYS_execve, SYS_exit_group,
                            SYS_openat2 + 1000}) {
    calls.push_back({number, {2, 2, 2, 2, 2, 2}});
  }
  ExpectOf(Scope::EveryOpenAndLook, calls, kPasses);
}

// Programs for a 32-bit system, say, whose calls have other numbers.
TEST(Filter, LetsCallsOfOtherArchitecturesPass) {
  constexpr uint32_t kNone = 0x12345678;
  const auto program = vdrsim::SupervisedCallsFilter(Scope::EveryOpenAndLook);
  for (long number = 0; number < 500; ++number) {
    EXPECT_EQ(Decide(program, Data({number, {}}, kNone)), kPasses) << number;
  }
}

std::string Failure() {
  return transport_test::StartFailureOf(
      [] { (void)vdrsim::SupervisedCallsFilter(Scope::EveryOpenAndLook); });
}

TEST(Filter, SaysWhereItCannotBeBuilt) {
  const WatchedKernel kernel;
  kernel->seccomp_init = [](uint32_t) { return std::optional<void*>(nullptr); };
  EXPECT_EQ(Failure(), "cannot build the seccomp filter: Cannot allocate memory");
  kernel->seccomp_init = {};
  kernel->seccomp_export_bpf = [](void*, int) { return std::optional(-EFAULT); };
  EXPECT_EQ(Failure(), "cannot build the seccomp filter: Bad address");
  kernel->seccomp_export_bpf = {};
  kernel->memfd_create = transport_test::FailsWith(EMFILE);
  EXPECT_EQ(Failure(), "cannot create a memory file: Too many open files");
  kernel->memfd_create = {};
  kernel->pread = [](auto...) { return std::optional<ssize_t>(0); };
  EXPECT_EQ(Failure(), "cannot read the seccomp filter: Input/output error");
}

// The flags that the filter is installed with, where each try ends so.
std::vector<long> FlagsOfEachTry(long result, int error) {
  std::vector<sock_filter> filter(1);
  std::vector<long> tries;
  const WatchedKernel kernel;
  kernel->syscall = [&](long number, long operation, long flags, auto...) {
    EXPECT_EQ(number, SYS_seccomp);
    EXPECT_EQ(operation, SECCOMP_SET_MODE_FILTER);
    tries.push_back(flags);
    errno = error;
    return std::optional(result);
  };
  EXPECT_EQ(vdrsim::InstallFilter(filter), result);
  return tries;
}

// With a listener (8), and waiting for answers whatever signals come (32), since Linux 5.19.
TEST(Filter, IsInstalledByOlderKernelsToo) {
  EXPECT_EQ(FlagsOfEachTry(-1, EINVAL), (std::vector<long>{40, 8}));
  EXPECT_EQ(FlagsOfEachTry(-1, EPERM), (std::vector<long>{40}));
  EXPECT_EQ(FlagsOfEachTry(0, EINVAL), (std::vector<long>{40})) << "the error is an older one";
}

}  // namespace
