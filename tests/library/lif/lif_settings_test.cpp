#include <gtest/gtest.h>
#include <vdrzax/lif.h>

#include <functional>
#include <string>
#include <vector>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using contract::ExpectRefused;
using wire::Block;

Block Names() { return Block().Text(0, "edge-1").Text(384, "uplink"); }

// A function with its other arguments given, and what it sends besides the two names.
struct Setting {
  std::function<int(const char* instanceName, const char* lifName)> call;
  unsigned long code;
  Block besides = {};
};

std::vector<Setting> SettingsWithBothNamesTested() {
  return {
      {[](auto* i, auto* l) { return VDRZAX_SetLifDIIp(i, l, 0x0A000001); }, 25,
       Block().Raw(520, {0x01, 0x00, 0x00, 0x0A})},
      {[](auto* i, auto* l) { return VDRZAX_SetLifIp(i, l, 0x11223344, 0x55667788); }, 26,
       Block().U32(512, 0x11223344).U32(516, 0x55667788)},
      {[](auto* i, auto* l) { return VDRZAX_DelLifIp(i, l, 0x11223344, 0x55667788); }, 27,
       Block().U32(512, 0x11223344).U32(516, 0x55667788)},
      {VDRZAX_SetLifVxlanCP, 28},
      {VDRZAX_DelLifVxlanCP, 29},
      {VDRZAX_EnableLif, 30},
      {VDRZAX_DisableLif, 31},
      {[](auto* i, auto* l) { return VDRZAX_SetLifVxlanMulticastIp(i, l, 0xEF010203); }, 32,
       Block().Raw(520, {0x03, 0x02, 0x01, 0xEF})},
      {[](auto* i, auto* l) { return VDRZAX_SetLifMcastRouting(i, l, 1); }, 125},
      {[](auto* i, auto* l) { return VDRZAX_SetLifMcastRouting(i, l, 0); }, 126},
  };
}

std::vector<Setting> Ipv6Settings(uint32_t prefixLength, uint8_t sent) {
  const Block besides =
      Block().U64(256, 0x1122334455667788).U64(264, 0x99AABBCCDDEEFF00).U8(340, sent);
  return {{[=](auto* i, auto* l) {
             return VDRZAX_SetLifIpv6(i, l, 0x1122334455667788, 0x99AABBCCDDEEFF00, prefixLength);
           },
           108, besides},
          {[=](auto* i, auto* l) {
             return VDRZAX_DelLifIpv6(i, l, 0x1122334455667788, 0x99AABBCCDDEEFF00, prefixLength);
           },
           109, besides}};
}

TEST(LifSettings, EachSendsTheTwoNamesAndItsValues) {
  for (const Setting& setting : SettingsWithBothNamesTested()) {
    SCOPED_TRACE(setting.code);
    ExpectCommand([&] { return setting.call("edge-1", "uplink"); }, setting.code,
                  Block(setting.besides).Text(0, "edge-1").Text(384, "uplink"));
  }
}

TEST(LifSettings, NamesOf64CharactersAreCutTo63AndTerminated) {
  const std::string instance(64, 'i');
  const std::string lif(64, 'l');
  for (const Setting& setting : SettingsWithBothNamesTested()) {
    SCOPED_TRACE(setting.code);
    ExpectCommand(
        [&] { return setting.call(instance.c_str(), lif.c_str()); }, setting.code,
        Block(setting.besides).Text(0, std::string(63, 'i')).Text(384, std::string(63, 'l')));
  }
}

TEST(LifSettings, EitherMissingNameIsRefused) {
  std::vector<Setting> settings = SettingsWithBothNamesTested();
  for (const Setting& setting : Ipv6Settings(64, 64)) settings.push_back(setting);
  ASSERT_EQ(settings.size(), 12u);
  for (const Setting& setting : settings) {
    SCOPED_TRACE(setting.code);
    ExpectRefused([&] { return setting.call(nullptr, "uplink"); });
    ExpectRefused([&] { return setting.call("edge-1", nullptr); });
    ExpectRefused([&] { return setting.call(nullptr, nullptr); });
  }
}

