#include <gtest/gtest.h>
#include <vdrzax/route.h>

#include <algorithm>

#include "route/route_getters.h"
#include "support/contract.h"

namespace {

using route::ResolveGetter;
using route::RoutePattern;
using route::RoutesGetter;

// Fields of a packed record may be unaligned, and an expectation takes its arguments by reference.
template <typename Number>
Number Copy(Number field) {
  return field;
}

fake::Bytes RouteWithHops(uint8_t count) {
  fake::Bytes record = wire::Pattern(668);
  record[17] = count;
  return record;
}

fake::Bytes DecodedHop(const fake::Bytes& source) {
  return wire::Decoded(source, {{4, 4}, {8, 64, 't'}, {72, 8}});
}

// What is copied of the 668 bytes of a route: 18, 19 and the first four bytes of each slot are not,
// and no slot beyond the count.
fake::Bytes DecodedRoute(const fake::Bytes& source) {
  fake::Bytes record =
      wire::Decoded(source, {{0, 4}, {4, 4}, {8, 4}, {12, 4}, {16, 1}, {17, 1}, {20, 8}});
  for (std::ptrdiff_t hop = 0; hop < source[17]; ++hop) {
    const auto slot = source.begin() + 28 + 80 * hop;
    const fake::Bytes decoded = DecodedHop(fake::Bytes(slot, slot + 80));
    std::copy(decoded.begin(), decoded.end(), record.begin() + 28 + 80 * hop);
  }
  return record;
}

TEST(RouteRecord, ARecordIsCopiedFieldByFieldWithEachCountOfNextHops) {
  for (uint8_t count = 0; count <= 8; ++count) {
    SCOPED_TRACE(+count);
    const fake::Bytes source = RouteWithHops(count);
    EXPECT_BYTES(contract::DecodeOne(ResolveGetter(), source), DecodedRoute(source));
    const auto listed = contract::DecodeAll(RoutesGetter(), source);
    ASSERT_EQ(listed.size(), 1u);
    EXPECT_BYTES(listed[0], DecodedRoute(source));
  }
}

TEST(RouteRecord, TheFieldsOfTheRecordAreWhereTheKernelPutsThem) {
  fake::Bytes source(668);
  for (std::size_t index = 0; index < 28; ++index) source[index] = static_cast<uint8_t>(index);
  source[17] = 2;
  for (const std::size_t slot : {28u, 108u}) {
    source[slot + 4] = static_cast<uint8_t>(slot);
    source[slot + 8] = 'a';
    source[slot + 79] = static_cast<uint8_t>(slot + 1);
  }
  fake::Device device;
  device.AnswerWith({.bytes = source});
  RouteRecord* out = nullptr;
  ASSERT_EQ(VDRZAX_GetResolveRoute("e", 0, 0, 0, &out), 0);
  EXPECT_EQ(Copy(out->routeWord0), 0x03020100u);
  EXPECT_EQ(Copy(out->routeWord1), 0x07060504u);
  EXPECT_EQ(Copy(out->routeWord2), 0x0B0A0908u);
  EXPECT_EQ(Copy(out->routeWord3), 0x0F0E0D0Cu);
  EXPECT_EQ(Copy(out->routeByte), 0x10);
  EXPECT_EQ(Copy(out->nextHopCount), 2);
  EXPECT_EQ(Copy(out->routeQword), 0x1B1A191817161514u);
  EXPECT_EQ(Copy(out->nextHops[0].hopWord), 28u);
  EXPECT_STREQ(out->nextHops[0].hopName, "a");
  EXPECT_EQ(Copy(out->nextHops[0].hopQword), 29ull << 56);
  EXPECT_EQ(Copy(out->nextHops[1].hopWord), 108u);
  EXPECT_EQ(Copy(out->nextHops[1].hopQword), 109ull << 56);
  VDRZAX_ReleaseRoute(out);
}

TEST(RouteRecord, TheByteAt16AndTheCountAt17AreBothCopied) {
  fake::Bytes source(668);
  source[16] = 0x5A;
  source[17] = 3;
  source[18] = source[19] = 0xFF;
  const fake::Bytes record = contract::DecodeOne(ResolveGetter(), source);
  EXPECT_EQ(record[16], 0x5A);
  EXPECT_EQ(record[17], 3);
  EXPECT_EQ(record[18], 0);
  EXPECT_EQ(record[19], 0);
}

TEST(RouteRecord, ARecordWithoutNextHopsHasAllSlotsZero) {
  fake::Bytes source(668, 0xFF);
  source[17] = 0;
  const fake::Bytes record = contract::DecodeOne(ResolveGetter(), source);
  EXPECT_EQ(record[27], 0xFF);
  EXPECT_BYTES(fake::Bytes(record.begin() + 28, record.end()), fake::Bytes(640));
}

TEST(RouteRecord, ARecordWithTwoNextHopsHasSlots2To7Zero) {
  fake::Bytes source(668, 0xFF);
  source[17] = 2;
  const fake::Bytes record = contract::DecodeOne(ResolveGetter(), source);
  for (const std::size_t slot : {28u, 108u}) {
    EXPECT_EQ(record[slot + 3], 0);
    EXPECT_EQ(record[slot + 4], 0xFF);
    EXPECT_EQ(record[slot + 7], 0xFF);
    EXPECT_EQ(record[slot + 8], 0xFF);
    EXPECT_EQ(record[slot + 70], 0xFF);
    EXPECT_EQ(record[slot + 71], 0);
    EXPECT_EQ(record[slot + 72], 0xFF);
    EXPECT_EQ(record[slot + 79], 0xFF);
  }
  EXPECT_BYTES(fake::Bytes(record.begin() + 188, record.end()), fake::Bytes(480));
}

TEST(RouteRecord, TheEighthSlotEndsWithTheRecord) {
  const fake::Bytes record = contract::DecodeOne(ResolveGetter(), RouteWithHops(8));
  EXPECT_EQ(record[667], wire::Pattern(668)[667]);
}

TEST(RouteRecord, ANameOfANextHopThatFillsItsFieldArrivesTerminated) {
  fake::Bytes source(668, 'x');
  source[17] = 8;
  const fake::Bytes record = contract::DecodeOne(ResolveGetter(), source);
  for (const std::size_t end : {99u, 179u, 259u, 339u, 419u, 499u, 579u, 659u}) {
    EXPECT_EQ(record[end - 1], 'x');
    EXPECT_EQ(record[end], 0);
    EXPECT_EQ(record[end + 1], 'x');
  }
}

TEST(RouteRecord, BytesBehindTheTerminatorOfANextHopNameArriveAsZero) {
  fake::Bytes source = RouteWithHops(2);
  source[40] = source[116] = 0;
  EXPECT_BYTES(contract::DecodeOne(ResolveGetter(), source), DecodedRoute(source));
}

TEST(RouteRecord, EveryRecordOfAFullTableIsCopiedFieldByField) {
  const auto records =
      contract::DecodeAll(RoutesGetter(), wire::Patterns(20000, 668, RoutePattern));
  ASSERT_EQ(records.size(), 20000u);
  for (unsigned index = 0; index < 20000; ++index) {
    ASSERT_BYTES(records[index], DecodedRoute(RoutePattern(668, index)));
  }
}

TEST(RouteRecord, AReplyThatEndsInsideTheFourthRecordIsRefusedAsAWhole) {
  fake::Bytes reply = wire::Patterns(4, 668, RoutePattern);
  reply.resize(668 * 3 + 100);
  fake::Device device;
  device.AnswerWith({.bytes = reply});
  device.keepFreedContent = true;
  RecordList* list = nullptr;
  contract::ExpectFailure(device, [&] { return VDRZAX_GetRoutes("edge-1", &list); }, EBADMSG,
                          {"calloc(1, 16)", "malloc(13360000)", "open64", "ioctl", "close",
                           "calloc(20000, 668)", "free(13360000)", "free(16)", "free(13360000)"});
  EXPECT_EQ(list, nullptr);
  fake::Bytes expected;
  for (unsigned index = 0; index < 3; ++index) {
    const fake::Bytes record = DecodedRoute(RoutePattern(668, index));
    expected.insert(expected.end(), record.begin(), record.end());
  }
  expected.resize(13360000);
  ASSERT_FALSE(device.freed.empty());
  EXPECT_BYTES(device.freed[0].content, expected);
}

// The ninth slot lies on the record that follows, in the reply and in the list, and what it leaves
// there shows where the following record copies nothing.
TEST(RouteRecord, ACountOfNineIsTrustedAndCopiesPastTheRecord) {
  fake::Bytes first = RouteWithHops(9);
  fake::Bytes second = wire::Pattern(668, 2);
  second[17] = 1;
  fake::Bytes reply = first;
  reply.insert(reply.end(), second.begin(), second.end());
  const auto records = contract::DecodeAll(RoutesGetter(), reply);
  ASSERT_EQ(records.size(), 2u);

  fake::Bytes eight = DecodedRoute(RouteWithHops(8));
  eight[17] = 9;
  EXPECT_BYTES(records[0], eight);

  fake::Bytes expected = DecodedRoute(second);
  for (const std::size_t left : {18u, 19u, 28u, 29u, 30u, 31u}) expected[left] = second[left];
  EXPECT_BYTES(records[1], expected);
}

}  // namespace
