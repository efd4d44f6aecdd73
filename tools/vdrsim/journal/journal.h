#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "call.h"
#include "journal/entry.h"
#include "journal/kept_output.h"
#include "journal/log.h"

namespace vdrsim {

// The link of the chain that tells logs of every command. A command is given to the logs before its
// answer is given to the caller, and in the order in which the commands took effect.
class Journal final : public Executor {
 public:
  using Logs = std::vector<std::unique_ptr<Log>>;

  // What the logs get of a reply.
  enum class Keeps : uint8_t { Sizes, Outputs };

  explicit Journal(Executor& next, Logs logs, Keeps keeps = Keeps::Sizes);

  Answer Execute(const Call& call) noexcept override;

  // Puts a text between the commands before and those behind. What is a plain file has it, and all
  // before, when this returns. Returns false when there is no log.
  bool Mark(std::string_view text) noexcept;

  // To be called once, when no command will come any more. Returns false when a log has not all of
  // it, which has been said by then.
  bool Finish() noexcept;

 private:
  class Place;
  using Kept = std::shared_ptr<const KeptOutput>;
  // An entry with bytes of its own.
  struct Held {
    Entry entry{};
    std::vector<std::byte> input{};
    Kept kept{};
  };

  Kept Keep(Answer& answer) noexcept;
  void Submit(Entry entry, const Kept& kept) noexcept;
  bool Hold(const Entry& entry, const Kept& kept) noexcept;
  void HandOn(const Entry& entry) noexcept;
  void HandOnHeld() noexcept;

  Executor& next_;
  const Logs logs_;
  const Keeps keeps_;

  std::mutex places_{};
  uint64_t lastPlace_ = 0;

  std::mutex order_{};
  std::condition_variable turn_{};
  uint64_t handedOn_ = 0;
  std::map<uint64_t, Held> held_{};  // those whose predecessors are still to come
  std::atomic<bool> isWhole_ = true;
};

}  // namespace vdrsim
