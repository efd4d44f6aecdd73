#pragma once

#include <sys/types.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <utility>

namespace vdrsim {

// Which of the two device nodes a command came through.
enum class Node : uint8_t { Normal, Upgrade };

// The code of what `vdrsim ctl` says to the run that it is started in; no command has it. It alone
// takes inputs of any length.
inline constexpr uint32_t kControlCode = 255;

// Where the reply to a command goes: a caller that waits for it.
class Destination {
 public:
  // Tells whether `length` bytes of reply, and their number, could be written now. Changes nothing,
  // and may wait for the caller's memory, so nothing may be locked meanwhile.
  virtual bool Takes(uint32_t length) = 0;

  // Lets the caller wait for so long, and nobody else, so nothing may be locked meanwhile. Returns
  // false when the caller is gone by then: its command must have no effect any more.
  virtual bool HoldUp(std::chrono::nanoseconds time) noexcept = 0;

  // Kills the process of the caller, which learns nothing of its command.
  virtual void Kill() noexcept = 0;

 protected:
  ~Destination() = default;
};

// Where a command stands among the others. Whoever carries it out says so at the moment that decides,
// with locked what orders effects.
class Order {
 public:
  virtual void TakePlace() noexcept = 0;

 protected:
  ~Order() = default;
};

// One command as a caller gave it.
struct Call {
  pid_t process;
  pid_t thread;
  Node node;
  uint32_t code;
  std::span<const std::byte> input;
  uint32_t capacity;  // room that the caller has for the reply, in bytes
  Destination& destination;
  Order* order = nullptr;  // where somebody wants to know it

  void TakePlace() const {
    if (order) order->TakePlace();
  }
};

// The bytes of a reply, in pieces. Their total is known before the first is made.
class Reply {
 public:
  // A reply of up to this size is held in place; that of every single object is.
  static constexpr uint32_t kInlineRoom = 1056;

  // Of a large one: so much that a system call for each piece costs little, and no more than a cache
  // holds.
  static constexpr size_t kPiece = 131072;

  // Makes the pieces of a large reply one after another.
  class Source {
   public:
    virtual ~Source() = default;

    // Makes ready for the pieces, and returns their total. Called once, before Next.
    virtual uint32_t Prepare() = 0;

    // The next piece, valid until the next call; an empty one at the end.
    virtual std::span<const std::byte> Next() noexcept = 0;
  };

  Reply() = default;
  explicit Reply(std::unique_ptr<Source> source) : source_(std::move(source)) {}

  // Makes this a reply of at most kInlineRoom bytes, which are zero and to be filled.
  std::span<std::byte> Fill(uint32_t size) {
    size_ = left_ = size;
    const auto bytes = std::span(inline_).first(size);
    std::ranges::fill(bytes, std::byte{0});
    return bytes;
  }

  // To be called before a reply is handed on, with nothing locked.
  void Prepare() {
    if (source_) size_ = left_ = source_->Prepare();
  }

  // Gives other pieces from here on.
  void Become(std::unique_ptr<Source> source) {
    source_ = std::move(source);
    Prepare();
  }

  // Leaves no more than the first `size` bytes of a reply that is ready to be handed on.
  void Shorten(uint32_t size) { size_ = left_ = std::min(size_, size); }

  uint32_t size() const { return size_; }

  // The next piece, valid until the next call and as long as this reply stays in its place; an
  // empty one at the end.
  std::span<const std::byte> Next() noexcept {
    const auto piece = source_ ? source_->Next() : std::span<const std::byte>(inline_);
    const auto taken = piece.first(std::min<size_t>(piece.size(), left_));
    left_ -= static_cast<uint32_t>(taken.size());
    return taken;
  }

 private:
  uint32_t size_ = 0;
  uint32_t left_ = 0;  // of them, to be taken yet
  std::unique_ptr<Source> source_{};
  std::array<std::byte, kInlineRoom> inline_;
};

// What comes back: 0 and the reply, or an errno value. The caller is told the length of the reply, or
// what is claimed instead: a short, an empty or an over-long reply. A failure that claims a length
// comes with its reply too, as of a device that wrote before it failed; any other leaves the caller's
// memory and length as they were.
struct Answer {
  int error = 0;
  Reply reply{};
  std::optional<uint32_t> claimed{};
};

// A link of the chain between the callers and the datapath, or its end. For use by several threads
// at once.
class Executor {
 public:
  // A command that fails has had no effect.
  virtual Answer Execute(const Call& call) noexcept = 0;

 protected:
  ~Executor() = default;
};

}  // namespace vdrsim
