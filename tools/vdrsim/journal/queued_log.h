#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "journal/form.h"
#include "journal/log.h"
#include "journal/spool.h"
#include "journal/target.h"

namespace vdrsim {

// A log that a thread of its own puts into its form and writes. Whoever appends never waits for it.
class QueuedLog final : public Log {
 public:
  // Throws std::system_error where no thread can be started.
  QueuedLog(Target target, std::unique_ptr<const Form> form, size_t memory = Spool::kMemory);
  ~QueuedLog() override;

  void Append(const Entry& entry) noexcept override;

  // Returns at once unless a plain file is written.
  void Sync() noexcept override;

  // Waits for whoever reads, until this process is told to stop. Nothing is written behind it.
  bool Finish() noexcept override;

 private:
  void EndWriter() noexcept;
  void Work() noexcept;
  bool AwaitEntries();
  bool WriteBatch(std::string& text);
  bool WriteOut(std::string& text);
  void Rest();
  void Fail(int error) noexcept;

  Target target_;
  const std::unique_ptr<const Form> form_;

  std::mutex mutex_{};
  std::condition_variable wake_{};
  std::condition_variable progress_{};
  Spool spool_;
  uint64_t appended_ = 0;
  uint64_t written_ = 0;
  bool isIdle_ = false;
  bool isHurried_ = false;
  bool isEnding_ = false;
  bool isFailureTold_ = false;

  std::atomic<bool> givesUp_ = false;
  std::atomic<bool> hasFailed_ = false;
  std::vector<std::byte> batch_{};
  std::thread writer_{};
};

}  // namespace vdrsim
