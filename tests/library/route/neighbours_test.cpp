#include <gtest/gtest.h>
#include <vdrzax/route.h>

#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using contract::ExpectRefused;
using wire::Block;

constexpr uint8_t kPlain = 0;
constexpr uint8_t kProxy = 1;

const std::string kName(64, 'n');
const std::string kInterface(64, 'i');
const std::string kCutName(63, 'n');
const std::string kCutInterface(63, 'i');

// All IPv4 changes but the one with a hardware address.
struct Change {
  int (*call)(uint32_t, const char*, const char*);
  unsigned long code;
  uint8_t marker;
};

constexpr Change kChanges[] = {{VDRZAX_DelArp, 39, kPlain},
                               {VDRZAX_SetProxyArp, 38, kProxy},
                               {VDRZAX_DelProxyArp, 39, kProxy}};

struct Changev6 {
  int (*call)(uint64_t, uint64_t, const char*, const char*);
  unsigned long code;
  uint8_t marker;
};

constexpr Changev6 kChangesv6[] = {{VDRZAX_DelArpv6, 113, kPlain},
                                   {VDRZAX_SetProxyArpv6, 112, kProxy},
                                   {VDRZAX_DelProxyArpv6, 113, kProxy}};

struct Getter {
  const char* name;
  int (*call)(const char*, const char*, void*);
};

constexpr Getter kGetters[] = {{"VDRZAX_GetArps", VDRZAX_GetArps},
                               {"VDRZAX_GetProxyArps", VDRZAX_GetProxyArps},
                               {"VDRZAX_GetArpsv6", VDRZAX_GetArpsv6}};

struct Clear {
  int (*call)(const char*, const char*);
  unsigned long code;
};

constexpr Clear kClears[] = {{VDRZAX_ClearArp, 41}, {VDRZAX_ClearArpv6, 117}};

TEST(Neighbours, SetSendsEveryArgumentToItsPlace) {
  ExpectCommand([] { return VDRZAX_SetArp(0x11223344, "0a:0b:0c:0d:0e:0f", "uplink", "edge-1"); },
                38,
                Block()
                    .Text(0, "edge-1")
                    .U32(256, 0x11223344)
                    .Text(384, "uplink")
                    .Text(524, "0a:0b:0c:0d:0e:0f"));
}

TEST(Neighbours, DeleteAndTheProxyCommandsSendNoHardwareAddress) {
  for (const Change& change : kChanges) {
    SCOPED_TRACE(change.code);
    ExpectCommand(
        [&] { return change.call(0x11223344, "uplink", "edge-1"); }, change.code,
        Block().Text(0, "edge-1").U32(256, 0x11223344).Text(384, "uplink").U8(917, change.marker));
  }
}

TEST(Neighbours, SetProxyAndSetDifferAt524And917Alone) {
  fake::Device device;
  EXPECT_EQ(VDRZAX_SetArp(1, "0a:0b:0c:0d:0e:0f", "uplink", "edge-1"), 0);
  EXPECT_EQ(VDRZAX_SetProxyArp(1, "uplink", "edge-1"), 0);
  ASSERT_EQ(device.commands.size(), 2u);
  EXPECT_EQ(device.commands[0].request, 38u);
  EXPECT_EQ(device.commands[1].request, 38u);
  fake::Bytes plain = device.commands[0].input;
  EXPECT_EQ(plain[524], '0');
  EXPECT_EQ(plain[540], 'f');
  EXPECT_EQ(plain[917], 0);
  for (std::size_t offset = 524; offset < 542; ++offset) plain[offset] = 0;
  plain[917] = 1;
  EXPECT_BYTES(device.commands[1].input, plain);
}

TEST(Neighbours, TextsOfTheIpv4ChangesThatFillTheirFieldsAreCutAndTerminated) {
  const Block cut = Block().Text(0, kCutName).Text(384, kCutInterface);
  ExpectCommand(
      [] { return VDRZAX_SetArp(0, "ABCDEFGHIJKLMNOPQR", kInterface.c_str(), kName.c_str()); }, 38,
      Block(cut).Text(524, "ABCDEFGHIJKLMNOPQ"));
  for (const Change& change : kChanges) {
    ExpectCommand([&] { return change.call(0, kInterface.c_str(), kName.c_str()); }, change.code,
                  Block(cut).U8(917, change.marker));
  }
}

