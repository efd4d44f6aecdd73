#include "control/control.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "control/message.h"
#include "in_process.h"

namespace {

using in_process::Bytes;
using in_process::Result;

// "vdrsim control", a line feed and a zero; the word, a zero; the body.
Bytes Input(const std::string& rest) {
  const std::string text = std::string("vdrsim control\n\0", 16) + rest;
  const auto bytes = std::as_bytes(std::span(text));
  return {bytes.begin(), bytes.end()};
}

class Next final : public vdrsim::Executor {
 public:
  vdrsim::Answer Execute(const vdrsim::Call& call) noexcept override {
    ++calls;
    lastCode = call.code;
    return {.error = ENOTTY};
  }

  int calls = 0;
  uint32_t lastCode = 0;
};

class Control : public testing::Test {
 protected:
  Control() {
    control_.On("echo", [](std::string_view body) { return std::string(body); });
    control_.On("refuse", [](std::string_view) -> std::string { throw std::runtime_error("no"); });
    control_.On("starve", [](std::string_view) -> std::string { throw std::bad_alloc(); });
  }

  std::string Give(const std::string& order, uint32_t capacity = 1000) {
    const Result result = in_process::Execute(control_, 255, Input(order), capacity);
    EXPECT_EQ(result.error, 0);
    return {reinterpret_cast<const char*>(result.reply.data()), result.reply.size()};
  }

  Next next_{};
  vdrsim::Control control_{next_};
};

TEST_F(Control, SaysWhatAnActionSays) {
  EXPECT_EQ(Give(std::string("echo\0text", 9)), std::string("\0text", 5));
  EXPECT_EQ(Give(std::string("echo\0", 5)), std::string("\0", 1));
  EXPECT_EQ(next_.calls, 0) << "no other link sees it";
}

TEST_F(Control, SaysWhyAnActionFailed) {
  EXPECT_EQ(Give(std::string("refuse\0", 7)), "\1no");
  EXPECT_EQ(Give(std::string("sing\0", 5)), "\1a run of this kind has no 'sing'");
}

TEST_F(Control, SaysHowMuchRoomALongTextNeeds) {
  const std::string order = std::string("echo\0", 5) + std::string(999, 'x');
  EXPECT_EQ(Give(order, 1000), std::string(1, '\0') + std::string(999, 'x'));
  EXPECT_EQ(Give(order, 999), std::string("\2\xe8\3\0\0", 5));
}

TEST_F(Control, SaysLongTextsInPieces) {
  const std::string text(1000000, 'y');
  EXPECT_EQ(Give(std::string("echo\0", 5) + text, 2000000), std::string(1, '\0') + text);
}

TEST_F(Control, WithoutMemoryFails) {
  const Bytes input = Input(std::string("starve\0", 7));
  EXPECT_EQ(in_process::Execute(control_, 255, input, 1000).error, ENOMEM);
}

TEST_F(Control, HandsEverythingElseOn) {
  in_process::Execute(control_, 254, Input(std::string("echo\0", 5)));
  EXPECT_EQ(next_.lastCode, 254);
  in_process::Execute(control_, 255, in_process::Block("echo"));
  EXPECT_EQ(next_.lastCode, 255);
  in_process::Execute(control_, 255, Input("echo"));
  in_process::Execute(control_, 255, {});
  EXPECT_EQ(next_.calls, 4);
}

TEST_F(Control, CarriesOneOutAtATime) {
  std::atomic<int> inside = 0;
  control_.On("count", [&](std::string_view) -> std::string {
    EXPECT_EQ(inside++, 0);
    std::this_thread::yield();
    EXPECT_EQ(--inside, 0);
    return "";
  });
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&] {
      for (int round = 0; round < 1000; ++round) Give(std::string("count\0", 6));
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST_F(Control, UnderstandsWhatTheClientEncodes) {
  const std::string encoded = vdrsim::control::Encode({.word = "echo", .body = "text"});
  const auto bytes = std::as_bytes(std::span(encoded));
  const Bytes expected = Input(std::string("echo\0text", 9));
  EXPECT_TRUE(std::ranges::equal(bytes, expected));
}

}  // namespace
