#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <string_view>

#include "simulated.h"

namespace {

using in_process::Block;
using in_process::Difference;
using in_process::Execute;
using in_process::Result;
using in_process::Wire;

constexpr uint32_t kAmpleRoom = 200000;

class SimulatedMulticast : public in_process::Simulated {
 protected:
  SimulatedMulticast() { EXPECT_EQ(Do(2, Block("edge-1")), 0); }

  Result Get(uint32_t code, uint32_t key = 7) {
    return Execute(datapath_, code, Block("edge-1").U32(256, key), kAmpleRoom);
  }
};

Wire Local(uint32_t key, std::string_view name) {
  return Block("edge-1").U32(256, key).Text(272, name);
}

Wire Remote(uint32_t a, uint32_t b) { return Block("edge-1").U32(256, a).U32(276, b); }

TEST_F(SimulatedMulticast, LocalReceiversAreThoseOfTheirKey) {
  EXPECT_EQ(Difference(Get(128), Wire(0)), "");
  ASSERT_EQ(Do(133, Local(0x01020304, "second")), 0);
  ASSERT_EQ(Do(133, Local(0x01020304, "first")), 0);
  ASSERT_EQ(Do(133, Local(0x01020304, "first")), 0);
  ASSERT_EQ(Do(133, Local(8, "")), 0);
  const Wire both =
      Wire(176).Text(0, "first").U32(64, 0x01020304).Text(88, "second").U32(152, 0x01020304);
  EXPECT_EQ(Difference(Get(128, 0x01020304), both), "");
  EXPECT_EQ(Difference(Get(128, 8), Wire(88).U32(64, 8)), "");

  EXPECT_EQ(Do(134, Local(8, "first")), ENOENT);
  EXPECT_EQ(Do(134, Local(9, "first")), ENOENT);
  ASSERT_EQ(Do(134, Local(0x01020304, "first")), 0);
  EXPECT_EQ(Do(134, Local(0x01020304, "first")), ENOENT);
  ASSERT_EQ(Do(134, Local(8, "")), 0);
  EXPECT_EQ(Difference(Get(128, 0x01020304), Wire(88).Text(0, "second").U32(64, 0x01020304)), "");
  EXPECT_EQ(Difference(Get(128, 8), Wire(0)), "");
}

TEST_F(SimulatedMulticast, RemoteReceiversAreCountedBeforeTheyAreListed) {
  EXPECT_EQ(Difference(Get(129), Wire(4)), "");
  const Wire block = Remote(7, 0x21222324)
                         .U32(272, 0x41424344)
                         .Text(280, "\x02\x12\x22\x32\x42\x52")
                         .U32(288, 0x51525354);
  ASSERT_EQ(Do(131, block), 0);
  ASSERT_EQ(Do(131, Remote(7, 5)), 0);
  ASSERT_EQ(Do(131, Remote(8, 5)), 0);
  const Wire both = Wire(140)
                        .U32(0, 2)
                        .U32(4, 5)
                        .U32(8, 7)
                        .U32(72, 0x21222324)
                        .U32(76, 7)
                        .U32(80, 0x41424344)
                        .U32(84, 0x51525354)
                        .Text(88, "\x02\x12\x22\x32\x42\x52");
  EXPECT_EQ(Difference(Get(129), both), "");

  ASSERT_EQ(Do(131, Remote(7, 0x21222324).U32(272, 1)), 0);
  ASSERT_EQ(Do(132, Remote(7, 5).U32(272, 99)), 0);
  EXPECT_EQ(Do(132, Remote(7, 5)), ENOENT);
  EXPECT_EQ(Do(132, Remote(9, 5)), ENOENT);
  EXPECT_EQ(Difference(Get(129), Wire(72).U32(0, 1).U32(4, 0x21222324).U32(8, 7).U32(12, 1)), "");
  EXPECT_EQ(Get(129, 8).WordAt(0), 1U);
}

TEST_F(SimulatedMulticast, AGroupIsThereAsLongAsItHasReceivers) {
  EXPECT_EQ(Difference(Get(135), Wire(0)), "");
  ASSERT_EQ(Do(131, Remote(0x01020304, 5)), 0);
  ASSERT_EQ(Do(133, Local(7, "first")), 0);
  ASSERT_EQ(Do(133, Local(7, "second")), 0);
  ASSERT_EQ(Do(131, Remote(7, 5)), 0);
  const Wire both =
      Wire(24).U32(0, 7).U32(4, 2).U32(8, 1).U32(12, 0x01020304).U32(16, 0).U32(20, 1);
  EXPECT_EQ(Difference(Get(135), both), "");

  ASSERT_EQ(Do(134, Local(7, "first")), 0);
  ASSERT_EQ(Do(134, Local(7, "second")), 0);
  ASSERT_EQ(Do(132, Remote(0x01020304, 5)), 0);
  EXPECT_EQ(Difference(Get(135), Wire(12).U32(0, 7).U32(8, 1)), "");
  ASSERT_EQ(Do(132, Remote(7, 5)), 0);
  EXPECT_EQ(Difference(Get(135), Wire(0)), "");
}

TEST_F(SimulatedMulticast, ReplicationGoesToTheFirstRemoteReceiver) {
  EXPECT_EQ(Get(136).error, ENOENT);
  ASSERT_EQ(Do(133, Local(7, "first")), 0);
  EXPECT_EQ(Get(136).error, ENOENT);
  ASSERT_EQ(Do(131, Remote(7, 0x0a000002)), 0);
  ASSERT_EQ(Do(131, Remote(7, 0x0a000001)), 0);
  ASSERT_EQ(Do(131, Remote(8, 1)), 0);
  EXPECT_EQ(Difference(Get(136), Wire(4).U32(0, 0x0a000001)), "");
}

TEST_F(SimulatedMulticast, AnInstanceHasOneRouterWhateverTheKey) {
  EXPECT_EQ(Get(139).error, ENOENT);
  EXPECT_EQ(Do(138, Block("edge-1")), ENOENT);
  ASSERT_EQ(Do(137, Block("edge-1").U32(256, 1)), 0);
  ASSERT_EQ(Do(137, Block("edge-1").U32(256, 0x0a000001)), 0);
  for (const uint32_t key : {0U, 7U}) {
    EXPECT_EQ(Difference(Get(139, key), Wire(4).U32(0, 0x0a000001)), "");
  }
  ASSERT_EQ(Do(138, Block("edge-1")), 0);
  EXPECT_EQ(Get(139).error, ENOENT);
}

TEST_F(SimulatedMulticast, TheDomainTellsWhatIsRouted) {
  EXPECT_EQ(Difference(Get(130), Wire(148).Text(0, "edge-1")), "");
  const Wire routing = Block("edge-1")
                           .Text(256, std::string(63, 'l'))
                           .U32(320, 0x01020304)
                           .U32(324, 0x05060708)
                           .U16(328, 0x090a)
                           .U8(330, 0x0b);
  ASSERT_EQ(Do(127, routing), 0);
  ASSERT_EQ(Do(137, Block("edge-1").U32(256, 0x0a000001)), 0);
  for (const uint32_t key : {1U, 2U, 3U}) ASSERT_EQ(Do(133, Local(key, "first")), 0);
  const Wire domain = Wire(148)
                          .Text(0, "edge-1")
                          .Text(64, std::string(47, 'l'))
                          .U32(112, 0x05060708)
                          .U16(116, 0x090a)
                          .U8(118, 0x0b)
                          .U8(119, 1)
                          .U32(120, 0x0a000001)
                          .U32(124, 3)
                          .U32(144, 0x01020304);
  EXPECT_EQ(Difference(Get(130), domain), "");
}

TEST_F(SimulatedMulticast, WhatIsNotNamedOrNotThereIsRefused) {
  ASSERT_EQ(Do(133, Local(7, "first")), 0);
  const vdrsim::State before = datapath_.state();
  for (uint32_t code = 128; code <= 139; ++code) {
    SCOPED_TRACE(code);
    EXPECT_EQ(Execute(datapath_, code, Block(), kAmpleRoom).error, EINVAL);
    EXPECT_EQ(Execute(datapath_, code, Block(std::string(64, 'n')), kAmpleRoom).error, EINVAL);
    EXPECT_EQ(Execute(datapath_, code, Block("edge-2"), kAmpleRoom).error, ENOENT);
  }
  for (const uint32_t code : {133U, 134U}) {
    EXPECT_EQ(Do(code, Local(7, std::string(64, 'n'))), EINVAL) << code;
  }
  EXPECT_EQ(datapath_.state(), before);
}

TEST_F(SimulatedMulticast, AllOfItDiesWithItsInstance) {
  ASSERT_EQ(Do(133, Local(7, "first")), 0);
  ASSERT_EQ(Do(131, Remote(7, 5)), 0);
  ASSERT_EQ(Do(137, Block("edge-1")), 0);
  ASSERT_EQ(Do(3, Block("edge-1")), 0);
  ASSERT_EQ(Do(2, Block("edge-1")), 0);
  EXPECT_EQ(Difference(Get(135), Wire(0)), "");
  EXPECT_EQ(Get(139).error, ENOENT);
}

TEST_F(SimulatedMulticast, AGroupHasRoomForAsManyReceiversAsTheirListsHold) {
  for (uint32_t number = 0; number < 512; ++number) {
    ASSERT_EQ(Do(133, Local(7, "r" + std::to_string(number))), 0);
  }
  EXPECT_EQ(Do(133, Local(7, "one too many")), ENOSPC);
  EXPECT_EQ(Do(133, Local(7, "r0")), 0) << "an update needs no room";
  EXPECT_EQ(Do(133, Local(8, "r0")), 0) << "another group has its own";
  EXPECT_EQ(Get(128).reply.size(), 45056U);
  for (uint32_t number = 0; number < 2048; ++number) ASSERT_EQ(Do(131, Remote(7, number)), 0);
  EXPECT_EQ(Do(131, Remote(7, 2048)), ENOSPC);
  EXPECT_EQ(Do(131, Remote(7, 2047)), 0);
  const Result remote = Get(129);
  EXPECT_EQ(remote.WordAt(0), 2048U);
  EXPECT_EQ(remote.reply.size(), 139268U);
}

TEST_F(SimulatedMulticast, AnInstanceHasRoomFor4096Groups) {
  for (uint32_t key = 0; key < 4096; ++key) ASSERT_EQ(Do(133, Local(key, "first")), 0);
  EXPECT_EQ(Do(133, Local(4096, "first")), ENOSPC);
  EXPECT_EQ(Do(131, Remote(4096, 1)), ENOSPC);
  EXPECT_EQ(Do(131, Remote(4095, 1)), 0);
  EXPECT_EQ(Get(135).reply.size(), 49152U);
  ASSERT_EQ(Do(134, Local(0, "first")), 0);
  EXPECT_EQ(Do(131, Remote(4096, 1)), 0);
}

}  // namespace