TEST(Neighbours, Setv6SendsEveryArgumentToItsPlace) {
  ExpectCommand(
      [] {
        return VDRZAX_SetArpv6(0x1122334455667788, 0x99AABBCCDDEEFF01, "0a:0b:0c:0d:0e:0f",
                               "uplink", "edge-1");
      },
      112,
      Block()
          .Text(0, "edge-1")
          .Text(256, "uplink")
          .U64(320, 0x1122334455667788)
          .U64(328, 0x99AABBCCDDEEFF01)
          .Text(336, "0a:0b:0c:0d:0e:0f"));
}

TEST(Neighbours, Deletev6AndTheProxyCommandsv6SendNoHardwareAddress) {
  for (const Changev6& change : kChangesv6) {
    SCOPED_TRACE(change.code);
    ExpectCommand(
        [&] { return change.call(0x1122334455667788, 0x99AABBCCDDEEFF01, "uplink", "edge-1"); },
        change.code,
        Block()
            .Text(0, "edge-1")
            .Text(256, "uplink")
            .U64(320, 0x1122334455667788)
            .U64(328, 0x99AABBCCDDEEFF01)
            .U8(917, change.marker));
  }
}

TEST(Neighbours, TextsOfTheIpv6ChangesThatFillTheirFieldsAreSentWholeWithoutTerminator) {
  const Block whole = Block().Text(0, kName).Text(256, kInterface);
  const std::string longName = kName + "more";
  const std::string longInterface = kInterface + "more";
  ExpectCommand(
      [] { return VDRZAX_SetArpv6(0, 0, "ABCDEFGHIJKLMNOPQR", kInterface.c_str(), kName.c_str()); },
      112, Block(whole).Text(336, "ABCDEFGHIJKLMNOPQR"));
  ExpectCommand(
      [&] {
        return VDRZAX_SetArpv6(0, 0, "ABCDEFGHIJKLMNOPQRST", longInterface.c_str(),
                               longName.c_str());
      },
      112, Block(whole).Text(336, "ABCDEFGHIJKLMNOPQR"));
  for (const Changev6& change : kChangesv6) {
    const Block block = Block(whole).U8(917, change.marker);
    ExpectCommand([&] { return change.call(0, 0, kInterface.c_str(), kName.c_str()); }, change.code,
                  block);
    ExpectCommand([&] { return change.call(0, 0, longInterface.c_str(), longName.c_str()); },
                  change.code, block);
  }
}

TEST(Neighbours, AGetterSendsBothNamesAndHandsOverTheBufferOfTheCaller) {
  for (const Getter& getter : kGetters) {
    SCOPED_TRACE(getter.name);
    contract::ExpectRawGetter(getters::Raw(getter.name));
  }
}

TEST(Neighbours, AGetterWithoutAnInterfaceLeavesBytes384To447Zero) {
  for (const Getter& getter : kGetters) {
    contract::RawGetter raw = getters::Raw(getter.name);
    raw.call = [&](void* buffer) { return getter.call("edge-1", nullptr, buffer); };
    raw.block.Raw(384, fake::Bytes(64));
    contract::ExpectRawGetter(raw);
  }
}

// What a getter sends when its names are of 68 characters.
fake::Bytes SentForLongNames(int (*call)(const char*, const char*, void*)) {
  fake::Device device;
  fake::Bytes buffer(7667712);
  EXPECT_EQ(call((kName + "more").c_str(), (kInterface + "more").c_str(), buffer.data()), 0);
  return device.commands.empty() ? fake::Bytes{} : device.commands[0].input;
}

