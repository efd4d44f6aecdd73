#include <gtest/gtest.h>
#include <vdrzax/instance.h>

#include <cstring>

#include "support/contract.h"

namespace {

struct Setter {
  int (*call)(uint32_t);
  unsigned long code;
};

constexpr Setter kSetters[] = {{VDRZAX_SetLogLevel, 10},
                               {VDRZAX_SetExtendedLogLevel, 12},
                               {VDRZAX_SetStatsLevel, 14},
                               {VDRZAX_SetTxDispQueueSize, 160}};

TEST(Settings, AGetterSendsNoInputAndReturnsTheFourBytesAndRefusesNull) {
  for (const char* name : {"VDRZAX_GetLogLevel", "VDRZAX_GetExtendedLogLevel",
                           "VDRZAX_GetStatsLevel", "VDRZAX_GetTxDispQueueSize"}) {
    SCOPED_TRACE(name);
    contract::ExpectRawGetter(getters::Raw(name));
    contract::ExpectRefused([&] { return getters::Raw(name).call(nullptr); });
  }
}

TEST(Settings, ASetterPassesEveryValueUnchanged) {
  for (const Setter& setter : kSetters) {
    SCOPED_TRACE(setter.code);
    contract::ExpectCommand([&] { return setter.call(0); }, setter.code, fake::Bytes{0, 0, 0, 0});
    contract::ExpectCommand([&] { return setter.call(0x12345678); }, setter.code,
                            fake::Bytes{0x78, 0x56, 0x34, 0x12});
    contract::ExpectCommand([&] { return setter.call(0xFFFFFFFF); }, setter.code,
                            fake::Bytes{0xFF, 0xFF, 0xFF, 0xFF});
  }
}

TEST(Settings, SettingAndReadingBackAreTwoSeparateCycles) {
  fake::Device device;
  device.answer = [](const fake::Command& command) {
    return command.request == 9 ? fake::Reply{.bytes = {5, 0, 0, 0}} : fake::Reply{};
  };
  uint32_t level = 0;
  EXPECT_EQ(VDRZAX_SetLogLevel(3), 0);
  EXPECT_EQ(VDRZAX_GetLogLevel(&level), 0);
  EXPECT_EQ(level, 5u);
  EXPECT_EQ(device.steps,
            (contract::Steps{"open64", "ioctl", "close", "open64", "ioctl", "close"}));
}

TEST(Settings, PreUnloadSendsAnEmptyEnvelope) {
  contract::ExpectCommand([] { return VDRZAX_PreUnload(); }, 42, fake::Bytes{});
}

}  // namespace
