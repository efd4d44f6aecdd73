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

constexpr uint32_t kAmpleRoom = 500000;
constexpr const char* kMac = "\x02\x12\x22\x32\x42\x52";

class SimulatedE2i : public in_process::Simulated {
 protected:
  Result Get(uint32_t code, const Wire& block = Block()) {
    return Execute(datapath_, code, block, kAmpleRoom);
  }
  int AddMac(std::string_view mac, uint32_t value) {
    return Do(74, Block().U32(256, value).Text(260, mac));
  }
};

Wire Key(uint32_t key) { return Block().U32(256, key); }

Wire FullEntry(uint32_t key) {
  return Key(key).U32(260, 0x21222324).Text(264, kMac).U32(272, 0x41424344).U32(276, 0x51525354);
}

TEST_F(SimulatedE2i, AnEntryIsReadBackAsItWasAdded) {
  ASSERT_EQ(Do(161, FullEntry(0x01020304)), 0);
  const Wire record = Wire(26)
                          .U32(0, 0x01020304)
                          .U32(4, 0x21222324)
                          .Text(8, kMac)
                          .U32(14, 0x41424344)
                          .U32(18, 0x51525354);
  EXPECT_EQ(Difference(Get(165, Key(0x01020304)), record), "");
  ASSERT_EQ(Do(161, Key(0x01020304).U32(260, 9)), 0);
  EXPECT_EQ(Difference(Get(165, Key(0x01020304)), Wire(26).U32(0, 0x01020304).U32(4, 9)), "");
  EXPECT_EQ(Get(165, Key(5)).error, ENOENT);
}

TEST_F(SimulatedE2i, TheTableBeginsWithItsCount) {
  EXPECT_EQ(Difference(Get(164), Wire(4)), "");
  ASSERT_EQ(Do(161, Key(256).U32(260, 2)), 0);
  ASSERT_EQ(Do(161, Key(7).U32(260, 1)), 0);
  EXPECT_EQ(Difference(Get(164), Wire(56).U32(0, 2).U32(4, 7).U32(8, 1).U32(30, 256).U32(34, 2)),
            "");
}

TEST_F(SimulatedE2i, DeletedOnesAreGone) {
  for (const uint32_t key : {1U, 2U, 3U}) ASSERT_EQ(Do(161, Key(key)), 0);
  ASSERT_EQ(Do(162, Key(2)), 0);
  EXPECT_EQ(Do(162, Key(2)), ENOENT);
  EXPECT_EQ(Difference(Get(164), Wire(56).U32(0, 2).U32(4, 1).U32(30, 3)), "");
  ASSERT_EQ(Do(163, Block()), 0);
  EXPECT_EQ(Difference(Get(164), Wire(4)), "");
  EXPECT_EQ(Do(163, Block()), 0) << "none is no error";
}

TEST_F(SimulatedE2i, ThereIsRoomFor8192) {
  for (uint32_t key = 0; key < 8192; ++key) ASSERT_EQ(Do(161, Key(key)), 0);
  EXPECT_EQ(Do(161, Key(8192)), ENOSPC);
  EXPECT_EQ(Do(161, Key(8191)), 0) << "an update needs no room";
  EXPECT_EQ(Get(164).WordAt(0), 8192U);
  EXPECT_EQ(Get(164).reply.size(), 212996U);
  EXPECT_EQ(Get(72).reply.size(), 425984U);
}

TEST_F(SimulatedE2i, PhysicalMacsAreKnownByThemselves) {
  EXPECT_EQ(Difference(Get(73), Wire(0)), "");
  ASSERT_EQ(AddMac("\x02\xff", 1), 0);
  ASSERT_EQ(AddMac(kMac, 2), 0);
  ASSERT_EQ(AddMac(kMac, 0x01020304), 0);
  const Wire both = Wire(32).Text(0, kMac).U32(8, 0x01020304).Text(16, "\x02\xff").U32(24, 1);
  EXPECT_EQ(Difference(Get(73), both), "");
  ASSERT_EQ(Do(75, Block().Text(260, kMac)), 0);
  EXPECT_EQ(Do(75, Block().Text(260, kMac)), ENOENT);
  EXPECT_EQ(Difference(Get(73), Wire(16).Text(0, "\x02\xff").U32(8, 1)), "");
}

TEST_F(SimulatedE2i, AnAddressOfZerosNamesNone) {
  EXPECT_EQ(AddMac("", 1), EINVAL);
  EXPECT_EQ(Do(75, Block()), EINVAL);
  EXPECT_EQ(datapath_.state(), vdrsim::State{});
}

TEST_F(SimulatedE2i, ThereIsRoomFor8192PhysicalMacs) {
  const auto mac = [](int number) {
    return std::string({2, static_cast<char>(number >> 8), static_cast<char>(number)});
  };
  for (int number = 0; number < 8192; ++number) ASSERT_EQ(AddMac(mac(number), 1), 0);
  EXPECT_EQ(AddMac(mac(8192), 1), ENOSPC);
  EXPECT_EQ(AddMac(mac(8191), 2), 0) << "an update needs no room";
  EXPECT_EQ(Get(73).reply.size(), 131072U);
}

TEST_F(SimulatedE2i, TheFlTablesAreWhatIsMapped) {
  for (const uint16_t selector : {uint16_t{0}, uint16_t{1}}) {
    EXPECT_EQ(Difference(Get(72, Block().U16(256, selector)), Wire(0)), "");
  }
  ASSERT_EQ(Do(161, FullEntry(0x01020304)), 0);
  ASSERT_EQ(Do(161, Key(5)), 0);
  ASSERT_EQ(AddMac("\x06\x16", 0x05060708), 0);
  EXPECT_EQ(Difference(Get(72), Wire(104).U32(8, 5).Text(52, kMac).U32(60, 0x01020304)), "");
  EXPECT_EQ(Difference(Get(72, Block().U16(256, 1)),
                       Wire(52).Text(0, "\x06\x16").U16(6, 1).U32(8, 0x05060708)),
            "");
  EXPECT_EQ(Get(72, Block().U16(256, 2)).error, ENOENT);
  EXPECT_EQ(Get(72, Block().U16(256, 256)).error, ENOENT);
}

TEST_F(SimulatedE2i, TheLocaleTellsWhoAnswers) {
  EXPECT_EQ(Difference(Get(86), Wire(16).Text(0, "vdrsim")), "");
}

}  // namespace
