#include <linux/openat2.h>
#include <linux/seccomp.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

#include "datapath/datapath.h"
#include "reader.h"
#include "require.h"
#include "transport/device_nodes.h"
#include "transport/held_up_call.h"
#include "transport/intercepted_calls.h"

// An input is a row of system calls that the simulation holds up for a caller.

namespace {

using Bytes = std::vector<uint8_t>;

// The memory of a caller: two pages between pages that are not there.
class Arena {
 public:
  static constexpr std::size_t kSize = 8192;

  Arena() {
    void* pages = mmap(nullptr, kSize + 8192, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    bytes_ = static_cast<uint8_t*>(pages) + 4096;
    Require(pages != MAP_FAILED && mprotect(bytes_, kSize, PROT_READ | PROT_WRITE) == 0,
            "there is memory");
  }

  uint8_t* bytes() { return bytes_; }

  uint64_t Start() const { return reinterpret_cast<uint64_t>(bytes_); }

  // An address from within the page before to within the page behind.
  uint64_t Address(uint16_t number) const { return Start() - 4096 + number % (kSize + 8192); }

  // Stores what reaches into the arena.
  template <typename Number>
  void Put(uint64_t address, Number value) {
    uint8_t bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    for (const uint8_t byte : bytes) {
      const uint64_t offset = address++ - Start();
      if (offset < kSize) bytes_[offset] = byte;
    }
  }

 private:
  uint8_t* bytes_ = nullptr;
};

// What libseccomp does for the simulation, played.
seccomp_notif waiting{};
bool stillWaits = false;
int answers = 0;
seccomp_notif_resp answered{};

constexpr int kNoListener = -1;

class NoRelief final : public vdrsim::Relief {
 public:
  void BeginRest() noexcept override {}
  void EndRest() noexcept override {}
};
constexpr char kPath[] = "/qorv/devices/char/zaxdriver/ryn_vdr";

int SystemCall(uint8_t number) {
  constexpr int kCalls[] = {__NR_ioctl, __NR_openat,     __NR_openat2,
#ifdef __NR_open
                            __NR_open,  __NR_creat,      __NR_stat,       __NR_access,
#endif
                            __NR_statx, __NR_newfstatat, __NR_faccessat2, __NR_close};
  return kCalls[number % std::size(kCalls)];
}

// One held-up call, its arguments and a few bytes of its caller's memory.
void HoldUp(Reader& reader, Arena& arena, const vdrsim::DeviceNodes& nodes, int descriptor,
            vdrsim::Datapath& datapath) {
  waiting = {};
  waiting.pid = static_cast<uint32_t>(getpid());
  waiting.data.nr = SystemCall(reader.Take<uint8_t>());
  const auto what = reader.Take<uint8_t>();
  stillWaits = (what & 1) == 0;
  const bool isForeign = (what & 2) != 0;
  const bool isPath = (what & 4) != 0;
  const uint64_t address = arena.Address(reader.Take<uint16_t>());
  const auto code = reader.Take<uint32_t>();
  const auto inLength = reader.Take<uint32_t>();
  const uint64_t input = arena.Address(reader.Take<uint16_t>());
  const auto capacity = reader.Take<uint32_t>();
  const uint64_t output = arena.Address(reader.Take<uint16_t>());
  const auto content = reader.Bytes(reader.Take<uint16_t>());
  for (std::size_t index = 0; index < content.size(); ++index) {
    arena.Put(input + index, content[index]);
  }

  switch (waiting.data.nr) {
    case __NR_ioctl:
      waiting.data.args[0] = isForeign ? 0 : static_cast<uint64_t>(descriptor);
      waiting.data.args[1] = code;
      waiting.data.args[2] = address;
      arena.Put(address, inLength);
      arena.Put(address + 4, input);
      arena.Put(address + 12, capacity);
      arena.Put(address + 16, output);
      break;
    case __NR_openat:
      waiting.data.args[1] = address;
      waiting.data.args[2] = code;
      break;
    case __NR_openat2:
      waiting.data.args[1] = address;
      waiting.data.args[2] = input;
      waiting.data.args[3] = isForeign ? capacity : sizeof(open_how);
      break;
    case __NR_statx:
    case __NR_newfstatat:
    case __NR_faccessat2:
      waiting.data.args[1] = address;
      waiting.data.args[2] = isForeign ? code : output;
      waiting.data.args[3] = inLength;
      waiting.data.args[4] = output;
      break;
#ifdef __NR_stat
    case __NR_stat:
      waiting.data.args[0] = address;
      waiting.data.args[1] = output;
      break;
#endif
    default:
      waiting.data.args[0] = address;
      waiting.data.args[1] = code;
      break;
  }
  if (isPath && waiting.data.nr != __NR_ioctl) {
    for (std::size_t index = 0; index < sizeof kPath; ++index) {
      arena.Put(address + index, kPath[index]);
    }
  }

  const Bytes before(arena.bytes(), arena.bytes() + Arena::kSize);
  answers = 0;
  answered = {};
  NoRelief relief;
  vdrsim::HeldUpCall call(kNoListener, relief);
  Require(call.Receive(), "there is a call");
  vdrsim::InterceptedCalls(nodes, datapath).Answer(call);
  Require(answers == 1 || (answers == 0 && !stillWaits), "a caller that waits is answered once");
  const bool goesOn = answered.flags == SECCOMP_USER_NOTIF_FLAG_CONTINUE;
  Require(
      answers == 0 || goesOn || (answered.flags == 0 && answered.error <= 0 && answered.val == 0),
      "the answer is an error, zero or to go on");

  // Nothing is written but the length of the reply and the reply within its room, or what a look at a
  // file shows, and nothing at all when the memory may be another's by now.
  const bool exchanges = waiting.data.nr == __NR_ioctl && !isForeign && !goesOn && stillWaits;
  const bool shows = waiting.data.nr != __NR_ioctl && !goesOn && stillWaits;
  for (std::size_t index = 0; index < before.size(); ++index) {
    if (arena.bytes()[index] == before[index]) continue;
    const uint64_t place = arena.Start() + index;
    const bool isReply = place - output < capacity || place - (address + 12) < 4;
    const bool isStatus = place - output < sizeof(struct statx);
    Require((exchanges && isReply) || (shows && isStatus),
            "a caller's memory is written where it may be");
  }
}

}  // namespace

extern "C" {

int seccomp_notify_receive(int, seccomp_notif* call) {
  *call = waiting;
  return 0;
}

int seccomp_notify_respond(int, seccomp_notif_resp* response) {
  ++answers;
  answered = *response;
  return 0;
}

int seccomp_notify_id_valid(int, uint64_t) { return stillWaits ? 0 : -ENOENT; }

int LLVMFuzzerTestOneInput(const uint8_t* input, std::size_t size) {
  static Arena arena;
  static const vdrsim::DeviceNodes nodes(true);
  static const int descriptor = dup(nodes.Open(vdrsim::Node::Normal, 2).get());
  Reader reader({input, size});
  vdrsim::Datapath datapath;
  std::memset(arena.bytes(), 0, Arena::kSize);
  while (!reader.Ended()) HoldUp(reader, arena, nodes, descriptor, datapath);
  return 0;
}

}  // extern "C"