TEST(LifSettings, MulticastRoutingIsEnabledByAnyValueButZeroAndTheValueIsNotSent) {
  for (const uint8_t enable : {uint8_t{1}, uint8_t{2}, uint8_t{0x80}, uint8_t{0xFF}}) {
    ExpectCommand([=] { return VDRZAX_SetLifMcastRouting("edge-1", "uplink", enable); }, 125,
                  Names());
  }
  ExpectCommand([] { return VDRZAX_SetLifMcastRouting("edge-1", "uplink", 0); }, 126, Names());
}

TEST(LifSettings, TheIpv6PairSendsTheAddressThePrefixLengthAndTheLifNameTwice) {
  for (const Setting& setting : Ipv6Settings(64, 64)) {
    SCOPED_TRACE(setting.code);
    ExpectCommand([&] { return setting.call("edge-1", "uplink"); }, setting.code,
                  Block(setting.besides).Text(0, "edge-1").Text(276, "uplink").Text(384, "uplink"));
  }
}

TEST(LifSettings, ThePrefixLengthIsCutToItsLowByte) {
  for (const auto& [given, sent] : std::vector<std::pair<uint32_t, uint8_t>>{
           {0, 0}, {255, 255}, {256, 0}, {300, 44}, {0xFFFFFF80, 0x80}}) {
    for (const Setting& setting : Ipv6Settings(given, sent)) {
      ExpectCommand([&] { return setting.call("e", "l"); }, setting.code,
                    Block(setting.besides).Text(0, "e").Text(276, "l").Text(384, "l"));
    }
  }
}

TEST(LifSettings, TheIpv6PairFillsAll64BytesOfItsNamesWithoutTerminator) {
  const std::string instance(64, 'i');
  const std::string lif(64, 'l');
  for (const Setting& setting : Ipv6Settings(64, 64)) {
    SCOPED_TRACE(setting.code);
    const Block full = Block(setting.besides).Text(0, instance).Text(276, lif).Text(384, lif);
    ExpectCommand([&] { return setting.call(instance.c_str(), lif.c_str()); }, setting.code, full);
    ExpectCommand([&] { return setting.call((instance + "more").c_str(), (lif + "more").c_str()); },
                  setting.code, full);
  }
}

TEST(LifSettings, TheIpv6MtuIsSentAt256) {
  ExpectCommand([] { return VDRZAX_RAMTUSetv6("edge-1", "uplink", 0x11223344); }, 152,
                Names().U32(256, 0x11223344));
  const std::string instance(64, 'i');
  const std::string lif(64, 'l');
  ExpectCommand([&] { return VDRZAX_RAMTUSetv6(instance.c_str(), lif.c_str(), 1); }, 152,
                Block().Text(0, std::string(63, 'i')).U32(256, 1).Text(384, std::string(63, 'l')));
}

TEST(LifSettings, MulticastRoutingOfAnInstanceSendsEveryArgumentToItsPlace) {
  ExpectCommand(
      [] {
        return VDRZAX_SetMcastRouting("edge-1", "second", 0x11223344, 0x55667788, 0x99AA, 0xBB);
      },
      127,
      Block()
          .Text(0, "edge-1")
          .Text(256, "second")
          .U32(320, 0x11223344)
          .U32(324, 0x55667788)
          .U16(328, 0x99AA)
          .U8(330, 0xBB));
}

TEST(LifSettings, TheNamesOfMulticastRoutingAreCutTo63AndTerminated) {
  const std::string instance(64, 'i');
  const std::string second(64, 's');
  ExpectCommand(
      [&] { return VDRZAX_SetMcastRouting(instance.c_str(), second.c_str(), 0, 0, 0, 0); }, 127,
      Block().Text(0, std::string(63, 'i')).Text(256, std::string(63, 's')));
}

TEST(LifSettings, MulticastRoutingTestsTheInstanceNameAlone) {
  ExpectRefused([] { return VDRZAX_SetMcastRouting(nullptr, "second", 1, 2, 3, 4); });
  ExpectRefused([] { return VDRZAX_SetMcastRouting(nullptr, nullptr, 1, 2, 3, 4); });
}

TEST(LifSettingsDeathTest, TheSecondNameOfMulticastRoutingIsNotTested) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_SetMcastRouting("edge-1", nullptr, 1, 2, 3, 4), "");
}

TEST(LifSettingsDeathTest, TheIpv6MtuTestsNeitherName) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_RAMTUSetv6(nullptr, "uplink", 1500), "");
  EXPECT_DEATH(VDRZAX_RAMTUSetv6("edge-1", nullptr, 1500), "");
}

}  // namespace
