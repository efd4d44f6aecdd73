#include "datapath/datapath.h"

#include <array>
#include <cerrno>
#include <new>
#include <type_traits>
#include <utility>

#include "datapath/bridge_handlers.h"
#include "datapath/connection_handlers.h"
#include "datapath/e2i_handlers.h"
#include "datapath/instance_handlers.h"
#include "datapath/lif_handlers.h"
#include "datapath/mcast_handlers.h"
#include "datapath/policy_handlers.h"
#include "datapath/route_handlers.h"
#include "datapath/services_handlers.h"
#include "requests/input.h"

namespace vdrsim {

namespace {

using requests::Effect;
using requests::kRequests;
using requests::Meanings;
using requests::Request;

template <size_t Index>
Answer Run(State& state, std::span<const std::byte> bytes) {
  const InputOf<Index> input(bytes);
  // Who only reads sees a state that can't be changed.
  constexpr bool isReading = InputOf<Index>::kRequest.effect == Effect::Reads;
  std::conditional_t<isReading, const State, State>& visible = state;
  if constexpr (std::is_same_v<decltype(Handle(visible, input)), int>) {
    return {.error = Handle(visible, input)};
  } else {
    return Handle(visible, input);
  }
}

using Handler = Answer (*)(State& state, std::span<const std::byte> input);

// A request that nothing handles does not compile.
template <size_t... Indexes>
constexpr auto AllHandlers(std::index_sequence<Indexes...>) {
  return std::array<Handler, sizeof...(Indexes)>{Run<Indexes>...};
}

constexpr auto kHandlers = AllHandlers(std::make_index_sequence<kRequests.size()>());

bool DoesWithoutReply(const Request& request, const Call& call) {
  return request.room.isOptional && call.capacity == 0;
}

// What is known of a command before it is carried out. The reply to a command that changes something
// is as long as its room.
int Judge(const Request& request, const Call& call) {
  if (call.input.size() != InputLength(request.form)) return EINVAL;
  if (request.effect == Effect::Reads) return 0;
  const uint32_t length = DoesWithoutReply(request, call) ? 0 : request.room.bytes;
  if (length > call.capacity) return EINVAL;
  return call.destination.Takes(length) ? 0 : EFAULT;
}

// What asks for the counters of the datapath as a whole leaves them as they are.
bool IsCounted(const Request& request) { return request.code != 43 && request.code != 44; }

}  // namespace

Answer Datapath::Execute(const Call& call) noexcept {
  const size_t index = requests::Identify(call.code, call.input);
  if (index == Meanings::kNone) return {.error = ENOTTY};
  const Request& request = *kRequests[index];
  Answer answer = Carry(call, index);
  if (IsCounted(request)) {
    const std::lock_guard lock(mutex_);
    state_.counters.Count(request.effect, answer.error);
  }
  return answer;
}

Answer Datapath::Carry(const Call& call, size_t index) try {
  const Request& request = *kRequests[index];
  if (const int error = Judge(request, call)) return {.error = error};
  Answer answer;
  {
    const std::lock_guard lock(mutex_);
    call.TakePlace();
    answer = kHandlers[index](state_, call.input);
  }
  if (DoesWithoutReply(request, call)) answer.reply = {};
  answer.reply.Prepare();
  if (answer.reply.size() > call.capacity) return {.error = EINVAL};
  return answer;
} catch (const std::bad_alloc&) {
  return {.error = ENOMEM};
}

State Datapath::state() const {
  const std::lock_guard lock(mutex_);
  return state_;
}

// What was there before is dropped when nobody waits for it any more.
void Datapath::Replace(State state) {
  const std::lock_guard lock(mutex_);
  std::swap(state_, state);
}

}  // namespace vdrsim