TEST(Neighbours, NamesGivenToTheIpv4TablesAreCutTo63AndTerminated) {
  const Block cut = Block().Text(0, kCutName).Text(384, kCutInterface);
  EXPECT_BYTES(SentForLongNames(VDRZAX_GetArps), cut.bytes());
  EXPECT_BYTES(SentForLongNames(VDRZAX_GetProxyArps), Block(cut).U8(917, 1).bytes());
  ExpectCommand([] { return VDRZAX_ClearArp(kName.c_str(), kInterface.c_str()); }, 41, cut);
}

TEST(Neighbours, NamesGivenToTheIpv6TableAreSentWholeWithoutTerminator) {
  const Block whole = Block().Text(0, kName).Text(384, kInterface);
  EXPECT_BYTES(SentForLongNames(VDRZAX_GetArpsv6), whole.bytes());
  ExpectCommand([] { return VDRZAX_ClearArpv6(kName.c_str(), kInterface.c_str()); }, 117, whole);
}

TEST(Neighbours, AClearSendsBothNamesAndNoMarker) {
  for (const Clear& clear : kClears) {
    ExpectCommand([&] { return clear.call("edge-1", "uplink"); }, clear.code,
                  Block().Text(0, "edge-1").Text(384, "uplink"));
  }
}

TEST(Neighbours, AClearWithoutAnInterfaceLeavesBytes384To447Zero) {
  for (const Clear& clear : kClears) {
    ExpectCommand([&] { return clear.call("edge-1", nullptr); }, clear.code,
                  Block().Text(0, "edge-1"));
  }
}

TEST(Neighbours, ThePathMtuClearSendsNoInputAtAll) {
  ExpectCommand([] { return VDRZAX_PMTUTableCearv6(); }, 151, fake::Bytes{});
}

TEST(Neighbours, AMissingNameIsRefusedByEveryChange) {
  ExpectRefused([] { return VDRZAX_SetArp(1, "0a", "uplink", nullptr); });
  ExpectRefused([] { return VDRZAX_SetArpv6(1, 2, "0a", "uplink", nullptr); });
  for (const Change& change : kChanges) {
    ExpectRefused([&] { return change.call(1, "uplink", nullptr); });
  }
  for (const Changev6& change : kChangesv6) {
    ExpectRefused([&] { return change.call(1, 2, "uplink", nullptr); });
  }
}

TEST(Neighbours, AMissingNameIsRefusedBeforeAnUntestedArgumentIsRead) {
  ExpectRefused([] { return VDRZAX_SetArp(1, nullptr, nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_SetArpv6(1, 2, nullptr, nullptr, nullptr); });
  for (const Change& change : kChanges) {
    ExpectRefused([&] { return change.call(1, nullptr, nullptr); });
  }
  for (const Changev6& change : kChangesv6) {
    ExpectRefused([&] { return change.call(1, 2, nullptr, nullptr); });
  }
}

TEST(NeighboursDeathTest, AnUntestedTextOfAChangeFaultsWhenItIsNull) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_SetArp(1, nullptr, "uplink", "edge-1"), "");
  EXPECT_DEATH(VDRZAX_SetArp(1, "0a", nullptr, "edge-1"), "");
  EXPECT_DEATH(VDRZAX_SetArpv6(1, 2, nullptr, "uplink", "edge-1"), "");
  EXPECT_DEATH(VDRZAX_SetArpv6(1, 2, "0a", nullptr, "edge-1"), "");
  for (const Change& change : kChanges) EXPECT_DEATH(change.call(1, nullptr, "edge-1"), "");
  for (const Changev6& change : kChangesv6) EXPECT_DEATH(change.call(1, 2, nullptr, "edge-1"), "");
}

TEST(NeighboursDeathTest, AnUntestedNameOfATableFaultsWhenItIsNull) {
  fake::Device device;
  char buffer[1];
  for (const Getter& getter : kGetters) EXPECT_DEATH(getter.call(nullptr, "uplink", buffer), "");
  for (const Clear& clear : kClears) EXPECT_DEATH(clear.call(nullptr, "uplink"), "");
}

}  // namespace
