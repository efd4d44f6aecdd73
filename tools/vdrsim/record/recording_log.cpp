#include "record/recording_log.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>

#include "common/standard_streams.h"
#include "journal/put.h"

namespace vdrsim {

namespace {

// Of a reply so much is put into its form at once.
constexpr size_t kPart = size_t{64} << 10;

const std::atomic<bool> kNeverGivesUp = false;

}  // namespace

RecordingLog::RecordingLog(const std::string& path, const JournalForm& form)
    : target_(Target::File(path)), form_(form) {
  if (!target_.isPlainFile()) {
    throw std::runtime_error(path + ": a recording must be a plain file");
  }
  form_.PutBeginning(text_);
  WriteOut();
}

void RecordingLog::Append(const Entry& entry) noexcept try {
  if (isWhole_) Put(entry);
} catch (const std::bad_alloc&) {
  Fail("out of memory");
}

void RecordingLog::Put(const Entry& entry) {
  if (entry.kind != Entry::Kind::Command) {
    form_.Put(entry, text_);
    return WriteOut();
  }
  JournalForm::PutCommand(entry, text_);
  if (!entry.output.empty()) PutOutput(entry.output);
  text_ += JournalForm::kEndOfLine;
  WriteOut();
}

void RecordingLog::PutOutput(std::span<const std::byte> output) {
  text_ += JournalForm::kBeforeOutput;
  while (!output.empty()) {
    const auto part = output.first(std::min(output.size(), kPart));
    PutHex(text_, part);
    output = output.subspan(part.size());
    if (!output.empty()) WriteOut();
  }
  text_ += JournalForm::kBehindOutput;
}

void RecordingLog::WriteOut() {
  const int error = isWhole_ ? target_.Write(text_, kNeverGivesUp) : 0;
  text_.clear();
  if (error != 0) Fail(std::strerror(error));
}

void RecordingLog::Fail(const char* why) noexcept {
  isWhole_ = false;
  tools::Complain("vdrsim", {target_.name(), ": ", why, "; the recording is incomplete"});
}

}  // namespace vdrsim
