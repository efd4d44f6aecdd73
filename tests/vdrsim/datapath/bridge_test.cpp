#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <vector>

#include "simulated.h"

namespace {

using in_process::Block;
using in_process::Bytes;
using in_process::Difference;
using in_process::Execute;
using in_process::Result;
using in_process::Wire;

Wire BridgeBlock(std::string_view instance, uint32_t value) {
  return Block(instance).U32(256, value);
}

// A bridge that was set `sets` times and looked up `lookups` times before.
Wire Record(std::string_view instance, uint32_t value, uint64_t sets = 1, uint64_t lookups = 0) {
  return Wire(393).U32(8, value).Text(12, instance).U64(313, sets).U64(321, lookups);
}

Wire Joined(const std::vector<Wire>& records) {
  Wire all(0);
  for (const Wire& record : records) {
    Wire longer(all.bytes().size() + record.bytes().size());
    const auto text = [](const Wire& wire) {
      return std::string_view(reinterpret_cast<const char*>(wire.bytes().data()),
                              wire.bytes().size());
    };
    longer.Text(0, text(all)).Text(all.bytes().size(), text(record));
    all = longer;
  }
  return all;
}

class SimulatedBridges : public in_process::Simulated {
 protected:
  SimulatedBridges() {
    EXPECT_EQ(Do(2, Block("edge-1")), 0);
    EXPECT_EQ(Do(53, BridgeBlock("edge-1", 7)), 0);
  }

