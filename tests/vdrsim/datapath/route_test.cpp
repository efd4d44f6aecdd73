#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <vector>

#include "simulated.h"

namespace {

using in_process::Block;
using in_process::Difference;
using in_process::Execute;
using in_process::ExecuteInVain;
using in_process::Result;
using in_process::Wire;

constexpr uint32_t kRoomForAll = 13360000;

// An address as its bytes stand in a request.
constexpr uint32_t Ip(uint32_t a, uint32_t b, uint32_t c, uint32_t d) {
  return a | b << 8 | c << 16 | d << 24;
}

Wire RouteBlock(uint32_t destination, uint32_t mask, uint32_t third = 0,
                std::string_view interface = "") {
  return Block("edge-1").U32(256, destination).U32(260, mask).U32(268, third).Text(276, interface);
}

Wire Record(uint32_t destination, uint32_t mask, uint32_t third = 0, uint32_t flags = 0,
            std::string_view interface = "") {
  Wire record = Wire(668).U32(0, destination).U32(4, mask).U32(8, third).U32(12, flags);
  if (!interface.empty()) record.U8(17, 1).Text(36, interface);
  return record;
}

Wire operator+(const Wire& first, const Wire& second) {
  Wire both(first.bytes().size() + second.bytes().size());
  const auto text = [](const Wire& wire) {
    return std::string_view(reinterpret_cast<const char*>(wire.bytes().data()),
                            wire.bytes().size());
  };
  return both.Text(0, text(first)).Text(first.bytes().size(), text(second));
}

class SimulatedRoutes : public in_process::Simulated {
 protected:
  SimulatedRoutes() { EXPECT_EQ(Do(2, Block("edge-1")), 0); }

