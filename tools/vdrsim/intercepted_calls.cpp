#include "intercepted_calls.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include "caller_memory.h"

namespace vdrsim {

namespace {

// The argument of every ioctl on the device: 24 bytes without gaps.
constexpr size_t kEnvelopeLength = 24;
constexpr size_t kInLength = 0;
constexpr size_t kInBuffer = 4;
constexpr size_t kOutLength = 12;
constexpr size_t kOutBuffer = 16;

// No command has a higher code. Beyond it are the requests of other kinds of files, such as that of
// isatty(), whose argument is no envelope.
constexpr uint32_t kHighestCode = 255;

// No command comes near it; it keeps a malformed envelope from claiming gigabytes here.
constexpr uint32_t kLongestInput = 1 << 20;

struct FreeNotification {
  void operator()(seccomp_notif* notification) const { seccomp_notify_free(notification, nullptr); }
};
using Notification = std::unique_ptr<seccomp_notif, FreeNotification>;

template <typename Number>
Number Decode(std::span<const std::byte> bytes, size_t offset) {
  Number value{};
  std::memcpy(&value, bytes.subspan(offset, sizeof value).data(), sizeof value);
  return value;
}

// Requests that Linux itself answers on every descriptor, whatever is behind it.
bool BelongsToLinux(uint32_t code) {
  return code == FIOCLEX || code == FIONCLEX || code == FIONBIO || code == FIOASYNC;
}

// The envelope of a caller, in which the length of the reply can be written or not.
class Envelope final : public Destination {
 public:
  Envelope(const CallerMemory& memory, uint64_t address) : memory_(memory), address_(address) {}

  bool Read() { return memory_.Read(address_, bytes_); }

  template <typename Number>
  Number Field(size_t offset) const {
    return Decode<Number>(bytes_, offset);
  }

  bool WriteLength(uint32_t length) const {
    return memory_.Write(address_ + kOutLength, std::as_bytes(std::span(&length, 1)));
  }

  bool Takes(uint32_t) override { return WriteLength(Field<uint32_t>(kOutLength)); }

