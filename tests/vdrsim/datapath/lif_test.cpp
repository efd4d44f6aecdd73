#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "simulated.h"

namespace {

using in_process::Block;
using in_process::Difference;
using in_process::Execute;
using in_process::Result;
using in_process::Wire;

constexpr uint32_t kRoomForOne = 961;
constexpr uint32_t kRoomForAll = 9610000;

// A block that names a LIF where nearly all commands have it.
Wire LifBlock(std::string_view instance, std::string_view lif) {
  return Block(instance).Text(384, lif);
}

Wire Record(std::string_view name) { return Wire(961).Text(0, name); }

class SimulatedLifs : public in_process::Simulated {
 protected:
  SimulatedLifs() {
    EXPECT_EQ(Do(2, Block("edge-1")), 0);
    EXPECT_EQ(Do(19, LifBlock("edge-1", "uplink")), 0);
  }

  Result Get(std::string_view lif = "uplink", uint32_t code = 22) {
    return Execute(datapath_, code, LifBlock("edge-1", lif), kRoomForOne);
  }
  Result List(uint32_t code, const Wire& block) {
    return Execute(datapath_, code, block, kRoomForAll);
  }
};

TEST_F(SimulatedLifs, ALifIsReadBackAsItWasSet) {
  const Wire block = LifBlock("edge-1", "lan")
                         .Text(256, "second name")
                         .U32(512, 0x03000001)
                         .U32(516, 0x04000002)
                         .U32(520, 0x07000003)
                         .Text(524, "\x02\x12\x22\x32\x42\x52")
                         .U32(544, 0x05000004)
                         .U32(548, 0x06000005)
                         .U32(552, 0x1fffffff)
                         .U8(788, 3);
  ASSERT_EQ(Do(19, block), 0);
  EXPECT_EQ(Difference(Get("lan"), Record("lan")
                                       .Text(64, "second name")
                                       .U32(128, 0x03000001)
                                       .U32(132, 0x04000002)
                                       .U32(136, 0x05000004)
                                       .U32(140, 0x06000005)
                                       .Text(144, "\x02\x12\x22\x32\x42\x52")
                                       .U32(150, 0x07000003)
                                       .U8(158, 3)
                                       .U32(572, 0x1fffffff)),
            "");
  EXPECT_EQ(Difference(Get(), Record("uplink")), "");
}

// What one command sets, and where it shows.
struct Setting {
  uint32_t code;
  Wire block;
  Wire record;
};

std::vector<Setting> Settings() {
  const Wire lif = LifBlock("edge-1", "uplink");
  const Wire record = Record("uplink");
  return {
      {25, Wire(lif).U32(520, 0x0a000001), Wire(record).U32(154, 0x0a000001)},
      {32, Wire(lif).U32(520, 0xe0000001), Wire(record).U32(166, 0xe0000001)},
      {152, Wire(lif).U32(256, 0x01020304), Wire(record).U32(162, 0x01020304)},
      {28, lif, Wire(record).U8(160, 1)},
      {29, lif, record},
      {30, lif, Wire(record).U8(159, 1)},
      {31, lif, record},
      {125, lif, Wire(record).U8(161, 1)},
      {126, lif, record},
  };
}

TEST_F(SimulatedLifs, EachSettingShowsInItsField) {
  for (const Setting& setting : Settings()) {
    SCOPED_TRACE(setting.code);
    ASSERT_EQ(Do(setting.code, setting.block), 0);
    EXPECT_EQ(Difference(Get(), setting.record), "");
    // The numbers go back to zero; what is on or off has a command for either.
    if (setting.block.bytes() != LifBlock("edge-1", "uplink").bytes()) {
      ASSERT_EQ(Do(setting.code, LifBlock("edge-1", "uplink")), 0);
    }
  }
  EXPECT_EQ(Difference(Get(), Record("uplink")), "");
}

TEST_F(SimulatedLifs, SettingAgainUpdatesAndKeepsTheSettings) {
  ASSERT_EQ(Do(30, LifBlock("edge-1", "uplink")), 0);
  ASSERT_EQ(Do(26, LifBlock("edge-1", "uplink").U32(512, 1).U32(516, 2)), 0);
  ASSERT_EQ(Do(19, LifBlock("edge-1", "uplink").Text(256, "aux").U32(512, 9)), 0);
  ASSERT_EQ(Do(19, LifBlock("edge-1", "uplink").U32(516, 8)), 0);
  EXPECT_EQ(
      Difference(
          Get(),
          Record("uplink").U32(132, 8).U8(159, 1).U32(326, 1).U32(330, 2).U32(342, 1).U32(566, 1)),
      "");
}

// Each with the offset at which it has the LIF's name.
TEST_F(SimulatedLifs, WhatIsNotNamedOrNotThereIsRefused) {
  const std::vector<uint32_t> codes = {20, 22, 24, 25,  26,  27,  28,  29,  30, 31,
                                       32, 33, 60, 108, 109, 125, 126, 152, 58, 23};
  const std::string unterminated(64, 'n');
  const vdrsim::State before = datapath_.state();
  for (const uint32_t code : codes) {
    SCOPED_TRACE(code);
    const auto error = [&](std::string_view instance, std::string_view lif) {
      const Result result = Execute(datapath_, code, LifBlock(instance, lif), kRoomForOne);
      EXPECT_TRUE(result.reply.empty());
      return result.error;
    };
    EXPECT_EQ(error("", "uplink"), EINVAL);
    EXPECT_EQ(error(unterminated, "uplink"), EINVAL);
    EXPECT_EQ(error("edge-1", ""), EINVAL);
    EXPECT_EQ(error("edge-1", unterminated), EINVAL);
    EXPECT_EQ(error("edge-2", "uplink"), ENOENT);
    EXPECT_EQ(error("edge-1", "downlink"), ENOENT);
  }
  for (const uint32_t code : {19U, 57U}) {
    EXPECT_EQ(Do(code, LifBlock("", "uplink")), EINVAL);
    EXPECT_EQ(Do(code, LifBlock("edge-2", "uplink")), ENOENT);
    EXPECT_EQ(Do(code, LifBlock("edge-1", "")), EINVAL);
    EXPECT_EQ(Do(code, LifBlock("edge-1", unterminated)), EINVAL);
  }
  for (const uint32_t code : {21U, 59U}) {
    EXPECT_EQ(List(code, Block()).error, EINVAL);
    EXPECT_EQ(List(code, Block("edge-2")).error, ENOENT);
  }
  EXPECT_EQ(Do(127, Block()), EINVAL);
  EXPECT_EQ(Do(127, Block("edge-2")), ENOENT);
  EXPECT_EQ(datapath_.state(), before);
}

TEST_F(SimulatedLifs, ADeletedOneIsGone) {
  ASSERT_EQ(Do(20, LifBlock("edge-1", "uplink").Text(256, "whatever")), 0);
  EXPECT_EQ(Get().error, ENOENT);
  EXPECT_EQ(Do(20, LifBlock("edge-1", "uplink")), ENOENT);
  EXPECT_TRUE(List(21, Block("edge-1")).reply.empty());
}

TEST_F(SimulatedLifs, TheyDieWithTheirInstance) {
  ASSERT_EQ(Do(57, LifBlock("edge-1", "bridged")), 0);
  ASSERT_EQ(Do(3, Block("edge-1")), 0);
  EXPECT_EQ(Get().error, ENOENT);
  ASSERT_EQ(Do(2, Block("edge-1")), 0);
  EXPECT_EQ(Get().error, ENOENT);
  EXPECT_EQ(Get("bridged", 60).error, ENOENT);
}

TEST_F(SimulatedLifs, TheListIsThatOfOneInstanceInTheOrderOfTheNames) {
  ASSERT_EQ(Do(2, Block("edge-2")), 0);
  for (const char* name : {"lan", "backup"}) {
    ASSERT_EQ(Do(19, LifBlock("edge-1", name).U32(512, 7)), 0);
    ASSERT_EQ(Do(19, LifBlock("edge-2", name)), 0);
  }
  const Result list = List(21, Block("edge-1"));
  ASSERT_EQ(list.reply.size(), 3U * 961);
  EXPECT_EQ(list.TextAt(0), "backup");
  EXPECT_EQ(list.WordAt(128), 7U);
  EXPECT_EQ(list.TextAt(961), "lan");
  EXPECT_EQ(list.TextAt(1922), "uplink");
  EXPECT_EQ(list.WordAt(1922 + 128), 0U);
}

TEST_F(SimulatedLifs, ThoseOfAVlanAreListedOverAllInstances) {
  ASSERT_EQ(Do(2, Block("edge-0")), 0);
  ASSERT_EQ(Do(19, LifBlock("edge-1", "uplink").U32(544, 100)), 0);
  ASSERT_EQ(Do(19, LifBlock("edge-1", "lan").U32(544, 200)), 0);
  ASSERT_EQ(Do(19, LifBlock("edge-0", "wan").U32(544, 100)), 0);
  const Result list = List(172, Wire(968).U32(260, 100));
  ASSERT_EQ(list.reply.size(), 2U * 961);
  EXPECT_EQ(list.TextAt(0), "wan");
  EXPECT_EQ(list.TextAt(961), "uplink");
  EXPECT_TRUE(List(172, Wire(968).U32(260, 300)).reply.empty());
}

TEST_F(SimulatedLifs, AnInstanceHasRoomForTenThousandOfEachKind) {
  for (const auto& [set, list] : {std::pair(19U, 21U), std::pair(57U, 59U)}) {
    SCOPED_TRACE(set);
    for (int number = set == 19 ? 2 : 1; number <= 10000; ++number) {
      ASSERT_EQ(Do(set, LifBlock("edge-1", "lif-" + std::to_string(number))), 0) << number;
    }
    EXPECT_EQ(Do(set, LifBlock("edge-1", "one-too-many")), ENOSPC);
    EXPECT_EQ(Do(set, LifBlock("edge-1", "lif-77")), 0) << "an update needs no room";
    const Result all = List(list, Block("edge-1"));
    ASSERT_EQ(all.reply.size(), 9610000U);
    EXPECT_EQ(all.TextAt(0), set == 19 ? "lif-10" : "lif-1");
    EXPECT_EQ(all.TextAt(9999UL * 961), set == 19 ? "uplink" : "lif-9999");
    EXPECT_EQ(Execute(datapath_, list, Block("edge-1"), 9609999).error, EINVAL);
  }
}

TEST_F(SimulatedLifs, AddressesShowInTheOrderInWhichTheyCame) {
  ASSERT_EQ(Do(26, LifBlock("edge-1", "uplink").U32(512, 0x0a000001).U32(516, 0xff)), 0);
  const Wire six = LifBlock("edge-1", "uplink")
                       .U64(256, 0x0102030405060708)
                       .U64(264, 0x1112131415161718)
                       .Text(276, "uplink")
                       .U8(340, 64);
  ASSERT_EQ(Do(108, six), 0);
  ASSERT_EQ(Do(26, LifBlock("edge-1", "uplink").U32(512, 0x0a000002)), 0);
  // An address that is there is updated in its place.
  ASSERT_EQ(Do(26, LifBlock("edge-1", "uplink").U32(512, 0x0a000001).U32(516, 0xffff)), 0);
  ASSERT_EQ(Do(108, Wire(six).U8(340, 65)), 0);
  const Wire both = Record("uplink")
                        .U32(566, 3)
                        .U32(326, 0x0a000001)
                        .U32(330, 0xffff)
                        .U32(342, 1)
                        .U64(350, 0x0102030405060708)
                        .U64(358, 0x1112131415161718)
                        .U32(366, 3)
                        .U8(370, 65)
                        .U32(374, 0x0a000002)
                        .U32(390, 1);
  EXPECT_EQ(Difference(Get(), both), "");

  // What else the command says is not looked at.
  ASSERT_EQ(Do(27, LifBlock("edge-1", "uplink").U32(512, 0x0a000001)), 0);
  EXPECT_EQ(Do(27, LifBlock("edge-1", "uplink").U32(512, 0x0a000001)), ENOENT);
  ASSERT_EQ(Do(109, Wire(six).U8(340, 1)), 0);
  EXPECT_EQ(Do(109, six), ENOENT);
  EXPECT_EQ(Difference(Get(), Record("uplink").U32(566, 1).U32(326, 0x0a000002).U32(342, 1)), "");
}

TEST_F(SimulatedLifs, AnAddressOfOneFamilyIsNoneOfTheOther) {
  ASSERT_EQ(Do(26, LifBlock("edge-1", "uplink").U32(512, 7)), 0);
  EXPECT_EQ(Do(109, LifBlock("edge-1", "uplink").U64(256, 7)), ENOENT);
  ASSERT_EQ(Do(108, LifBlock("edge-1", "uplink").U64(256, 7)), 0);
  EXPECT_EQ(Get().WordAt(566), 2U);
}

TEST_F(SimulatedLifs, ALifHasRoomForTenAddresses) {
  for (uint32_t number = 1; number <= 10; ++number) {
    ASSERT_EQ(Do(26, LifBlock("edge-1", "uplink").U32(512, number)), 0);
  }
  const Result full = Get();
  EXPECT_EQ(Do(26, LifBlock("edge-1", "uplink").U32(512, 11)), ENOSPC);
  EXPECT_EQ(Do(108, LifBlock("edge-1", "uplink").U64(256, 1)), ENOSPC);
  EXPECT_EQ(Do(26, LifBlock("edge-1", "uplink").U32(512, 10)), 0) << "an update needs no room";
  EXPECT_EQ(Get().reply, full.reply);
  EXPECT_EQ(full.WordAt(326 + 9 * 24), 10U);
}

TEST_F(SimulatedLifs, RelayServersShowUntilTheyAreCleared) {
  Wire block = LifBlock("edge-1", "uplink").U32(556, 8);
  Wire record = Record("uplink").U32(170, 8);
  for (size_t server = 0; server < 8; ++server) {
    const std::string address(16, static_cast<char>('a' + server));
    const uint32_t family = server % 2 == 0 ? 1 : 3;
    block.Text(560 + server * 20, address).U32(576 + server * 20, family);
    record.Text(174 + server * 17, address).U8(190 + server * 17, static_cast<uint8_t>(family));
  }
  ASSERT_EQ(Do(33, block), 0);
  EXPECT_EQ(Difference(Get(), record), "");

  EXPECT_EQ(Do(33, Wire(block).U32(556, 9).U32(736, 1)), EINVAL) << "there are 8 places";
  EXPECT_EQ(Do(33, Wire(block).U32(576 + 7 * 20, 2)), EINVAL);
  EXPECT_EQ(Do(33, Wire(block).U32(576, 0x0101)), EINVAL);
  EXPECT_EQ(Do(33, Wire(block).U32(576, 0x01000001)), EINVAL);
  EXPECT_EQ(Difference(Get(), record), "");

  ASSERT_EQ(Do(33, LifBlock("edge-1", "uplink")), 0);
  EXPECT_EQ(Difference(Get(), Record("uplink")), "");
}

TEST_F(SimulatedLifs, ABridgeLifIsApartFromALifOfItsName) {
  const Wire block = LifBlock("edge-1", "uplink")
                         .Text(256, "second name")
                         .U32(520, 0x03000001)
                         .U32(544, 0x01000002)
                         .U32(548, 0x02000003);
  ASSERT_EQ(Do(57, block), 0);
  const Wire record = Record("uplink")
                          .Text(64, "second name")
                          .U32(136, 0x01000002)
                          .U32(140, 0x02000003)
                          .U32(150, 0x03000001)
                          .U8(570, 1);
  EXPECT_EQ(Difference(Get("uplink", 60), record), "");
  EXPECT_EQ(Difference(List(59, Block("edge-1")), record), "");
  EXPECT_EQ(Difference(Get(), Record("uplink")), "");

  ASSERT_EQ(Do(57, LifBlock("edge-1", "uplink").U32(544, 5)), 0);
  EXPECT_EQ(Difference(Get("uplink", 60), Record("uplink").U32(136, 5).U8(570, 1)), "");
  ASSERT_EQ(Do(58, LifBlock("edge-1", "uplink")), 0);
  EXPECT_EQ(Get("uplink", 60).error, ENOENT);
  EXPECT_EQ(Get().error, 0);
}

TEST_F(SimulatedLifs, MulticastRoutingShowsInTheInstance) {
  const Wire block = Block("edge-1")
                         .Text(256, "group")
                         .U32(320, 0x01020304)
                         .U32(324, 0x05060708)
                         .U16(328, 0x090a)
                         .U8(330, 0x0b);
  ASSERT_EQ(Do(127, block), 0);
  EXPECT_EQ(Difference(Execute(datapath_, 1, Block("edge-1"), 577), Wire(577)
                                                                        .Text(0, "edge-1")
                                                                        .Text(457, "group")
                                                                        .U16(521, 0x090a)
                                                                        .U32(563, 0x01020304)
                                                                        .U8(567, 0x0b)
                                                                        .U32(568, 0x05060708)),
            "");
}

class SimulatedLifCounters : public SimulatedLifs {
 protected:
  Result Stats(bool cached = false) {
    return Execute(datapath_, 23, LifBlock("edge-1", "uplink").U32(552, cached ? 1 : 0), 852);
  }
};

Wire Counts(uint64_t sets, uint64_t deletes, uint64_t lookups, uint64_t failures) {
  return Wire(852).U64(4, sets).U64(12, deletes).U64(20, lookups).U64(28, failures);
}

TEST_F(SimulatedLifCounters, TheyCountWhatCommandsDidToTheLif) {
  EXPECT_EQ(Difference(Stats(), Counts(1, 0, 0, 0)), "");
  const Wire block = LifBlock("edge-1", "uplink").U32(512, 7);
  ASSERT_EQ(Do(30, block), 0);
  ASSERT_EQ(Do(26, block), 0);
  ASSERT_EQ(Do(27, block), 0);
  ASSERT_EQ(Do(27, block), ENOENT);
  for (int lookup = 0; lookup < 4; ++lookup) ASSERT_EQ(Get().error, 0);
  EXPECT_EQ(Difference(Stats(), Counts(3, 1, 4, 1)), "");
  EXPECT_EQ(Difference(Stats(), Counts(3, 1, 4, 1)), "") << "looking at them changes nothing";
}

TEST_F(SimulatedLifCounters, TheCachedOnesAreThoseOfTheLastFreshRead) {
  EXPECT_EQ(Difference(Stats(true), Counts(0, 0, 0, 0)), "");
  ASSERT_EQ(Stats().error, 0);
  ASSERT_EQ(Get().error, 0);
  EXPECT_EQ(Difference(Stats(true), Counts(1, 0, 0, 0)), "");
  EXPECT_EQ(Difference(Stats(), Counts(1, 0, 1, 0)), "");
  EXPECT_EQ(Difference(Stats(true), Counts(1, 0, 1, 0)), "");
}

TEST_F(SimulatedLifCounters, ResettingLeavesTheCachedOnes) {
  ASSERT_EQ(Stats().error, 0);
  ASSERT_EQ(Do(24, LifBlock("edge-1", "uplink")), 0);
  EXPECT_EQ(Difference(Stats(true), Counts(1, 0, 0, 0)), "");
  EXPECT_EQ(Difference(Stats(), Counts(0, 0, 0, 0)), "");
}

TEST_F(SimulatedLifCounters, AFreshReadThatCannotBeDeliveredCachesNothing) {
  EXPECT_EQ(Execute(datapath_, 23, LifBlock("edge-1", "uplink"), 851).error, EINVAL);
  EXPECT_EQ(in_process::ExecuteInVain(datapath_, 23, LifBlock("edge-1", "uplink"), 852).error,
            EFAULT);
  EXPECT_EQ(Difference(Stats(true), Counts(0, 0, 0, 0)), "");
}

}  // namespace
