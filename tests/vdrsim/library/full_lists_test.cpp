#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "subject.h"

// Lists that no single kind of objects fills, by the library.

namespace {

using library::BridgeNetworks;
using library::BridgePorts;
using library::ErrorOf;
using library::Numbered;
using library::Read;
using wire::Bytes;
using wire::Wire;

void Join(Bytes& all, const Wire& record) {
  all.insert(all.end(), record.bytes().begin(), record.bytes().end());
}

// The library names a bridge by a byte, so an instance has at most 256 of them; the datapath's own
// lists have room for 32768.
class FullBridges : public testing::Test {
 protected:
  static constexpr int kBridges = 256;
  static constexpr int kEndpoints = 28672;
  static constexpr uint32_t kOwner = 7;  // of all endpoints

  FullBridges() {
    EXPECT_EQ(VDRZAX_SetVdrInstance("edge-1", 0, nullptr, 0, 0), 0);
    EXPECT_EQ(VDRZAX_SetBridgeLif("bridged", "", 0, 0, 0, "edge-1", 1), 0);
    for (int value = 0; value < kBridges; ++value) {
      EXPECT_EQ(VDRZAX_BridgeAdd("edge-1", static_cast<uint8_t>(value)), 0);
    }
  }
  ~FullBridges() override { EXPECT_EQ(VDRZAX_DelVdrInstance("edge-1"), 0); }

  // Endpoint N has the tag `step` * (N + 1).
  static void AddEndpoints(int step) {
    for (int number = 0; number < kEndpoints; ++number) {
      const auto tag = static_cast<uint16_t>(step * (number + 1));
      const std::string name = Numbered("endpoint", number);
      ASSERT_EQ(VDRZAX_AddBridgeEndpoint("bridged", "", name.c_str(), kOwner, 0, "", tag, 0, "", 0),
                0);
    }
  }
};

TEST_F(FullBridges, EachEndpointCanHaveANetworkOfItsOwn) {
  AddEndpoints(1);
  Bytes expected;
  for (uint32_t bridge = 0; bridge < kBridges; ++bridge) {
    Join(expected, Wire(133).U64(0, 1).U32(8, bridge));
    for (int number = 0; bridge == kOwner && number < kEndpoints; ++number) {
      Join(expected, Wire(133).U64(0, 1).U32(8, bridge).U16(12, static_cast<uint16_t>(1 + number)));
    }
  }
  const Read networks = BridgeNetworks("edge-1");
  EXPECT_EQ(networks.error, 0);
  EXPECT_EQ(wire::Difference(networks.bytes, expected), "");
}

TEST_F(FullBridges, AllEndpointsCanBePortsOfOneNetwork) {
  AddEndpoints(0);
  Bytes expected;
  Join(expected, Wire(146).U32(8, kOwner));
  for (int number = 0; number < kEndpoints; ++number) {
    Join(expected, Wire(146)
                       .U64(0, 1)
                       .U32(8, kOwner)
                       .Text(18, "bridged")
                       .Text(82, Numbered("endpoint", number)));
  }
  const Read ports = BridgePorts("edge-1", 0, kOwner);
  EXPECT_EQ(ports.error, 0);
  EXPECT_EQ(wire::Difference(ports.bytes, expected), "");
}

// An entry with one item takes 22 bytes. What is left of the table's 8536064 has room for 5 items
// more, but for no entry. Run by itself: nothing is deleted, which would take as long again.
TEST(AllPublicAddresses, FillTheirTable) {
  constexpr uint32_t kMost = 388002;
  const MacValue mac{{2, 0x12, 0x22, 0x32, 0x42, 0x52}};
  const auto add = [&](uint32_t address, uint32_t item) {
    return ErrorOf(VDRZAX_AddVMPublicIP(address, item, &mac, 0x01020304));
  };
  for (uint32_t address = 0; address < kMost; ++address) ASSERT_EQ(add(address, ~address), 0);
  EXPECT_EQ(add(kMost, 1), ENOSPC);
  for (uint32_t item = 0; item < 5; ++item) EXPECT_EQ(add(kMost - 1, item), 0);
  EXPECT_EQ(add(kMost - 1, 5), ENOSPC);

  Bytes expected;
  for (uint32_t address = 0; address < kMost; ++address) {
    const bool isLast = address == kMost - 1;
    Wire entry(isLast ? 42 : 22);
    entry.U32(0, address)
        .Text(4, {"\x02\x12\x22\x32\x42\x52", 6})
        .U32(10, 0x01020304)
        .U32(14, isLast ? 6 : 1);
    for (uint32_t item = 0; isLast && item < 5; ++item) entry.U32(18 + 4 * item, item);
    Join(expected, entry.U32(isLast ? 38 : 18, ~address));
  }
  VMPublicIPTable* table = nullptr;
  ASSERT_EQ(VDRZAX_GetVMPublicIPTable(&table), 0);
  EXPECT_EQ(table->entryCount, kMost);
  Bytes read(sizeof table->entries);
  std::memcpy(read.data(), table->entries, expected.size());
  VDRZAX_ReleaseVMPublicIPTable(table);
  read.resize(expected.size());
  EXPECT_EQ(wire::Difference(read, expected), "");
}

}  // namespace