 private:
  const CallerMemory& memory_;
  uint64_t address_;
  std::array<std::byte, kEnvelopeLength> bytes_{};
};

bool Deliver(Reply& reply, const CallerMemory& memory, uint64_t address) {
  for (auto piece = reply.Next(); !piece.empty(); piece = reply.Next()) {
    if (!memory.Write(address, piece)) return false;
    address += piece.size();
  }
  return true;
}

}  // namespace

// Both structures are as long as the running kernel says, which may be longer than in these
// headers.
InterceptedCalls::InterceptedCalls(int listener, const SimulatedNode& node, Executor& datapath)
    : listener_(listener), node_(node), datapath_(datapath) {
  seccomp_notif_resp* allocated = nullptr;
  if (seccomp_notify_alloc(nullptr, &allocated) != 0) throw std::bad_alloc();
  response_.reset(allocated);
}

void InterceptedCalls::FreeResponse::operator()(seccomp_notif_resp* response) const {
  seccomp_notify_free(nullptr, response);
}

void InterceptedCalls::AnswerNext() {
  // A fresh one each time, because the kernel wants it cleared.
  seccomp_notif* allocated = nullptr;
  if (seccomp_notify_alloc(&allocated, nullptr) != 0) return;
  const Notification call(allocated);
  if (seccomp_notify_receive(listener_, call.get()) != 0) return;

  switch (call->data.nr) {
#ifdef __NR_open
    case __NR_open:
      return AnswerOpen(*call, call->data.args[0], static_cast<int>(call->data.args[1]));
#endif
    case __NR_openat:
      return AnswerOpen(*call, call->data.args[1], static_cast<int>(call->data.args[2]));
    case __NR_openat2:
      return AnswerOpenWithHow(*call);
    case __NR_ioctl:
      return AnswerIoctl(*call);
    default:
      return Continue(*call);
  }
}

void InterceptedCalls::AnswerOpen(const seccomp_notif& call, uint64_t path, int flags) {
  const CallerMemory memory(static_cast<pid_t>(call.pid));
  std::array<char, kNodePathRoom> buffer{};
  // A descriptor that only names a path can't be injected, and no command can be sent on it.
  if (!IsNodePath(memory.ReadText(path, buffer)) || (flags & O_PATH) != 0) return Continue(call);
  if (!IsWaiting(call)) return;
  if ((flags & O_CREAT) != 0 && (flags & O_EXCL) != 0) return Return(call, EEXIST);
  if ((flags & O_DIRECTORY) != 0) return Return(call, ENOTDIR);
  Inject(call, flags);
}

void InterceptedCalls::AnswerOpenWithHow(const seccomp_notif& call) {
  const CallerMemory memory(static_cast<pid_t>(call.pid));
  open_how how{};
  if (call.data.args[3] != sizeof how ||
      !memory.Read(call.data.args[2], std::as_writable_bytes(std::span(&how, 1)))) {
    return Continue(call);
  }
  // Under these an absolute path is refused or means another file; the kernel does either by
  // itself.
  if ((how.resolve & (RESOLVE_BENEATH | RESOLVE_IN_ROOT)) != 0) return Continue(call);
  AnswerOpen(call, call.data.args[1], static_cast<int>(how.flags));
}

void InterceptedCalls::AnswerIoctl(const seccomp_notif& call) {
  const auto descriptor = static_cast<uint32_t>(call.data.args[0]);
  const auto code = static_cast<uint32_t>(call.data.args[1]);
  if (BelongsToLinux(code) || !node_.IsBehind(static_cast<pid_t>(call.pid), descriptor)) {
    return Continue(call);
  }
  if (code > kHighestCode) return Return(call, ENOTTY);
  try {
    Return(call, Exchange(call, code, call.data.args[2]));
  } catch (const std::bad_alloc&) {
    Return(call, ENOMEM);
  }
}

int InterceptedCalls::Exchange(const seccomp_notif& call, uint32_t code, uint64_t address) {
  const CallerMemory memory(static_cast<pid_t>(call.pid));
  Envelope envelope(memory, address);
  if (!envelope.Read()) return EFAULT;
  const auto inLength = envelope.Field<uint32_t>(kInLength);
  if (inLength > kLongestInput) return EINVAL;
  std::vector<std::byte> input(inLength);
  if (!memory.Read(envelope.Field<uint64_t>(kInBuffer), input)) return EFAULT;

  // The thread's number may belong to another process by now.
  if (!IsWaiting(call)) return ESRCH;
  const auto thread = static_cast<pid_t>(call.pid);
  Answer answer = datapath_.Execute({.process = thread,
                                     .thread = thread,
                                     .node = Node::Normal,
                                     .code = code,
                                     .input = input,
                                     .capacity = envelope.Field<uint32_t>(kOutLength),
                                     .destination = envelope});
  if (answer.error != 0) return answer.error;
  if (!Deliver(answer.reply, memory, envelope.Field<uint64_t>(kOutBuffer))) return EFAULT;
  return envelope.WriteLength(answer.claimed.value_or(answer.reply.size())) ? 0 : EFAULT;
}

bool InterceptedCalls::IsWaiting(const seccomp_notif& call) const {
  return seccomp_notify_id_valid(listener_, call.id) == 0;
}

void InterceptedCalls::Inject(const seccomp_notif& call, int flags) {
  const UniqueFd opened = node_.Open(flags);
  if (!opened) return Return(call, errno);
  seccomp_notif_addfd addition{};
  addition.id = call.id;
  addition.flags = SECCOMP_ADDFD_FLAG_SEND;
  addition.srcfd = static_cast<uint32_t>(opened.get());
  addition.newfd_flags = static_cast<uint32_t>(flags) & O_CLOEXEC;
  // The caller's own limits hold: it may have no room for another descriptor.
  if (ioctl(listener_, SECCOMP_IOCTL_NOTIF_ADDFD, &addition) < 0) Return(call, errno);
}

void InterceptedCalls::Return(const seccomp_notif& call, int error) { Respond(call, error, 0); }

void InterceptedCalls::Continue(const seccomp_notif& call) {
  Respond(call, 0, SECCOMP_USER_NOTIF_FLAG_CONTINUE);
}

// Fails only when the caller was killed while it waited; then nobody needs the answer.
void InterceptedCalls::Respond(const seccomp_notif& call, int error, uint32_t flags) {
  response_->id = call.id;
  response_->val = 0;
  response_->error = -error;
  response_->flags = flags;
  seccomp_notify_respond(listener_, response_.get());
}

}  // namespace vdrsim
