#include <gtest/gtest.h>
#include <vdrzax/bridge.h>

#include <algorithm>
#include <initializer_list>
#include <string>

#include "bridge/bridge_lists.h"
#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using wire::Block;

const contract::ListGetter& FdbGetter() { return getters::List("VDRZAX_GetBridgeFdbEntries"); }

// All 20 bytes of an entry are copied.
fake::Bytes DecodedEntry(const fake::Bytes& source) {
  return wire::Decoded(source, {{0, 4}, {4, 2}, {6, 2}, {8, 3}, {11, 1}, {12, 4}, {16, 4}});
}

TEST(BridgeFdb, IsListedByTheContractOfAListGetterThatDropsItsHeader) {
  contract::ExpectListGetter(FdbGetter());
}

TEST(BridgeFdb, EveryRecordIsCopiedFieldByField) {
  bridge::ExpectRecords(FdbGetter(), DecodedEntry);
}

TEST(BridgeFdb, TheNumberOf24BitsAndTheFlagsByteBehindItAreKeptApart) {
  fake::Bytes reply = Block()
                          .U32(0, 0x01020304)
                          .U16(4, 0x0506)
                          .U16(6, 0x0708)
                          .U32(8, 0x99ABCDEF)
                          .U32(12, 0x0A0B0C0D)
                          .U32(16, 0x0E0F1011)
                          .bytes();
  reply.resize(20);
  fake::Device device;
  device.AnswerWith({.bytes = reply});
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeFdbEntries("edge-1", 1, 2, &list), 0);
  const BridgeFdbRecord record = *static_cast<BridgeFdbRecord*>(list->entries);
  VDRZAX_ReleaseBridgeFdbEntries(list);
  EXPECT_EQ(record.triple8[0] | record.triple8[1] << 8 | record.triple8[2] << 16, 0xABCDEF);
  EXPECT_EQ(record.flags, 0x99);
  EXPECT_EQ(uint32_t{record.word0}, 0x01020304u);
  EXPECT_EQ(uint16_t{record.half4}, 0x0506u);
  EXPECT_EQ(uint16_t{record.half6}, 0x0708u);
  EXPECT_EQ(uint32_t{record.word12}, 0x0A0B0C0Du);
  EXPECT_EQ(uint32_t{record.word16}, 0x0E0F1011u);
}

TEST(BridgeFdb, AReplyOf30BytesIsRefusedAfterOneRecordWasDecoded) {
  fake::Device device;
  device.AnswerWith({.bytes = fake::Bytes(30, 0x55)});
  device.keepFreedContent = true;
  auto* list = reinterpret_cast<RecordList*>(1);
  const auto outcome =
      contract::Run([&] { return VDRZAX_GetBridgeFdbEntries("edge-1", 1, 2, &list); });
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.error, EBADMSG);
  EXPECT_EQ(list, nullptr);
  ASSERT_EQ(device.freed.size(), 3u);
  fake::Bytes entries(204800);
  std::fill_n(entries.begin(), 20, uint8_t{0x55});
  EXPECT_BYTES(device.freed[0].content, entries);
}

TEST(BridgeFdb, TheListWidensItsSegmentWithoutTheSign) {
  for (const uint16_t segment : std::initializer_list<uint16_t>{0x0000, 0x8000, 0xFFFF}) {
    fake::Device device;
    RecordList* list = nullptr;
    ASSERT_EQ(VDRZAX_GetBridgeFdbEntries("e", segment, 0, &list), 0);
    contract::ExpectSent(device, 65, Block().Text(0, "e").U32(260, segment).U32(268, 1).bytes(),
                         204800);
    VDRZAX_ReleaseBridgeFdbEntries(list);
  }
}

TEST(BridgeFdb, SetSendsEveryArgumentToItsPlaceAndTwoOnes) {
  ExpectCommand(
      [] {
        return VDRZAX_BridgeSetFdbEntry("edge-1", "0a:0b:0c:0d:0e:0f", 0x11223344, 0x55667788,
                                        0x99AABBCC, 0xDD);
      },
      66,
      Block()
          .Text(0, "edge-1")
          .U32(260, 0x11223344)
          .U32(264, 0x55667788)
          .U32(268, 1)
          .U32(272, 0x99AABBCC)
          .Text(276, "0a:0b:0c:0d:0e:0f")
          .U8(294, 0xDD)
          .U32(296, 1));
}

TEST(BridgeFdb, SetWithoutAMacTextLeaves276To293Zero) {
  ExpectCommand(
      [] { return VDRZAX_BridgeSetFdbEntry("e", nullptr, 2, 3, 4, 5); }, 66,
      Block().Text(0, "e").U32(260, 2).U32(264, 3).U32(268, 1).U32(272, 4).U8(294, 5).U32(296, 1));
}

TEST(BridgeFdb, AMacTextOfMoreThan17CharactersIsCutTo17) {
  const Block cut = Block().Text(0, "e").U32(268, 1).Text(276, "ABCDEFGHIJKLMNOPQ").U32(296, 1);
  for (const char* text : {"ABCDEFGHIJKLMNOPQ", "ABCDEFGHIJKLMNOPQR", "ABCDEFGHIJKLMNOPQRSTU"}) {
    ExpectCommand([&] { return VDRZAX_BridgeSetFdbEntry("e", text, 0, 0, 0, 0); }, 66, cut);
  }
}

TEST(BridgeFdb, ClearSendsTheSelectionAndAOneAt268Alone) {
  ExpectCommand([] { return VDRZAX_BridgeClearFdbTable("edge-1", 0x11223344, 0x55667788); }, 67,
                Block().Text(0, "edge-1").U32(260, 0x11223344).U32(264, 0x55667788).U32(268, 1));
}

TEST(BridgeFdb, ANameOf64CharactersIsCutTo63) {
  const std::string name(64, 'n');
  const std::string cut(63, 'n');
  ExpectCommand([&] { return VDRZAX_BridgeSetFdbEntry(name.c_str(), nullptr, 0, 0, 0, 0); }, 66,
                Block().Text(0, cut).U32(268, 1).U32(296, 1));
  ExpectCommand([&] { return VDRZAX_BridgeClearFdbTable(name.c_str(), 0, 0); }, 67,
                Block().Text(0, cut).U32(268, 1));
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeFdbEntries(name.c_str(), 0, 0, &list), 0);
  contract::ExpectSent(device, 65, Block().Text(0, cut).U32(268, 1).bytes(), 204800);
  VDRZAX_ReleaseBridgeFdbEntries(list);
}

TEST(BridgeFdb, AFailedAllocationIsReportedBeforeTheNameIsRead) {
  for (const int failing : {1, 2}) {
    fake::Device device;
    device.failingAllocation = failing;
    RecordList* list = nullptr;
    const auto outcome =
        contract::Run([&] { return VDRZAX_GetBridgeFdbEntries(nullptr, 0, 0, &list); });
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.error, ENOMEM);
  }
}

TEST(BridgeFdbDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  RecordList* list = nullptr;
  EXPECT_DEATH(VDRZAX_GetBridgeFdbEntries(nullptr, 1, 2, &list), "");
  EXPECT_DEATH(VDRZAX_GetBridgeFdbEntries("e", 1, 2, nullptr), "");
  EXPECT_DEATH(VDRZAXGetBridgeFdbEntries("e", 1, 2, nullptr), "");
  EXPECT_DEATH(VDRZAX_BridgeSetFdbEntry(nullptr, "x", 1, 2, 3, 4), "");
  EXPECT_DEATH(VDRZAX_BridgeClearFdbTable(nullptr, 1, 2), "");
}

}  // namespace
