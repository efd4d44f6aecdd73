#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "transport/held_up_call.h"
#include "transport/unique_fd.h"

namespace transport_test {

// Pages that the test and its callers have in common, at the same place.
class SharedPages {
 public:
  explicit SharedPages(size_t count);
  SharedPages(const SharedPages&) = delete;
  ~SharedPages();

  static size_t PageSize();
  std::span<std::byte> bytes() const { return {start_, size_}; }
  uint64_t Address(size_t offset = 0) const;

 private:
  std::byte* start_;
  size_t size_;
};

// A sanitizer may have a thread of its own in the callers and the tests.
#if defined(__SANITIZE_THREAD__)
inline constexpr bool kHasSanitizersThread = true;
#else
inline constexpr bool kHasSanitizersThread = false;
#endif

// Takes nobody's place, and remembers what it was told: ( and ).
struct Rests final : vdrsim::Relief {
  void BeginRest() noexcept override { said += '('; }
  void EndRest() noexcept override { said += ')'; }

  std::string said{};
};

// Another process, as one of a run, which makes its calls and ends.
class Caller {
 public:
  explicit Caller(const std::function<void()>& calls);
  Caller(const Caller&) = delete;
  ~Caller();

  pid_t process() const { return process_; }
  int listener() const { return listener_.get(); }
  // The next of its calls, which waits.
  vdrsim::HeldUpCall& Next();
  void Kill() const;
  const std::string& rests() const { return rests_.said; }

 private:
  pid_t process_ = -1;
  vdrsim::UniqueFd listener_{};
  Rests rests_{};
  std::optional<vdrsim::HeldUpCall> call_{};
};

// Whether this process has a file open.
bool HasOpen(const std::string& path);

// Whether the kernel tells what may be written, which Linux before 6.11 doesn't.
bool KernelTells();

// An ioctl call, held up whatever it is made on.
void Command(uint64_t envelope);

}  // namespace transport_test
