#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "datapath/datapath.h"
#include "in_process.h"

namespace {

using in_process::Block;
using in_process::Bytes;
using in_process::Difference;
using in_process::Execute;
using in_process::Result;
using in_process::Scalar;
using in_process::Wire;
using vdrsim::Datapath;

constexpr uint32_t kRoomForOne = 577;
constexpr uint32_t kRoomForAll = 577577;

int Set(Datapath& datapath, std::string_view name) {
  return Execute(datapath, 2, Block(name), 0).error;
}

TEST(SimulatedInstances, AnInstanceIsReadBackAsItWasSet) {
  Datapath datapath;
  const Wire block =
      Block("edge-1").U32(256, 0x01020304).Text(332, "primary").U32(352, 0xfffffffe).U8(368, 0x81);
  const Result set = Execute(datapath, 2, block, 0);
  ASSERT_EQ(set.error, 0);
  EXPECT_TRUE(set.reply.empty());

  const Result read = Execute(datapath, 1, Block("edge-1"), kRoomForOne);
  ASSERT_EQ(read.error, 0);
  ASSERT_EQ(read.reply.size(), 577U);
  Bytes expected(577);
  std::memcpy(expected.data(), "edge-1", 6);
  std::memcpy(expected.data() + 64, "\x04\x03\x02\x01", 4);
  std::memcpy(expected.data() + 68, "\xfe\xff\xff\xff", 4);
  expected[72] = std::byte{0x81};
  std::memcpy(expected.data() + 73, "primary", 7);
  EXPECT_EQ(read.reply, expected);
}

TEST(SimulatedInstances, ATextOfEighteenCharactersNeedsNoTerminator) {
  Datapath datapath;
  ASSERT_EQ(Execute(datapath, 2, Block("edge-1").Text(332, "123456789012345678X"), 0).error, 0);
  EXPECT_EQ(Execute(datapath, 1, Block("edge-1"), kRoomForOne).TextAt(73), "123456789012345678");
}

TEST(SimulatedInstances, SettingAgainUpdatesAndKeepsTheTunables) {
  Datapath datapath;
  ASSERT_EQ(Execute(datapath, 2, Block("edge-1").U32(256, 1).Text(332, "old"), 0).error, 0);
  const Wire tunables = Block("edge-1").Text(260, "mtu=9000").U32(324, 77);
  ASSERT_EQ(Execute(datapath, 4, tunables, 0).error, 0);
  ASSERT_EQ(Execute(datapath, 2, Block("edge-1").U32(256, 2), 0).error, 0);

  const Result read = Execute(datapath, 1, Block("edge-1"), kRoomForOne);
  ASSERT_EQ(read.reply.size(), 577U);
  EXPECT_EQ(read.WordAt(64), 2U);
  EXPECT_EQ(read.TextAt(73), "");
  EXPECT_EQ(read.TextAt(329), "mtu=9000");
  EXPECT_EQ(read.WordAt(399), 77U);
  EXPECT_EQ(Execute(datapath, 0, Block(), kRoomForAll).reply.size(), 577U);
}

TEST(SimulatedInstances, AnUnknownOneIsNotFound) {
  Datapath datapath;
  ASSERT_EQ(Set(datapath, "edge-1"), 0);
  for (const uint32_t code : {1U, 3U, 4U}) {
    const Result answer = Execute(datapath, code, Block("edge-2"), kRoomForOne);
    EXPECT_EQ(answer.error, ENOENT) << code;
    EXPECT_TRUE(answer.reply.empty()) << code;
  }
}

TEST(SimulatedInstances, ADeletedOneIsGone) {
  Datapath datapath;
  ASSERT_EQ(Set(datapath, "edge-1"), 0);
  EXPECT_EQ(Execute(datapath, 3, Block("edge-1"), 0).error, 0);
  EXPECT_EQ(Execute(datapath, 3, Block("edge-1"), 0).error, ENOENT);
  EXPECT_EQ(Execute(datapath, 1, Block("edge-1"), kRoomForOne).error, ENOENT);
}

TEST(SimulatedInstances, AnEmptyOrUnterminatedNameIsRefused) {
  Datapath datapath;
  for (const uint32_t code : {1U, 2U, 3U, 4U}) {
    EXPECT_EQ(Execute(datapath, code, Block(), kRoomForOne).error, EINVAL) << code;
    EXPECT_EQ(Execute(datapath, code, Block(std::string(64, 'n')), kRoomForOne).error, EINVAL)
        << code;
  }
  EXPECT_EQ(Execute(datapath, 0, Block().U8(368, 1), kRoomForAll).error, EINVAL);
  EXPECT_EQ(Set(datapath, std::string(63, 'n')), 0);
}

TEST(SimulatedInstances, TheListHoldsOneRecordForEach) {
  Datapath datapath;
  EXPECT_EQ(Execute(datapath, 0, Block(), kRoomForAll).error, 0);
  EXPECT_TRUE(Execute(datapath, 0, Block(), kRoomForAll).reply.empty());
  for (const char* name : {"edge-2", "edge-1", "edge-3"}) ASSERT_EQ(Set(datapath, name), 0);

  const Result list = Execute(datapath, 0, Block("ignored"), kRoomForAll);
  ASSERT_EQ(list.reply.size(), 1731U);
  EXPECT_EQ(list.TextAt(0), "edge-1");
  EXPECT_EQ(list.TextAt(577), "edge-2");
  EXPECT_EQ(list.TextAt(1154), "edge-3");
}

TEST(SimulatedInstances, AFilteredListHoldsTheNamedOneAlone) {
  Datapath datapath;
  for (const char* name : {"edge-1", "edge-2"}) ASSERT_EQ(Set(datapath, name), 0);

  const Result list = Execute(datapath, 0, Block("edge-2").U8(368, 1), kRoomForAll);
  ASSERT_EQ(list.reply.size(), 577U);
  EXPECT_EQ(list.TextAt(0), "edge-2");
  const Result none = Execute(datapath, 0, Block("edge-3").U8(368, 255), kRoomForAll);
  EXPECT_EQ(none.error, 0);
  EXPECT_TRUE(none.reply.empty());
}

TEST(SimulatedInstances, TheOneAfterAThousandAndOneFindsNoRoom) {
  Datapath datapath;
  for (int number = 1; number <= 1001; ++number) {
    ASSERT_EQ(Set(datapath, "edge-" + std::to_string(number)), 0) << number;
  }
  EXPECT_EQ(Set(datapath, "edge-1002"), ENOSPC);
  EXPECT_EQ(Set(datapath, "edge-1001"), 0) << "an update needs no room";
  EXPECT_EQ(Execute(datapath, 0, Block(), kRoomForAll).reply.size(), 577577U);
  ASSERT_EQ(Execute(datapath, 3, Block("edge-1"), 0).error, 0);
  EXPECT_EQ(Set(datapath, "edge-1002"), 0);
}

TEST(SimulatedCounters, AnInstanceCountsWhatNamesItOrWhatItHolds) {
  Datapath datapath;
  ASSERT_EQ(Set(datapath, "edge-1"), 0);
  ASSERT_EQ(Execute(datapath, 4, Block("edge-1")).error, 0);
  ASSERT_EQ(Execute(datapath, 1, Block("edge-1"), kRoomForOne).error, 0);
  ASSERT_EQ(Execute(datapath, 19, Block("edge-1").Text(384, "uplink")).error, 0);
  ASSERT_EQ(Execute(datapath, 20, Block("edge-1").Text(384, "uplink")).error, 0);
  ASSERT_EQ(Execute(datapath, 20, Block("edge-1").Text(384, "uplink")).error, ENOENT);
  const Wire counts = Wire(852).U32(0, 1).U64(4, 3).U64(12, 1).U64(20, 1).U64(28, 1);
  EXPECT_EQ(Difference(Execute(datapath, 5, Block("edge-1"), 852), counts), "");
  EXPECT_EQ(Difference(Execute(datapath, 5, Block("edge-1"), 852), counts), "");
  ASSERT_EQ(Execute(datapath, 6, Block("edge-1")).error, 0);
  EXPECT_EQ(Difference(Execute(datapath, 5, Block("edge-1"), 852), Wire(852).U32(0, 1)), "");
  for (const uint32_t code : {5U, 6U}) {
    EXPECT_EQ(Execute(datapath, code, Block("edge-2"), 852).error, ENOENT) << code;
    EXPECT_EQ(Execute(datapath, code, Block(), 852).error, EINVAL) << code;
  }
}

TEST(SimulatedCounters, TheDatapathCountsEveryCommand) {
  Datapath datapath;
  ASSERT_EQ(Set(datapath, "edge-1"), 0);
  ASSERT_EQ(Execute(datapath, 10, Scalar(1)).error, 0);
  ASSERT_EQ(Execute(datapath, 3, Block("edge-1")).error, 0);
  ASSERT_EQ(Execute(datapath, 9, {}, 4).error, 0);
  ASSERT_EQ(Execute(datapath, 9, {}, 3).error, EINVAL);
  ASSERT_EQ(Execute(datapath, 2, Block()).error, EINVAL);
  ASSERT_EQ(Execute(datapath, 175, Block()).error, ENOTTY) << "no command, so not counted";
  const Wire counts = Wire(852).U32(0, 3).U64(12, 2).U64(20, 1).U64(28, 1).U64(36, 2);
  EXPECT_EQ(Difference(Execute(datapath, 43, Block(), 852), counts), "");
  EXPECT_EQ(Difference(Execute(datapath, 43, Block(), 852), counts), "");
  ASSERT_EQ(Execute(datapath, 44, Block()).error, 0);
  EXPECT_EQ(Difference(Execute(datapath, 43, Block(), 852), Wire(852).U32(0, 3)), "");
}

TEST(SimulatedSettings, EachIsReadBackAsItWasSet) {
  Datapath datapath;
  const std::pair<uint32_t, uint32_t> settings[] = {{10, 9}, {12, 11}, {14, 13}, {160, 159}};
  uint32_t value = 0xfffffff0;
  for (const auto& [set, get] : settings) {
    EXPECT_EQ(Execute(datapath, get, {}, 4).reply, Scalar(0)) << get;
    EXPECT_EQ(Execute(datapath, set, Scalar(value++), 0).error, 0) << set;
  }
  value = 0xfffffff0;
  for (const auto& [set, get] : settings) {
    const Result answer = Execute(datapath, get, {}, 4);
    EXPECT_EQ(answer.error, 0) << get;
    EXPECT_EQ(answer.reply, Scalar(value++)) << get;
  }
}

TEST(SimulatedSettings, TheNoticeBeforeUnloadingIsRemembered) {
  Datapath datapath;
  EXPECT_FALSE(datapath.state().preUnloadAnnounced);
  const Result answer = Execute(datapath, 42, {}, 0);
  EXPECT_EQ(answer.error, 0);
  EXPECT_TRUE(answer.reply.empty());
  EXPECT_TRUE(datapath.state().preUnloadAnnounced);
}

}  // namespace
