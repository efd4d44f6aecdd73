#include <gtest/gtest.h>
#include <vdrzax/mcast.h>

#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using wire::Block;

struct Getter {
  int (*call)(const char*, uint32_t, uint32_t*);
  unsigned long code;
};

constexpr Getter kGetters[] = {{VDRZAX_GetMRoutingReplicationIP, 136},
                               {VDRZAX_GetMRoutingMRouterIP, 139}};

TEST(MRouters, TheKernelWritesAnAddressStraightIntoTheCallersVariable) {
  for (const Getter& getter : kGetters) {
    SCOPED_TRACE(getter.code);
    uint32_t ip = 0;
    contract::ExpectRawGetter([&] { return getter.call("edge-1", 0x11223344, &ip); }, getter.code,
                              Block().Text(0, "edge-1").U32(256, 0x11223344), &ip, 4);
  }
}

TEST(MRouters, TheLengthOfAnAddressIsNotExamined) {
  for (const Getter& getter : kGetters) {
    SCOPED_TRACE(getter.code);
    fake::Device device;
    device.AnswerWith({.bytes = {0x11, 0x22}});
    uint32_t ip = 0xEEEEEEEE;
    EXPECT_EQ(getter.call("edge-1", 1, &ip), 0);
    EXPECT_EQ(ip, 0xEEEE2211u);
  }
}

TEST(MRouters, AfterAFailureTheVariableHoldsWhatTheKernelWrote) {
  for (const Getter& getter : kGetters) {
    SCOPED_TRACE(getter.code);
    fake::Device device;
    device.AnswerWith({.bytes = {1, 2, 3, 4}, .result = -1, .error = EIO});
    uint32_t ip = 0;
    EXPECT_EQ(getter.call("edge-1", 1, &ip), -1);
    EXPECT_EQ(ip, 0x04030201u);
  }
}

TEST(MRouters, ANullVariableIsGivenToTheKernel) {
  for (const Getter& getter : kGetters) {
    SCOPED_TRACE(getter.code);
    fake::Device device;
    EXPECT_EQ(getter.call("edge-1", 1, nullptr), 0);
    ASSERT_EQ(device.commands.size(), 1u);
    EXPECT_EQ(device.commands[0].outBuffer, nullptr);
    EXPECT_EQ(device.commands[0].outLength, 4u);
  }
}

TEST(MRouters, AddSendsNameAndAddress) {
  ExpectCommand([] { return VDRZAX_AddMRoutingMRouter("edge-1", 0x0A000001); }, 137,
                Block().Text(0, "edge-1").U32(256, 0x0A000001));
}

TEST(MRouters, DeleteSendsTheNameAlone) {
  ExpectCommand([] { return VDRZAX_DelMRoutingMRouter("edge-1"); }, 138, Block().Text(0, "edge-1"));
}

TEST(MRouters, ANameOf64CharactersIsCutTo63AndTerminated) {
  const std::string name(64, 'n');
  const Block cut = Block().Text(0, std::string(63, 'n'));
  ExpectCommand([&] { return VDRZAX_AddMRoutingMRouter(name.c_str(), 0); }, 137, cut);
  ExpectCommand([&] { return VDRZAX_DelMRoutingMRouter(name.c_str()); }, 138, cut);
  for (const Getter& getter : kGetters) {
    uint32_t ip = 0;
    contract::ExpectRawGetter([&] { return getter.call(name.c_str(), 0, &ip); }, getter.code, cut,
                              &ip, 4);
  }
}

TEST(MRoutersDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  uint32_t ip = 0;
  for (const Getter& getter : kGetters) EXPECT_DEATH(getter.call(nullptr, 1, &ip), "");
  EXPECT_DEATH(VDRZAX_AddMRoutingMRouter(nullptr, 1), "");
  EXPECT_DEATH(VDRZAX_DelMRoutingMRouter(nullptr), "");
}

}  // namespace
