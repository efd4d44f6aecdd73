#include "control/client.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

using vdrsim::control::Give;
using vdrsim::control::NotInARun;

namespace {

// How a device answers: what it writes, and how much it says that it is.
struct Said {
  std::string reply{};
  uint32_t length = static_cast<uint32_t>(reply.size());
  int error = 0;
};

// What is opened in the place of the node, and what has come to it.
struct Device {
  const char* file = "/proc/self/exe";
  std::vector<Said> answers{};
  std::string opened{};
  int flags = 0;
  std::vector<std::string> inputs{};
  std::vector<uint32_t> rooms{};
};

Device device;

template <typename Value>
Value At(const char* bytes, size_t offset) {
  Value value;
  std::memcpy(&value, bytes + offset, sizeof value);
  return value;
}

int Answer(char* envelope) {
  device.inputs.emplace_back(At<const char*>(envelope, 4), At<uint32_t>(envelope, 0));
  device.rooms.push_back(At<uint32_t>(envelope, 12));
  const size_t turn = device.rooms.size() - 1;
  if (turn >= device.answers.size()) ADD_FAILURE() << "asked once more";
  const Said said = turn < device.answers.size() ? device.answers[turn] : Said{.reply = {'\0'}};
  std::ranges::copy(said.reply, At<char*>(envelope, 16));
  std::memcpy(envelope + 12, &said.length, sizeof said.length);
  errno = said.error;
  return said.error == 0 ? 0 : -1;
}

}  // namespace

extern "C" {

int __real_open(const char* path, int flags, ...);

int __wrap_open(const char* path, int flags, ...) {
  device.opened = path;
  device.flags = flags;
  return __real_open(device.file, O_RDONLY | O_CLOEXEC);
}

int __wrap_ioctl(int, unsigned long request, ...) {
  EXPECT_EQ(request, 255);
  va_list arguments;
  va_start(arguments, request);
  char* const envelope = va_arg(arguments, char*);
  va_end(arguments);
  return Answer(envelope);
}
}

namespace {

class Client : public testing::Test {
 protected:
  Client() { device = {}; }

  static std::string GiveEcho() { return Give({.word = "echo", .body = "text"}); }

  static int ErrorOf(std::vector<Said> answers) {
    device = {.answers = std::move(answers)};
    try {
      (void)GiveEcho();
    } catch (const std::system_error& error) {
      return error.code().value();
    }
    return 0;
  }
};

// That a text needs so much room.
std::string TooLong(uint32_t wanted) {
  std::string reply(5, '\2');
  std::memcpy(reply.data() + 1, &wanted, sizeof wanted);
  return reply;
}

TEST_F(Client, GivesAnOrderToTheNormalNode) {
  device.answers = {{std::string("\0said", 5)}};
  EXPECT_EQ(GiveEcho(), "said");
  EXPECT_EQ(device.opened, "/qorv/devices/char/zaxdriver/ryn_vdr");
  EXPECT_EQ(device.flags, O_RDWR | O_CLOEXEC);
  EXPECT_EQ(device.inputs, std::vector{std::string("vdrsim control\n\0echo\0text", 25)});
  EXPECT_EQ(device.rooms, std::vector<uint32_t>{16777216});
}

TEST_F(Client, ThrowsWhatTheRunSays) {
  device.answers = {{"\1no"}};
  try {
    (void)GiveEcho();
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "no");
  }
}

TEST_F(Client, AsksAgainWithRoomForAnEighthMore) {
  device.answers = {{TooLong(16777232)}, {TooLong(18874387)}, {std::string("\0said", 5)}};
  EXPECT_EQ(GiveEcho(), "said");
  EXPECT_EQ(device.rooms, (std::vector<uint32_t>{16777216, 18874386, 21233685}));
}

TEST_F(Client, DoesNotAskForWhatItHadOrCannotName) {
  EXPECT_EQ(ErrorOf({{TooLong(16777216)}}), EFBIG);
  EXPECT_EQ(ErrorOf({{TooLong(4026531840)}}), EFBIG);
}

TEST_F(Client, RefusesRepliesThatNoRunGives) {
  EXPECT_EQ(ErrorOf({{.reply = "", .length = 0}}), EBADMSG);
  EXPECT_EQ(ErrorOf({{.reply = {'\0'}, .length = 16777217}}), EBADMSG);
  EXPECT_EQ(ErrorOf({{"\2\2\2\2"}}), EBADMSG);
  EXPECT_EQ(ErrorOf({{"\2\2\2\2\2\2"}}), EBADMSG);
}

TEST_F(Client, TakesAReplyThatFillsItsRoom) {
  device.answers = {{.reply = {'\0'}, .length = 16777216}};
  EXPECT_EQ(GiveEcho().size(), 16777215);
}

TEST_F(Client, IsInNoRunWhereTheNodeIsAbsentAPlainFileOrTheTrueDevice) {
  device.file = "/proc/self/absent";
  EXPECT_THROW(GiveEcho(), NotInARun);
  device.file = "/dev/null";
  EXPECT_THROW(GiveEcho(), NotInARun);
  EXPECT_EQ(device.rooms.size(), 0);
  device = {.answers = {{.error = ENOTTY}}};
  EXPECT_THROW(GiveEcho(), NotInARun);
}

TEST_F(Client, FailsAsTheCommandDoes) { EXPECT_EQ(ErrorOf({{.error = ENOMEM}}), ENOMEM); }

}  // namespace
