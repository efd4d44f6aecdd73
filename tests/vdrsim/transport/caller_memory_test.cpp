#include "transport/caller_memory.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <numeric>
#include <optional>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "caller.h"
#include "kernel.h"

namespace {

using transport_test::Caller;
using transport_test::Command;
using transport_test::SharedPages;
using transport_test::WatchedKernel;

constexpr size_t kPages = 150;  // more than are looked at at once

// Callers that have no other thread, and that have one: their memory is reached by different ways.
class CallerMemory : public testing::TestWithParam<bool> {
 protected:
  void Call() {
    if (GetParam()) std::thread([] { pause(); }).detach();
    mprotect(pages_.bytes().data() + Page(kPages - 1), Page(1), PROT_READ);
    Command(0);
    pause();
  }

  static size_t Page(size_t index) { return index * SharedPages::PageSize(); }

  static bool IsHeld() {
    return (GetParam() || transport_test::kHasSanitizersThread) && transport_test::KernelTells();
  }

  SharedPages pages_{kPages};
  Caller caller_{[this] { Call(); }};
  vdrsim::HeldUpCall& call_{caller_.Next()};
  vdrsim::CallerMemory memory_{call_};
};

TEST_P(CallerMemory, IsWritableWhereEveryPageIs) {
  EXPECT_TRUE(memory_.IsWritable(pages_.Address(5), Page(kPages - 1) - 5));
  EXPECT_FALSE(memory_.IsWritable(pages_.Address(5), Page(kPages - 1) - 4));
  EXPECT_FALSE(memory_.IsWritable(pages_.Address(Page(kPages - 1)), 1));
  EXPECT_TRUE(memory_.IsWritable(pages_.Address(Page(kPages - 1)), 0));
}

TEST_P(CallerMemory, IsAskedWithoutAChange) {
  std::vector<std::byte> before(Page(kPages));
  for (size_t index = 0; index < before.size(); ++index) {
    before[index] = std::byte(index + index / SharedPages::PageSize() * 7);
  }
  std::ranges::copy(before, pages_.bytes().begin());
  EXPECT_TRUE(memory_.IsWritable(pages_.Address(), Page(kPages - 1)));
  EXPECT_TRUE(std::ranges::equal(pages_.bytes(), before));
}

// The buffer may be smaller than a page, and the text may end with the last page that there is.
TEST_P(CallerMemory, IsReadAsATextThatFitsWithItsEnd) {
  const auto put = [this](size_t offset, const std::string& text) {
    std::memcpy(pages_.bytes().data() + offset, text.c_str(), text.size() + 1);
  };
  const auto read = [this](size_t offset, size_t room) {
    std::vector<char> buffer(room, 'x');
    return std::string(memory_.ReadText(pages_.Address(offset), buffer));
  };
  put(9, "seven ch");
  EXPECT_EQ(read(9, 9), "seven ch");
  EXPECT_EQ(read(9, 8), "");
  EXPECT_EQ(read(14, 9), " ch");
  EXPECT_EQ(read(500, 9), "") << "none is there";
  for (size_t before = 1; before <= 8; ++before) {
    put(Page(2) - before, "seven ch");
    EXPECT_EQ(read(Page(2) - before, 9), "seven ch") << before;
  }
  put(Page(kPages) - 6, "hello");
  EXPECT_EQ(read(Page(kPages) - 6, 100), "hello");
  pages_.bytes().back() = std::byte{'!'};
  EXPECT_EQ(read(Page(kPages) - 6, 6), "");
  std::vector<char> buffer(9);
  EXPECT_EQ(memory_.ReadText(8, buffer), "") << "nothing is there";
}

// The memory that a process of several threads has is held, so that no other comes in its place.
TEST_P(CallerMemory, IsHeldWhereTheCallerHasAnotherThread) {
  const std::string path = "/proc/" + std::to_string(caller_.process()) + "/mem";
  EXPECT_FALSE(transport_test::HasOpen(path));
  EXPECT_TRUE(memory_.IsWritable(pages_.Address(), 1));
  EXPECT_EQ(transport_test::HasOpen(path), IsHeld());
  vdrsim::CallerMemory other(call_);
  EXPECT_TRUE(other.Write({}));
  EXPECT_EQ(transport_test::HasOpen(path), IsHeld());
}

TEST_P(CallerMemory, EndsBeforeTheAddressesOfTheKernelAndDoesNotGoRound) {
  EXPECT_FALSE(memory_.IsWritable(UINT64_MAX - 7, 16));
  EXPECT_FALSE(memory_.IsWritable(UINT64_MAX, 1));
  EXPECT_FALSE(memory_.IsWritable(INT64_MAX, 1));
  EXPECT_TRUE(memory_.IsWritable(INT64_MAX, 0));
  EXPECT_FALSE(memory_.IsWritable(uint64_t{INT64_MAX} + 1, 0));
}

TEST_P(CallerMemory, IsWrittenInTheOrderOfThePatches) {
  const std::vector<std::byte> whole(Page(2), std::byte{1});
  const std::byte part{2};
  EXPECT_TRUE(
      memory_.Write({{pages_.Address(9), whole}, {pages_.Address(Page(1)), std::span(&part, 1)}}));
  EXPECT_EQ(pages_.bytes()[8], std::byte{0});
  EXPECT_EQ(pages_.bytes()[9], std::byte{1});
  EXPECT_EQ(pages_.bytes()[Page(1)], std::byte{2});
  EXPECT_EQ(pages_.bytes()[Page(2) + 8], std::byte{1});
  EXPECT_EQ(pages_.bytes()[Page(2) + 9], std::byte{0});
}

TEST_P(CallerMemory, IsNotWrittenWhereTheCallerItselfCannot) {
  const std::vector<std::byte> bytes(2);
  EXPECT_FALSE(memory_.Write({{pages_.Address(Page(kPages - 1) - 1), bytes}}));
  EXPECT_TRUE(memory_.Write({{pages_.Address(Page(kPages - 1) - 2), bytes}}));
}

// It may be another program's, which nobody has asked.
TEST_P(CallerMemory, IsNotWrittenWhenTheCallerDoesNotWaitAnyMore) {
  const std::byte byte{3};
  ASSERT_TRUE(memory_.Write({{pages_.Address(), std::span(&byte, 1)}}));
  call_.Return(0);
  EXPECT_FALSE(memory_.Write({{pages_.Address(1), std::span(&byte, 1)}}));
  EXPECT_EQ(pages_.bytes()[1], std::byte{0});
  EXPECT_FALSE(memory_.IsWritable(pages_.Address(), 1));
}

using Pieces = std::vector<std::vector<size_t>>;

// How long the pieces of each call are on the other side. On this side is room for them in one.
Pieces PiecesOfEach(transport_test::Kernel::Memory& place, const std::function<void()>& calls) {
  Pieces pieces;
  place = [&](pid_t, const iovec* local, unsigned long localCount, const iovec* remote,
              unsigned long remoteCount, unsigned long flags) {
    EXPECT_EQ(flags, 0);
    std::vector<size_t>& sizes = pieces.emplace_back();
    for (const iovec& piece : std::span(remote, remoteCount)) sizes.push_back(piece.iov_len);
    size_t room = 0;
    for (const iovec& piece : std::span(local, localCount)) room += piece.iov_len;
    EXPECT_EQ(room, std::accumulate(sizes.begin(), sizes.end(), size_t{0}));
    return std::optional<ssize_t>();
  };
  calls();
  place = {};
  return pieces;
}

TEST_P(CallerMemory, IsAskedForAtMost64PagesAtOnce) {
  const auto ask = [this] { EXPECT_TRUE(memory_.IsWritable(pages_.Address(5), Page(129) - 5)); };
  const std::vector<size_t> most(64, 1);
  const Pieces expected = IsHeld() ? Pieces{} : Pieces{most, most, {1}};
  const WatchedKernel kernel;
  EXPECT_EQ(PiecesOfEach(kernel->process_vm_readv, ask), expected);
  EXPECT_EQ(PiecesOfEach(kernel->process_vm_writev, ask), expected);
}

// And by none where nothing is asked for.
TEST_P(CallerMemory, IsReadByOneCall) {
  std::vector<char> text(100);
  std::vector<std::byte> bytes(2);
  const auto read = [&] {
    EXPECT_TRUE(memory_.Read(pages_.Address(), bytes));
    EXPECT_TRUE(memory_.Read(pages_.Address(), {}));
    EXPECT_EQ(memory_.ReadText(pages_.Address(Page(1) - 9), text), "");
  };
  const WatchedKernel kernel;
  EXPECT_EQ(PiecesOfEach(kernel->process_vm_readv, read), (Pieces{{2}, {9, 91}}));
}

// It takes a call of its own, so it is done once, and by the first thread alone.
TEST_P(CallerMemory, IsLookedAtOnceForOtherThreads) {
  int looks = 0;
  const WatchedKernel kernel;
  kernel->statx = [&](auto...) {
    ++looks;
    return std::optional<int>();
  };
  const std::byte byte{3};
  for (int round = 0; round < 2; ++round) {
    EXPECT_TRUE(memory_.Write({{pages_.Address(), std::span(&byte, 1)}}));
    EXPECT_EQ(looks, 1);
    EXPECT_TRUE(memory_.IsWritable(pages_.Address(), 1));
    EXPECT_EQ(looks, 1);
  }
  vdrsim::CallerMemory other(call_);
  EXPECT_TRUE(other.IsWritable(pages_.Address(), 1));
  EXPECT_EQ(looks, 2);
}

INSTANTIATE_TEST_SUITE_P(Callers, CallerMemory, testing::Bool(), [](const auto& hasThread) {
  return hasThread.param ? "BesideAThread" : "Alone";
});

TEST(CallerMemoryOfAThread, IsNotLookedAtForOthers) {
  const SharedPages pages(1);
  Caller caller([] { std::thread([] { Command(0); }).join(); });
  vdrsim::CallerMemory memory(caller.Next());
  const WatchedKernel kernel;
  kernel->statx = [&](auto...) {
    ADD_FAILURE();
    return std::optional<int>();
  };
  EXPECT_TRUE(memory.IsWritable(pages.Address(), 1));
}

}  // namespace