  Result Get(std::string_view instance = "edge-1") {
    return Execute(datapath_, 62, Block(instance), 393);
  }
  Result List() { return Execute(datapath_, 61, Block(), 4096 * 393); }
};

TEST_F(SimulatedBridges, ABridgeIsKnownByItsInstanceAndItsValue) {
  ASSERT_EQ(Do(53, BridgeBlock("edge-1", 0x01020304)), 0);
  ASSERT_EQ(Do(53, BridgeBlock("edge-1", 7)), 0) << "setting twice updates";
  ASSERT_EQ(Do(2, Block("edge-0")), 0);
  ASSERT_EQ(Do(53, BridgeBlock("edge-0", 7)), 0);
  EXPECT_EQ(Difference(List(), Joined({Record("edge-0", 7), Record("edge-1", 7, 2),
                                       Record("edge-1", 0x01020304)})),
            "");
  EXPECT_EQ(Do(54, BridgeBlock("edge-1", 8)), ENOENT);
  ASSERT_EQ(Do(54, BridgeBlock("edge-1", 7)), 0);
  EXPECT_EQ(Do(54, BridgeBlock("edge-1", 7)), ENOENT);
  EXPECT_EQ(Difference(List(), Joined({Record("edge-0", 7), Record("edge-1", 0x01020304)})), "");
}

TEST_F(SimulatedBridges, TheInstanceFindsTheOneOfTheLowestValue) {
  ASSERT_EQ(Do(53, BridgeBlock("edge-1", 9)), 0);
  EXPECT_EQ(Difference(Get(), Record("edge-1", 7)), "");
  EXPECT_EQ(Difference(Get(), Record("edge-1", 7, 1, 1)), "") << "the lookup before was counted";
  ASSERT_EQ(Do(53, BridgeBlock("edge-1", 0)), 0);
  EXPECT_EQ(Difference(Get(), Record("edge-1", 0)), "");
}

TEST_F(SimulatedBridges, EnablingReadsOneByteOfTheValue) {
  ASSERT_EQ(Do(55, Block("edge-1").U32(256, 0xffffff07)), 0);
  EXPECT_EQ(Difference(Get(), Record("edge-1", 7, 2).U32(76, 1)), "");
  ASSERT_EQ(Do(56, Block("edge-1").U32(256, 0xffffff07)), 0);
  EXPECT_EQ(Difference(Get(), Record("edge-1", 7, 3, 1)), "");
  EXPECT_EQ(Do(55, Block("edge-1").U8(256, 8)), ENOENT);
  EXPECT_EQ(Do(56, Block("edge-1").U8(256, 8)), ENOENT);
}

TEST_F(SimulatedBridges, WhatTheBridgesOfAnInstanceShareShowsInEachAndEndsWithTheLast) {
  ASSERT_EQ(Do(53, BridgeBlock("edge-1", 9)), 0);
  ASSERT_EQ(Do(49, Block("edge-1").U32(300, 0x01020304)), 0);
  ASSERT_EQ(Do(118, Block("edge-1").U32(256, 0x05060708)), 0);
  const auto shown = [](uint32_t value) {
    return Record("edge-1", value).U32(80, 0x01020304).U32(305, 0x05060708);
  };
  EXPECT_EQ(Difference(List(), Joined({shown(7), shown(9)})), "");
  ASSERT_EQ(Do(54, BridgeBlock("edge-1", 7)), 0);
  EXPECT_EQ(Difference(List(), shown(9)), "");
  ASSERT_EQ(Do(54, BridgeBlock("edge-1", 9)), 0);
  ASSERT_EQ(Do(53, BridgeBlock("edge-1", 9)), 0);
  EXPECT_EQ(Difference(List(), Record("edge-1", 9)), "");
}

TEST_F(SimulatedBridges, TheyDieWithTheirInstance) {
  ASSERT_EQ(Do(3, Block("edge-1")), 0);
  EXPECT_EQ(Get().error, ENOENT);
  EXPECT_EQ(Difference(List(), Wire(0)), "");
  ASSERT_EQ(Do(2, Block("edge-1")), 0);
  EXPECT_EQ(Get().error, ENOENT);
}

Wire FdbBlock(std::string_view mac, uint32_t segment = 0x01020304, uint32_t selector = 0x05060708) {
  return Block("edge-1").U32(260, segment).U32(264, selector).U32(268, 1).Text(276, mac);
}

TEST_F(SimulatedBridges, WhatIsNotNamedOrNotThereIsRefused) {
  ASSERT_EQ(Do(2, Block("edge-2")), 0);
  const std::string unterminated(64, 'n');
  const Wire fdb = FdbBlock("02:12:22:32:42:52");
  const vdrsim::State before = datapath_.state();
  for (const uint32_t code : {49U, 54U, 55U, 56U, 62U, 63U, 64U, 65U, 66U, 67U, 118U}) {
    SCOPED_TRACE(code);
    const auto error = [&](std::string_view instance) {
      const Wire block = Wire(fdb).U64(0, 0).Text(0, instance);
      const Result result = Execute(datapath_, code, block, 32768 * 146);
      EXPECT_TRUE(result.reply.empty());
      return result.error;
    };
    EXPECT_EQ(error(""), EINVAL);
    EXPECT_EQ(error(unterminated), EINVAL);
    EXPECT_EQ(error("edge-3"), ENOENT);
    EXPECT_EQ(error("edge-2"), ENOENT) << "it has no bridge";
  }
  EXPECT_EQ(Do(53, BridgeBlock("", 7)), EINVAL);
  EXPECT_EQ(Do(53, BridgeBlock("edge-3", 7)), ENOENT);
  EXPECT_EQ(datapath_.state(), before);
}

TEST_F(SimulatedBridges, ThereIsRoomFor4096OverAllInstances) {
  ASSERT_EQ(Do(2, Block("edge-2")), 0);
  for (uint32_t value = 1; value < 4096; ++value) {
    ASSERT_EQ(Do(53, BridgeBlock(value % 2 == 0 ? "edge-1" : "edge-2", 1000 + value)), 0);
  }
  const vdrsim::State before = datapath_.state();
  EXPECT_EQ(Do(53, BridgeBlock("edge-1", 1)), ENOSPC);
  EXPECT_EQ(Do(53, BridgeBlock("edge-2", 1)), ENOSPC);
  EXPECT_EQ(datapath_.state(), before);
  EXPECT_EQ(List().reply.size(), 4096U * 393);
  EXPECT_EQ(Do(53, BridgeBlock("edge-1", 7)), 0) << "an update needs no room";
  ASSERT_EQ(Do(54, BridgeBlock("edge-2", 1001)), 0);
  EXPECT_EQ(Do(53, BridgeBlock("edge-1", 1)), 0);
}

TEST_F(SimulatedBridges, CommandsAreCountedAtTheInstance) {
  ASSERT_EQ(Do(49, Block("edge-1")), 0);
  ASSERT_EQ(Do(54, BridgeBlock("edge-1", 8)), ENOENT);
  ASSERT_EQ(Do(67, Block("edge-1")), 0);
  ASSERT_EQ(Get().error, 0);
  EXPECT_EQ(Difference(Execute(datapath_, 5, Block("edge-1"), 852),
                       Wire(852).U32(0, 1).U64(4, 3).U64(12, 1).U64(20, 1).U64(28, 1)),
            "");
}

class SimulatedForwarding : public SimulatedBridges {
 protected:
  Result Entries(uint32_t segment = 0x01020304, uint32_t selector = 0x05060708) {
    return Execute(datapath_, 65, FdbBlock("", segment, selector), 10240 * 20);
  }
  static Wire Entry(std::string_view mac, uint32_t value = 0, uint8_t flag = 0) {
    return Wire(20).Text(0, mac).U32(6, 0x01020304).U8(11, flag).U32(12, value).U32(16, 0x05060708);
  }
};

TEST_F(SimulatedForwarding, AnEntryIsReadBackAsItWasSet) {
  ASSERT_EQ(Do(66, FdbBlock("f2:12:22:32:42:5A").U32(272, 0x090a0b0c).U8(294, 0x0d).U32(296, 1)),
            0);
  ASSERT_EQ(Do(66, FdbBlock("02-12-22-32-42-ff")), 0);
  const Wire second = Entry("\xf2\x12\x22\x32\x42\x5a", 0x090a0b0c, 0x0d);
  EXPECT_EQ(Difference(Entries(), Joined({Entry("\x02\x12\x22\x32\x42\xff"), second})), "");
  ASSERT_EQ(Do(66, FdbBlock("02:12:22:32:42:FF").U32(272, 5)), 0);
  EXPECT_EQ(Difference(Entries(), Joined({Entry("\x02\x12\x22\x32\x42\xff", 5), second})), "");
}

TEST_F(SimulatedForwarding, EachSegmentAndSelectorHasATableOfItsOwn) {
  ASSERT_EQ(Do(66, FdbBlock("02:12:22:32:42:52")), 0);
  ASSERT_EQ(Do(66, FdbBlock("02:12:22:32:42:53", 1)), 0);
  EXPECT_EQ(Difference(Entries(), Entry("\x02\x12\x22\x32\x42\x52")), "");
  EXPECT_EQ(Difference(Entries(2), Wire(0)), "");
  EXPECT_EQ(Difference(Entries(1, 2), Wire(0)), "");
  EXPECT_EQ(Do(67, FdbBlock("", 1, 2)), 0) << "an empty one can be cleared";
  EXPECT_EQ(Entries(1).reply.size(), 20U);
  ASSERT_EQ(Do(67, FdbBlock("", 1)), 0);
  EXPECT_EQ(Difference(Entries(1), Wire(0)), "");
  EXPECT_EQ(Entries().reply.size(), 20U);
}

TEST_F(SimulatedForwarding, WhatIsNoHardwareAddressIsRefused) {
  const vdrsim::State before = datapath_.state();
  for (const char* text : {"", "02:12:22:32:42", "02:12:22:32:42:5", "02:12:22:32:42:5g",
                           "02:12:22:32:42:52:", "02:12:22:32:42.52", "0212:22:32:42:520",
                           "+2:12:22:32:42:52", " 2:12:22:32:42:52"}) {
    EXPECT_EQ(Do(66, FdbBlock(text)), EINVAL) << text;
  }
  EXPECT_EQ(datapath_.state(), before);
}

TEST_F(SimulatedForwarding, ItDiesWithTheLastBridge) {
  ASSERT_EQ(Do(66, FdbBlock("02:12:22:32:42:52")), 0);
  ASSERT_EQ(Do(54, BridgeBlock("edge-1", 7)), 0);
  EXPECT_EQ(Entries().error, ENOENT);
  ASSERT_EQ(Do(53, BridgeBlock("edge-1", 7)), 0);
  EXPECT_EQ(Difference(Entries(), Wire(0)), "");
}

TEST_F(SimulatedForwarding, ATableHasRoomFor10240Entries) {
  const auto mac = [](int number) {
    char text[18];
    (void)std::snprintf(text, sizeof text, "02:00:00:00:%02x:%02x", number / 256, number % 256);
    return std::string(text);
  };
  for (int number = 0; number < 10240; ++number) ASSERT_EQ(Do(66, FdbBlock(mac(number))), 0);
  EXPECT_EQ(Do(66, FdbBlock(mac(10240))), ENOSPC);
  EXPECT_EQ(Do(66, FdbBlock(mac(10240), 1)), 0) << "of another table";
  EXPECT_EQ(Do(66, FdbBlock(mac(77)).U32(272, 5)), 0) << "an update needs no room";
  const Result all = Entries();
  ASSERT_EQ(all.reply.size(), 204800U);
  EXPECT_EQ(all.WordAt(77 * 20 + 12), 5U);
}

// An endpoint of the bridge LIF "bridged" that belongs to a bridge and a network.
Wire EndpointBlock(std::string_view name, uint32_t bridge, uint16_t tag) {
  return Wire(968).Text(320, name).Text(384, "bridged").U32(544, bridge).U16(720, tag);
}

class SimulatedNetworks : public SimulatedBridges {
 protected:
  SimulatedNetworks() { EXPECT_EQ(Do(57, Block("edge-1").Text(384, "bridged")), 0); }

