#include <linux/openat2.h>
#include <linux/seccomp.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "datapath.h"
#include "intercepted_calls.h"
#include "reader.h"
#include "require.h"
#include "simulated_node.h"

// An input is a row of steps. The first byte of each says what it is: a command for the datapath
// itself, or a system call that the simulation holds up for a caller.

namespace {

using Bytes = std::vector<uint8_t>;

std::span<const std::byte> AsBytes(const Bytes& bytes) { return std::as_bytes(std::span(bytes)); }

// A caller whose memory takes every reply.
class Memory final : public vdrsim::Destination {
 public:
  bool Takes(uint32_t) override { return true; }
};

struct Result {
  int error;
  Bytes reply;
};

Result Execute(vdrsim::Executor& executor, uint32_t code, const Bytes& input, uint32_t capacity) {
  Memory memory;
  vdrsim::Answer answer = executor.Execute({.process = 1,
                                            .thread = 1,
                                            .node = vdrsim::Node::Normal,
                                            .code = code,
                                            .input = AsBytes(input),
                                            .capacity = capacity,
                                            .destination = memory});
  Result result{.error = answer.error, .reply = {}};
  for (auto piece = answer.reply.Next(); !piece.empty(); piece = answer.reply.Next()) {
    for (const std::byte byte : piece) result.reply.push_back(static_cast<uint8_t>(byte));
  }
  Require(result.reply.size() == answer.reply.size(), "the total of the pieces is known before");
  return result;
}

// The datapath as a caller may expect it, known by its commands alone.
class Model {
 public:
  void Check(vdrsim::Datapath& datapath, uint32_t code, const Bytes& input, uint32_t capacity) {
    const Result answer = Execute(datapath, code, input, capacity);
    Require(answer.reply.size() <= capacity, "a reply fits its room");
    Require(answer.error == 0 || answer.reply.empty(), "an error has no reply");
    if (!Knows(code)) return Require(answer.error == ENOTTY, "an unknown code is no command");
    if (input.size() != InputSize(code)) {
      return Require(answer.error == EINVAL, "an input has one length");
    }
    if (code <= 4) {
      CheckInstances(code, input, capacity, answer);
    } else {
      CheckSettings(code, input, capacity, answer);
    }
    Require(datapath.state().instances.size() == instances_.size(), "no instance too many");
  }

 private:
  // The words of an instance that its record shows at 64 and 68, and the byte at 72.
  struct Instance {
    uint32_t second = 0;
    uint32_t fourth = 0;
    uint8_t flag = 0;
  };

  static bool IsSetter(uint32_t code) {
    return code == 10 || code == 12 || code == 14 || code == 160;
  }

  static bool Knows(uint32_t code) {
    return code <= 4 || (code >= 9 && code <= 14) || code == 42 || code == 159 || code == 160;
  }

  static std::size_t InputSize(uint32_t code) {
    if (code <= 4) return 968;
    return IsSetter(code) ? 4 : 0;
  }

  static uint32_t Word(const uint8_t* bytes) {
    uint32_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
  }

  void CheckSettings(uint32_t code, const Bytes& input, uint32_t capacity, const Result& answer) {
    if (code == 42 || IsSetter(code)) {
      if (code != 42) settings_[code - 1] = Word(input.data());
      Require(answer.error == 0 && answer.reply.empty(), "a setting is taken");
    } else if (capacity < 4) {
      Require(answer.error == EINVAL, "a setting needs four bytes of room");
    } else {
      Require(answer.error == 0 && answer.reply.size() == 4, "a setting is four bytes");
      Require(Word(answer.reply.data()) == settings_[code], "a setting is what was set last");
    }
  }

  void CheckInstances(uint32_t code, const Bytes& input, uint32_t capacity, const Result& answer) {
    const auto* text = reinterpret_cast<const char*>(input.data());
    const std::string name(text, strnlen(text, 64));
    const bool named = !name.empty() && name.size() < 64;
    const bool known = instances_.contains(name);
    if (code == 0 && input[368] == 0) {
      return CheckList(answer, instances_.size(), capacity);
    }
    if (!named) return Require(answer.error == EINVAL, "an instance has a name");
    if (code == 0) return CheckList(answer, known ? 1 : 0, capacity);
    if (code == 2) {
      if (!known && instances_.size() == 1001) {
        return Require(answer.error == ENOSPC, "there is room for 1001 instances");
      }
      Require(answer.error == 0, "an instance is set");
      instances_[name] = {
          .second = Word(&input[256]), .fourth = Word(&input[352]), .flag = input[368]};
      return;
    }
    if (!known) return Require(answer.error == ENOENT, "an unknown instance is not found");
    if (code == 1) {
      if (capacity < 577) return Require(answer.error == EINVAL, "a record needs its room");
      Require(answer.error == 0 && answer.reply.size() == 577, "a record is 577 bytes");
      return CheckRecord(answer.reply.data());
    }
    Require(answer.error == 0, "a known instance is changed");
    if (code == 3) instances_.erase(name);
  }

