#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "call.h"

namespace vdrsim {

// All of a reply at once.
class KeptOutput {
 public:
  // Takes the pieces of `reply`, and leaves it to give them once more. Throws std::bad_alloc before
  // it has taken any.
  static std::shared_ptr<const KeptOutput> Of(Reply& reply);

  std::span<const std::byte> bytes() const { return {bytes_.get(), size_}; }

 private:
  explicit KeptOutput(size_t room);
  size_t Take(Reply& reply) noexcept;

  std::unique_ptr<std::byte[]> bytes_;
  size_t size_ = 0;
};

}  // namespace vdrsim
