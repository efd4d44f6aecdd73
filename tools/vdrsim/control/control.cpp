#include "control/control.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <span>
#include <utility>

#include "control/message.h"
#include "requests/requests.h"

namespace vdrsim {

namespace {

using control::Outcome;

static_assert(requests::kMeanings[kControlCode].plain == requests::Meanings::kNone,
              "no command has the code of the control");

class Text final : public Reply::Source {
 public:
  explicit Text(std::string text) : text_(std::move(text)), left_(text_) {}

  uint32_t Prepare() override { return static_cast<uint32_t>(text_.size()); }

  std::span<const std::byte> Next() noexcept override {
    const std::string_view piece = left_.substr(0, Reply::kPiece);
    left_.remove_prefix(piece.size());
    return std::as_bytes(std::span(piece));
  }

 private:
  std::string text_;
  std::string_view left_;
};

std::string Say(Outcome outcome, std::string_view text) {
  std::string reply(1, static_cast<char>(outcome));
  return reply.append(text);
}

std::string SayTooLong(size_t length) {
  const auto wanted = static_cast<uint32_t>(std::min<size_t>(length, UINT32_MAX));
  char bytes[sizeof wanted];
  std::memcpy(bytes, &wanted, sizeof wanted);
  return Say(Outcome::TooLong, {bytes, sizeof bytes});
}

Answer AnswerOf(std::string text) {
  Answer answer{.reply = Reply(std::make_unique<Text>(std::move(text)))};
  answer.reply.Prepare();
  return answer;
}

}  // namespace

void Control::On(std::string word, Action action) {
  actions_.emplace(std::move(word), std::move(action));
}

Answer Control::Execute(const Call& call) noexcept try {
  const auto order = call.code == kControlCode ? control::Decode(call.input) : std::nullopt;
  if (!order) return next_.Execute(call);
  std::string said = Carry(order->word, order->body);
  return AnswerOf(said.size() > call.capacity ? SayTooLong(said.size()) : std::move(said));
} catch (const std::bad_alloc&) {
  return {.error = ENOMEM};
}

std::string Control::Carry(std::string_view word, std::string_view body) {
  const auto action = actions_.find(word);
  if (action == actions_.end()) {
    return Say(Outcome::Failed, fmt::format("a run of this kind has no '{}'", word));
  }
  const std::lock_guard lock(mutex_);
  try {
    return Say(Outcome::Done, action->second(body));
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& failure) {
    return Say(Outcome::Failed, failure.what());
  }
}

}  // namespace vdrsim