  Result List(uint32_t code = 36, std::string_view instance = "edge-1") {
    return Execute(datapath_, code, Block(instance), kRoomForAll);
  }
};

TEST_F(SimulatedRoutes, ARouteIsReadBackAsItWasSet) {
  ASSERT_EQ(Do(34, RouteBlock(0x01020304, 0x05060708, 0x090a0b0c, "uplink").U32(272, 0x0d0e0f10)),
            0);
  EXPECT_EQ(Difference(List(), Record(0x01020304, 0x05060708, 0x090a0b0c, 0x0d0e0f10, "uplink")),
            "");
}

TEST_F(SimulatedRoutes, WithoutInterfaceItHasNoNextHop) {
  ASSERT_EQ(Do(34, RouteBlock(1, 2, 3)), 0);
  EXPECT_EQ(Difference(List(), Record(1, 2, 3)), "");
}

TEST_F(SimulatedRoutes, SettingAgainUpdatesTheFlagsAlone) {
  ASSERT_EQ(Do(34, RouteBlock(1, 2, 3, "uplink").U32(272, 4)), 0);
  ASSERT_EQ(Do(34, RouteBlock(1, 2, 3, "uplink").U32(272, 5)), 0);
  EXPECT_EQ(Difference(List(), Record(1, 2, 3, 5, "uplink")), "");
}

TEST_F(SimulatedRoutes, EachArgumentButTheFlagsNamesIt) {
  const Wire blocks[] = {RouteBlock(1, 2, 3, "lan"), RouteBlock(1, 2, 3, "wan"),
                         RouteBlock(1, 2, 9, "lan"), RouteBlock(1, 9, 3, "lan"),
                         RouteBlock(9, 2, 3, "lan")};
  for (const Wire& block : blocks) ASSERT_EQ(Do(34, block), 0);
  EXPECT_EQ(List().reply.size(), 5U * 668);
  ASSERT_EQ(Do(35, Wire(blocks[0]).U32(272, 77)), 0) << "flags are not looked at";
  EXPECT_EQ(Do(35, blocks[0]), ENOENT);
  EXPECT_EQ(Difference(List(), Record(1, 2, 3, 0, "wan") + Record(1, 2, 9, 0, "lan") +
                                   Record(1, 9, 3, 0, "lan") + Record(9, 2, 3, 0, "lan")),
            "");
}

TEST_F(SimulatedRoutes, TheyAreListedInTheOrderOfTheirBytes) {
  for (const uint32_t destination : {Ip(10, 0, 0, 2), Ip(192, 0, 0, 1), Ip(10, 0, 1, 0)}) {
    ASSERT_EQ(Do(34, RouteBlock(destination, 0)), 0);
  }
  EXPECT_EQ(Difference(List(), Record(Ip(10, 0, 0, 2), 0) + Record(Ip(10, 0, 1, 0), 0) +
                                   Record(Ip(192, 0, 0, 1), 0)),
            "");
}

TEST_F(SimulatedRoutes, TheResultIsZeroAndWhatNamesTheRoute) {
  const Wire block = RouteBlock(0x01020304, 0x05060708, 0x090a0b0c, std::string(63, 'i'));
  const Wire result = Wire(88)
                          .U32(4, 0x01020304)
                          .U32(8, 0x05060708)
                          .U32(12, 0x090a0b0c)
                          .Text(16, std::string(63, 'i'));
  for (const uint32_t code : {34U, 35U}) {
    SCOPED_TRACE(code);
    EXPECT_EQ(Difference(Execute(datapath_, code, block, 88), result), "");
    EXPECT_EQ(List().reply.empty(), code == 35);
  }
  const Result failed = Execute(datapath_, 35, block, 88);
  EXPECT_EQ(failed.error, ENOENT);
  EXPECT_TRUE(failed.reply.empty());
}

TEST_F(SimulatedRoutes, AResultThatCannotBeDeliveredChangesNothing) {
  EXPECT_EQ(Execute(datapath_, 34, RouteBlock(1, 2), 87).error, EINVAL);
  EXPECT_EQ(ExecuteInVain(datapath_, 34, RouteBlock(1, 2), 88).error, EFAULT);
  EXPECT_TRUE(List().reply.empty());
  ASSERT_EQ(Do(34, RouteBlock(1, 2)), 0);
  EXPECT_EQ(Execute(datapath_, 35, RouteBlock(1, 2), 87).error, EINVAL);
  EXPECT_EQ(ExecuteInVain(datapath_, 35, RouteBlock(1, 2), 88).error, EFAULT);
  EXPECT_EQ(List().reply.size(), 668U);
}

TEST_F(SimulatedRoutes, WhatIsNotNamedOrNotThereIsRefused) {
  ASSERT_EQ(Do(34, RouteBlock(1, 2)), 0);
  const vdrsim::State before = datapath_.state();
  const std::string unterminated(64, 'n');
  for (const uint32_t code : {34U, 35U, 36U, 37U, 174U}) {
    SCOPED_TRACE(code);
    EXPECT_EQ(List(code, "").error, EINVAL);
    EXPECT_EQ(List(code, unterminated).error, EINVAL);
    EXPECT_EQ(List(code, "edge-2").error, ENOENT);
  }
  EXPECT_EQ(Do(34, RouteBlock(1, 3, 0, unterminated)), EINVAL);
  EXPECT_EQ(Do(35, RouteBlock(1, 2, 0, unterminated)), EINVAL);
  EXPECT_EQ(Do(35, RouteBlock(1, 3)), ENOENT);
  EXPECT_EQ(datapath_.state(), before);
}

TEST_F(SimulatedRoutes, TheyAreThoseOfOneInstanceAndDieWithIt) {
  ASSERT_EQ(Do(2, Block("edge-2")), 0);
  ASSERT_EQ(Do(34, RouteBlock(1, 2)), 0);
  EXPECT_TRUE(List(36, "edge-2").reply.empty());
  ASSERT_EQ(Do(3, Block("edge-1")), 0);
  EXPECT_EQ(List().error, ENOENT);
  ASSERT_EQ(Do(2, Block("edge-1")), 0);
  EXPECT_TRUE(List().reply.empty());
}

TEST_F(SimulatedRoutes, AnInstanceHasRoomForTwentyThousand) {
  for (uint32_t number = 0; number < 20000; ++number) {
    ASSERT_EQ(Do(34, RouteBlock(number, 0)), 0) << number;
  }
  EXPECT_EQ(Do(34, RouteBlock(20000, 0)), ENOSPC);
  EXPECT_EQ(Do(34, RouteBlock(77, 0).U32(272, 1)), 0) << "an update needs no room";
  EXPECT_EQ(List().reply.size(), 13360000U);
  EXPECT_EQ(Execute(datapath_, 36, Block("edge-1"), 13359999).error, EINVAL);
}

class ResolvedRoutes : public SimulatedRoutes {
 protected:
  ResolvedRoutes() {
    const Wire blocks[] = {RouteBlock(Ip(10, 0, 0, 0), Ip(255, 0, 0, 0), 1, "eight"),
                           RouteBlock(Ip(10, 1, 0, 0), Ip(255, 255, 0, 0), 2, "sixteen"),
                           RouteBlock(Ip(10, 1, 2, 0), Ip(255, 255, 255, 0), 3, "b"),
                           RouteBlock(Ip(10, 1, 2, 0), Ip(255, 255, 255, 0), 3, "a")};
    for (const Wire& block : blocks) EXPECT_EQ(Do(34, Wire(block).U32(272, 5)), 0);
  }

