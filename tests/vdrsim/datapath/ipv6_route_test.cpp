#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <string_view>

#include "simulated.h"

namespace {

using in_process::Block;
using in_process::Difference;
using in_process::Execute;
using in_process::Result;
using in_process::Wire;

constexpr uint32_t kRoomForAll = 23280000;

Wire RouteBlock(uint64_t destination, uint8_t prefixLength, uint64_t gateway,
                std::string_view interface) {
  return Block("edge-1")
      .U64(260, destination)
      .U64(268, ~destination)
      .U8(276, prefixLength)
      .U64(293, gateway)
      .U64(301, ~gateway)
      .Text(309, interface);
}

Wire Record(uint64_t destination, uint8_t prefixLength, uint64_t gateway,
            std::string_view interface) {
  return Wire(776)
      .U64(0, destination)
      .U64(8, ~destination)
      .U8(16, prefixLength)
      .U8(17, 1)
      .U64(44, gateway)
      .U64(52, ~gateway)
      .Text(60, interface);
}

class SimulatedIpv6Routes : public in_process::Simulated {
 protected:
  SimulatedIpv6Routes() { EXPECT_EQ(Do(2, Block("edge-1")), 0); }

  Result List(uint32_t capacity = kRoomForAll) {
    return Execute(datapath_, 114, Block("edge-1"), capacity);
  }
  uint32_t Number() { return Execute(datapath_, 115, Block("edge-1"), 4).WordAt(0); }
};

TEST_F(SimulatedIpv6Routes, ARouteIsReadBackAsItWasSet) {
  EXPECT_EQ(Number(), 0U);
  ASSERT_EQ(Do(110, RouteBlock(0x0102030405060708, 0xfe, 0x1112131415161718, "uplink")), 0);
  EXPECT_EQ(Number(), 1U);
  EXPECT_EQ(Difference(List(), Record(0x0102030405060708, 0xfe, 0x1112131415161718, "uplink")), "");
}

TEST_F(SimulatedIpv6Routes, EachArgumentNamesIt) {
  const Wire blocks[] = {RouteBlock(1, 2, 3, "lan"), RouteBlock(1, 2, 3, ""),
                         RouteBlock(1, 2, 9, "lan"), RouteBlock(1, 9, 3, "lan"),
                         RouteBlock(9, 2, 3, "lan")};
  for (const Wire& block : blocks) ASSERT_EQ(Do(110, block), 0);
  ASSERT_EQ(Do(110, blocks[0]), 0) << "setting again makes no second one";
  EXPECT_EQ(Number(), 5U);
  for (const Wire& block : blocks) {
    ASSERT_EQ(Do(111, block), 0);
    EXPECT_EQ(Do(111, block), ENOENT);
  }
  EXPECT_EQ(Number(), 0U);
}

TEST_F(SimulatedIpv6Routes, TheyAreListedInTheOrderOfTheirBytes) {
  ASSERT_EQ(Do(110, RouteBlock(0x0200, 0, 0, "")), 0);
  ASSERT_EQ(Do(110, RouteBlock(0x0001, 0, 0, "")), 0);
  ASSERT_EQ(Do(110, RouteBlock(0x0200, 64, 0, "")), 0);
  const Result list = List();
  ASSERT_EQ(list.reply.size(), 3U * 776);
  EXPECT_EQ(list.WordAt(0), 0x0200U);
  EXPECT_EQ(list.WordAt(776), 0x0200U);
  EXPECT_EQ(list.reply[776 + 16], std::byte{64});
  EXPECT_EQ(list.WordAt(1552), 0x0001U);
}

TEST_F(SimulatedIpv6Routes, WhatIsNotNamedOrNotThereIsRefused) {
  ASSERT_EQ(Do(110, RouteBlock(1, 2, 3, "lan")), 0);
  const vdrsim::State before = datapath_.state();
  const std::string unterminated(64, 'n');
  for (const uint32_t code : {110U, 111U, 114U, 115U}) {
    SCOPED_TRACE(code);
    EXPECT_EQ(Execute(datapath_, code, Block(), 4).error, EINVAL);
    EXPECT_EQ(Execute(datapath_, code, Block(unterminated), 4).error, EINVAL);
    EXPECT_EQ(Execute(datapath_, code, Block("edge-2"), 4).error, ENOENT);
  }
  EXPECT_EQ(Do(110, RouteBlock(1, 2, 3, unterminated)), EINVAL);
  EXPECT_EQ(Do(111, RouteBlock(1, 2, 3, unterminated)), EINVAL);
  EXPECT_EQ(List(775).error, EINVAL);
  EXPECT_EQ(datapath_.state(), before);
}

TEST_F(SimulatedIpv6Routes, TheyDieWithTheirInstance) {
  ASSERT_EQ(Do(110, RouteBlock(1, 2, 3, "lan")), 0);
  ASSERT_EQ(Do(3, Block("edge-1")), 0);
  ASSERT_EQ(Do(2, Block("edge-1")), 0);
  EXPECT_EQ(Number(), 0U);
  EXPECT_TRUE(List().reply.empty());
}

TEST_F(SimulatedIpv6Routes, AnInstanceHasRoomForAsManyAsTheLibraryCanRead) {
  for (uint32_t number = 0; number < 29999; ++number) {
    ASSERT_EQ(Do(110, RouteBlock(number, 0, 0, "")), 0) << number;
  }
  EXPECT_EQ(Do(110, RouteBlock(29999, 0, 0, "")), ENOSPC);
  EXPECT_EQ(Do(110, RouteBlock(77, 0, 0, "")), 0) << "one that is there needs no room";
  EXPECT_EQ(Number(), 29999U);
  EXPECT_EQ(List().reply.size(), 29999U * 776);
}

}  // namespace
