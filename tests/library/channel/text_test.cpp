#include "channel/text.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "support/wire.h"

namespace {

using namespace vdrzax;

// A page between two that fault when they are touched.
class GuardedPage {
 public:
  GuardedPage() {
    void* pages = mmap(nullptr, 3 * size_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    EXPECT_NE(pages, MAP_FAILED);
    begin_ = static_cast<uint8_t*>(pages) + size_;
    EXPECT_EQ(mprotect(begin_, size_, PROT_READ | PROT_WRITE), 0);
  }
  ~GuardedPage() { munmap(begin_ - size_, 3 * size_); }
  GuardedPage(const GuardedPage&) = delete;

  uint8_t* First() const { return begin_; }
  uint8_t* Last(std::size_t width) const { return begin_ + size_ - width; }

 private:
  std::size_t size_ = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  uint8_t* begin_;
};

struct Pages {
  GuardedPage source;
  GuardedPage destination;
};

// Zeros up to the end of the field, or whatever was there before.
enum class Behind { Zeros, Junk };

void FillField(uint8_t* field, std::size_t width, std::size_t end, Behind behind) {
  std::memset(field, behind == Behind::Zeros ? 0 : 0x80, width);
  // No byte is like its neighbour, and the upper half of them is negative as a char.
  for (std::size_t index = 0; index < end; ++index) {
    field[index] = static_cast<uint8_t>(1 + index % 255);
  }
  if (end < width) field[end] = 0;
}

fake::Bytes Bounded(const uint8_t* field, std::size_t width) {
  fake::Bytes expected(width);
  auto* text = reinterpret_cast<char*>(expected.data());
  std::strncpy(text, reinterpret_cast<const char*>(field), width);
  text[width - 1] = 0;
  return expected;
}

template <std::size_t kWidth>
void ExpectBounded(const uint8_t* source, uint8_t* destination, std::size_t end) {
  std::memset(destination, 0xEE, kWidth);
  CopyTextField<kWidth>(destination, source);
  const fake::Bytes expected = Bounded(source, kWidth);
  if (!std::equal(expected.begin(), expected.end(), destination)) {
    ADD_FAILURE() << "width " << kWidth << ", terminator at " << end;
  }
}

template <std::size_t kWidth>
void ExpectBoundedAtEveryPlace(const Pages& pages) {
  for (std::size_t end = 0; end <= kWidth; ++end) {
    for (const Behind behind : {Behind::Zeros, Behind::Junk}) {
      FillField(pages.source.First(), kWidth, end, behind);
      FillField(pages.source.Last(kWidth), kWidth, end, behind);
      ExpectBounded<kWidth>(pages.source.First(), pages.destination.Last(kWidth), end);
      ExpectBounded<kWidth>(pages.source.Last(kWidth), pages.destination.First(), end);
    }
  }
}

template <std::size_t... kIndex>
void ExpectBoundedAtEveryWidth(const Pages& pages, std::index_sequence<kIndex...> /*indices*/) {
  (ExpectBoundedAtEveryPlace<kIndex + 1>(pages), ...);
}

TEST(Text, AFieldIsCopiedAsStrncpyWouldWhateverItsWidthAndWhereverItEnds) {
  ExpectBoundedAtEveryWidth(Pages{}, std::make_index_sequence<kWidestText>{});
}

TEST(Text, NothingAroundTheFieldIsWritten) {
  const fake::Bytes source(81, 'a');
  fake::Bytes destination(16 + 81 + 16, 0xEE);
  CopyTextField<81>(destination.data() + 16, source.data());
  fake::Bytes expected(16 + 81 + 16, 0xEE);
  std::fill_n(expected.begin() + 16, 80, 'a');
  expected[16 + 80] = 0;
  EXPECT_BYTES(destination, expected);
}

template <std::size_t kWidth>
void ExpectOneLength() {
  for (std::size_t end = 0; end <= kWidth; ++end) {
    uint8_t field[kWidth];
    FillField(field, kWidth, end, Behind::Junk);
    const std::size_t length = std::min(end, kWidth - 1);
    EXPECT_EQ(lanes::Length<kWidth>(field), length) << "width " << kWidth;
    EXPECT_EQ(lanes::LengthByLibc<kWidth>(field), length) << "width " << kWidth;
  }
}

TEST(Text, ItsLengthIsTheSameWithoutInstructionsOfTheProcessor) {
  ExpectOneLength<16>();
  ExpectOneLength<48>();
  ExpectOneLength<81>();
  ExpectOneLength<256>();
}

}  // namespace
