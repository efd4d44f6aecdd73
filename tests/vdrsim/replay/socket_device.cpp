#include "socket_device.h"

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "datapath/datapath.h"
#include "in_process.h"

namespace replay_test {

namespace {

struct Asked {
  uint32_t code;
  uint32_t inputLength;
  uint32_t capacity;
};

struct Answered {
  int error;
  uint32_t length;
};

template <typename Content>
auto BytesOf(Content& content) {
  return std::as_writable_bytes(std::span(&content, 1));
}

bool Send(int socket, std::span<const std::byte> bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) return false;
    bytes = bytes.subspan(static_cast<size_t>(sent));
  }
  return true;
}

bool Receive(int socket, std::span<std::byte> bytes) {
  return bytes.empty() || recv(socket, bytes.data(), bytes.size(), MSG_WAITALL) ==
                              static_cast<ssize_t>(bytes.size());
}

// Until nobody asks any more.
[[noreturn]] void BeHost(int socket) {
  vdrsim::Datapath datapath;
  Asked asked{};
  while (Receive(socket, BytesOf(asked))) {
    wire::Bytes input(asked.inputLength);
    if (!Receive(socket, input)) break;
    const auto result = in_process::Execute(datapath, asked.code, input, asked.capacity);
    const auto length = static_cast<uint32_t>(result.reply.size());
    Answered answered{result.error, result.error == 0 ? length : asked.capacity};
    if (!Send(socket, BytesOf(answered)) || !Send(socket, result.reply)) break;
  }
  _exit(0);
}

}  // namespace

SocketDevice::SocketDevice() {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
    throw std::system_error(errno, std::generic_category(), "socketpair");
  }
  host_ = fork();
  if (host_ == 0) {
    close(ends[0]);
    BeHost(ends[1]);
  }
  close(ends[1]);
  socket_ = ends[0];
}

SocketDevice::~SocketDevice() {
  close(socket_);
  waitpid(host_, nullptr, 0);
}

vdrsim::HostDevice::Outcome SocketDevice::Command(vdrsim::Node /*node*/, uint32_t code,
                                                  std::span<const std::byte> input,
                                                  std::span<std::byte> room) noexcept {
  Asked asked{code, static_cast<uint32_t>(input.size()), static_cast<uint32_t>(room.size())};
  Answered answered{EPIPE, 0};
  const bool isAnswered =
      Send(socket_, BytesOf(asked)) && Send(socket_, input) && Receive(socket_, BytesOf(answered));
  if (!isAnswered || answered.error != 0) return {answered.error, answered.length};
  return {Receive(socket_, room.first(answered.length)) ? 0 : EPIPE, answered.length};
}

}  // namespace replay_test
