#include "transport/envelope.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "caller.h"
#include "kernel.h"
#include "wire.h"

namespace {

using transport_test::Caller;
using transport_test::Command;
using transport_test::SharedPages;
using wire::Wire;

constexpr size_t kRoom = 100;  // where the reply goes
constexpr uint32_t kCapacity = 6;

// A reply of five bytes, two at most at once. Another number may be promised than there are.
class Pieces final : public vdrsim::Reply::Source {
 public:
  explicit Pieces(size_t left = 5, uint32_t promised = 5) : left_(left), promised_(promised) {}

  uint32_t Prepare() override { return promised_; }

  std::span<const std::byte> Next() noexcept override {
    static const std::array kBytes{std::byte{0x11}, std::byte{0x11}};
    const auto piece = std::span(kBytes).first(std::min<size_t>(2, left_));
    left_ -= piece.size();
    return piece;
  }

 private:
  size_t left_;
  uint32_t promised_;
};

// A caller with an envelope at the beginning of a page and room for a reply behind it.
class Envelope : public testing::Test {
 protected:
  Envelope() {
    std::ranges::fill(page_.bytes(), std::byte{0xee});
    std::ranges::copy(Expected(kCapacity).bytes(), page_.bytes().begin());
    EXPECT_TRUE(envelope_.Read());
  }

  Wire Expected(uint32_t replyLength) const {
    return Wire(24).U32(0, 5).U64(4, 77).U32(12, replyLength).U64(16, page_.Address(kRoom));
  }

  int Deliver(std::unique_ptr<Pieces> pieces) {
    vdrsim::Answer answer{.reply = vdrsim::Reply(std::move(pieces))};
    answer.reply.Prepare();
    return envelope_.Deliver(answer);
  }

  int Deliver(uint32_t size, std::optional<uint32_t> claimed = {}) {
    vdrsim::Answer answer{.claimed = claimed};
    std::ranges::fill(answer.reply.Fill(size), std::byte{0x11});
    return envelope_.Deliver(answer);
  }

  // The whole page: the envelope and the reply, and nothing beside them.
  void ExpectChanged(uint32_t replyLength, size_t replySize) {
    wire::Bytes expected(page_.bytes().size(), std::byte{0xee});
    std::ranges::copy(Expected(replyLength).bytes(), expected.begin());
    std::fill_n(expected.begin() + kRoom, replySize, std::byte{0x11});
    const auto bytes = page_.bytes();
    EXPECT_EQ(wire::Difference({bytes.begin(), bytes.end()}, expected), "");
  }

