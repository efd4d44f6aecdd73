#include "replay/recorded_answer.h"

#include <algorithm>
#include <cerrno>
#include <memory>

namespace vdrsim {

namespace {

// Reads the output while it is delivered.
class RecordedReply final : public Reply::Source {
 public:
  RecordedReply(const Recording& recording, HexPlace output)
      : recording_(recording), output_(output) {}

  uint32_t Prepare() override {
    buffer_.resize(std::min<size_t>(output_.size, Reply::kPiece));
    return output_.size;
  }

  std::span<const std::byte> Next() noexcept override {
    const auto piece =
        std::span(buffer_).first(std::min<size_t>(Reply::kPiece, output_.size - from_));
    if (!recording_.Read(output_, from_, piece)) return {};
    from_ += static_cast<uint32_t>(piece.size());
    return piece;
  }

 private:
  const Recording& recording_;
  HexPlace output_;
  uint32_t from_ = 0;
  std::vector<std::byte> buffer_{};
};

}  // namespace

Answer AnswerAsRecorded(const Recording& recording, const Recorded& command, const Call& call) {
  if (command.produced > 0 && !command.hasOutput) return {.error = ENODATA};
  if (command.produced > call.capacity) return {.error = EINVAL};
  Answer answer{.error = command.error};
  const bool leftTheLength = command.error != 0 && command.length == command.capacity;
  if (leftTheLength && command.produced == 0) return answer;
  if (command.produced > 0) {
    answer.reply.Become(std::make_unique<RecordedReply>(recording, command.output));
  }
  answer.claimed = leftTheLength ? call.capacity : command.length;
  return answer;
}

}  // namespace vdrsim
