#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "simulated.h"

namespace {

using in_process::Block;
using in_process::Difference;
using in_process::Execute;
using in_process::Result;
using in_process::Wire;
using vdrsim::Datapath;

constexpr uint32_t kRoomForAll = 7667712;

// A kind of neighbours: its codes, and where their fields are.
struct Kind {
  const char* name;
  uint32_t set;
  uint32_t remove;
  uint32_t list;
  size_t interface;
  size_t address;
  size_t macText;  // 0 for proxies
  bool marked;     // by the byte that tells proxies from neighbours
};

void PrintTo(const Kind& kind, std::ostream* stream) { *stream << kind.name; }

constexpr Kind kArp{"Arp", 38, 39, 40, 384, 256, 524, false};
constexpr Kind kProxyArp{"ProxyArp", 38, 39, 40, 384, 256, 0, true};
constexpr Kind kArpv6{"Arpv6", 112, 113, 116, 256, 320, 336, false};
constexpr Kind kProxyArpv6{"ProxyArpv6", 112, 113, 116, 256, 320, 0, true};

Wire NeighbourBlock(const Kind& kind, uint32_t address, std::string_view interface = "uplink",
                    std::string_view mac = "02:12:22:32:42:52") {
  Wire block = Block("edge-1").U32(kind.address, address).Text(kind.interface, interface);
  if (kind.macText != 0) block.Text(kind.macText, mac);
  return block.U8(917, kind.marked);
}

Wire ListBlock(const Kind& kind, std::string_view interface = "") {
  const bool isListMarked = kind.marked && kind.list == 40;
  return Block("edge-1").Text(384, interface).U8(917, isListMarked);
}

Wire Record(const Kind& kind, uint32_t address, std::string_view interface = "uplink",
            std::string_view mac = "\x02\x12\x22\x32\x42\x52",
            std::string_view macText = "02:12:22:32:42:52") {
  Wire record = Wire(936).U32(0, address).Text(16, interface);
  if (kind.macText != 0) record.Text(80, mac).Text(86, macText);
  return record;
}

// All of the same size.
Wire Join(const std::vector<Wire>& records) {
  Wire all(records.size() * 936);
  for (size_t index = 0; index < records.size(); ++index) {
    const auto& bytes = records[index].bytes();
    all.Text(index * 936, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  }
  return all;
}

class SimulatedNeighbours : public in_process::Simulated, public testing::WithParamInterface<Kind> {
 protected:
  SimulatedNeighbours() {
    EXPECT_EQ(Do(2, Block("edge-1")), 0);
    for (const char* lif : {"uplink", "lan"}) {
      EXPECT_EQ(Do(19, Block("edge-1").Text(384, lif)), 0);
    }
  }

  int Set(const Wire& block) { return Do(kind_.set, block); }
  int Remove(const Wire& block) { return Do(kind_.remove, block); }
  Result List(std::string_view interface = "") { return ListOf(kind_, interface); }
  Result ListOf(const Kind& kind, std::string_view interface = "") {
    return Execute(datapath_, kind.list, ListBlock(kind, interface), kRoomForAll);
  }

  const Kind& kind_ = GetParam();
};

TEST_P(SimulatedNeighbours, OneIsReadBackAsItWasSet) {
  ASSERT_EQ(Set(NeighbourBlock(kind_, 0x01020304)), 0);
  EXPECT_EQ(Difference(List(), Record(kind_, 0x01020304)), "");
  ASSERT_EQ(Remove(NeighbourBlock(kind_, 0x01020304)), 0);
  EXPECT_TRUE(List().reply.empty());
  EXPECT_EQ(Remove(NeighbourBlock(kind_, 0x01020304)), ENOENT);
}

TEST_P(SimulatedNeighbours, SettingAgainUpdates) {
  ASSERT_EQ(Set(NeighbourBlock(kind_, 7)), 0);
  ASSERT_EQ(Set(NeighbourBlock(kind_, 7, "uplink", "aA-fF-09-90-Fa-Af")), 0);
  EXPECT_EQ(Difference(List(),
                       Record(kind_, 7, "uplink", "\xaa\xff\x09\x90\xfa\xaf", "aA-fF-09-90-Fa-Af")),
            "");
}

TEST_P(SimulatedNeighbours, TheyAreListedByInterfaceAndByTheBytesOfTheAddress) {
  for (const uint32_t address : {0x0200U, 0x0001U}) {
    for (const char* lif : {"uplink", "lan"}) {
      ASSERT_EQ(Set(NeighbourBlock(kind_, address, lif)), 0);
    }
  }
  const Wire lan[] = {Record(kind_, 0x0200, "lan"), Record(kind_, 0x0001, "lan")};
  const Wire uplink[] = {Record(kind_, 0x0200), Record(kind_, 0x0001)};
  EXPECT_EQ(Difference(List(), Join({lan[0], lan[1], uplink[0], uplink[1]})), "");
  EXPECT_EQ(Difference(List("uplink"), Join({uplink[0], uplink[1]})), "");
  ASSERT_EQ(Remove(NeighbourBlock(kind_, 0x0200, "lan")), 0);
  EXPECT_EQ(Difference(List(), Join({lan[1], uplink[0], uplink[1]})), "");
}

TEST_P(SimulatedNeighbours, EachKindIsApart) {
  for (const Kind& kind : {kArp, kProxyArp, kArpv6, kProxyArpv6}) {
    if (kind.name == kind_.name) continue;
    ASSERT_EQ(Do(kind.set, NeighbourBlock(kind, 7)), 0);
  }
  EXPECT_EQ(Remove(NeighbourBlock(kind_, 7)), ENOENT);
  ASSERT_EQ(Set(NeighbourBlock(kind_, 7)), 0);
  EXPECT_EQ(Difference(ListOf(kArp), Record(kArp, 7)), "");
  EXPECT_EQ(Difference(ListOf(kProxyArp), Record(kProxyArp, 7)), "");
  EXPECT_EQ(Difference(ListOf(kArpv6), Join({Record(kArpv6, 7), Record(kProxyArpv6, 7)})), "");
  ASSERT_EQ(Remove(NeighbourBlock(kind_, 7)), 0);
  EXPECT_EQ(ListOf(kArp).reply.empty(), kind_.name == kArp.name);
  EXPECT_EQ(ListOf(kProxyArp).reply.empty(), kind_.name == kProxyArp.name);
  EXPECT_EQ(ListOf(kArpv6).reply.size(), kind_.list == 116 ? 936U : 1872U);
}

TEST_P(SimulatedNeighbours, TheyDieWithTheirLifAndWithTheirInstance) {
  ASSERT_EQ(Set(NeighbourBlock(kind_, 7, "lan")), 0);
  ASSERT_EQ(Set(NeighbourBlock(kind_, 7)), 0);
  ASSERT_EQ(Do(20, Block("edge-1").Text(384, "uplink")), 0);
  EXPECT_EQ(List("uplink").error, ENOENT);
  EXPECT_EQ(Difference(List(), Record(kind_, 7, "lan")), "");
  ASSERT_EQ(Do(3, Block("edge-1")), 0);
  ASSERT_EQ(Do(2, Block("edge-1")), 0);
  EXPECT_TRUE(List().reply.empty());
}

TEST_P(SimulatedNeighbours, TheyStayWhenTheirLifIsUpdated) {
  ASSERT_EQ(Set(NeighbourBlock(kind_, 7)), 0);
  ASSERT_EQ(Do(19, Block("edge-1").Text(384, "uplink").U32(512, 9)), 0);
  EXPECT_EQ(Difference(List(), Record(kind_, 7)), "");
}

TEST_P(SimulatedNeighbours, WhatIsNotNamedOrNotThereIsRefused) {
  ASSERT_EQ(Set(NeighbourBlock(kind_, 7)), 0);
  const std::string unterminated(64, 'n');
  const vdrsim::State before = datapath_.state();
  for (const auto& [instance, interface, error] :
       {std::tuple("", "uplink", EINVAL), std::tuple("edge-2", "uplink", ENOENT),
        std::tuple("edge-1", "", EINVAL), std::tuple("edge-1", "downlink", ENOENT),
        std::tuple("edge-1", unterminated.c_str(), EINVAL),
        std::tuple(unterminated.c_str(), "uplink", EINVAL)}) {
    SCOPED_TRACE(std::string(instance) + '/' + interface);
    const Wire block = NeighbourBlock(kind_, 8, "")
                           .Text(0, std::string(64, '\0'))
                           .Text(0, instance)
                           .Text(kind_.interface, interface);
    EXPECT_EQ(Set(block), error);
    EXPECT_EQ(Remove(block), error);
  }
  EXPECT_EQ(Remove(NeighbourBlock(kind_, 8)), ENOENT);
  EXPECT_EQ(List("downlink").error, ENOENT);
  EXPECT_EQ(List(unterminated).error, EINVAL);
  EXPECT_EQ(Execute(datapath_, kind_.list, Wire(968), kRoomForAll).error, EINVAL);
  EXPECT_EQ(Execute(datapath_, kind_.list, Block("edge-2"), kRoomForAll).error, ENOENT);
  EXPECT_EQ(Execute(datapath_, kind_.list, ListBlock(kind_), 935).error, EINVAL);
  EXPECT_EQ(datapath_.state(), before);
}

TEST_P(SimulatedNeighbours, AnInstanceHasRoomForEightThousandOfAList) {
  for (uint32_t number = 0; number < 8192; ++number) {
    ASSERT_EQ(Set(NeighbourBlock(kind_, number, number % 2 == 0 ? "uplink" : "lan")), 0) << number;
  }
  EXPECT_EQ(Set(NeighbourBlock(kind_, 8192)), ENOSPC);
  EXPECT_EQ(Set(NeighbourBlock(kind_, 0, "lan")), ENOSPC);
  EXPECT_EQ(Set(NeighbourBlock(kind_, 0)), 0) << "an update needs no room";
  EXPECT_EQ(List().reply.size(), 7667712U);
  // What stands in another list has room of its own.
  for (const Kind& kind : {kArp, kProxyArp, kArpv6, kProxyArpv6}) {
    if (kind.name == kind_.name) continue;
    const bool isSameList = kind.list == 116 && kind_.list == 116;
    EXPECT_EQ(Do(kind.set, NeighbourBlock(kind, 0)), isSameList ? ENOSPC : 0) << kind.name;
  }
}

INSTANTIATE_TEST_SUITE_P(Every, SimulatedNeighbours,
                         testing::Values(kArp, kProxyArp, kArpv6, kProxyArpv6),
                         [](const auto& kind) { return std::string(kind.param.name); });

// Those that have a hardware address.
class NeighboursWithMac : public SimulatedNeighbours {};

TEST_P(NeighboursWithMac, ATextThatIsNoHardwareAddressIsRefused) {
  ASSERT_EQ(Set(NeighbourBlock(kind_, 7)), 0);
  const vdrsim::State before = datapath_.state();
  const std::vector<std::string> texts = {
      "",
      "02:12:22:32:42",
      "02:12:22:32:42:5",
      "0g:12:22:32:42:52",
      "02:12:22:32:42:5g",
      " 2:12:22:32:42:52",
      "-2:12:22:32:42:52",
      "02.12:22:32:42:52",
      "02:12:22:32:42.52",
      "02:12:22:32:42:52:",
  };
  for (const std::string& text : texts) {
    // One character more has room in the IPv6 command alone.
    if (text.size() > 17 && kind_.set == 38) continue;
    EXPECT_EQ(Set(NeighbourBlock(kind_, 7, "uplink", text)), EINVAL) << text;
  }
  EXPECT_EQ(datapath_.state(), before);
}

TEST_P(NeighboursWithMac, ClearingLeavesProxiesAndOtherFamilies) {
  const uint32_t clear = kind_.set == 38 ? 41 : 117;
  const auto fill = [&] {
    for (const Kind& kind : {kArp, kProxyArp, kArpv6, kProxyArpv6}) {
      for (const char* lif : {"uplink", "lan"}) {
        ASSERT_EQ(Do(kind.set, NeighbourBlock(kind, 7, lif)), 0);
      }
    }
  };
  // How many there are of the kind that is cleared, and of all four.
  const auto expect = [&](size_t cleared, size_t others) {
    const size_t all =
        ListOf(kArp).reply.size() + ListOf(kProxyArp).reply.size() + ListOf(kArpv6).reply.size();
    EXPECT_EQ(all, (cleared + others) * 936);
    const size_t proxies = kind_.list == 116 ? 2 : 0;
    EXPECT_EQ(List().reply.size(), (cleared + proxies) * 936);
  };
  fill();
  ASSERT_EQ(Do(clear, Block("edge-1").Text(384, "lan")), 0);
  expect(1, 6);
  EXPECT_EQ(Remove(NeighbourBlock(kind_, 7, "lan")), ENOENT);
  fill();
  ASSERT_EQ(Do(clear, Block("edge-1")), 0);
  expect(0, 6);
  EXPECT_EQ(Do(clear, Block("edge-1")), 0) << "nothing is left to clear";
}

TEST_P(NeighboursWithMac, ClearingWhatIsNotNamedOrNotThereIsRefused) {
  const uint32_t clear = kind_.set == 38 ? 41 : 117;
  ASSERT_EQ(Set(NeighbourBlock(kind_, 7)), 0);
  const vdrsim::State before = datapath_.state();
  EXPECT_EQ(Do(clear, Block()), EINVAL);
  EXPECT_EQ(Do(clear, Block("edge-2")), ENOENT);
  EXPECT_EQ(Do(clear, Block("edge-1").Text(384, "downlink")), ENOENT);
  EXPECT_EQ(Do(clear, Block("edge-1").Text(384, std::string(64, 'n'))), EINVAL);
  EXPECT_EQ(datapath_.state(), before);
}

TEST_P(NeighboursWithMac, ALifCountsWhatItsNeighboursDo) {
  ASSERT_EQ(Set(NeighbourBlock(kind_, 7)), 0);
  ASSERT_EQ(Set(NeighbourBlock(kind_, 7, "uplink", "none")), EINVAL);
  ASSERT_EQ(List("uplink").error, 0);
  ASSERT_EQ(List().error, 0);
  ASSERT_EQ(Remove(NeighbourBlock(kind_, 7)), 0);
  ASSERT_EQ(Do(kind_.set == 38 ? 41 : 117, Block("edge-1").Text(384, "uplink")), 0);
  const Result stats = Execute(datapath_, 23, Block("edge-1").Text(384, "uplink"), 852);
  // The LIF itself was set as well.
  EXPECT_EQ(Difference(stats, Wire(852).U64(4, 2).U64(12, 2).U64(20, 1).U64(28, 1)), "");
}

INSTANTIATE_TEST_SUITE_P(Every, NeighboursWithMac, testing::Values(kArp, kArpv6),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST(SimulatedNeighbour, AnIpv6AddressIsAllOfItsSixteenBytes) {
  Datapath datapath;
  ASSERT_EQ(Execute(datapath, 2, Block("edge-1")).error, 0);
  ASSERT_EQ(Execute(datapath, 19, Block("edge-1").Text(384, "uplink")).error, 0);
  const Wire block =
      NeighbourBlock(kArpv6, 0).U64(320, 0x0102030405060708).U64(328, 0x1112131415161718);
  ASSERT_EQ(Execute(datapath, 112, block).error, 0);
  EXPECT_EQ(Difference(Execute(datapath, 116, Block("edge-1"), kRoomForAll),
                       Record(kArpv6, 0).U64(0, 0x0102030405060708).U64(8, 0x1112131415161718)),
            "");
}

}  // namespace
