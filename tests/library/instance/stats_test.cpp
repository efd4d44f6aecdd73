#include <gtest/gtest.h>
#include <vdrzax/instance.h>

#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using contract::ExpectRefused;
using wire::Block;

const contract::RecordGetter& ControlPlaneGetter() {
  return getters::Record("VDRZAX_GetVdrInstanceCPStats");
}

const contract::RecordGetter& LifGetter() { return getters::Record("VDRZAX_GetLifStats"); }

const contract::RecordGetter& CachedLifGetter() {
  return getters::Record("VDRZAX_GetLifStatsCached");
}

const contract::RecordGetter& DatapathGetter() { return getters::Record("VDRZAX_GetVdrDiStats"); }

// A reply with another number in every slot.
fake::Bytes SourceOf(uint32_t type) {
  fake::Bytes source = wire::Pattern(852);
  for (std::size_t index = 0; index < 4; ++index) {
    source[index] = static_cast<uint8_t>(type >> (8 * index));
  }
  return source;
}

// Expects the pieces behind the type, and zero everywhere else, from each getter.
void ExpectCopied(uint32_t type, std::initializer_list<wire::Piece> pieces) {
  const fake::Bytes source = SourceOf(type);
  fake::Bytes expected = wire::Decoded(source, pieces);
  std::copy_n(source.begin(), 4, expected.begin());
  if (type == 1) std::copy_n(source.begin() + 716, 8, expected.begin() + 724);
  for (const auto& getter :
       {ControlPlaneGetter(), LifGetter(), CachedLifGetter(), DatapathGetter()}) {
    SCOPED_TRACE(getter.code);
    EXPECT_BYTES(contract::DecodeOne(getter, source), expected);
  }
}

TEST(Stats, EachSetIsReadByTheContractOfARecordGetter) {
  contract::ExpectRecordGetter(ControlPlaneGetter());
  contract::ExpectRecordGetter(LifGetter());
  contract::ExpectRecordGetter(CachedLifGetter());
  contract::ExpectRecordGetter(DatapathGetter());
}

TEST(Stats, OfType0Slots0To7And9To27AreCopied) { ExpectCopied(0, {{4, 64}, {76, 152}}); }

TEST(Stats, OfType0TheBytes68To75AndThoseFrom228OnAreZero) {
  fake::Bytes source(852, 0xFF);
  std::fill_n(source.begin(), 4, uint8_t{0});
  const fake::Bytes record = contract::DecodeOne(LifGetter(), source);
  for (std::size_t offset = 68; offset < 76; ++offset) EXPECT_EQ(record[offset], 0);
  EXPECT_EQ(record[67], 0xFF);
  EXPECT_EQ(record[76], 0xFF);
  EXPECT_EQ(record[227], 0xFF);
  EXPECT_EQ(record[228], 0);
  EXPECT_EQ(record[851], 0);
}

TEST(Stats, OfType1AllSlotsButTwoAreCopied) {
  ExpectCopied(1, {{4, 616}, {628, 40}, {676, 48}, {732, 120}});
}

TEST(Stats, OfType1TheSlots77And83AreZero) {
  fake::Bytes source(852, 0xFF);
  source[0] = 1;
  std::fill_n(source.begin() + 1, 3, uint8_t{0});
  const fake::Bytes record = contract::DecodeOne(LifGetter(), source);
  for (std::size_t offset = 620; offset < 628; ++offset) EXPECT_EQ(record[offset], 0);
  for (std::size_t offset = 668; offset < 676; ++offset) EXPECT_EQ(record[offset], 0);
  for (const std::size_t neighbour : {619u, 628u, 667u, 676u, 851u}) {
    EXPECT_EQ(record[neighbour], 0xFF);
  }
}

TEST(Stats, OfType1Slot90HoldsWhatTheKernelSentInSlot89) {
  fake::Bytes source(852, 0x11);
  for (std::size_t index = 0; index < 4; ++index) source[index] = index == 0;
  std::fill_n(source.begin() + 716, 8, uint8_t{0x89});
  std::fill_n(source.begin() + 724, 8, uint8_t{0x90});
  const fake::Bytes record = contract::DecodeOne(DatapathGetter(), source);
  EXPECT_EQ(record[715], 0x11);
  for (std::size_t offset = 716; offset < 732; ++offset) EXPECT_EQ(record[offset], 0x89);
  EXPECT_EQ(record[732], 0x11);
}

TEST(Stats, OfType3Slots1To19AreCopied) { ExpectCopied(3, {{12, 152}}); }

TEST(Stats, OfType3TheBytes4To11AndThoseFrom164OnAreZero) {
  fake::Bytes source(852, 0xFF);
  source[0] = 3;
  std::fill_n(source.begin() + 1, 3, uint8_t{0});
  const fake::Bytes record = contract::DecodeOne(LifGetter(), source);
  for (std::size_t offset = 4; offset < 12; ++offset) EXPECT_EQ(record[offset], 0);
  EXPECT_EQ(record[12], 0xFF);
  EXPECT_EQ(record[163], 0xFF);
  EXPECT_EQ(record[164], 0);
  EXPECT_EQ(record[851], 0);
}

