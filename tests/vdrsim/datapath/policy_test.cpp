#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <utility>

#include "simulated.h"

namespace {

using in_process::Block;
using in_process::Difference;
using in_process::Execute;
using in_process::Result;
using in_process::Wire;

constexpr uint32_t kAmpleRoom = 13500000;

class SimulatedPolicies : public in_process::Simulated {
 protected:
  Result Get(uint32_t code, const Wire& block) {
    return Execute(datapath_, code, block, kAmpleRoom);
  }
};

Wire Key(uint32_t key) { return Block().U32(412, key); }

Wire PolicyBlock(uint32_t key, uint32_t arg1, uint32_t arg2) {
  return Key(key).U32(256, arg1).U32(260, arg2);
}

TEST_F(SimulatedPolicies, APolicyIsKnownByItsKeyAndTwoNumbers) {
  EXPECT_EQ(Difference(Get(119, Key(7)), Wire(0)), "");
  ASSERT_EQ(Do(120, PolicyBlock(0x01020304, 0x11121314, 0x21222324).U32(404, 0x31323334)), 0);
  ASSERT_EQ(Do(120, PolicyBlock(0x01020304, 5, 0x21222324).U32(404, 1)), 0);
  ASSERT_EQ(Do(120, PolicyBlock(0x01020304, 5, 0x21222324).U32(404, 2)), 0);
  ASSERT_EQ(Do(120, PolicyBlock(7, 5, 6)), 0);
  const Wire both = Wire(56)
                        .U32(0, 0x01020304)
                        .U32(4, 5)
                        .U32(8, 0x21222324)
                        .U32(12, 2)
                        .U32(28, 0x01020304)
                        .U32(32, 0x11121314)
                        .U32(36, 0x21222324)
                        .U32(40, 0x31323334);
  EXPECT_EQ(Difference(Get(119, Key(0x01020304)), both), "");
  EXPECT_EQ(Difference(Get(122, Key(0x01020304)), Wire(4).U32(0, 2)), "");

  EXPECT_EQ(Do(121, PolicyBlock(0x01020304, 5, 6)), ENOENT);
  EXPECT_EQ(Do(121, PolicyBlock(9, 5, 6)), ENOENT);
  ASSERT_EQ(Do(121, PolicyBlock(7, 5, 6)), 0);
  EXPECT_EQ(Do(121, PolicyBlock(7, 5, 6)), ENOENT);
  EXPECT_EQ(Difference(Get(122, Key(7)), Wire(4)), "");
  EXPECT_TRUE(std::as_const(datapath_).state().policies.Find(7U) == nullptr);
}

TEST_F(SimulatedPolicies, ResultsTellTheKey) {
  const Wire result = Wire(88).U32(4, 0x01020304).U32(8, 0x11121314).U32(12, 0x21222324);
  for (const uint32_t code : {120U, 120U, 121U}) {
    const Wire block = PolicyBlock(0x01020304, 0x11121314, 0x21222324).U32(404, 3);
    EXPECT_EQ(Difference(Execute(datapath_, code, block, 88), result), "");
  }
  for (const uint32_t code : {144U, 145U}) {
    const Wire block = Key(0x01020304).Text(416, "table");
    EXPECT_EQ(Difference(Execute(datapath_, code, block, 88), Wire(88).U32(4, 0x01020304)), "");
  }
  const Result failed = Execute(datapath_, 145, Key(1), 88);
  EXPECT_EQ(failed.error, ENOENT);
  EXPECT_TRUE(failed.reply.empty());
  for (const uint32_t code : {120U, 144U}) {
    EXPECT_EQ(Execute(datapath_, code, Key(1), 87).error, EINVAL) << code;
  }
  EXPECT_EQ(datapath_.state(), vdrsim::State{});
}

TEST_F(SimulatedPolicies, AKeyHasRoomForAThousand) {
  for (uint32_t number = 0; number < 1000; ++number) {
    ASSERT_EQ(Do(120, PolicyBlock(7, 1, number)), 0);
  }
  EXPECT_EQ(Do(120, PolicyBlock(7, 1, 1000)), ENOSPC);
  EXPECT_EQ(Do(120, PolicyBlock(7, 1, 999)), 0) << "an update needs no room";
  EXPECT_EQ(Do(120, PolicyBlock(8, 1, 1000)), 0) << "another key has its own";
  EXPECT_EQ(Get(119, Key(7)).reply.size(), 28000U);
  EXPECT_EQ(Difference(Get(122, Key(7)), Wire(4).U32(0, 1000)), "");
}

TEST_F(SimulatedPolicies, TablesAreKnownByTheirKeys) {
  EXPECT_EQ(Difference(Get(143, Block()), Wire(0)), "");
  ASSERT_EQ(Do(144, Key(0x01020304).Text(416, "old")), 0);
  ASSERT_EQ(Do(144, Key(7).Text(416, "seven")), 0);
  ASSERT_EQ(Do(144, Key(0x01020304).Text(416, "new")), 0);
  ASSERT_EQ(Do(120, PolicyBlock(7, 1, 2)), 0);
  EXPECT_EQ(Difference(Get(143, Block()),
                       Wire(144).U32(0, 7).Text(4, "seven").U32(72, 0x01020304).Text(76, "new")),
            "");
  ASSERT_EQ(Do(145, Key(7)), 0);
  EXPECT_EQ(Do(145, Key(7)), ENOENT);
  EXPECT_EQ(Difference(Get(143, Block()), Wire(72).U32(0, 0x01020304).Text(4, "new")), "");
  EXPECT_EQ(Difference(Get(122, Key(7)), Wire(4).U32(0, 1)), "") << "policies are apart";
}

TEST_F(SimulatedPolicies, ThereIsRoomForAThousandTables) {
  for (uint32_t key = 0; key < 1000; ++key) ASSERT_EQ(Do(144, Key(key)), 0);
  EXPECT_EQ(Do(144, Key(1000)), ENOSPC);
  EXPECT_EQ(Do(144, Key(999)), 0) << "an update needs no room";
  EXPECT_EQ(Get(143, Block()).reply.size(), 72000U);
}

class SimulatedLifPolicies : public SimulatedPolicies {
 protected:
  SimulatedLifPolicies() {
    EXPECT_EQ(Do(2, Block("edge-1")), 0);
    for (const char* lif : {"uplink", "lan"}) {
      EXPECT_EQ(Do(19, Block("edge-1").Text(384, lif)), 0);
    }
  }