  Result Networks() { return Execute(datapath_, 63, Block("edge-1"), 32768 * 133); }
  Result Ports(uint32_t network, uint32_t bridge) {
    return Execute(datapath_, 64, Block("edge-1").U32(260, network).U32(264, bridge).U32(268, 1),
                   32768 * 146);
  }
  static Wire Network(uint64_t ports, uint32_t bridge, uint16_t tag) {
    return Wire(133).U64(0, ports).U32(8, bridge).U16(12, tag);
  }
  static Wire Port(std::string_view name, uint32_t bridge, uint16_t tag) {
    return Wire(146).U64(0, 1).U32(8, bridge).U16(12, tag).Text(18, "bridged").Text(82, name);
  }
  static Wire OwnPort(uint32_t bridge) { return Wire(146).U32(8, bridge); }
};

TEST_F(SimulatedNetworks, TheyFollowFromBridgesAndEndpoints) {
  EXPECT_EQ(Difference(Networks(), Network(1, 7, 0)), "");
  ASSERT_EQ(Do(53, BridgeBlock("edge-1", 3)), 0);
  ASSERT_EQ(Do(45, EndpointBlock("a", 7, 0x0102)), 0);
  ASSERT_EQ(Do(45, EndpointBlock("b", 7, 0x0102)), 0);
  ASSERT_EQ(Do(45, EndpointBlock("c", 3, 0)), 0);
  ASSERT_EQ(Do(45, EndpointBlock("d", 8, 1)), 0) << "there is no bridge 8";
  EXPECT_EQ(
      Difference(Networks(), Joined({Network(2, 3, 0), Network(1, 7, 0), Network(2, 7, 0x0102)})),
      "");
  ASSERT_EQ(Do(53, BridgeBlock("edge-1", 8)), 0);
  ASSERT_EQ(Do(54, BridgeBlock("edge-1", 7)), 0);
  EXPECT_EQ(Difference(Networks(), Joined({Network(2, 3, 0), Network(1, 8, 0), Network(1, 8, 1)})),
            "");
}

TEST_F(SimulatedNetworks, TheyShowTheStateOfTheirBridge) {
  ASSERT_EQ(Do(55, Block("edge-1").U8(256, 7)), 0);
  ASSERT_EQ(Do(49, Block("edge-1").U32(300, 0x01020304)), 0);
  ASSERT_EQ(Do(118, Block("edge-1").U32(256, 0x05060708)), 0);
  EXPECT_EQ(
      Difference(Networks(), Network(1, 7, 0).U32(14, 0x01020304).U32(20, 0x05060708).U8(28, 1)),
      "");
}

TEST_F(SimulatedNetworks, PortsAreThoseOfOneNetwork) {
  ASSERT_EQ(Do(53, BridgeBlock("edge-1", 3)), 0);
  ASSERT_EQ(Do(45, EndpointBlock("a", 7, 5).U32(548, 0x01020304)), 0);
  ASSERT_EQ(Do(45, EndpointBlock("b", 3, 5)), 0);
  ASSERT_EQ(Do(45, EndpointBlock("c", 3, 0)), 0);
  ASSERT_EQ(Do(45, EndpointBlock("d", 8, 5)), 0) << "there is no bridge 8";
  const Wire port = Port("a", 7, 5).U32(14, 0x01020304);
  EXPECT_EQ(Difference(Ports(5, 7), port), "");
  EXPECT_EQ(Difference(Ports(5, 0), Joined({Port("b", 3, 5), port})), "") << "of any bridge";
  EXPECT_EQ(Difference(Ports(0, 0), Joined({OwnPort(3), Port("c", 3, 0), OwnPort(7)})), "");
  EXPECT_EQ(Difference(Ports(0, 3), Joined({OwnPort(3), Port("c", 3, 0)})), "");
  EXPECT_EQ(Difference(Ports(6, 7), Wire(0)), "");
  EXPECT_EQ(Difference(Ports(0x10005, 7), Wire(0)), "");
  EXPECT_EQ(Ports(5, 8).error, ENOENT);
}

TEST_F(SimulatedNetworks, PortsShowNamesOfAnyLength) {
  const std::string lif(63, 'l');
  const std::string name = "abcdefgh" + std::string(55, 'n');
  ASSERT_EQ(Do(57, Block("edge-1").Text(384, lif)), 0);
  ASSERT_EQ(Do(45, Wire(968).Text(320, name).Text(384, lif).U32(544, 7).U16(720, 5)), 0);
  EXPECT_EQ(Difference(Ports(5, 7),
                       Wire(146).U64(0, 1).U32(8, 7).U16(12, 5).Text(18, lif).Text(82, name)),
            "");
}

TEST_F(SimulatedNetworks, TheirListsAreFullWithAllBridgesAndEndpoints) {
  for (uint32_t value = 1000; value < 1000 + 4095; ++value) {
    ASSERT_EQ(Do(53, BridgeBlock("edge-1", value)), 0);
  }
  const auto setAll = [&](bool tagged) {
    for (int number = 0; number < 28672; ++number) {
      const auto tag = static_cast<uint16_t>(tagged ? number + 1 : 0);
      ASSERT_EQ(Do(45, EndpointBlock(std::to_string(number), 7, tag)), 0);
    }
  };
  setAll(true);
  EXPECT_EQ(Networks().reply.size(), 32768U * 133);
  setAll(false);
  EXPECT_EQ(Networks().reply.size(), 4096U * 133);
  EXPECT_EQ(Ports(0, 0).reply.size(), 32768U * 146);
  EXPECT_EQ(Ports(0, 7).reply.size(), 28673U * 146);
}

}  // namespace