TEST(Stats, OfAnUnknownTypeOnlyTheTypeIsCopiedAndNothingFails) {
  for (const uint32_t type : {2u, 4u, 5u, 256u, 0x01000000u, 0x80000000u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(type);
    ExpectCopied(type, {});
  }
}

TEST(Stats, TheCachedReadingDiffersOnTheWireInTheFourBytesAt552Alone) {
  fake::Device device;
  device.AnswerWith({.bytes = SourceOf(0)});
  StatsRecord* out = nullptr;
  ASSERT_EQ(VDRZAX_GetLifStats("edge-1", "uplink", &out), 0);
  VDRZAX_ReleaseStats(out);
  ASSERT_EQ(VDRZAX_GetLifStatsCached("edge-1", "uplink", &out), 0);
  VDRZAX_ReleaseStats(out);
  ASSERT_EQ(device.commands.size(), 2u);
  EXPECT_EQ(device.commands[0].request, device.commands[1].request);
  fake::Bytes fresh = device.commands[0].input;
  const fake::Bytes cached = device.commands[1].input;
  EXPECT_EQ(fresh[552], 0);
  EXPECT_EQ(cached[552], 1);
  fresh[552] = 1;
  EXPECT_BYTES(cached, fresh);
}

TEST(Stats, ResetOfTheControlPlaneSendsTheName) {
  ExpectCommand([] { return VDRZAX_ResetVdrInstanceCPStats("edge-1"); }, 6,
                Block().Text(0, "edge-1"));
}

TEST(Stats, ResetOfALifSendsBothNames) {
  ExpectCommand([] { return VDRZAX_ResetLifStats("edge-1", "uplink"); }, 24,
                Block().Text(0, "edge-1").Text(384, "uplink"));
}

TEST(Stats, ResetOfTheDatapathSends968ZeroBytes) {
  ExpectCommand([] { return VDRZAX_ResetVdrDiStats(); }, 44, Block());
}

TEST(Stats, NamesOf64CharactersAreCutTo63AndTerminated) {
  const std::string instance(64, 'i');
  const std::string lif(64, 'l');
  const Block cut = Block().Text(0, instance.substr(1)).Text(384, lif.substr(1));
  ExpectCommand([&] { return VDRZAX_ResetLifStats(instance.c_str(), lif.c_str()); }, 24, cut);
  contract::RecordGetter getter = LifGetter();
  getter.call = [&](void** out) {
    return VDRZAX_GetLifStats(instance.c_str(), lif.c_str(), reinterpret_cast<StatsRecord**>(out));
  };
  getter.block = cut;
  contract::ExpectRecordGetter(getter);
  getter.call = [&](void** out) {
    return VDRZAX_GetLifStatsCached(instance.c_str(), lif.c_str(),
                                    reinterpret_cast<StatsRecord**>(out));
  };
  getter.block = Block(cut).U32(552, 1);
  contract::ExpectRecordGetter(getter);
}

TEST(Stats, ANameOfTheControlPlaneIsCutTo63AndTerminated) {
  const std::string name(64, 'n');
  const Block cut = Block().Text(0, std::string(63, 'n'));
  ExpectCommand([&] { return VDRZAX_ResetVdrInstanceCPStats(name.c_str()); }, 6, cut);
  contract::RecordGetter getter = ControlPlaneGetter();
  getter.call = [&](void** out) {
    return VDRZAX_GetVdrInstanceCPStats(name.c_str(), reinterpret_cast<StatsRecord**>(out));
  };
  getter.block = cut;
  contract::ExpectRecordGetter(getter);
}

TEST(Stats, AMissingInstanceNameIsRefusedBeforeAnythingElseIsRead) {
  auto* out = reinterpret_cast<StatsRecord*>(1);
  ExpectRefused([&] { return VDRZAX_GetVdrInstanceCPStats(nullptr, &out); });
  ExpectRefused([&] { return VDRZAX_GetLifStats(nullptr, "uplink", &out); });
  ExpectRefused([&] { return VDRZAX_GetLifStatsCached(nullptr, "uplink", &out); });
  EXPECT_EQ(out, reinterpret_cast<StatsRecord*>(1));
  ExpectRefused([] { return VDRZAX_GetVdrInstanceCPStats(nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_ResetVdrInstanceCPStats(nullptr); });
  ExpectRefused([] { return VDRZAX_GetLifStats(nullptr, nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_GetLifStatsCached(nullptr, nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_ResetLifStats(nullptr, nullptr); });
}

TEST(StatsDeathTest, AMissingLifNameFaults) {
  fake::Device device;
  StatsRecord* out = nullptr;
  EXPECT_DEATH(VDRZAX_GetLifStats("edge-1", nullptr, &out), "");
  EXPECT_DEATH(VDRZAX_GetLifStatsCached("edge-1", nullptr, &out), "");
  EXPECT_DEATH(VDRZAX_ResetLifStats("edge-1", nullptr), "");
}

TEST(StatsDeathTest, TheLifNameIsReadBeforeTheReplyBufferIsAllocated) {
  fake::Device device;
  device.failingAllocation = 1;
  StatsRecord* out = nullptr;
  EXPECT_DEATH(VDRZAX_GetLifStats("edge-1", nullptr, &out), "");
  EXPECT_DEATH(VDRZAX_GetLifStatsCached("edge-1", nullptr, &out), "");
}

TEST(StatsDeathTest, AMissingResultPointerFaults) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_GetVdrInstanceCPStats("edge-1", nullptr), "");
  EXPECT_DEATH(VDRZAX_GetLifStats("edge-1", "uplink", nullptr), "");
  EXPECT_DEATH(VDRZAX_GetLifStatsCached("edge-1", "uplink", nullptr), "");
  EXPECT_DEATH(VDRZAX_GetVdrDiStats(nullptr), "");
}

}  // namespace
