#include "transport/pinned_memory.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include "caller.h"
#include "failures.h"
#include "kernel.h"

namespace {

using transport_test::SharedPages;
using transport_test::WatchedKernel;
using vdrsim::PinnedMemory;

// The test's own: a page that can't be written, two that can, and one that can't.
class Pinned : public testing::Test {
 protected:
  void SetUp() override {
    if (!transport_test::KernelTells()) {
      EXPECT_FALSE(memory_);
      GTEST_SKIP() << "the kernel can't tell what may be written";
    }
    ASSERT_TRUE(memory_);
    for (const size_t page : {0UL, 3UL}) {
      ASSERT_EQ(mprotect(pages_.bytes().data() + page * kPage, kPage, PROT_READ), 0);
    }
    // Other rights make another map of the second page.
    ASSERT_EQ(mprotect(pages_.bytes().data() + kPage, kPage, PROT_WRITE), 0);
  }

  bool IsWritable(size_t begin, size_t end) const {
    return memory_->IsWritable(pages_.Address(begin), end - begin);
  }

  const size_t kPage = SharedPages::PageSize();
  SharedPages pages_{4};
  std::optional<PinnedMemory> memory_{PinnedMemory::Of(getpid())};
};

TEST_F(Pinned, IsWritableWhereEveryPageIs) {
  EXPECT_TRUE(IsWritable(kPage, 3 * kPage));
  EXPECT_TRUE(IsWritable(2 * kPage - 1, 2 * kPage + 1));
  EXPECT_FALSE(IsWritable(kPage - 1, kPage));
  EXPECT_FALSE(IsWritable(kPage - 1, kPage + 1));
  EXPECT_FALSE(IsWritable(kPage, 3 * kPage + 1));
  EXPECT_TRUE(IsWritable(0, 0));
}

TEST_F(Pinned, IsWrittenWhereItIsWritable) {
  const std::vector<std::byte> bytes(kPage + 1, std::byte{5});
  EXPECT_FALSE(memory_->Write(pages_.Address(2 * kPage), bytes));
  EXPECT_EQ(std::ranges::count(pages_.bytes(), std::byte{5}), 0);
  EXPECT_TRUE(memory_->Write(pages_.Address(2 * kPage - 1), bytes));
  EXPECT_TRUE(std::ranges::equal(pages_.bytes().subspan(2 * kPage - 1, kPage + 1), bytes));
  EXPECT_EQ(std::ranges::count(pages_.bytes(), std::byte{5}), kPage + 1);
}

// The whole question: its length, what is asked for and where, and room for the answer.
TEST_F(Pinned, IsAskedForInThirteenWords) {
  std::vector<std::array<uint64_t, 13>> asked;
  const WatchedKernel kernel;
  kernel->ioctl = [&](int, unsigned long request, void* question) {
    EXPECT_EQ(request, 0xc0686611);
    asked.emplace_back();
    std::memcpy(asked.back().data(), question, sizeof asked.back());
    return std::optional<int>();
  };
  EXPECT_TRUE(PinnedMemory::Of(getpid()));
  EXPECT_TRUE(IsWritable(kPage + 7, kPage + 9));
  EXPECT_EQ(asked, (std::vector<std::array<uint64_t, 13>>{{104, 2, 0},
                                                          {104, 2, pages_.Address(kPage + 7)}}));
}

TEST_F(Pinned, IsHeldByBothFilesOrNotAtAll) {
  const WatchedKernel kernel;
  for (const std::string_view file : {"/mem", "/maps"}) {
    kernel->open = transport_test::FailsToOpen(file, EMFILE);
    EXPECT_FALSE(PinnedMemory::Of(getpid())) << file;
  }
}

TEST_F(Pinned, LeadsToNothingThatIsNotThere) { EXPECT_FALSE(PinnedMemory::Of(-1)); }

}  // namespace