  SharedPages page_{1};
  Caller caller_{[this] { Command(page_.Address()); }};
  vdrsim::HeldUpCall& call_{caller_.Next()};
  vdrsim::CallerMemory memory_{call_};
  vdrsim::Envelope envelope_{call_, memory_, page_.Address()};
};

TEST_F(Envelope, SaysWhatTheCallerWrote) {
  EXPECT_EQ(envelope_.inputLength(), 5U);
  EXPECT_EQ(envelope_.input(), 77U);
  EXPECT_EQ(envelope_.capacity(), kCapacity);
}

TEST(EnvelopeOfAnyone, SaysNumbersOfAnySize) {
  const SharedPages page(1);
  std::ranges::copy(
      Wire(24).U32(0, 0xf1f2f3f4).U64(4, 0xa1a2a3a4a5a6a7a8).U32(12, 0xe1e2e3e4).bytes(),
      page.bytes().begin());
  Caller caller([&] { Command(page.Address()); });
  vdrsim::HeldUpCall& call = caller.Next();
  vdrsim::CallerMemory memory(call);
  vdrsim::Envelope envelope(call, memory, page.Address());
  ASSERT_TRUE(envelope.Read());
  EXPECT_EQ(envelope.inputLength(), 0xf1f2f3f4);
  EXPECT_EQ(envelope.input(), 0xa1a2a3a4a5a6a7a8);
  EXPECT_EQ(envelope.capacity(), 0xe1e2e3e4);
}

TEST_F(Envelope, ChangesInItsLengthAlone) {
  EXPECT_EQ(Deliver(4), 0);
  ExpectChanged(4, 4);
}

// Whether its length can be written is seen by writing what it is, whole.
TEST_F(Envelope, IsAskedByItsWholeLength) {
  if (transport_test::kHasSanitizersThread) GTEST_SKIP() << "the sanitizer has a thread of its own";
  std::vector<size_t> sizes;
  const transport_test::WatchedKernel kernel;
  kernel->process_vm_writev = [&](pid_t, const iovec*, unsigned long, const iovec* remote,
                                  unsigned long count, unsigned long) {
    for (const iovec& piece : std::span(remote, count)) sizes.push_back(piece.iov_len);
    return std::optional<ssize_t>();
  };
  EXPECT_TRUE(envelope_.Takes(1));
  EXPECT_EQ(sizes, (std::vector<size_t>{4, 1}));
}

TEST_F(Envelope, TakesAReplyAndItsLengthInOneWrite) {
  if (transport_test::kHasSanitizersThread) GTEST_SKIP() << "the sanitizer has a thread of its own";
  int writes = 0;
  const transport_test::WatchedKernel kernel;
  kernel->process_vm_writev = [&](auto...) {
    ++writes;
    return std::optional<ssize_t>();
  };
  EXPECT_EQ(Deliver(4), 0);
  EXPECT_EQ(writes, 1);
  ExpectChanged(4, 4);
}

TEST_F(Envelope, TakesAReplyInPieces) {
  EXPECT_EQ(Deliver(std::make_unique<Pieces>()), 0);
  ExpectChanged(5, 5);
}

TEST_F(Envelope, TakesAReplyThatFillsTheRoom) {
  EXPECT_EQ(Deliver(kCapacity), 0);
  ExpectChanged(kCapacity, kCapacity);
}

TEST_F(Envelope, RefusesAReplyThatIsLongerThanTheRoom) {
  EXPECT_EQ(Deliver(kCapacity + 1), EINVAL);
  ExpectChanged(kCapacity, 0);
}

TEST_F(Envelope, TakesTheLengthThatIsClaimed) {
  EXPECT_EQ(Deliver(2, 1000), 0);
  ExpectChanged(1000, 2);
}

TEST_F(Envelope, IsAskedWithoutAChange) {
  EXPECT_TRUE(envelope_.Takes(kCapacity));
  ExpectChanged(kCapacity, 0);
}

// A device may have written before its caller was gone.
TEST_F(Envelope, TellsOfAReplyThatEndsTooEarly) {
  EXPECT_EQ(Deliver(std::make_unique<Pieces>(3)), EFAULT);
  ExpectChanged(kCapacity, 3);
}

TEST_F(Envelope, IsNeverWrittenBeyondWhatWasPromised) {
  EXPECT_EQ(Deliver(std::make_unique<Pieces>(4, 3)), 0);
  ExpectChanged(3, 3);
}

// What a command leaves as it is was written when it was judged, and need not be written any more.
TEST_F(Envelope, IsNotWrittenAgainWhereItStaysAsItWasWhenItWasJudged) {
  ASSERT_TRUE(envelope_.Takes(0));
  call_.Return(0);
  EXPECT_EQ(Deliver(0, kCapacity), 0);
  EXPECT_EQ(Deliver(0), EFAULT);
  EXPECT_EQ(Deliver(0, kCapacity - 1), EFAULT);
  EXPECT_EQ(Deliver(1, kCapacity), EFAULT);
  ExpectChanged(kCapacity, 0);
}

TEST_F(Envelope, IsWrittenWhereItWasNotJudged) {
  call_.Return(0);
  EXPECT_EQ(Deliver(0, kCapacity), EFAULT);
}

TEST_F(Envelope, IsWrittenAfterItWasJudged) {
  ASSERT_TRUE(envelope_.Takes(kCapacity));
  EXPECT_EQ(Deliver(4, kCapacity), 0);
  ExpectChanged(kCapacity, 4);
  EXPECT_EQ(Deliver(0), 0);
  ExpectChanged(0, 4);
}

// Three pages of reply, of which the caller can't write the second.
TEST(EnvelopeOfPages, GetsNothingBehindAPieceThatCannotBeWritten) {
  const size_t page = SharedPages::PageSize();
  class Pages final : public vdrsim::Reply::Source {
   public:
    uint32_t Prepare() override { return static_cast<uint32_t>(3 * page_.size()); }
    std::span<const std::byte> Next() noexcept override { return page_; }

   private:
    wire::Bytes page_{SharedPages::PageSize(), std::byte{0x11}};
  };
  SharedPages pages(4);
  const auto size = static_cast<uint32_t>(3 * page);
  std::ranges::copy(Wire(24).U32(12, size).U64(16, pages.Address(page)).bytes(),
                    pages.bytes().begin());
  Caller caller([&] {
    mprotect(pages.bytes().data() + 2 * page, page, PROT_READ);
    Command(pages.Address());
  });
  vdrsim::HeldUpCall& call = caller.Next();
  vdrsim::CallerMemory memory(call);
  vdrsim::Envelope envelope(call, memory, pages.Address());
  ASSERT_TRUE(envelope.Read());
  vdrsim::Answer answer{.reply = vdrsim::Reply(std::make_unique<Pages>())};
  answer.reply.Prepare();
  EXPECT_EQ(envelope.Deliver(answer), EFAULT);
  EXPECT_EQ(std::ranges::count(pages.bytes().subspan(page), std::byte{0x11}), page);
}

}  // namespace
