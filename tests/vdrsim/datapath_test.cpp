#include "datapath.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

using vdrsim::Answer;
using vdrsim::Datapath;
using Bytes = std::vector<std::byte>;

constexpr uint32_t kRoomForOne = 577;
constexpr uint32_t kRoomForAll = 577577;

class Block {
 public:
  explicit Block(std::string_view name = "") { Text(0, name); }

  Block& Text(size_t offset, std::string_view text) {
    std::memcpy(bytes_.data() + offset, text.data(), text.size());
    return *this;
  }
  Block& U32(size_t offset, uint32_t value) {
    std::memcpy(bytes_.data() + offset, &value, 4);
    return *this;
  }
  Block& U8(size_t offset, uint8_t value) {
    bytes_[offset] = std::byte{value};
    return *this;
  }
  operator std::span<const std::byte>() const { return bytes_; }

 private:
  Bytes bytes_ = Bytes(968);
};

Bytes Scalar(uint32_t value) {
  Bytes bytes(4);
  std::memcpy(bytes.data(), &value, 4);
  return bytes;
}

uint32_t WordAt(const Answer& answer, size_t offset) {
  uint32_t value = 0;
  std::memcpy(&value, answer.reply.data() + offset, 4);
  return value;
}

std::string TextAt(const Answer& answer, size_t offset) {
  return reinterpret_cast<const char*>(answer.reply.data() + offset);
}

int Set(Datapath& datapath, std::string_view name) {
  return datapath.Handle(2, Block(name), 0).error;
}

TEST(SimulatedInstances, AnInstanceIsReadBackAsItWasSet) {
  Datapath datapath;
  const Block block =
      Block("edge-1").U32(256, 0x01020304).Text(332, "primary").U32(352, 0xfffffffe).U8(368, 0x81);
  const Answer set = datapath.Handle(2, block, 0);
  ASSERT_EQ(set.error, 0);
  EXPECT_TRUE(set.reply.empty());

  const Answer read = datapath.Handle(1, Block("edge-1"), kRoomForOne);
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
  ASSERT_EQ(datapath.Handle(2, Block("edge-1").Text(332, "123456789012345678X"), 0).error, 0);
  EXPECT_EQ(TextAt(datapath.Handle(1, Block("edge-1"), kRoomForOne), 73), "123456789012345678");
}

TEST(SimulatedInstances, SettingAgainUpdatesAndKeepsTheTunables) {
  Datapath datapath;
  ASSERT_EQ(datapath.Handle(2, Block("edge-1").U32(256, 1).Text(332, "old"), 0).error, 0);
  const Block tunables = Block("edge-1").Text(260, "mtu=9000").U32(324, 77);
  ASSERT_EQ(datapath.Handle(4, tunables, 0).error, 0);
  ASSERT_EQ(datapath.Handle(2, Block("edge-1").U32(256, 2), 0).error, 0);

  const Answer read = datapath.Handle(1, Block("edge-1"), kRoomForOne);
  ASSERT_EQ(read.reply.size(), 577U);
  EXPECT_EQ(WordAt(read, 64), 2U);
  EXPECT_EQ(TextAt(read, 73), "");
  EXPECT_EQ(TextAt(read, 329), "mtu=9000");
  EXPECT_EQ(WordAt(read, 399), 77U);
  EXPECT_EQ(datapath.Handle(0, Block(), kRoomForAll).reply.size(), 577U);
}

TEST(SimulatedInstances, AnUnknownOneIsNotFound) {
  Datapath datapath;
  ASSERT_EQ(Set(datapath, "edge-1"), 0);
  for (const uint32_t code : {1U, 3U, 4U}) {
    const Answer answer = datapath.Handle(code, Block("edge-2"), kRoomForOne);
    EXPECT_EQ(answer.error, ENOENT) << code;
    EXPECT_TRUE(answer.reply.empty()) << code;
  }
}

TEST(SimulatedInstances, ADeletedOneIsGone) {
  Datapath datapath;
  ASSERT_EQ(Set(datapath, "edge-1"), 0);
  EXPECT_EQ(datapath.Handle(3, Block("edge-1"), 0).error, 0);
  EXPECT_EQ(datapath.Handle(3, Block("edge-1"), 0).error, ENOENT);
  EXPECT_EQ(datapath.Handle(1, Block("edge-1"), kRoomForOne).error, ENOENT);
}

TEST(SimulatedInstances, AnEmptyOrUnterminatedNameIsRefused) {
  Datapath datapath;
  for (const uint32_t code : {1U, 2U, 3U, 4U}) {
    EXPECT_EQ(datapath.Handle(code, Block(), kRoomForOne).error, EINVAL) << code;
    EXPECT_EQ(datapath.Handle(code, Block(std::string(64, 'n')), kRoomForOne).error, EINVAL)
        << code;
  }
  EXPECT_EQ(datapath.Handle(0, Block().U8(368, 1), kRoomForAll).error, EINVAL);
  EXPECT_EQ(Set(datapath, std::string(63, 'n')), 0);
}