  void CheckList(const Result& answer, std::size_t count, uint32_t capacity) {
    if (count * 577 > capacity) return Require(answer.error == EINVAL, "a list needs its room");
    Require(answer.error == 0 && answer.reply.size() == count * 577, "a list is whole records");
    for (std::size_t index = 0; index < count; ++index) {
      CheckRecord(answer.reply.data() + index * 577);
    }
  }

  void CheckRecord(const uint8_t* record) {
    Require(record[63] == 0 && record[328] == 0 && record[392] == 0, "texts are terminated");
    const auto found = instances_.find(reinterpret_cast<const char*>(record));
    Require(found != instances_.end(), "an instance that is listed is known");
    Require(Word(record + 64) == found->second.second &&
                Word(record + 68) == found->second.fourth && record[72] == found->second.flag,
            "an instance is read back as it was set");
  }

  std::map<std::string, Instance> instances_{};
  std::map<uint32_t, uint32_t> settings_{};
};

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
constexpr char kPath[] = "/qorv/devices/char/zaxdriver/ryn_vdr";

int SystemCall(uint8_t number) {
  constexpr int kCalls[] = {__NR_ioctl, __NR_openat, __NR_openat2,
#ifdef __NR_open
                            __NR_open,
#endif
                            __NR_close};
  return kCalls[number % std::size(kCalls)];
}

// One held-up call, its arguments and a few bytes of its caller's memory.
void HoldUp(Reader& reader, Arena& arena, vdrsim::SimulatedNode& node, int descriptor,
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
  vdrsim::InterceptedCalls calls(kNoListener, node, datapath);
  calls.AnswerNext();
  Require(answers == 1 || (answers == 0 && !stillWaits), "a caller that waits is answered once");
  const bool goesOn = answered.flags == SECCOMP_USER_NOTIF_FLAG_CONTINUE;
  Require(
      answers == 0 || goesOn || (answered.flags == 0 && answered.error <= 0 && answered.val == 0),
      "the answer is an error, zero or to go on");

  // Nothing is written but the length of the reply and the reply within its room.
  const bool exchanges = waiting.data.nr == __NR_ioctl && !isForeign && !goesOn;
  for (std::size_t index = 0; index < before.size(); ++index) {
    if (arena.bytes()[index] == before[index]) continue;
    const uint64_t place = arena.Start() + index;
    Require(exchanges && ((place - output) < capacity || place - (address + 12) < 4),
            "a caller's memory is written where it may be");
  }
}

// One command for the datapath itself: a block of zeros with a few bytes of the input.
void Command(Reader& reader, Model& model, vdrsim::Datapath& datapath) {
  const auto code = reader.Take<uint8_t>();
  const auto form = reader.Take<uint8_t>();
  const auto capacity = reader.Take<uint32_t>();
  const auto offset = reader.Take<uint16_t>();
  const auto content = reader.Bytes(reader.Take<uint16_t>());
  constexpr std::size_t kSizes[] = {968, 4, 0};
  Bytes input(form < std::size(kSizes) ? kSizes[form] : form);
  for (std::size_t index = 0; index < content.size(); ++index) {
    if (offset + index < input.size()) input[offset + index] = content[index];
  }
  model.Check(datapath, code == 255 ? capacity : code, input, capacity);
}

}  // namespace

extern "C" {

int seccomp_notify_alloc(seccomp_notif** call, seccomp_notif_resp** response) {
  if (call) *call = static_cast<seccomp_notif*>(std::calloc(1, sizeof **call));
  if (response) *response = static_cast<seccomp_notif_resp*>(std::calloc(1, sizeof **response));
  return 0;
}

void seccomp_notify_free(seccomp_notif* call, seccomp_notif_resp* response) {
  std::free(call);
  std::free(response);
}

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
  static vdrsim::SimulatedNode node;
  static const int descriptor = dup(node.Open(2).get());
  Reader reader({input, size});
  Model model;
  vdrsim::Datapath commanded;
  vdrsim::Datapath intercepted;
  std::memset(arena.bytes(), 0, Arena::kSize);
  while (!reader.Ended()) {
    if (reader.Take<uint8_t>() % 2 == 0) {
      Command(reader, model, commanded);
    } else {
      HoldUp(reader, arena, node, descriptor, intercepted);
    }
  }
  return 0;
}

}  // extern "C"
