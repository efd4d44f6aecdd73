#include <gtest/gtest.h>
#include <vdrzax/bridge.h>

#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using wire::Block;

TEST(BridgeAdmin, AddDeleteAndHaStateSendFourBytesAt256) {
  const Block block = Block().Text(0, "edge-1").U32(256, 0x11223344);
  ExpectCommand([] { return VDRZAX_BridgeAdd("edge-1", 0x11223344); }, 53, block);
  ExpectCommand([] { return VDRZAX_BridgeDel("edge-1", 0x11223344); }, 54, block);
  ExpectCommand([] { return VDRZAX_BridgeSetHAAdminState("edge-1", 0x11223344); }, 118, block);
}

TEST(BridgeAdmin, EnableAndDisableSendOneByteAt256AndLeave257To259Zero) {
  const Block block = Block().Text(0, "edge-1").U8(256, 0xFF);
  ExpectCommand([] { return VDRZAX_BridgeEnable("edge-1", 0xFF); }, 55, block);
  ExpectCommand([] { return VDRZAX_BridgeDisable("edge-1", 0xFF); }, 56, block);
}

TEST(BridgeAdmin, SetConfigSendsTheCallersCommandWithItsValueAt296AndNothingAt256) {
  ExpectCommand([] { return VDRZAX_BridgeSetConfig("edge-1", 118, 5); }, 118,
                Block().Text(0, "edge-1").U32(296, 5));
}

TEST(BridgeAdmin, SetConfigNeitherChecksNorMapsTheCommand) {
  struct Code {
    uint32_t given;
    unsigned long sent;
  };
  for (const Code code :
       {Code{0, 0}, Code{53, 53}, Code{68, 68}, Code{1000, 1000}, Code{0x7FFFFFFF, 0x7FFFFFFF},
        Code{0x80000000, 0xFFFFFFFF80000000}, Code{0xFFFFFFFF, 0xFFFFFFFFFFFFFFFF}}) {
    SCOPED_TRACE(code.given);
    ExpectCommand([&] { return VDRZAX_BridgeSetConfig("edge-1", code.given, 0xA1B2C3D4); },
                  code.sent, Block().Text(0, "edge-1").U32(296, 0xA1B2C3D4));
  }
}

TEST(BridgeAdmin, ANameOf64CharactersIsCutTo63) {
  const std::string name(64, 'n');
  const Block cut = Block().Text(0, std::string(63, 'n'));
  ExpectCommand([&] { return VDRZAX_BridgeAdd(name.c_str(), 0); }, 53, cut);
  ExpectCommand([&] { return VDRZAX_BridgeDel(name.c_str(), 0); }, 54, cut);
  ExpectCommand([&] { return VDRZAX_BridgeEnable(name.c_str(), 0); }, 55, cut);
  ExpectCommand([&] { return VDRZAX_BridgeDisable(name.c_str(), 0); }, 56, cut);
  ExpectCommand([&] { return VDRZAX_BridgeSetHAAdminState(name.c_str(), 0); }, 118, cut);
  ExpectCommand([&] { return VDRZAX_BridgeSetConfig(name.c_str(), 118, 0); }, 118, cut);
}

TEST(BridgeAdmin, AnEmptyNameIsSentAsItStands) {
  ExpectCommand([] { return VDRZAX_BridgeAdd("", 0); }, 53, Block());
}

TEST(BridgeAdminDeathTest, AnUntestedNameFaults) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_BridgeAdd(nullptr, 1), "");
  EXPECT_DEATH(VDRZAX_BridgeDel(nullptr, 1), "");
  EXPECT_DEATH(VDRZAX_BridgeEnable(nullptr, 1), "");
  EXPECT_DEATH(VDRZAX_BridgeDisable(nullptr, 1), "");
  EXPECT_DEATH(VDRZAX_BridgeSetHAAdminState(nullptr, 1), "");
  EXPECT_DEATH(VDRZAX_BridgeSetConfig(nullptr, 118, 1), "");
}

}  // namespace
