#include <gtest/gtest.h>
#include <vdrzax/instance.h>

#include <cstring>

#include "support/contract.h"

namespace {

struct Getter {
  int (*call)(uint32_t*);
  unsigned long code;
};

struct Setter {
  int (*call)(uint32_t);
  unsigned long code;
};

constexpr Getter kGetters[] = {{VDRZAX_GetLogLevel, 9},
                               {VDRZAX_GetExtendedLogLevel, 11},
                               {VDRZAX_GetStatsLevel, 13},
                               {VDRZAX_GetTxDispQueueSize, 159}};

constexpr Setter kSetters[] = {{VDRZAX_SetLogLevel, 10},
                               {VDRZAX_SetExtendedLogLevel, 12},
                               {VDRZAX_SetStatsLevel, 14},
                               {VDRZAX_SetTxDispQueueSize, 160}};

TEST(Settings, AGetterSendsNoInputAndReturnsTheFourBytes) {
  for (const Getter& getter : kGetters) {
    SCOPED_TRACE(getter.code);
    fake::Device device;
    device.AnswerWith({.bytes = {0x78, 0x56, 0x34, 0x12}});
    uint32_t value = 0;
    const contract::Outcome outcome = contract::Run([&] { return getter.call(&value); });
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.error, contract::kUntouched);
    EXPECT_EQ(value, 0x12345678u);
    contract::ExpectSent(device, getter.code, {}, 4);
    EXPECT_EQ(device.steps, (contract::Steps{"open64", "ioctl", "close"}));
    EXPECT_NE(device.commands[0].outBuffer, &value);
  }
}

TEST(Settings, AGetterDoesNotExamineTheLengthOfTheReply) {
  for (const Getter& getter : kGetters) {
    for (const uint32_t length : {0u, 3u, 5u, 0xFFFFFFFFu}) {
      fake::Device device;
      device.AnswerWith({.bytes = {1, 0, 0, 0}, .length = length});
      uint32_t value = 0;
      EXPECT_EQ(getter.call(&value), 0);
      EXPECT_EQ(value, 1u);
    }
  }
}

TEST(Settings, AGetterWithoutAPointerIsRefused) {
  for (const Getter& getter : kGetters) {
    contract::ExpectRefused([&] { return getter.call(nullptr); });
  }
}

TEST(Settings, AGetterWhoseCallFailsLeavesTheVariableAsItWas) {
  for (const Getter& getter : kGetters) {
    uint32_t value = 77;
    {
      fake::Device device;
      device.openError = ENOENT;
      contract::ExpectFailure(device, [&] { return getter.call(&value); }, ENOENT, {"open64"});
    }
    {
      fake::Device device;
      device.AnswerWith({.bytes = {1, 2, 3, 4}, .result = -1, .error = EPERM});
      contract::ExpectFailure(device, [&] { return getter.call(&value); }, EPERM,
                              {"open64", "ioctl", "close"});
    }
    EXPECT_EQ(value, 77u);
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
