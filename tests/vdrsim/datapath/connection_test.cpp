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

constexpr uint32_t kAmpleRoom = 131072;

class SimulatedConnections : public in_process::Simulated {
 protected:
  Result Get(uint32_t code, const Wire& block) {
    return Execute(datapath_, code, block, kAmpleRoom);
  }
};

Wire Named(std::string_view name) { return Block().Text(256, name); }

Wire Full(std::string_view name) {
  return Named(name)
      .Text(320, std::string(15, '2'))
      .Text(336, std::string(17, '4'))
      .Text(354, std::string(31, '5'))
      .Text(386, std::string(255, '6'))
      .U32(644, 0x01020304);
}

Wire Shown(size_t size, std::string_view name) {
  return Wire(size)
      .Text(0, name)
      .Text(64, std::string(15, '2'))
      .Text(80, std::string(17, '4'))
      .Text(98, std::string(31, '5'))
      .U32(130, 0x01020304)
      .Text(134, std::string_view("\x02\x00\x04\x03\x02\x01", 6));
}

TEST_F(SimulatedConnections, OneAloneHasRoomForTheBeginningOfItsLongestText) {
  ASSERT_EQ(Do(15, Full("conn-1")), 0);
  EXPECT_EQ(Difference(Get(18, Named("conn-1")), Shown(152, "conn-1").Text(140, "66666666666")),
            "");
  EXPECT_EQ(Difference(Get(149, Named("conn-1")),
                       Wire(6).Text(0, std::string_view("\x02\x00\x04\x03\x02\x01", 6))),
            "");
}

TEST_F(SimulatedConnections, TheListShowsAllThatWasSet) {
  EXPECT_EQ(Difference(Get(17, Block()), Wire(0)), "");
  ASSERT_EQ(Do(15, Named("conn-2")), 0);
  ASSERT_EQ(Do(15, Full("conn-1")), 0);
  Wire both = Shown(800, "conn-1").Text(140, std::string(255, '6')).Text(400, "conn-2");
  EXPECT_EQ(Difference(Get(17, Block()), both.U8(534, 2)), "");
  ASSERT_EQ(Do(15, Named("conn-1")), 0);
  ASSERT_EQ(Do(16, Named("conn-2")), 0);
  EXPECT_EQ(Difference(Get(17, Block()), Wire(400).Text(0, "conn-1").U8(134, 2)), "");
}

TEST_F(SimulatedConnections, WhatIsNotNamedOrNotThereIsRefused) {
  for (const uint32_t code : {16U, 18U, 149U}) {
    EXPECT_EQ(Get(code, Named("conn-1")).error, ENOENT) << code;
  }
  for (const uint32_t code : {15U, 16U, 18U, 149U}) {
    EXPECT_EQ(Get(code, Named("")).error, EINVAL) << code;
    EXPECT_EQ(Get(code, Named(std::string(64, 'n'))).error, EINVAL) << code;
  }
  EXPECT_EQ(datapath_.state(), vdrsim::State{});
}

TEST_F(SimulatedConnections, ThereIsRoomFor327) {
  for (int number = 0; number < 327; ++number) {
    ASSERT_EQ(Do(15, Named("conn-" + std::to_string(number))), 0);
  }
  EXPECT_EQ(Do(15, Named("one too many")), ENOSPC);
  EXPECT_EQ(Do(15, Named("conn-7")), 0) << "an update needs no room";
  EXPECT_EQ(Get(17, Block()).reply.size(), 130800U);
}

TEST_F(SimulatedConnections, NoneIsEverStillToBeDeleted) {
  ASSERT_EQ(Do(15, Named("conn-1")), 0);
  ASSERT_EQ(Do(16, Named("conn-1")), 0);
  EXPECT_EQ(Difference(Execute(datapath_, 85, {}, 4), Wire(4)), "");
}

class SimulatedControlPlane : public SimulatedConnections {
 protected:
  SimulatedControlPlane() { EXPECT_EQ(Do(2, Block("edge-1")), 0); }
};

TEST_F(SimulatedControlPlane, TheStateOfItsSyncShowsFiveTimes) {
  Wire entries(1420);
  for (size_t index = 0; index < 5; ++index) entries.U64(index * 284, index);
  EXPECT_EQ(Difference(Get(87, Block("edge-1")), entries), "");
  ASSERT_EQ(Do(88, Block("edge-1").U32(256, 0x01020304)), 0);
  ASSERT_EQ(Execute(datapath_, 7, in_process::Scalar(0x05060708)).error, 0);
  for (size_t index = 0; index < 5; ++index) {
    entries.U32(index * 284 + 8, 0x01020304).U32(index * 284 + 12, 0x05060708);
  }
  EXPECT_EQ(Difference(Get(87, Block("edge-1")), entries), "");
}

TEST_F(SimulatedControlPlane, ItsAddressShowsInTheInstance) {
  ASSERT_EQ(Do(8, Block("edge-1").U32(328, 0x0a000001)), 0);
  EXPECT_EQ(Difference(Get(1, Block("edge-1")), Wire(577).Text(0, "edge-1").U32(403, 0x0a000001)),
            "");
}

TEST_F(SimulatedControlPlane, AnUnknownInstanceHasNone) {
  for (const uint32_t code : {8U, 87U, 88U}) {
    EXPECT_EQ(Get(code, Block("edge-2")).error, ENOENT) << code;
    EXPECT_EQ(Get(code, Block()).error, EINVAL) << code;
  }
}

}  // namespace
