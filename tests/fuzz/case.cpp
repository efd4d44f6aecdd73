#include "case.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "memory.h"
#include "reader.h"
#include "require.h"

namespace {

// As far as a device repeats its payload. It keeps runs short and still fills many a buffer.
constexpr uint32_t kMostRepeated = 1 << 18;

}  // namespace

Case::Case(std::span<const uint8_t> input) {
  Reader reader(input);
  function = reader.Take<uint8_t>();
  const auto what = reader.Take<uint8_t>();
  const auto number = reader.Take<uint8_t>();
  failingAllocation = reader.Take<uint8_t>() & 3;
  claim = reader.Take<uint32_t>();
  payload = reader.Rest();

  switch (what & 3) {
    case 1:
      result = number;
      break;
    case 2:
      result = -1;
      error = number + 1;
      break;
    case 3:
      openError = number + 1;
      break;
    default:
      break;
  }
  claims = (what & 4) != 0;
  failsLater = (what & 8) != 0;
}

device::Reply Case::Answer(uint32_t capacity, std::span<const uint8_t> bytes) const {
  device::Reply reply{.result = result, .error = error};
  reply.bytes.assign(
      bytes.begin(),
      bytes.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(bytes.size(), capacity)));
  reply.length = static_cast<uint32_t>(reply.bytes.size());
  if (!claims) return reply;

  // A negative length, and what lies beyond the capacity, are claimed without being written.
  reply.length = claim;
  if (claim > INT32_MAX) return reply;
  if (std::min(claim, capacity) > kMostRepeated) reply.length %= kMostRepeated;
  const std::size_t written = std::min(reply.length, capacity);
  std::size_t repeated = reply.bytes.size();
  if (written > repeated) reply.bytes.resize(written);
  while (repeated != 0 && repeated < written) {
    const std::size_t more = std::min(repeated, written - repeated);
    std::memcpy(reply.bytes.data() + repeated, reply.bytes.data(), more);
    repeated += more;
  }
  return reply;
}

Outcome Call(const Case& input, std::span<const device::Reply> replies,
             const std::function<int()>& function) {
  device::Plug(input.openError, replies);
  memory::Watch(input.failingAllocation);
  errno = kUntouched;
  const int result = function();
  const Outcome outcome{.result = result, .error = errno};
  Require(result == 0 || result == -1, "the result is 0 or -1");
  Require(device::IsClosed(), "what was opened is closed");
  return outcome;
}

Outcome Call(const Case& input, const device::Reply& reply, const std::function<int()>& function) {
  return Call(input, std::span(&reply, 1), function);
}

void RequireFailure(const Outcome& outcome, int error) {
  Require(outcome.result == -1, "it fails");
  Require(outcome.error == error, "errno is the reason");
}

void RequireSuccess(const Outcome& outcome) {
  Require(outcome.result == 0, "it succeeds");
  Require(outcome.error == kUntouched, "errno is not touched on success");
}
