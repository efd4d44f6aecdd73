#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "simulated.h"

namespace {

using in_process::Block;
using in_process::Difference;
using in_process::Execute;
using in_process::Wire;

// A flush whose selectors and value say something, which nobody looks at.
Wire FlushBlock(uint32_t target, std::string_view name = "") {
  return Wire(968).U32(256, target).U8(260, 1).U8(261, 2).U8(262, 3).Text(263, name).U32(328, 4);
}

class Flushes : public in_process::Simulated {
 protected:
  Flushes() {
    for (const char* instance : {"edge-1", "edge-2"}) {
      EXPECT_EQ(Do(2, Block(instance)), 0);
      EXPECT_EQ(Do(19, Block(instance).Text(384, "uplink")), 0);
    }
    Fill();
  }

  // One of each kind, in each of two instances.
  void Fill() {
    for (const char* instance : {"edge-1", "edge-2"}) {
      const Wire four = Block(instance).Text(384, "uplink").Text(524, "02:12:22:32:42:52");
      const Wire six = Block(instance).Text(256, "uplink").Text(336, "02:12:22:32:42:52");
      EXPECT_EQ(Do(34, Block(instance)), 0);
      EXPECT_EQ(Do(110, Block(instance)), 0);
      EXPECT_EQ(Do(38, four), 0);
      EXPECT_EQ(Do(38, Wire(four).U8(917, 1)), 0);
      EXPECT_EQ(Do(112, six), 0);
      EXPECT_EQ(Do(112, Wire(six).U8(917, 1)), 0);
    }
  }

  // By the numbers of the targets, what an instance has.
  std::vector<uint32_t> Present(const char* instance) {
    const vdrsim::State state = datapath_.state();
    const vdrsim::Instance& found = *state.instances.Find(std::string_view(instance));
    const vdrsim::Lif& lif = *found.lifs.Find(std::string_view("uplink"));
    const size_t sizes[] = {found.routes.size(),       found.ipv6Routes.size(),
                            lif.arps.size(),           lif.proxyArps.size(),
                            lif.ipv6Neighbours.size(), lif.ipv6Proxies.size()};
    std::vector<uint32_t> present;
    for (uint32_t index = 0; index < 6; ++index) {
      if (sizes[index] == 1) present.push_back(index + 1);
    }
    return present;
  }
};

using Targets = std::vector<uint32_t>;

const Targets kAll = {1, 2, 3, 4, 5, 6};

TEST_F(Flushes, EachTargetIsOneTable) {
  for (const uint32_t target : kAll) {
    SCOPED_TRACE(target);
    Fill();
    Targets others = kAll;
    std::erase(others, target);
    ASSERT_EQ(Do(80, FlushBlock(target, "edge-1")), 0);
    EXPECT_EQ(Present("edge-1"), others);
    EXPECT_EQ(Present("edge-2"), kAll);
    ASSERT_EQ(Do(80, FlushBlock(target)), 0);
    EXPECT_EQ(Present("edge-2"), others);
  }
}

TEST_F(Flushes, TargetZeroIsAllOfThem) {
  ASSERT_EQ(Do(80, FlushBlock(0, "edge-1")), 0);
  EXPECT_EQ(Present("edge-1"), Targets{});
  EXPECT_EQ(Present("edge-2"), kAll);
  ASSERT_EQ(Do(80, FlushBlock(0)), 0);
  EXPECT_EQ(Present("edge-2"), Targets{});
  EXPECT_EQ(Do(80, FlushBlock(0)), 0) << "nothing is left to flush";
}

TEST_F(Flushes, WhatIsNotThereIsRefused) {
  const vdrsim::State before = datapath_.state();
  EXPECT_EQ(Do(80, FlushBlock(7)), EINVAL);
  EXPECT_EQ(Do(80, FlushBlock(0xffffffff, "edge-1")), EINVAL);
  EXPECT_EQ(Do(80, FlushBlock(0, "edge-3")), ENOENT);
  EXPECT_EQ(Do(80, FlushBlock(0, std::string(64, 'n'))), EINVAL);
  EXPECT_EQ(datapath_.state(), before);
}

TEST_F(Flushes, ANamedInstanceCountsThem) {
  ASSERT_EQ(Do(6, Block("edge-1")), 0);
  ASSERT_EQ(Do(80, FlushBlock(1, "edge-1")), 0);
  ASSERT_EQ(Do(80, FlushBlock(1)), 0);
  EXPECT_EQ(Difference(Execute(datapath_, 5, Block("edge-1"), 852), Wire(852).U32(0, 1).U64(12, 1)),
            "");
}

TEST_F(Flushes, ClearingThePathMtuIsCounted) {
  const vdrsim::State before = datapath_.state();
  ASSERT_EQ(Execute(datapath_, 44, Wire(968)).error, 0);
  ASSERT_EQ(Execute(datapath_, 151, {}).error, 0);
  EXPECT_EQ(Difference(Execute(datapath_, 43, Wire(968), 852), Wire(852).U32(0, 3).U64(20, 1)), "");
  EXPECT_EQ(datapath_.state(), before);
}

}  // namespace
