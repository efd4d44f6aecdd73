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

Wire EndpointBlock(std::string_view lif, std::string_view name) {
  return Wire(968).Text(320, name).Text(384, lif);
}

// One with a value in each of its fields.
Wire FullBlock(std::string_view lif, std::string_view name) {
  return EndpointBlock(lif, name)
      .Text(256, "second")
      .Text(448, "fourth")
      .U32(544, 0x01020304)
      .U32(548, 0x05060708)
      .U16(720, 0x090a)
      .Text(722, "fifth")
      .U8(786, 0x0b)
      .U8(787, 0x0c);
}

Wire FullRecord(std::string_view name) {
  return Wire(235)
      .Text(64, name)
      .U16(128, 0x090a)
      .U8(130, 0x0b)
      .U32(131, 0x01020304)
      .U32(135, 0x05060708)
      .Text(139, "second")
      .U8(203, 0x0c);
}

class SimulatedEndpoints : public in_process::Simulated {
 protected:
  SimulatedEndpoints() {
    EXPECT_EQ(Do(2, Block("edge-1")), 0);
    EXPECT_EQ(Do(57, Block("edge-1").Text(384, "bridged")), 0);
  }

  Result List(std::string_view instance = "") {
    return Execute(datapath_, 95, Block(instance), 28672 * 235);
  }
  Result Stats() { return Execute(datapath_, 50, EndpointBlock("bridged", ""), 146); }
  Result Status() { return Execute(datapath_, 51, EndpointBlock("bridged", ""), 229); }
  Result All() { return Execute(datapath_, 52, Block(), 28672 * 235); }
};

TEST_F(SimulatedEndpoints, AnEndpointIsReadBackAsItWasSet) {
  ASSERT_EQ(Do(45, FullBlock("bridged", "end")), 0);
  EXPECT_EQ(Difference(List(), FullRecord("end")), "");
  EXPECT_EQ(Difference(List("edge-1"), FullRecord("end")), "");
  EXPECT_EQ(Difference(All(), Wire(235)
                                  .Text(0, "end")
                                  .Text(64, "bridged")
                                  .Text(128, "second")
                                  .U32(192, 0x01020304)
                                  .U32(196, 0x05060708)
                                  .U16(200, 0x090a)
                                  .U8(202, 0x0b)
                                  .U8(203, 0x0c)),
            "");
  EXPECT_EQ(Difference(Status(), Wire(229)
                                     .Text(0, "end")
                                     .Text(64, "fourth")
                                     .Text(128, "fifth")
                                     .U32(192, 0x01020304)
                                     .U32(196, 0x05060708)
                                     .U16(200, 0x090a)
                                     .U8(202, 0x0b)
                                     .U8(203, 0x0c)),
            "");
}

TEST_F(SimulatedEndpoints, SettingAgainUpdates) {
  ASSERT_EQ(Do(45, FullBlock("bridged", "end")), 0);
  ASSERT_EQ(Do(45, EndpointBlock("bridged", "end").U32(548, 5)), 0);
  EXPECT_EQ(Difference(List(), Wire(235).Text(64, "end").U32(135, 5)), "");
  EXPECT_EQ(Difference(Status(), Wire(229).Text(0, "end").U32(196, 5)), "");
}

TEST_F(SimulatedEndpoints, ALifAloneMeansTheFirstOfItsEndpoints) {
  ASSERT_EQ(Do(45, EndpointBlock("bridged", "end-2")), 0);
  EXPECT_EQ(Status().TextAt(0), "end-2");
  ASSERT_EQ(Do(45, EndpointBlock("bridged", "end-1")), 0);
  EXPECT_EQ(Status().TextAt(0), "end-1");
  EXPECT_EQ(Stats().TextAt(0), "end-1");
}

TEST_F(SimulatedEndpoints, WhatACommandDoesToOneIsCounted) {
  ASSERT_EQ(Do(45, EndpointBlock("bridged", "end")), 0);
  ASSERT_EQ(Do(45, EndpointBlock("bridged", "end")), 0);
  for (int lookup = 0; lookup < 3; ++lookup) ASSERT_EQ(Status().error, 0);
  const Wire counted = Wire(146).Text(0, "end").U64(64, 2).U64(80, 3);
  EXPECT_EQ(Difference(Stats(), counted), "");
  EXPECT_EQ(Difference(Stats(), counted), "") << "looking at them changes nothing";
}

TEST_F(SimulatedEndpoints, ListsComeInTheOrderOfInstancesLifsAndNames) {
  ASSERT_EQ(Do(2, Block("edge-0")), 0);
  ASSERT_EQ(Do(57, Block("edge-0").Text(384, "elsewhere")), 0);
  ASSERT_EQ(Do(57, Block("edge-1").Text(384, "a-lif")), 0);
  ASSERT_EQ(Do(45, EndpointBlock("bridged", "d")), 0);
  ASSERT_EQ(Do(45, EndpointBlock("bridged", "c")), 0);
  ASSERT_EQ(Do(45, EndpointBlock("a-lif", "z")), 0);
  ASSERT_EQ(Do(45, EndpointBlock("elsewhere", "x")), 0);
  const auto names = [](const Result& list, size_t offset) {
    std::string all;
    for (size_t at = 0; at < list.reply.size(); at += 235) all += list.TextAt(at + offset);
    return all;
  };
  EXPECT_EQ(names(List(), 64), "xzcd");
  EXPECT_EQ(names(All(), 0), "xzcd");
  EXPECT_EQ(names(List("edge-0"), 64), "x");
  EXPECT_EQ(names(List("edge-1"), 64), "zcd");
}

