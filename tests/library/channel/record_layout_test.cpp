#include "channel/record_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "channel/record_decoder.h"
#include "support/wire.h"

namespace {

using namespace vdrzax;

constexpr Field kPairRows[] = {U16("first", 0), U16("second", 2)};
constexpr RecordLayout kPair{"Pair", 4, kPairRows};

constexpr Field kGapRows[] = {U16("first", 0), U16("second", 3)};
constexpr Field kOverlapRows[] = {U32("first", 0), U16("second", 2)};
constexpr Field kSwappedRows[] = {U16("second", 2), U16("first", 0)};
constexpr Field kEmptyRows[] = {Bytes("nothing", 0, 0), U32("all", 0)};

TEST(RecordLayout, RowsThatTileTheRecordAreAccepted) { EXPECT_TRUE(Tiles(kPair)); }

TEST(RecordLayout, AGapAnOverlapAWrongOrderOrAnEmptyRowIsRefused) {
  EXPECT_FALSE(Tiles({"Gap", 5, kGapRows}));
  EXPECT_FALSE(Tiles({"Overlap", 4, kOverlapRows}));
  EXPECT_FALSE(Tiles({"Swapped", 4, kSwappedRows}));
  EXPECT_FALSE(Tiles({"Empty", 4, kEmptyRows}));
}

TEST(RecordLayout, ARecordOfAnotherSizeIsRefused) {
  EXPECT_FALSE(Tiles({"Short", 5, kPairRows}));
  EXPECT_FALSE(Tiles({"Long", 3, kPairRows}));
}

TEST(RecordLayout, ARowThatIsNoArrayIsOneElementAndHasNoCount) {
  for (const Field& row : {Text("text", 0, 64), Bytes("bytes", 0, 12), Mac("mac", 0),
                           Skipped("skipped", 0, 5), U32("number", 0)}) {
    EXPECT_EQ(row.elements, 1u) << row.name;
    EXPECT_EQ(row.ElementWidth(), row.width) << row.name;
    EXPECT_EQ(row.entry, nullptr) << row.name;
    EXPECT_EQ(row.countOffset, 0u) << row.name;
    EXPECT_EQ(row.countWidth, 0u) << row.name;
  }
}

TEST(RecordLayout, TheElementsOfAnArrayShareItsWidth) {
  const Field row = Numbers("words", 8, 4, 5);
  EXPECT_EQ(row.width, 20u);
  EXPECT_EQ(row.elements, 5u);
  EXPECT_EQ(row.ElementWidth(), 4u);
}

constexpr Field kEntryRows[] = {U16("value", 0), Skipped("skipped2", 2, 1)};
constexpr RecordLayout kEntry{"Entry", 3, kEntryRows};

constexpr Field kListRows[] = {
    U8("count", 0),      Entries("entries", 1, 2, kEntry, 0, 1),
    U8("byte7", 7),      U8("byte8", 8),
    Text("text9", 9, 4), Skipped("skipped13", 13, 3),
};
constexpr RecordLayout kList{"List", 16, kListRows};
static_assert(Tiles(kEntry) && Tiles(kList));

fake::Bytes Decode(const fake::Bytes& source, int32_t remaining) {
  fake::Bytes record(16);
  if (DecodeRecord<kList>(source.data(), remaining, record.data()) < 0) record.clear();
  return record;
}

TEST(RecordDecoder, OnlyAsManyEntriesAsTheCountAreCopied) {
  fake::Bytes source = {1, 11, 12, 13, 14, 15, 16, 17, 18, 'a', 'b', 'c', 'd', 19, 20, 21};
  EXPECT_BYTES(Decode(source, 16),
               (fake::Bytes{1, 11, 12, 0, 0, 0, 0, 17, 18, 'a', 'b', 'c', 0, 0, 0, 0}));
  source[0] = 2;
  EXPECT_BYTES(Decode(source, 16),
               (fake::Bytes{2, 11, 12, 0, 14, 15, 0, 17, 18, 'a', 'b', 'c', 0, 0, 0, 0}));
}

TEST(RecordDecoder, EntriesBeyondTheirArrayOverwriteTheDecodedRowsWithTheBytesOfTheReply) {
  const fake::Bytes source = {4, 11, 12, 13, 14, 15, 16, 17, 18, 0, 'b', 'c', 'd', 19, 20, 21};
  EXPECT_BYTES(Decode(source, 16),
               (fake::Bytes{4, 11, 12, 0, 14, 15, 0, 17, 18, 0, 'b', 'c', 0, 0, 0, 0}));
}

TEST(RecordDecoder, AShortReplyCopiesNothing) {
  const fake::Bytes source(16, 1);
  fake::Bytes record(16);
  for (const int32_t remaining : {15, 1, 0, -1, INT32_MIN}) {
    errno = 0;
    EXPECT_EQ(DecodeRecord<kList>(source.data(), remaining, record.data()), -1);
    EXPECT_EQ(errno, EBADMSG);
    EXPECT_BYTES(record, fake::Bytes(16));
  }
  EXPECT_EQ(DecodeRecord<kList>(source.data(), 17, record.data()), 16);
}

template <uint32_t kWidth>
constexpr Field kTextRows[] = {Text("text", 0, kWidth), U8("after", kWidth)};
template <uint32_t kWidth>
constexpr RecordLayout kTextRecord{"TextRecord", kWidth + 1, kTextRows<kWidth>};

// The text ends before `end`; when `stray` lies behind, a byte stands there that is none of it.
template <uint32_t kWidth>
void ExpectBounded(uint32_t end, uint32_t stray) {
  fake::Bytes source(kWidth + 1, 0);
  fake::Bytes expected(kWidth + 1, 0);
  for (uint32_t index = 0; index < end; ++index) source[index] = 'a';
  for (uint32_t index = 0; index < end && index + 1 < kWidth; ++index) expected[index] = 'a';
  if (stray < kWidth) source[stray] = 'x';
  source[kWidth] = expected[kWidth] = 'z';
  // Not zero, since entries that ran over may have left their bytes where the text goes.
  fake::Bytes record(kWidth + 1, 0xEE);
  DecodeRecord<kTextRecord<kWidth>>(source.data(), static_cast<int32_t>(kWidth + 1), record.data());
  EXPECT_BYTES(record, expected) << "width " << kWidth << ", end " << end << ", stray " << stray;
}

template <uint32_t... kWidths>
void ExpectBoundedAtEveryPlace(std::integer_sequence<uint32_t, kWidths...> /*widths*/) {
  const auto width = []<uint32_t kWidth>() {
    for (uint32_t end = 0; end <= kWidth; ++end) {
      ExpectBounded<kWidth>(end, kWidth);
      for (uint32_t stray = end + 1; stray < kWidth; ++stray) ExpectBounded<kWidth>(end, stray);
    }
  };
  (width.template operator()<kWidths>(), ...);
}

TEST(RecordDecoder, ATextIsCutAtItsTerminatorAndAtItsWidthWhereverBothAre) {
  ExpectBoundedAtEveryPlace(
      std::integer_sequence<uint32_t, 1, 4, 16, 17, 18, 32, 33, 48, 64, 81, 128>{});
}

constexpr Field kTextFirstRows[] = {Text("text", 0, 32), U8("after", 32)};
constexpr RecordLayout kTextFirst{"TextFirst", 33, kTextFirstRows};
constexpr Field kGapFirstRows[] = {Skipped("skipped", 0, 2), U8("after", 2)};
constexpr RecordLayout kGapFirst{"GapFirst", 3, kGapFirstRows};

TEST(RecordDecoder, OnlyRecordsOfNumbersAndBytesAreCopiedAsAnArray) {
  EXPECT_TRUE(decoder::IsPlain<kPair>());
  EXPECT_FALSE(decoder::IsPlain<kList>());
  EXPECT_FALSE(decoder::IsPlain<kEntry>());
  EXPECT_FALSE(decoder::IsPlain<kTextFirst>());
  EXPECT_FALSE(decoder::IsPlain<kGapFirst>());
}

TEST(RecordDecoder, NeighbouringRowsAreOneCopy) {
  const auto spans = [](const RecordLayout& layout) {
    std::vector<uint32_t> widths;
    for (std::size_t row = 0; row < layout.rows.size(); ++row) {
      widths.push_back(decoder::SpanFrom(layout, row));
    }
    return widths;
  };
  EXPECT_EQ(spans(kPair), (std::vector<uint32_t>{4, 0}));
  EXPECT_EQ(spans(kTextFirst), (std::vector<uint32_t>{0, 1}));
  EXPECT_EQ(spans(kGapFirst), (std::vector<uint32_t>{0, 1}));
  EXPECT_EQ(spans(kList), (std::vector<uint32_t>{1, 0, 2, 0, 0, 0}));
}

}  // namespace
