#include <gtest/gtest.h>
#include <vdrzax/bridge.h>

#include <climits>
#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using wire::Block;

Block BridgeLifBlock() {
  return Block()
      .Text(0, "edge-1")
      .Text(256, "second")
      .Text(384, "lif-1")
      .U32(520, 0x31323334)
      .U32(544, 0x11121314)
      .U32(548, 0x21222324);
}

int SetBridgeLif(int set) {
  return VDRZAX_SetBridgeLif("lif-1", "second", 0x11121314, 0x21222324, 0x31323334, "edge-1", set);
}

int AddEndpoint() {
  return VDRZAX_AddBridgeEndpoint("lif-1", "second", "endpoint-1", 0x11121314, 0x21222324, "fourth",
                                  0x4142, 0x51, "fifth", 0x61);
}

TEST(BridgeLifs, SettingALifSendsEveryArgumentToItsPlace) {
  ExpectCommand([] { return SetBridgeLif(1); }, 57, BridgeLifBlock());
}

TEST(BridgeLifs, ClearingALifSendsTheSameBlockUnderAnotherCode) {
  ExpectCommand([] { return SetBridgeLif(0); }, 58, BridgeLifBlock());
}

TEST(BridgeLifs, EveryLastArgumentBut0Sets) {
  for (const int set : {2, -1, 256, 0x10000, INT_MIN, INT_MAX}) {
    ExpectCommand([&] { return SetBridgeLif(set); }, 57, BridgeLifBlock());
  }
}

TEST(BridgeLifs, AddingAnEndpointSendsEveryArgumentToItsPlace) {
  ExpectCommand(AddEndpoint, 45,
                Block()
                    .Text(256, "second")
                    .Text(320, "endpoint-1")
                    .Text(384, "lif-1")
                    .Text(448, "fourth")
                    .U32(544, 0x11121314)
                    .U32(548, 0x21222324)
                    .U16(720, 0x4142)
                    .Text(722, "fifth")
                    .U8(786, 0x51)
                    .U8(787, 0x61));
}

TEST(BridgeLifs, DeletingAnEndpointSendsTwoNames) {
  ExpectCommand([] { return VDRZAX_DelBridgeEndpoint("lif-1", "endpoint-1"); }, 46,
                Block().Text(320, "endpoint-1").Text(384, "lif-1"));
}

TEST(BridgeLifs, NoEndpointCommandNamesAnInstance) {
  fake::Device device;
  ASSERT_EQ(AddEndpoint(), 0);
  ASSERT_EQ(VDRZAX_DelBridgeEndpoint("lif-1", "endpoint-1"), 0);
  ASSERT_EQ(device.commands.size(), 2u);
  for (const fake::Command& command : device.commands) {
    ASSERT_EQ(command.input.size(), 968u);
    EXPECT_BYTES(wire::BytesOf(command.input.data(), 64), fake::Bytes(64));
  }
}

TEST(BridgeLifs, FlushChoosesByTheCodeAloneAndSends968ZeroBytes) {
  for (const int all : {1, 2, 128, 255}) {
    ExpectCommand([&] { return VDRZAX_FlushBridgeEndpoint(static_cast<uint8_t>(all)); }, 47,
                  Block());
  }
  ExpectCommand([] { return VDRZAX_FlushBridgeEndpoint(0); }, 48, Block());
}

TEST(BridgeLifs, TheReplicationModeStandsAt300) {
  ExpectCommand([] { return VDRZAX_SetBridgeRepMode("edge-1", 0x11121314); }, 49,
                Block().Text(0, "edge-1").U32(300, 0x11121314));
}

TEST(BridgeLifs, NamesOf64CharactersAreCutTo63AndTerminated) {
  const auto name = [](char letter) { return std::string(64, letter); };
  const auto cut = [](char letter) { return std::string(63, letter); };
  ExpectCommand(
      [&] {
        return VDRZAX_SetBridgeLif(name('l').c_str(), name('2').c_str(), 0, 0, 0, name('n').c_str(),
                                   1);
      },
      57, Block().Text(0, cut('n')).Text(256, cut('2')).Text(384, cut('l')));
  ExpectCommand(
      [&] {
        return VDRZAX_AddBridgeEndpoint(name('l').c_str(), name('2').c_str(), name('e').c_str(), 0,
                                        0, name('4').c_str(), 0xFFFF, 0xFF, name('5').c_str(),
                                        0xFE);
      },
      45,
      Block()
          .Text(256, cut('2'))
          .Text(320, cut('e'))
          .Text(384, cut('l'))
          .Text(448, cut('4'))
          .U16(720, 0xFFFF)
          .Text(722, cut('5'))
          .U8(786, 0xFF)
          .U8(787, 0xFE));
  ExpectCommand([&] { return VDRZAX_DelBridgeEndpoint(name('l').c_str(), name('e').c_str()); }, 46,
                Block().Text(320, cut('e')).Text(384, cut('l')));
  ExpectCommand([&] { return VDRZAX_SetBridgeRepMode(name('n').c_str(), 0); }, 49,
                Block().Text(0, cut('n')));
}

TEST(BridgeLifs, EmptyNamesAreSentAsZeros) {
  ExpectCommand([] { return VDRZAX_SetBridgeLif("", "", 0, 0, 0, "", 0); }, 58, Block());
  ExpectCommand([] { return VDRZAX_AddBridgeEndpoint("", "", "", 0, 0, "", 0, 0, "", 0); }, 45,
                Block());
  ExpectCommand([] { return VDRZAX_DelBridgeEndpoint("", ""); }, 46, Block());
  ExpectCommand([] { return VDRZAX_SetBridgeRepMode("", 0); }, 49, Block());
}

TEST(BridgeLifsDeathTest, EveryNameThatIsNullFaults) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_SetBridgeLif(nullptr, "s", 1, 2, 3, "e", 1), "");
  EXPECT_DEATH(VDRZAX_SetBridgeLif("l", nullptr, 1, 2, 3, "e", 1), "");
  EXPECT_DEATH(VDRZAX_SetBridgeLif("l", "s", 1, 2, 3, nullptr, 0), "");
  EXPECT_DEATH(VDRZAX_AddBridgeEndpoint(nullptr, "s", "e", 1, 2, "4", 3, 4, "5", 5), "");
  EXPECT_DEATH(VDRZAX_AddBridgeEndpoint("l", nullptr, "e", 1, 2, "4", 3, 4, "5", 5), "");
  EXPECT_DEATH(VDRZAX_AddBridgeEndpoint("l", "s", nullptr, 1, 2, "4", 3, 4, "5", 5), "");
  EXPECT_DEATH(VDRZAX_AddBridgeEndpoint("l", "s", "e", 1, 2, nullptr, 3, 4, "5", 5), "");
  EXPECT_DEATH(VDRZAX_AddBridgeEndpoint("l", "s", "e", 1, 2, "4", 3, 4, nullptr, 5), "");
  EXPECT_DEATH(VDRZAX_DelBridgeEndpoint(nullptr, "e"), "");
  EXPECT_DEATH(VDRZAX_DelBridgeEndpoint("l", nullptr), "");
  EXPECT_DEATH(VDRZAX_SetBridgeRepMode(nullptr, 1), "");
}

}  // namespace