TEST(SimulatedInstances, TheListHoldsOneRecordForEach) {
  Datapath datapath;
  EXPECT_EQ(datapath.Handle(0, Block(), kRoomForAll).error, 0);
  EXPECT_TRUE(datapath.Handle(0, Block(), kRoomForAll).reply.empty());
  for (const char* name : {"edge-2", "edge-1", "edge-3"}) ASSERT_EQ(Set(datapath, name), 0);

  const Answer list = datapath.Handle(0, Block("ignored"), kRoomForAll);
  ASSERT_EQ(list.reply.size(), 1731U);
  EXPECT_EQ(TextAt(list, 0), "edge-1");
  EXPECT_EQ(TextAt(list, 577), "edge-2");
  EXPECT_EQ(TextAt(list, 1154), "edge-3");
}

TEST(SimulatedInstances, AFilteredListHoldsTheNamedOneAlone) {
  Datapath datapath;
  for (const char* name : {"edge-1", "edge-2"}) ASSERT_EQ(Set(datapath, name), 0);

  const Answer list = datapath.Handle(0, Block("edge-2").U8(368, 1), kRoomForAll);
  ASSERT_EQ(list.reply.size(), 577U);
  EXPECT_EQ(TextAt(list, 0), "edge-2");
  const Answer none = datapath.Handle(0, Block("edge-3").U8(368, 255), kRoomForAll);
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
  EXPECT_EQ(datapath.Handle(0, Block(), kRoomForAll).reply.size(), 577577U);
  ASSERT_EQ(datapath.Handle(3, Block("edge-1"), 0).error, 0);
  EXPECT_EQ(Set(datapath, "edge-1002"), 0);
}

TEST(SimulatedSettings, EachIsReadBackAsItWasSet) {
  Datapath datapath;
  const std::pair<uint32_t, uint32_t> settings[] = {{10, 9}, {12, 11}, {14, 13}, {160, 159}};
  uint32_t value = 0xfffffff0;
  for (const auto& [set, get] : settings) {
    EXPECT_EQ(datapath.Handle(get, {}, 4).reply, Scalar(0)) << get;
    EXPECT_EQ(datapath.Handle(set, Scalar(value++), 0).error, 0) << set;
  }
  value = 0xfffffff0;
  for (const auto& [set, get] : settings) {
    const Answer answer = datapath.Handle(get, {}, 4);
    EXPECT_EQ(answer.error, 0) << get;
    EXPECT_EQ(answer.reply, Scalar(value++)) << get;
  }
}

TEST(SimulatedSettings, TheNoticeBeforeUnloadingIsRemembered) {
  Datapath datapath;
  EXPECT_FALSE(datapath.state().preUnloadAnnounced);
  const Answer answer = datapath.Handle(42, {}, 0);
  EXPECT_EQ(answer.error, 0);
  EXPECT_TRUE(answer.reply.empty());
  EXPECT_TRUE(datapath.state().preUnloadAnnounced);
}

TEST(SimulatedDatapath, ACodeWithoutHandlerIsNoCommand) {
  Datapath datapath;
  for (const uint32_t code : {43U, 175U, 0x5401U, 0xffffffffU}) {
    EXPECT_FALSE(datapath.Handles(code)) << code;
    EXPECT_EQ(datapath.Handle(code, Block("edge-1"), kRoomForAll).error, ENOTTY) << code;
  }
  EXPECT_TRUE(datapath.Handles(0));
  EXPECT_TRUE(datapath.Handles(160));
}

TEST(SimulatedDatapath, AnInputOfAWrongLengthIsRefused) {
  Datapath datapath;
  const Bytes bytes(1000);
  const std::span<const std::byte> all(bytes);
  for (const uint32_t block : {0U, 1U, 2U, 3U, 4U}) {
    for (const size_t length : {0U, 4U, 967U, 969U}) {
      EXPECT_EQ(datapath.Handle(block, all.first(length), kRoomForAll).error, EINVAL)
          << block << ' ' << length;
    }
  }
  for (const uint32_t scalar : {10U, 12U, 14U, 160U}) {
    for (const size_t length : {0U, 3U, 5U, 968U}) {
      EXPECT_EQ(datapath.Handle(scalar, all.first(length), 0).error, EINVAL)
          << scalar << ' ' << length;
    }
  }
  for (const uint32_t none : {9U, 11U, 13U, 42U, 159U}) {
    for (const size_t length : {1U, 4U, 968U}) {
      EXPECT_EQ(datapath.Handle(none, all.first(length), 4).error, EINVAL) << none << ' ' << length;
    }
  }
}

TEST(SimulatedDatapath, AReplyThatDoesNotFitIsWithheld) {
  Datapath datapath;
  for (const char* name : {"edge-1", "edge-2"}) ASSERT_EQ(Set(datapath, name), 0);
  const Answer answers[] = {datapath.Handle(0, Block(), 1153),
                            datapath.Handle(1, Block("edge-1"), 576), datapath.Handle(9, {}, 3)};
  for (const Answer& answer : answers) {
    EXPECT_EQ(answer.error, EINVAL);
    EXPECT_TRUE(answer.reply.empty());
  }
  EXPECT_EQ(datapath.Handle(0, Block(), 1154).error, 0);
}

}  // namespace
