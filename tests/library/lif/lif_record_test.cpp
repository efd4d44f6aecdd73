#include <gtest/gtest.h>
#include <vdrzax/lif.h>

#include "support/contract.h"

namespace {

const contract::RecordGetter& LifGetter() { return getters::Record("VDRZAX_GetLif"); }

void SetCount(fake::Bytes& source, uint32_t count) {
  for (std::size_t index = 0; index < 4; ++index) {
    source[566 + index] = static_cast<uint8_t>(count >> (8 * index));
  }
}

fake::Bytes SourceWith(uint32_t count) {
  fake::Bytes source = wire::Pattern(961);
  SetCount(source, count);
  return source;
}

// The record as the copies make it, one after another: texts, numbers, the block, the entries, and
// what stands behind them.
fake::Bytes Copied(const fake::Bytes& source, std::size_t count) {
  fake::Bytes record = wire::Decoded(source, {{0, 64, 't'},
                                              {64, 64, 't'},
                                              {577, 128, 't'},
                                              {128, 12},
                                              {146, 12},
                                              {158, 4},
                                              {140, 4},
                                              {144, 2},
                                              {162, 164}});
  const auto copy = [&](std::size_t offset, std::size_t width) {
    for (std::size_t index = offset; index < offset + width; ++index) record[index] = source[index];
  };
  for (std::size_t entry = 0; entry < count; ++entry) {
    for (std::size_t word = 0; word < 5; ++word) copy(326 + 24 * entry + 4 * word, 4);
    copy(326 + 24 * entry + 20, 1);
  }
  copy(566, 4);
  copy(570, 1);
  copy(571, 1);
  copy(572, 4);
  copy(576, 1);
  return record;
}

void ExpectCopied(const fake::Bytes& source, std::size_t count) {
  SCOPED_TRACE(count);
  EXPECT_BYTES(contract::DecodeOne(LifGetter(), source), Copied(source, count));
}

TEST(LifRecord, EveryFieldIsCopiedAndTheThreeBytesBehindEachEntryStayZero) {
  const fake::Bytes source = SourceWith(10);
  EXPECT_BYTES(
      contract::DecodeOne(LifGetter(), source),
      wire::Decoded(
          source,
          {{0, 64, 't'}, {64, 64, 't'}, {128, 4},       {132, 4},  {136, 4},  {140, 4},  {144, 2},
           {146, 4},     {150, 4},      {154, 4},       {158, 1},  {159, 1},  {160, 1},  {161, 1},
           {162, 164},   {326, 21},     {350, 21},      {374, 21}, {398, 21}, {422, 21}, {446, 21},
           {470, 21},    {494, 21},     {518, 21},      {542, 21}, {566, 4},  {570, 1},  {571, 1},
           {572, 4},     {576, 1},      {577, 128, 't'}}));
}

TEST(LifRecord, OnlyAsManySubEntriesAsCountedAreCopied) {
  for (const uint32_t count : {0u, 1u, 2u, 9u, 10u}) ExpectCopied(SourceWith(count), count);
  const fake::Bytes one = contract::DecodeOne(LifGetter(), SourceWith(1));
  EXPECT_NE(one[346], 0);
  EXPECT_BYTES(fake::Bytes(one.begin() + 347, one.begin() + 566), fake::Bytes(219));
}

TEST(LifRecord, TheTrailing256BytesAndThoseBehindEachEntryAreZeroWhateverTheKernelSent) {
  fake::Bytes source(961, 0xFF);
  SetCount(source, 10);
  const fake::Bytes record = contract::DecodeOne(LifGetter(), source);
  for (std::size_t entry = 0; entry < 10; ++entry) {
    EXPECT_EQ(record[326 + 24 * entry + 20], 0xFF);
    for (std::size_t offset = 21; offset < 24; ++offset) {
      EXPECT_EQ(record[326 + 24 * entry + offset], 0);
    }
  }
  EXPECT_BYTES(fake::Bytes(record.begin() + 705, record.end()), fake::Bytes(256));
}

TEST(LifRecord, ATextThatFillsItsFieldArrivesTerminated) {
  fake::Bytes source(961, 'x');
  SetCount(source, 0);
  const fake::Bytes record = contract::DecodeOne(LifGetter(), source);
  for (const std::size_t end : {63u, 127u, 704u}) {
    EXPECT_EQ(record[end - 1], 'x');
    EXPECT_EQ(record[end], 0);
  }
}

TEST(LifRecord, BytesBehindATerminatorArriveAsZero) {
  fake::Bytes source = SourceWith(3);
  for (const std::size_t terminator : {5u, 64u, 600u}) source[terminator] = 0;
  const fake::Bytes record = contract::DecodeOne(LifGetter(), source);
  EXPECT_BYTES(record, Copied(source, 3));
  EXPECT_BYTES(fake::Bytes(record.begin() + 600, record.end()), fake::Bytes(361));
}

TEST(LifRecord, ElevenSubEntriesReachIntoTheDescription) {
  fake::Bytes source = SourceWith(11);
  source[577] = 0;
  ExpectCopied(source, 11);
  const fake::Bytes record = contract::DecodeOne(LifGetter(), source);
  EXPECT_EQ(record[566], 11);
  EXPECT_EQ(record[577], 0);
  EXPECT_EQ(record[578], source[578]);
  EXPECT_EQ(record[586], source[586]);
  EXPECT_NE(record[586], 0);
  EXPECT_BYTES(fake::Bytes(record.begin() + 587, record.end()), fake::Bytes(374));
}

TEST(LifRecord, BetweenTwoSubEntriesBeyondTheTenthTheDescriptionShows) {
  fake::Bytes source = SourceWith(12);
  ExpectCopied(source, 12);
  source[590] = 0;
  ExpectCopied(source, 12);
  const fake::Bytes record = contract::DecodeOne(LifGetter(), source);
  for (std::size_t offset = 587; offset < 590; ++offset) EXPECT_EQ(record[offset], source[offset]);
  EXPECT_EQ(record[591], source[591]);
  EXPECT_EQ(record[610], source[610]);
  EXPECT_EQ(record[611], 0);
}

TEST(LifRecord, ASubEntryOverTheEndOfTheDescriptionTakesItsTerminatorAway) {
  const fake::Bytes source = SourceWith(16);
  ExpectCopied(source, 16);
  const fake::Bytes record = contract::DecodeOne(LifGetter(), source);
  EXPECT_EQ(record[704], source[704]);
  EXPECT_EQ(record[706], source[706]);
  EXPECT_EQ(record[707], 0);
}

TEST(LifRecord, TwentySixSubEntriesStayInsideTheRecord) {
  for (const uint32_t count : {13u, 20u, 25u, 26u}) ExpectCopied(SourceWith(count), count);
  const fake::Bytes source = SourceWith(26);
  const fake::Bytes record = contract::DecodeOne(LifGetter(), source);
  EXPECT_EQ(record[926], source[926]);
  EXPECT_EQ(record[946], source[946]);
  EXPECT_BYTES(fake::Bytes(record.begin() + 947, record.end()), fake::Bytes(14));
}

TEST(LifRecordDeathTest, ACountOfTwoToThe31IsNotTakenForANegativeOne) {
  fake::Device device;
  device.AnswerWith({.bytes = SourceWith(0x80000000)});
  LifRecord* out = nullptr;
  EXPECT_DEATH(VDRZAX_GetLif("edge-1", "uplink", &out), "");
}

}  // namespace
