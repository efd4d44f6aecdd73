#include "datapath/datapath.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "in_process.h"
#include "support/any_memory.h"

namespace {

using in_process::Block;
using in_process::Bytes;
using in_process::Execute;
using in_process::ExecuteInVain;
using in_process::Result;
using in_process::Scalar;
using vdrsim::Datapath;

constexpr uint32_t kRoomForAll = 2000000;

int Set(Datapath& datapath, std::string_view name) {
  return Execute(datapath, 2, Block(name), 0).error;
}

TEST(SimulatedDatapath, ACodeWithoutHandlerIsNoCommand) {
  Datapath datapath;
  for (const uint32_t code : {175U, 0x5401U, 0xffffffffU}) {
    EXPECT_EQ(Execute(datapath, code, Block("edge-1"), kRoomForAll).error, ENOTTY) << code;
  }
}

TEST(SimulatedDatapath, AnInputOfAWrongLengthIsRefused) {
  Datapath datapath;
  const Bytes bytes(1000);
  const std::span<const std::byte> all(bytes);
  for (const uint32_t block : {0U, 1U, 2U, 3U, 4U}) {
    for (const size_t length : {0U, 4U, 967U, 969U}) {
      EXPECT_EQ(Execute(datapath, block, all.first(length), kRoomForAll).error, EINVAL)
          << block << ' ' << length;
    }
  }
  for (const uint32_t scalar : {10U, 12U, 14U, 160U}) {
    for (const size_t length : {0U, 3U, 5U, 968U}) {
      EXPECT_EQ(Execute(datapath, scalar, all.first(length), 0).error, EINVAL)
          << scalar << ' ' << length;
    }
  }
  for (const uint32_t none : {9U, 11U, 13U, 42U, 159U}) {
    for (const size_t length : {1U, 4U, 968U}) {
      EXPECT_EQ(Execute(datapath, none, all.first(length), 4).error, EINVAL)
          << none << ' ' << length;
    }
  }
}

TEST(SimulatedDatapath, AReplyThatDoesNotFitIsWithheld) {
  Datapath datapath;
  for (const char* name : {"edge-1", "edge-2"}) ASSERT_EQ(Set(datapath, name), 0);
  const Result answers[] = {Execute(datapath, 0, Block(), 1153),
                            Execute(datapath, 1, Block("edge-1"), 576),
                            Execute(datapath, 9, {}, 3)};
  for (const Result& answer : answers) {
    EXPECT_EQ(answer.error, EINVAL);
    EXPECT_TRUE(answer.reply.empty());
  }
  EXPECT_EQ(Execute(datapath, 0, Block(), 1154).error, 0);
}

TEST(SimulatedDatapath, ACommandWhoseReplyCannotBeDeliveredHasNoEffect) {
  Datapath datapath;
  ASSERT_EQ(Set(datapath, "edge-1"), 0);
  EXPECT_EQ(ExecuteInVain(datapath, 2, Block("edge-2")).error, EFAULT);
  EXPECT_EQ(ExecuteInVain(datapath, 3, Block("edge-1")).error, EFAULT);
  EXPECT_EQ(ExecuteInVain(datapath, 10, Scalar(7)).error, EFAULT);
  EXPECT_EQ(Execute(datapath, 0, Block(), kRoomForAll).reply.size(), 577U);
  EXPECT_EQ(Execute(datapath, 9, {}, 4).reply, Scalar(0));
}

vdrsim::Answer Start(Datapath& datapath, uint32_t code, std::span<const std::byte> input) {
  AnyMemory memory;
  return datapath.Execute({.process = 1,
                           .thread = 1,
                           .node = vdrsim::Node::Normal,
                           .code = code,
                           .input = input,
                           .capacity = kRoomForAll,
                           .destination = memory});
}

wire::Wire LifBlock(int number) {
  return Block("edge-1").Text(384, "lif-" + std::to_string(number));
}

TEST(SimulatedDatapath, AListIsThatOfItsMomentHoweverLateItIsDelivered) {
  Datapath datapath;
  ASSERT_EQ(Set(datapath, "edge-1"), 0);
  for (int number = 1000; number < 2200; ++number) {
    ASSERT_EQ(Execute(datapath, 19, LifBlock(number)).error, 0);
  }
  const Result before = Execute(datapath, 21, Block("edge-1"), kRoomForAll);
  vdrsim::Answer late = Start(datapath, 21, Block("edge-1"));
  ASSERT_EQ(late.reply.size(), 1200U * 961);
  Bytes delivered;
  bool isFirst = true;
  for (auto piece = late.reply.Next(); !piece.empty(); piece = late.reply.Next()) {
    EXPECT_LT(piece.size(), 1200U * 961) << "it comes in pieces";
    delivered.insert(delivered.end(), piece.begin(), piece.end());
    ASSERT_EQ(Execute(datapath, 19, LifBlock(1900).U32(512, 7)).error, 0);
    EXPECT_EQ(Execute(datapath, 20, LifBlock(2199)).error, isFirst ? 0 : ENOENT);
    isFirst = false;
  }
  EXPECT_EQ(delivered, before.reply);
  EXPECT_EQ(Execute(datapath, 21, Block("edge-1"), kRoomForAll).reply.size(), 1199U * 961);
}

TEST(SimulatedDatapath, AListThatIsKeptIsThatOfItsMomentToo) {
  Datapath datapath;
  for (int number = 100; number < 1100; ++number) {
    ASSERT_EQ(Set(datapath, "edge-" + std::to_string(number)), 0);
  }
  const Result before = Execute(datapath, 0, Block(), kRoomForAll);
  vdrsim::Answer late = Start(datapath, 0, Block());
  ASSERT_EQ(late.reply.size(), 577000U);
  ASSERT_EQ(Execute(datapath, 2, Block("edge-900").U32(256, 7)).error, 0);
  ASSERT_EQ(Execute(datapath, 3, Block("edge-1099")).error, 0);
  const auto piece = late.reply.Next();
  EXPECT_TRUE(std::ranges::equal(piece, before.reply));
  EXPECT_EQ(Execute(datapath, 0, Block(), kRoomForAll).reply.size(), 577U * 999);
}

TEST(SimulatedDatapath, ThreadsListWhileOthersChange) {
  Datapath datapath;
  for (int number = 0; number < 300; ++number) {
    ASSERT_EQ(Set(datapath, "edge-" + std::to_string(number)), 0);
  }
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&datapath, thread] {
      for (int round = 0; round < 50; ++round) {
        if (thread % 2 == 0) {
          const Result list = Execute(datapath, 0, Block(), kRoomForAll);
          EXPECT_EQ(list.error, 0);
          EXPECT_GE(list.reply.size(), 577U * 298);
        } else {
          const std::string name = "edge-" + std::to_string(thread);
          EXPECT_EQ(Execute(datapath, 3, Block(name)).error, 0);
          EXPECT_EQ(Set(datapath, name), 0);
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(Execute(datapath, 0, Block(), kRoomForAll).reply.size(), 577U * 300);
}

TEST(SimulatedDatapath, IsReplacedAtOnceWhileAListIsStillDelivered) {
  Datapath other;
  ASSERT_EQ(Set(other, "edge-3"), 0);
  Datapath datapath;
  ASSERT_EQ(Set(datapath, "edge-1"), 0);
  ASSERT_EQ(Set(datapath, "edge-2"), 0);
  vdrsim::Answer late = Start(datapath, 0, Block());
  datapath.Replace(other.state());
  EXPECT_EQ(late.reply.Next().size(), 577U * 2);
  EXPECT_EQ(Execute(datapath, 0, Block(), kRoomForAll).TextAt(0), "edge-3");
  EXPECT_TRUE(datapath.state() == other.state());
  ASSERT_EQ(Set(datapath, "edge-4"), 0);
  EXPECT_EQ(Execute(other, 0, Block(), kRoomForAll).reply.size(), 577U);
}

}  // namespace
