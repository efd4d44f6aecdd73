#include <gtest/gtest.h>
#include <vdrzax/bridge.h>

#include <array>
#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using wire::Block;

constexpr std::array<uint8_t, 64> kNoBytes{};

TEST(TransportNode, SetAndClearSendTheSameBlockWithoutAnInstanceName) {
  const fake::Bytes bytes = wire::Pattern(64);
  const Block block = Block()
                          .Text(256, "host-1")
                          .Text(320, "second")
                          .Text(384, "third")
                          .U32(400, 0x11223344)
                          .Raw(404, bytes);
  struct Choice {
    uint8_t set;
    unsigned long code;
  };
  for (const Choice choice : {Choice{1, 100}, Choice{0x80, 100}, Choice{0, 101}}) {
    ExpectCommand(
        [&] {
          return VDRZAX_BridgeLocalTransportNodeSet("host-1", "second", "third", 0x11223344,
                                                    bytes.data(), choice.set);
        },
        choice.code, block);
  }
}

TEST(TransportNode, The64BytesAreSentBeyondAZeroAndWithoutTerminator) {
  fake::Bytes bytes = wire::Pattern(64);
  bytes[0] = 0;
  bytes[10] = 0;
  ExpectCommand([&] { return VDRZAX_BridgeLocalTransportNodeSet("", "", "", 0, bytes.data(), 1); },
                100, Block().Raw(404, bytes));
}

TEST(TransportNode, TheThirdNameOf16CharactersIsCutTo15) {
  const Block cut = Block().Text(384, "ABCDEFGHIJKLMNO");
  for (const char* name : {"ABCDEFGHIJKLMNO", "ABCDEFGHIJKLMNOP", "ABCDEFGHIJKLMNOPQ"}) {
    ExpectCommand(
        [&] { return VDRZAX_BridgeLocalTransportNodeSet("", "", name, 0, kNoBytes.data(), 1); },
        100, cut);
  }
}

TEST(TransportNode, TheFirstTwoNamesOf64CharactersAreCutTo63) {
  const std::string first(64, 'n');
  const std::string second(64, 'o');
  ExpectCommand(
      [&] {
        return VDRZAX_BridgeLocalTransportNodeSet(first.c_str(), second.c_str(), "", 0,
                                                  kNoBytes.data(), 0);
      },
      101, Block().Text(256, std::string(63, 'n')).Text(320, std::string(63, 'o')));
}

TEST(TransportNode, IsReadIntoTheCallers2048BytesWithTheSelectorAt468) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_BridgeGetLocalTransportNode"));
}

TEST(TransportNodeDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  const uint8_t* bytes = kNoBytes.data();
  EXPECT_DEATH(VDRZAX_BridgeLocalTransportNodeSet(nullptr, "b", "c", 1, bytes, 1), "");
  EXPECT_DEATH(VDRZAX_BridgeLocalTransportNodeSet("a", nullptr, "c", 1, bytes, 1), "");
  EXPECT_DEATH(VDRZAX_BridgeLocalTransportNodeSet("a", "b", nullptr, 1, bytes, 1), "");
  EXPECT_DEATH(VDRZAX_BridgeLocalTransportNodeSet("a", "b", "c", 1, nullptr, 1), "");
  EXPECT_DEATH(VDRZAX_BridgeLocalTransportNodeSet("a", "b", "c", 1, nullptr, 0), "");
}

}  // namespace
