#include "journal/kept_output.h"

#include <algorithm>
#include <utility>

namespace vdrsim {

namespace {

class KeptReply final : public Reply::Source {
 public:
  explicit KeptReply(std::shared_ptr<const KeptOutput> kept) : kept_(std::move(kept)) {}

  uint32_t Prepare() override { return static_cast<uint32_t>(kept_->bytes().size()); }

  std::span<const std::byte> Next() noexcept override {
    return std::exchange(isTaken_, true) ? std::span<const std::byte>() : kept_->bytes();
  }

 private:
  std::shared_ptr<const KeptOutput> kept_;
  bool isTaken_ = false;
};

}  // namespace

KeptOutput::KeptOutput(size_t room) : bytes_(new std::byte[room]) {}

std::shared_ptr<const KeptOutput> KeptOutput::Of(Reply& reply) {
  const std::shared_ptr<KeptOutput> kept(new KeptOutput(reply.size()));
  auto again = std::make_unique<KeptReply>(kept);
  kept->size_ = kept->Take(reply);
  reply.Become(std::move(again));
  return kept;
}

size_t KeptOutput::Take(Reply& reply) noexcept {
  size_t taken = 0;
  for (auto piece = reply.Next(); !piece.empty(); piece = reply.Next()) {
    std::ranges::copy(piece, bytes_.get() + taken);
    taken += piece.size();
  }
  return taken;
}

}  // namespace vdrsim