  Result List(uint32_t type, std::string_view name = "") {
    return Get(140, Block("edge-1").Text(340, name).U32(408, type));
  }
};

Wire LifPolicy(uint32_t type, std::string_view lif = "") {
  return Block("edge-1").Text(340, lif).U32(408, type);
}

Wire Full(uint32_t type, std::string_view lif = "") {
  return LifPolicy(type, lif)
      .U32(256, 0x11121314)
      .U32(260, 0x21222324)
      .U32(268, 0x31323334)
      .U32(272, 0x41424344)
      .Text(276, "eth0");
}

Wire Route() {
  return Wire(668)
      .U32(0, 0x11121314)
      .U32(4, 0x21222324)
      .U32(8, 0x31323334)
      .U32(12, 0x41424344)
      .U8(17, 1)
      .Text(36, "eth0");
}

TEST_F(SimulatedLifPolicies, ThoseOfALifAreShownAsRoutes) {
  EXPECT_EQ(Difference(List(4, "uplink"), Wire(0)), "");
  ASSERT_EQ(Do(141, Full(4, "uplink")), 0);
  ASSERT_EQ(Do(141, Full(4, "uplink")), 0);
  const Wire route = Route().U8(17, 2).U32(20, 4).Text(116, "uplink");
  EXPECT_EQ(Difference(List(4, "uplink"), route), "");
  EXPECT_EQ(Difference(List(4, "lan"), Wire(0)), "");
  ASSERT_EQ(Do(142, Full(4, "uplink")), 0);
  EXPECT_EQ(Do(142, Full(4, "uplink")), ENOENT);
  EXPECT_EQ(Difference(List(4, "uplink"), Wire(0)), "");
}

TEST_F(SimulatedLifPolicies, ThoseOfAnotherTypeAreTheInstances) {
  ASSERT_EQ(Do(141, Full(0xfffffffe, "not looked at")), 0);
  ASSERT_EQ(Do(141, Full(0xfffffffe).Text(276, "eth1")), 0);
  ASSERT_EQ(Do(141, LifPolicy(0)), 0);
  const Wire route = Route().U32(20, 0xfffffffe);
  EXPECT_EQ(List(0xfffffffe).reply.size(), 1336U);
  EXPECT_EQ(Difference(List(0xfffffffe, "eth0"), route), "");
  EXPECT_EQ(Difference(List(0xfffffffe, "eth1"), Wire(route).Text(36, "eth1")), "");
  EXPECT_EQ(Difference(List(0xfffffffe, "eth2"), Wire(0)), "");
  EXPECT_EQ(Difference(List(0), Wire(668).U8(17, 1)), "");
  EXPECT_EQ(Difference(List(1), Wire(0)), "");
}

TEST_F(SimulatedLifPolicies, OneIsFoundByAllThatTheCommandSays) {
  ASSERT_EQ(Do(141, Full(1)), 0);
  for (const size_t offset : {256U, 260U, 268U, 272U, 408U}) {
    EXPECT_EQ(Do(142, Full(1).U32(offset, 5)), ENOENT) << offset;
  }
  EXPECT_EQ(Do(142, Full(1).Text(276, "eth1")), ENOENT);
  EXPECT_EQ(Do(142, Full(1)), 0);
}

TEST_F(SimulatedLifPolicies, TheResultTellsWhatOneIsKnownBy) {
  const Wire result = Wire(88)
                          .U32(4, 4)
                          .U32(8, 0x11121314)
                          .U32(12, 0x21222324)
                          .U32(16, 0x31323334)
                          .U32(20, 0x41424344)
                          .Text(24, "uplink");
  for (const uint32_t code : {141U, 142U}) {
    EXPECT_EQ(Difference(Execute(datapath_, code, Full(4, "uplink"), 88), result), "");
  }
  const Wire other = Wire(result).U32(4, 3).Text(24, std::string(6, '\0'));
  EXPECT_EQ(Difference(Execute(datapath_, 141, Full(3, "uplink"), 88), other), "");
}

TEST_F(SimulatedLifPolicies, WhatIsNotNamedOrNotThereIsRefused) {
  const std::string unterminated(64, 'n');
  const vdrsim::State before = datapath_.state();
  for (const uint32_t code : {140U, 141U, 142U}) {
    SCOPED_TRACE(code);
    EXPECT_EQ(Get(code, Full(4, "downlink")).error, ENOENT);
    EXPECT_EQ(Get(code, Full(4)).error, EINVAL);
    EXPECT_EQ(Get(code, Full(4, unterminated)).error, EINVAL);
    EXPECT_EQ(Get(code, Full(1).Text(0, "edge-2")).error, ENOENT);
    EXPECT_EQ(Get(code, Full(1).Text(0, unterminated)).error, EINVAL);
  }
  EXPECT_EQ(Get(140, LifPolicy(1, unterminated)).error, EINVAL);
  for (const uint32_t code : {141U, 142U}) {
    EXPECT_EQ(Do(code, Full(4, "uplink").Text(276, unterminated)), EINVAL);
  }
  for (const uint32_t code : {146U, 147U, 148U}) {
    SCOPED_TRACE(code);
    EXPECT_EQ(Get(code, Block("edge-1").Text(384, "downlink")).error, ENOENT);
    EXPECT_EQ(Get(code, Block("edge-1")).error, EINVAL);
    EXPECT_EQ(Get(code, Block("edge-2").Text(384, "uplink")).error, ENOENT);
    EXPECT_EQ(Get(code, Block().Text(384, "uplink")).error, EINVAL);
  }
  EXPECT_EQ(datapath_.state(), before);
}

TEST_F(SimulatedLifPolicies, TheyDieWithTheirLif) {
  const Wire lif = Block("edge-1").Text(384, "uplink");
  ASSERT_EQ(Do(141, Full(4, "uplink")), 0);
  ASSERT_EQ(Do(141, Full(1)), 0);
  ASSERT_EQ(Do(147, lif), 0);
  ASSERT_EQ(Do(19, lif), 0);
  EXPECT_EQ(List(4, "uplink").reply.size(), 668U) << "an update leaves them";
  EXPECT_EQ(Get(146, lif).error, 0);
  ASSERT_EQ(Do(20, lif), 0);
  EXPECT_EQ(List(4, "uplink").error, ENOENT);
  ASSERT_EQ(Do(19, lif), 0);
  EXPECT_TRUE(List(4, "uplink").reply.empty());
  EXPECT_EQ(Get(146, lif).error, ENOENT);
  EXPECT_EQ(List(1).reply.size(), 668U);
  ASSERT_EQ(Do(3, lif), 0);
  ASSERT_EQ(Do(2, lif), 0);
  EXPECT_TRUE(List(1).reply.empty());
}

TEST_F(SimulatedLifPolicies, ThereIsRoomForAsManyAsTheListHolds) {
  for (const uint32_t type : {4U, 5U}) {
    for (uint32_t number = 0; number < 20000; ++number) {
      ASSERT_EQ(Do(141, LifPolicy(type, "uplink").U32(256, number)), 0);
    }
    EXPECT_EQ(Do(141, LifPolicy(type, "uplink").U32(256, 20000)), ENOSPC);
    EXPECT_EQ(Do(141, LifPolicy(type, "uplink").U32(256, 19999)), 0);
  }
  EXPECT_EQ(Do(141, LifPolicy(6)), ENOSPC) << "an instance's have room together";
  EXPECT_EQ(Do(141, LifPolicy(4, "lan")), 0) << "another LIF has its own";
  EXPECT_EQ(List(4, "uplink").reply.size(), 13360000U);
  EXPECT_EQ(List(5).reply.size(), 13360000U);
}

TEST_F(SimulatedLifPolicies, AReferenceToTablesIsReadBackAsItWasSet) {
  const Wire lif = Block("edge-1").Text(384, "uplink");
  EXPECT_EQ(Get(146, lif).error, ENOENT);
  EXPECT_EQ(Do(148, lif), ENOENT);
  const Wire two = Wire(lif)
                       .U16(480, 2)
                       .U64(484, 0x0102030405060708)
                       .U64(492, 2)
                       .U64(500, 3)
                       .U64(508, 4)
                       .U64(524, 0x1112131415161718)
                       .U64(532, 9);
  const Wire result = Wire(88).Text(4, "uplink");
  EXPECT_EQ(Difference(Execute(datapath_, 147, two, 88), result), "");
  const Wire record = Wire(546)
                          .Text(0, "uplink")
                          .U16(64, 2)
                          .U64(66, 0x0102030405060708)
                          .U64(74, 2)
                          .U64(82, 3)
                          .U64(90, 4)
                          .U64(106, 0x1112131415161718);
  EXPECT_EQ(Difference(Get(146, lif), record), "");
  EXPECT_EQ(Do(147, Wire(lif).U16(480, 21)), EINVAL);
  EXPECT_EQ(Difference(Get(146, lif), record), "");
  ASSERT_EQ(Do(147, Wire(lif).U16(480, 20).U64(956, 5)), 0);
  EXPECT_EQ(Difference(Get(146, lif), Wire(546).Text(0, "uplink").U16(64, 20).U64(538, 5)), "");
  EXPECT_EQ(Difference(Execute(datapath_, 148, lif, 88), result), "");
  EXPECT_EQ(Get(146, lif).error, ENOENT);
}

}  // namespace
