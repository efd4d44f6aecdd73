#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "simulated.h"

namespace {

using in_process::Block;
using in_process::Difference;
using in_process::Execute;
using in_process::Result;
using in_process::Wire;

constexpr uint32_t kAmpleRoom = 9000000;
constexpr const char* kMac = "\x02\x12\x22\x32\x42\x52";

class SimulatedServices : public in_process::Simulated {
 protected:
  Result Get(uint32_t code, std::span<const std::byte> input) {
    return Execute(datapath_, code, input, kAmpleRoom);
  }
};

TEST_F(SimulatedServices, AFullSyncSaveLeavesItsStatus) {
  EXPECT_EQ(Difference(Get(124, Block()), Wire(4)), "");
  EXPECT_EQ(Difference(Get(123, Block().U8(256, 0x81)), Wire(4).U32(0, 0x0181)), "");
  EXPECT_EQ(Difference(Get(124, Block()), Wire(4).U32(0, 0x0181)), "");
  EXPECT_EQ(Difference(Get(123, Block()), Wire(4).U32(0, 0x0200)), "");
  EXPECT_EQ(Execute(datapath_, 123, Block(), 3).error, EINVAL);
  EXPECT_EQ(Difference(Get(124, Block()), Wire(4).U32(0, 0x0200)), "");
}

class SimulatedSoftRss : public SimulatedServices {};

Wire Rss(std::string_view name = "rss-1") { return Block().Text(256, name); }

TEST_F(SimulatedSoftRss, AnObjectIsThereFromTheFirstSetOn) {
  for (const uint32_t code : {153U, 154U, 155U, 157U}) {
    EXPECT_EQ(Get(code, Rss()).error, ENOENT) << code;
  }
  ASSERT_EQ(Do(156, Rss().U64(320, 0x0102030405060708)), 0);
  EXPECT_EQ(Difference(Get(155, Rss()), Wire(12).U64(0, 0x0102030405060708)), "");
  EXPECT_EQ(Difference(Get(157, Rss()), Wire(128)), "");
  ASSERT_EQ(Do(158, Rss("rss-2").U8(320, 7).U32(448, 1)), 0);
  EXPECT_EQ(Difference(Get(157, Rss("rss-2")), Wire(128).U8(0, 7)), "");
  EXPECT_EQ(Difference(Get(157, Rss()), Wire(128)), "");
}

TEST_F(SimulatedSoftRss, ATableReplacesTheOneBefore) {
  ASSERT_EQ(Do(156, Rss().U64(320, 5)), 0);
  ASSERT_EQ(Do(158, Rss().Text(320, std::string(128, 'q')).U32(448, 128)), 0);
  EXPECT_EQ(Difference(Get(157, Rss()), Wire(128).Text(0, std::string(128, 'q'))), "");
  EXPECT_EQ(Difference(Get(155, Rss()), Wire(12).U64(0, 5).U32(8, 128)), "");
  ASSERT_EQ(Do(158, Rss().Text(320, "abcd").U32(448, 3)), 0);
  EXPECT_EQ(Difference(Get(157, Rss()), Wire(128).Text(0, "abc")), "");
  EXPECT_EQ(Difference(Get(155, Rss()), Wire(12).U64(0, 5).U32(8, 3)), "");
  EXPECT_EQ(Do(158, Rss().U32(448, 129)), EINVAL);
  EXPECT_EQ(Do(158, Rss().U32(448, 0xffffffff)), EINVAL);
  EXPECT_EQ(Difference(Get(157, Rss()), Wire(128).Text(0, "abc")), "");
  EXPECT_EQ(Do(158, Rss("rss-2").U32(448, 129)), EINVAL);
  EXPECT_EQ(Get(157, Rss("rss-2")).error, ENOENT) << "what is refused makes none";
  ASSERT_EQ(Do(158, Rss()), 0);
  EXPECT_EQ(Difference(Get(157, Rss()), Wire(128)), "");
}

TEST_F(SimulatedSoftRss, CommandsAreCounted) {
  ASSERT_EQ(Do(156, Rss()), 0);
  ASSERT_EQ(Do(158, Rss()), 0);
  ASSERT_EQ(Do(158, Rss().U32(448, 129)), EINVAL);
  for (const uint32_t code : {155U, 157U, 157U}) ASSERT_EQ(Get(code, Rss()).error, 0);
  const Wire counts = Wire(852).U32(4, 4).U64(76, 2).U64(92, 3).U64(100, 1);
  EXPECT_EQ(Difference(Get(153, Rss()), counts), "");
  EXPECT_EQ(Difference(Get(153, Rss()), counts), "");
  ASSERT_EQ(Do(154, Rss()), 0);
  EXPECT_EQ(Difference(Get(153, Rss()), Wire(852).U32(4, 4)), "");
}

TEST_F(SimulatedSoftRss, AnEmptyOrUnterminatedNameIsRefused) {
  for (uint32_t code = 153; code <= 158; ++code) {
    EXPECT_EQ(Get(code, Rss("")).error, EINVAL) << code;
    EXPECT_EQ(Get(code, Rss(std::string(64, 'n'))).error, EINVAL) << code;
  }
  EXPECT_EQ(datapath_.state(), vdrsim::State{});
}

class SimulatedPublicAddresses : public SimulatedServices {
 protected:
  int Add(uint32_t a, uint32_t b) { return Do(166, Block().U32(256, a).U32(272, b)); }
  int Remove(uint32_t a, uint32_t b) { return Do(167, Block().U32(256, a).U32(272, b)); }
  Result Entry(uint32_t key) { return Get(170, Block().U32(256, key)); }
  Result All() { return Get(171, {}); }
};

TEST_F(SimulatedPublicAddresses, AnEntryIsReadBackWithItsItems) {
  const Wire block =
      Block().U32(256, 0x01020304).Text(260, kMac).U32(268, 0x41424344).U32(272, 0x21222324);
  ASSERT_EQ(Do(166, Wire(block).U32(272, 0x31323334)), 0);
  ASSERT_EQ(Do(166, block), 0);
  ASSERT_EQ(Do(166, block), 0);
  const Wire entry = Wire(26)
                         .U32(0, 0x01020304)
                         .Text(4, kMac)
                         .U32(10, 0x41424344)
                         .U32(14, 2)
                         .U32(18, 0x21222324)
                         .U32(22, 0x31323334);
  EXPECT_EQ(Difference(Entry(0x01020304), entry), "");
  EXPECT_EQ(Entry(7).error, ENOENT);

  ASSERT_EQ(Add(0x01020304, 0x31323334), 0);
  EXPECT_EQ(
      Difference(Entry(0x01020304),
                 Wire(26).U32(0, 0x01020304).U32(14, 2).U32(18, 0x21222324).U32(22, 0x31323334)),
      "");
}

TEST_F(SimulatedPublicAddresses, TheTableHoldsTheEntriesPacked) {
  EXPECT_EQ(Difference(All(), Wire(4)), "");
  ASSERT_EQ(Add(8, 1), 0);
  ASSERT_EQ(Add(7, 3), 0);
  ASSERT_EQ(Add(7, 2), 0);
  EXPECT_EQ(
      Difference(
          All(),
          Wire(52).U32(0, 2).U32(4, 7).U32(18, 2).U32(22, 2).U32(26, 3).U32(30, 8).U32(44, 1).U32(
              48, 1)),
      "");
}

TEST_F(SimulatedPublicAddresses, AnEntryGoesWithTheLastOfItsItems) {
  ASSERT_EQ(Add(7, 1), 0);
  ASSERT_EQ(Add(7, 2), 0);
  EXPECT_EQ(Remove(7, 3), ENOENT);
  EXPECT_EQ(Remove(8, 1), ENOENT);
  ASSERT_EQ(Remove(7, 1), 0);
  EXPECT_EQ(Difference(All(), Wire(26).U32(0, 1).U32(4, 7).U32(18, 1).U32(22, 2)), "");
  ASSERT_EQ(Remove(7, 2), 0);
  EXPECT_EQ(Entry(7).error, ENOENT);
  EXPECT_EQ(Difference(All(), Wire(4)), "");
}

TEST_F(SimulatedPublicAddresses, EntriesAreDeletedWithAllTheirItems) {
  for (const uint32_t a : {7U, 8U, 9U}) {
    for (const uint32_t b : {1U, 2U}) ASSERT_EQ(Add(a, b), 0);
  }
  ASSERT_EQ(Do(168, Block().U32(256, 8)), 0);
  EXPECT_EQ(Do(168, Block().U32(256, 8)), ENOENT);
  EXPECT_EQ(All().reply.size(), 56U);
  ASSERT_EQ(Do(169, {}), 0);
  EXPECT_EQ(Difference(All(), Wire(4)), "");
  EXPECT_EQ(Do(169, {}), 0) << "none is no error";
  ASSERT_EQ(Add(7, 1), 0);
  EXPECT_EQ(All().reply.size(), 26U);
}

TEST_F(SimulatedPublicAddresses, AnEntryHasRoomFor256Items) {
  for (uint32_t b = 0; b < 256; ++b) ASSERT_EQ(Add(7, b), 0);
  EXPECT_EQ(Add(7, 256), ENOSPC);
  EXPECT_EQ(Add(7, 255), 0) << "an update needs no room";
  EXPECT_EQ(Entry(7).reply.size(), 1042U);
  EXPECT_EQ(Entry(7).WordAt(14), 256U);
  EXPECT_EQ(Entry(7).WordAt(18 + 255 * 4), 255U);
}

// 388002 entries of 22 bytes each leave 20 bytes, which is room for an item but for no entry.
TEST_F(SimulatedPublicAddresses, TheTableHasRoomForAsManyBytesAsItsReply) {
  for (uint32_t a = 0; a < 388002; ++a) ASSERT_EQ(Add(a, 1), 0);
  EXPECT_EQ(Add(388002, 1), ENOSPC);
  for (uint32_t b = 2; b <= 6; ++b) ASSERT_EQ(Add(5, b), 0);
  EXPECT_EQ(Add(5, 7), ENOSPC);
  EXPECT_EQ(Add(5, 6), 0) << "an update needs no room";
  const Result all = All();
  EXPECT_EQ(all.reply.size(), 8536068U);
  EXPECT_EQ(all.WordAt(0), 388002U);
  EXPECT_EQ(all.WordAt(8536068 - 22), 388001U);
  ASSERT_EQ(Remove(7, 1), 0);
  EXPECT_EQ(Add(388002, 1), 0);
}

}  // namespace
