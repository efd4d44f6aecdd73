#include <gtest/gtest.h>
#include <vdrzax/route.h>

#include <algorithm>

#include "support/contract.h"

namespace {

using contract::Steps;

// Fields of a packed record may be unaligned, and an expectation takes its arguments by reference.
template <typename Number>
Number Copy(Number field) {
  return field;
}

const contract::ListGetter& DemuxRoutesGetter() { return getters::List("VDRZAX_GetDemuxRoutes"); }

fake::Bytes DecodedDemuxRoute(const fake::Bytes& source) {
  return wire::Decoded(source, {{0, 4}, {4, 4}, {8, 4}, {12, 8}, {20, 64, 't'}, {84, 64, 't'}});
}

TEST(DemuxRoutes, AllAreListedByTheContractOfAListGetter) {
  contract::ExpectListGetter(DemuxRoutesGetter());
}

TEST(DemuxRoutes, ARecordIsCopiedFieldByField) {
  const fake::Bytes source = wire::Pattern(148);
  const auto records = contract::DecodeAll(DemuxRoutesGetter(), source);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_BYTES(records[0], DecodedDemuxRoute(source));
}

TEST(DemuxRoutes, TheFieldsOfTheRecordAreWhereTheKernelPutsThem) {
  fake::Bytes source(148);
  for (std::size_t index = 0; index < 20; ++index) source[index] = static_cast<uint8_t>(index);
  source[20] = 'a';
  source[84] = 'b';
  fake::Device device;
  device.AnswerWith({.bytes = source});
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetDemuxRoutes(&list), 0);
  const auto* record = static_cast<const DemuxRouteRecord*>(list->entries);
  EXPECT_EQ(Copy(record->demuxWord0), 0x03020100u);
  EXPECT_EQ(Copy(record->demuxWord1), 0x07060504u);
  EXPECT_EQ(Copy(record->demuxWord2), 0x0B0A0908u);
  EXPECT_EQ(Copy(record->demuxQword), 0x131211100F0E0D0Cu);
  EXPECT_STREQ(record->demuxName1, "a");
  EXPECT_STREQ(record->demuxName2, "b");
  VDRZAX_ReleaseDemuxRoutes(list);
}

TEST(DemuxRoutes, AReplyOfNothingIsAListWithoutRecords) {
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetDemuxRoutes(&list), 0);
  EXPECT_EQ(list->count, 0);
  EXPECT_NE(list->entries, nullptr);
  VDRZAX_ReleaseDemuxRoutes(list);
}

TEST(DemuxRoutes, TheTableIsAskedForWith968ZeroBytes) {
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetDemuxRoutes(&list), 0);
  contract::ExpectSent(device, 173, fake::Bytes(968), 4440000);
  VDRZAX_ReleaseDemuxRoutes(list);
}

TEST(DemuxRoutes, ANameThatFillsItsFieldArrivesTerminated) {
  const auto records = contract::DecodeAll(DemuxRoutesGetter(), fake::Bytes(148, 'x'));
  ASSERT_EQ(records.size(), 1u);
  for (const std::size_t end : {83u, 147u}) {
    EXPECT_EQ(records[0][end - 1], 'x');
    EXPECT_EQ(records[0][end], 0);
  }
}

TEST(DemuxRoutes, BytesBehindATerminatorArriveAsZero) {
  fake::Bytes source = wire::Pattern(148);
  source[25] = source[84] = 0;
  const auto records = contract::DecodeAll(DemuxRoutesGetter(), source);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_BYTES(records[0], DecodedDemuxRoute(source));
}

TEST(DemuxRoutes, EveryRecordOfAFullTableIsCopiedFieldByField) {
  const auto records = contract::DecodeAll(DemuxRoutesGetter(), wire::Patterns(30000, 148));
  ASSERT_EQ(records.size(), 30000u);
  for (unsigned index = 0; index < 30000; ++index) {
    ASSERT_BYTES(records[index], DecodedDemuxRoute(wire::Pattern(148, index)));
  }
}

// A sanitizer sees what is read behind the table.
TEST(DemuxRoutes, APaddedNameAtTheEndOfAFullTableIsReadNoFurther) {
  fake::Bytes source = wire::Patterns(30000, 148);
  std::fill(source.end() - 20, source.end(), uint8_t{0});
  const auto records = contract::DecodeAll(DemuxRoutesGetter(), source);
  ASSERT_EQ(records.size(), 30000u);
  fake::Bytes expected(source.end() - 148, source.end());
  expected[83] = 0;  // the other name is cut
  EXPECT_BYTES(records[29999], expected);
}

TEST(DemuxRoutesDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_GetDemuxRoutes(nullptr), "");
}

}  // namespace