  Result Resolve(uint32_t address, uint32_t mask = 0) {
    return Execute(datapath_, 37, Block("edge-1").U32(256, address).U32(260, mask).U32(264, 9),
                   668);
  }
};

TEST_F(ResolvedRoutes, TheLongestPrefixWins) {
  const Wire eight = Record(Ip(10, 0, 0, 0), Ip(255, 0, 0, 0), 1, 5, "eight");
  const Wire sixteen = Record(Ip(10, 1, 0, 0), Ip(255, 255, 0, 0), 2, 5, "sixteen");
  const Wire first = Record(Ip(10, 1, 2, 0), Ip(255, 255, 255, 0), 3, 5, "a");
  for (const uint32_t alone : {0U, 0xffffffffU}) {
    EXPECT_EQ(Difference(Resolve(Ip(10, 1, 2, 3), alone), first), "");
    EXPECT_EQ(Difference(Resolve(Ip(10, 1, 3, 3), alone), sixteen), "");
    EXPECT_EQ(Difference(Resolve(Ip(10, 2, 2, 3), alone), eight), "");
  }
}

TEST_F(ResolvedRoutes, ARouteMustCoverAllOfTheNetworkThatIsAskedFor) {
  const auto found = [&](uint32_t mask) { return Resolve(Ip(10, 1, 2, 0), mask).WordAt(4); };
  EXPECT_EQ(found(Ip(255, 255, 255, 128)), Ip(255, 255, 255, 0));
  EXPECT_EQ(found(Ip(255, 255, 255, 0)), Ip(255, 255, 255, 0));
  EXPECT_EQ(found(Ip(255, 255, 254, 0)), Ip(255, 255, 0, 0));
  EXPECT_EQ(found(Ip(255, 128, 0, 0)), Ip(255, 0, 0, 0));
  EXPECT_EQ(Resolve(Ip(10, 1, 2, 0), Ip(254, 0, 0, 0)).error, ENOENT);
}

TEST_F(ResolvedRoutes, WhereNoneLeadsTheDefaultDoes) {
  EXPECT_EQ(Resolve(Ip(11, 1, 2, 3)).error, ENOENT);
  ASSERT_EQ(Do(34, RouteBlock(0, 0, 7)), 0);
  EXPECT_EQ(Difference(Resolve(Ip(11, 1, 2, 3)), Record(0, 0, 7)), "");
  EXPECT_EQ(Resolve(Ip(10, 2, 0, 0)).WordAt(4), Ip(255, 0, 0, 0));
}

TEST_F(ResolvedRoutes, BytesOutsideOfTheMaskDoNotCount) {
  ASSERT_EQ(Do(34, RouteBlock(Ip(12, 9, 9, 9), Ip(255, 0, 0, 0))), 0);
  EXPECT_EQ(Difference(Resolve(Ip(12, 1, 2, 3)), Record(Ip(12, 9, 9, 9), Ip(255, 0, 0, 0))), "");
}

TEST_F(SimulatedRoutes, ThoseOverALifOfTheInstanceSelectIt) {
  ASSERT_EQ(Do(2, Block("edge-2")), 0);
  ASSERT_EQ(Do(19, Block("edge-1").Text(384, "uplink")), 0);
  ASSERT_EQ(Do(19, Block("edge-2").Text(384, "lan")), 0);
  for (const char* interface : {"uplink", "lan", ""}) {
    ASSERT_EQ(Do(34, RouteBlock(1, 2, 3, interface).U32(272, 4)), 0);
    ASSERT_EQ(Do(34, RouteBlock(0, 2, 3, interface).U32(272, 4)), 0);
  }
  EXPECT_EQ(Difference(List(174), Record(0, 2, 3, 4, "uplink") + Record(1, 2, 3, 4, "uplink")), "");
  ASSERT_EQ(Do(20, Block("edge-1").Text(384, "uplink")), 0);
  EXPECT_TRUE(List(174).reply.empty());
  EXPECT_EQ(List().reply.size(), 6U * 668) << "the routes stay when their LIF goes";
}

class SimulatedDemuxRoutes : public SimulatedRoutes {
 protected:
  void AddLif(std::string_view instance, std::string_view lif, uint32_t vlan, uint32_t address) {
    ASSERT_EQ(Do(19, Block(instance).Text(384, lif).U32(544, vlan)), 0);
    ASSERT_EQ(Do(26, Block(instance).Text(384, lif).U32(512, address).U32(516, ~address)), 0);
  }
  Result Demux(uint32_t capacity = 4440000) { return Execute(datapath_, 173, Wire(968), capacity); }
};

TEST_F(SimulatedDemuxRoutes, TheyAreTheIpv4AddressesOfAllLifs) {
  EXPECT_TRUE(Demux().reply.empty());
  ASSERT_EQ(Do(2, Block("edge-0")), 0);
  AddLif("edge-1", "uplink", 0x01020304, 0x05060708);
  AddLif("edge-0", "lan", 7, 8);
  ASSERT_EQ(Do(108, Block("edge-0").U64(256, 1).Text(384, "lan")), 0);
  AddLif("edge-0", "lan", 7, 2);
  const auto record = [](uint32_t address, uint32_t vlan, const char* instance, const char* lif) {
    return Wire(148).U32(0, address).U32(4, ~address).U32(8, vlan).Text(20, instance).Text(84, lif);
  };
  EXPECT_EQ(Difference(Demux(), record(8, 7, "edge-0", "lan") + record(2, 7, "edge-0", "lan") +
                                    record(0x05060708, 0x01020304, "edge-1", "uplink")),
            "");
  EXPECT_EQ(Demux(443).error, EINVAL);
  EXPECT_EQ(Demux(444).error, 0);
}

}  // namespace
