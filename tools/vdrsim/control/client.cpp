#include "control/client.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>

#include "call.h"
#include "transport/node_path.h"
#include "transport/unique_fd.h"

namespace vdrsim::control {

namespace {

// The most that one call of the system copies.
constexpr size_t kMost = 0x7ffff000;

constexpr uint32_t kFirstRoom = 16 * 1024 * 1024;

// The argument of every command of the device, without gaps.
struct [[gnu::packed]] Envelope {
  uint32_t inputLength;
  uint64_t input;
  uint32_t length;
  uint64_t reply;
};
static_assert(sizeof(Envelope) == 24);

[[noreturn]] void Fail(int error) {
  throw std::system_error(error, std::generic_category(), "the run could not be spoken to");
}

// A kernel module would get a command that it does not know, and can't be asked beforehand whether it
// minds.
UniqueFd OpenNode() {
  UniqueFd node(open(NodePath(Node::Normal), O_RDWR | O_CLOEXEC));
  struct stat status {};
  if (fstat(node.get(), &status) != 0 || S_ISCHR(status.st_mode)) throw NotInARun();
  return node;
}

// The room is not touched where nothing is written to it.
std::unique_ptr<char[]> Room(uint32_t size) { return std::unique_ptr<char[]>(new char[size]); }

std::string_view Exchange(int node, const std::string& input, char* room, uint32_t size) {
  Envelope envelope{.inputLength = static_cast<uint32_t>(input.size()),
                    .input = reinterpret_cast<uint64_t>(input.data()),
                    .length = size,
                    .reply = reinterpret_cast<uint64_t>(room)};
  if (ioctl(node, kControlCode, &envelope) != 0) {
    if (errno == ENOTTY) throw NotInARun();
    Fail(errno);
  }
  if (envelope.length == 0 || envelope.length > size) Fail(EBADMSG);
  return {room, envelope.length};
}

}  // namespace

NotInARun::NotInARun()
    : runtime_error("this is not in a run: start one by vdrsim run -- COMMAND") {}

std::string Give(const Order& order) {
  const std::string input = Encode(order);
  const UniqueFd node = OpenNode();
  if (input.size() > kMost) Fail(EFBIG);
  for (uint32_t size = kFirstRoom;;) {
    const auto room = Room(size);
    const std::string_view reply = Exchange(node.get(), input, room.get(), size);
    const std::string_view text = reply.substr(1);
    switch (static_cast<Outcome>(reply.front())) {
      case Outcome::Done:
        return std::string(text);
      case Outcome::Failed:
        throw std::runtime_error(std::string(text));
      case Outcome::TooLong:
        break;
    }
    uint32_t wanted = 0;
    if (text.size() != sizeof wanted) Fail(EBADMSG);
    std::memcpy(&wanted, text.data(), sizeof wanted);
    // It can have become longer until the next time.
    if (wanted <= size || __builtin_add_overflow(wanted, wanted / 8, &size)) Fail(EFBIG);
  }
}

}  // namespace vdrsim::control
