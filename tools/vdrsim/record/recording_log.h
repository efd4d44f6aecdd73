#pragma once

#include <string>

#include "journal/journal_form.h"
#include "journal/log.h"
#include "journal/target.h"

namespace vdrsim {

// A recording: a journal with the replies. What is appended is in the file when Append returns, so
// that nothing of it is lost, whatever becomes of this process.
class RecordingLog final : public Log {
 public:
  // Throws std::runtime_error for what is no plain file.
  RecordingLog(const std::string& path, const JournalForm& form);

  void Append(const Entry& entry) noexcept override;
  void Sync() noexcept override {}
  bool Finish() noexcept override { return isWhole_; }

 private:
  void Put(const Entry& entry);
  void PutOutput(std::span<const std::byte> output);
  void WriteOut();
  void Fail(const char* why) noexcept;

  Target target_;
  JournalForm form_;
  std::string text_{};
  bool isWhole_ = true;
};

}  // namespace vdrsim