TEST_F(SimulatedEndpoints, TheFirstInstanceWithABridgeLifOfThatNameIsMeant) {
  for (const char* instance : {"edge-0", "edge-2"}) {
    ASSERT_EQ(Do(2, Block(instance)), 0);
    ASSERT_EQ(Do(57, Block(instance).Text(384, "bridged")), 0);
  }
  ASSERT_EQ(Do(19, Block("edge-0").Text(384, "lone")), 0);
  ASSERT_EQ(Do(45, EndpointBlock("bridged", "end")), 0);
  EXPECT_EQ(List("edge-0").reply.size(), 235U);
  EXPECT_EQ(List("edge-1").reply.size(), 0U);
  EXPECT_EQ(Do(45, EndpointBlock("lone", "end")), ENOENT) << "it is no bridge LIF";
}

TEST_F(SimulatedEndpoints, TheyDieWithTheirLif) {
  ASSERT_EQ(Do(45, EndpointBlock("bridged", "end")), 0);
  ASSERT_EQ(Do(57, Block("edge-1").Text(384, "bridged").U32(544, 1)), 0) << "an update";
  EXPECT_EQ(List().reply.size(), 235U);
  ASSERT_EQ(Do(58, Block("edge-1").Text(384, "bridged")), 0);
  EXPECT_EQ(Difference(List(), Wire(0)), "");
  EXPECT_EQ(Status().error, ENOENT);
  ASSERT_EQ(Do(57, Block("edge-1").Text(384, "bridged")), 0);
  EXPECT_EQ(Difference(List(), Wire(0)), "");
}

TEST_F(SimulatedEndpoints, WhatIsNotNamedOrNotThereIsRefused) {
  const std::string unterminated(64, 'n');
  const vdrsim::State before = datapath_.state();
  for (const uint32_t code : {46U, 50U, 51U}) {
    EXPECT_EQ(Execute(datapath_, code, EndpointBlock("", "end"), 229).error, EINVAL);
    EXPECT_EQ(Execute(datapath_, code, EndpointBlock(unterminated, "end"), 229).error, EINVAL);
    EXPECT_EQ(Execute(datapath_, code, EndpointBlock("uplink", "end"), 229).error, ENOENT);
    EXPECT_EQ(Execute(datapath_, code, EndpointBlock("bridged", "end"), 229).error, ENOENT);
  }
  EXPECT_EQ(Do(45, EndpointBlock("", "end")), EINVAL);
  EXPECT_EQ(Do(45, EndpointBlock("uplink", "end")), ENOENT);
  for (const uint32_t code : {45U, 46U}) {
    EXPECT_EQ(Do(code, EndpointBlock("bridged", "")), EINVAL);
    EXPECT_EQ(Do(code, EndpointBlock("bridged", unterminated)), EINVAL);
  }
  for (const uint32_t code : {95U, 96U}) {
    EXPECT_EQ(Execute(datapath_, code, Block("edge-2"), 9999).error, ENOENT);
    EXPECT_EQ(Execute(datapath_, code, Block(unterminated), 9999).error, EINVAL);
  }
  EXPECT_EQ(datapath_.state(), before);
}

TEST_F(SimulatedEndpoints, ADeletedOneIsGone) {
  ASSERT_EQ(Do(45, EndpointBlock("bridged", "end-1")), 0);
  ASSERT_EQ(Do(45, EndpointBlock("bridged", "end-2")), 0);
  ASSERT_EQ(Do(46, EndpointBlock("bridged", "end-1")), 0);
  EXPECT_EQ(Do(46, EndpointBlock("bridged", "end-1")), ENOENT);
  EXPECT_EQ(Difference(List(), Wire(235).Text(64, "end-2")), "");
}

TEST_F(SimulatedEndpoints, AFlushTakesAllOrThoseWithoutTheFirstFlag) {
  ASSERT_EQ(Do(2, Block("edge-2")), 0);
  ASSERT_EQ(Do(57, Block("edge-2").Text(384, "other")), 0);
  ASSERT_EQ(Do(45, EndpointBlock("bridged", "flagged").U8(786, 1)), 0);
  ASSERT_EQ(Do(45, EndpointBlock("bridged", "plain").U8(787, 1)), 0);
  ASSERT_EQ(Do(45, EndpointBlock("other", "plain")), 0);
  ASSERT_EQ(Do(48, Block()), 0);
  EXPECT_EQ(Difference(List(), Wire(235).Text(64, "flagged").U8(130, 1)), "");
  ASSERT_EQ(Do(45, EndpointBlock("other", "plain")), 0);
  ASSERT_EQ(Do(47, Block()), 0);
  EXPECT_EQ(Difference(List(), Wire(0)), "");
  EXPECT_EQ(Do(47, Block()), 0) << "nothing is left";
}

TEST_F(SimulatedEndpoints, ThereIsRoomFor28672OverAllLifs) {
  ASSERT_EQ(Do(2, Block("edge-2")), 0);
  ASSERT_EQ(Do(57, Block("edge-2").Text(384, "other")), 0);
  for (int number = 0; number < 28672; ++number) {
    const char* lif = number % 2 == 0 ? "bridged" : "other";
    ASSERT_EQ(Do(45, EndpointBlock(lif, std::to_string(number))), 0);
  }
  const vdrsim::State before = datapath_.state();
  EXPECT_EQ(Do(45, EndpointBlock("bridged", "one-too-many")), ENOSPC);
  EXPECT_EQ(Do(45, EndpointBlock("other", "one-too-many")), ENOSPC);
  EXPECT_EQ(datapath_.state(), before);
  EXPECT_EQ(Do(45, EndpointBlock("other", "1")), 0) << "an update needs no room";
  EXPECT_EQ(List().reply.size(), 28672U * 235);
  EXPECT_EQ(Execute(datapath_, 52, Block(), 28672 * 235 - 1).error, EINVAL);
}

}  // namespace
