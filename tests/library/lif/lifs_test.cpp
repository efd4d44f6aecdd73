#include <gtest/gtest.h>
#include <vdrzax/lif.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using contract::ExpectRefused;
using wire::Block;

fake::Bytes LifPattern(std::size_t size, unsigned seed) {
  return contract::PatternOf(getters::Record("VDRZAX_GetLif").count)(size, seed);
}

fake::Bytes DecodedLif(unsigned seed) {
  const fake::Bytes source = LifPattern(961, seed);
  fake::Bytes record =
      wire::Decoded(source, {{0, 64, 't'}, {64, 64, 't'}, {128, 198}, {566, 11}, {577, 128, 't'}});
  for (std::size_t entry = 0; entry < seed % 11; ++entry) {
    const auto offset = static_cast<std::ptrdiff_t>(326 + 24 * entry);
    std::copy_n(source.begin() + offset, 21, record.begin() + offset);
  }
  return record;
}

const contract::RecordGetter& LifGetter() { return getters::Record("VDRZAX_GetLif"); }

const contract::RecordGetter& BridgeLifGetter() { return getters::Record("VDRZAX_GetBridgeLif"); }

const contract::ListGetter& LifsGetter() { return getters::List("VDRZAX_GetLifs"); }

const contract::ListGetter& ExtVlanLifsGetter() { return getters::List("VDRZAX_GetExtVlanLifs"); }

const contract::ListGetter& BridgeLifsGetter() { return getters::List("VDRZAX_GetBridgeLifs"); }

std::vector<contract::ListGetter> ListGetters() {
  return {LifsGetter(), ExtVlanLifsGetter(), BridgeLifsGetter()};
}

TEST(Lifs, OneIsReadByTheContractOfARecordGetter) { contract::ExpectRecordGetter(LifGetter()); }

TEST(Lifs, ABridgeLifIsReadByTheContractOfARecordGetter) {
  contract::ExpectRecordGetter(BridgeLifGetter());
}

TEST(Lifs, OneByteDecidesBetweenAShortReplyAndAFullRecord) {
  fake::Device device;
  device.AnswerWith({.bytes = fake::Bytes(960)});
  auto* out = reinterpret_cast<LifRecord*>(1);
  const auto outcome = contract::Run([&] { return VDRZAX_GetLif("edge-1", "uplink", &out); });
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.error, EBADMSG);
  EXPECT_EQ(out, nullptr);
  device.AnswerWith({.bytes = LifPattern(961, 4)});
  ASSERT_EQ(VDRZAX_GetLif("edge-1", "uplink", &out), 0);
  EXPECT_BYTES(wire::BytesOf(out, 961), DecodedLif(4));
  VDRZAX_ReleaseLif(out);
}

TEST(Lifs, ABridgeLifIsDecodedLikeAnyOther) {
  EXPECT_BYTES(contract::DecodeOne(BridgeLifGetter(), LifPattern(961, 7)), DecodedLif(7));
}

TEST(Lifs, ThoseOfAnInstanceAreListedWithADecodeFailureHidden) {
  contract::ExpectListGetter(LifsGetter());
}

TEST(Lifs, ThoseOfAnExternalVlanAreListedByTheContractOfAListGetter) {
  contract::ExpectListGetter(ExtVlanLifsGetter());
}

TEST(Lifs, BridgeLifsLoseTheirHeaderWhenTheCommandFails) {
  contract::ExpectListGetter(BridgeLifsGetter());
}

TEST(Lifs, EveryRecordOfAListIsCopiedFieldByField) {
  const fake::Bytes source = wire::Patterns(10000, 961, LifPattern);
  for (const auto& getter : ListGetters()) {
    SCOPED_TRACE(getter.code);
    const auto records = contract::DecodeAll(getter, source);
    ASSERT_EQ(records.size(), 10000u);
    for (const unsigned index : {0u, 1u, 2u, 10u, 5000u, 9999u}) {
      EXPECT_BYTES(records[index], DecodedLif(index));
    }
  }
}

TEST(Lifs, AReplyOf10001RecordsGives10000) {
  for (const auto& getter : ListGetters()) {
    SCOPED_TRACE(getter.code);
    fake::Device device;
    device.AnswerWith({.bytes = wire::Patterns(10000, 961, LifPattern), .length = 9610961u});
    RecordList* list = nullptr;
    ASSERT_EQ(getter.call(&list), 0);
    EXPECT_EQ(list->count, 10000);
    VDRZAX_ReleaseLifs(list);
  }
}

TEST(Lifs, AnEmptyReplyGivesAnArrayOf10000ZeroRecords) {
  for (const auto& getter : ListGetters()) {
    SCOPED_TRACE(getter.code);
    fake::Device device;
    RecordList* list = nullptr;
    ASSERT_EQ(getter.call(&list), 0);
    EXPECT_EQ(list->count, 0);
    ASSERT_NE(list->entries, nullptr);
    EXPECT_BYTES(wire::BytesOf(list->entries, 9610000), fake::Bytes(9610000));
    VDRZAX_ReleaseLifs(list);
  }
}

// The header stands in the caller's pointer while the command runs.
void ExpectReleasedHeaderHandedOut(const fake::Reply& reply, int failingAllocation, int error) {
  fake::Device device;
  device.failingAllocation = failingAllocation;
  RecordList* list = nullptr;
  RecordList* header = nullptr;
  device.answer = [&](const fake::Command&) {
    header = list;
    return reply;
  };
  const auto outcome = contract::Run([&] { return VDRZAX_GetLifs("edge-1", &list); });
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, error);
  EXPECT_NE(header, nullptr);
  EXPECT_EQ(list, header);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
}

TEST(Lifs, ACutListOfAnInstanceSucceedsAndLeavesTheReleasedHeaderInThePointer) {
  ExpectReleasedHeaderHandedOut({.bytes = LifPattern(960, 1)}, 0, EBADMSG);
  fake::Bytes oneAndAHalf = LifPattern(961, 1);
  oneAndAHalf.resize(961 + 480);
  ExpectReleasedHeaderHandedOut({.bytes = oneAndAHalf}, 0, EBADMSG);
}

TEST(Lifs, AListOfAnInstanceWithoutRoomForItsEntriesSucceedsAndLeavesTheReleasedHeader) {
  ExpectReleasedHeaderHandedOut({.bytes = LifPattern(961, 1)}, 3, ENOMEM);
}

TEST(Lifs, AnIoctlResultOf0xBAD0006IsSuccessAndTheReplyIsDecoded) {
  fake::Device device;
  device.AnswerWith({.bytes = LifPattern(961, 3), .result = 0xBAD0006});
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetLifs("edge-1", &list), 0);
  ASSERT_EQ(list->count, 1);
  EXPECT_BYTES(wire::BytesOf(list->entries, 961), DecodedLif(3));
  VDRZAX_ReleaseLifs(list);
}

TEST(Lifs, TheVlanIsSentWithItsUpperHalfZero) {
  contract::ListGetter getter = ExtVlanLifsGetter();
  for (const uint16_t vlan : {uint16_t{0}, uint16_t{1}, uint16_t{0xFFFF}}) {
    fake::Device device;
    RecordList* list = nullptr;
    ASSERT_EQ(VDRZAX_GetExtVlanLifs(vlan, &list), 0);
    contract::ExpectSent(device, 172, Block().U32(260, vlan).bytes(), 9610000);
    VDRZAX_ReleaseLifs(list);
  }
}

constexpr MacValue kMac{{0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};

TEST(Lifs, SetSendsEveryArgumentToItsPlace) {
  ExpectCommand(
      [] {
        return VDRZAX_SetLif("uplink", "aux", 0x33333333, 0x44444444, 0x55555555, 0x66666666,
                             0x77777777, 0x10ABCDEF, "edge-1", &kMac);
      },
      19,
      Block()
          .Text(0, "edge-1")
          .Text(256, "aux")
          .Text(384, "uplink")
          .U32(512, 0x33333333)
          .U32(516, 0x44444444)
          .U32(520, 0x77777777)
          .Raw(524, {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E})
          .U32(544, 0x55555555)
          .U32(548, 0x66666666)
          .U32(552, 0x10ABCDEF));
}

TEST(Lifs, SetWithoutAddressLeaves524To529Zero) {
  ExpectCommand([] { return VDRZAX_SetLif("l", "a", 1, 2, 3, 4, 5, 6, "e", nullptr); }, 19,
                Block()
                    .Text(0, "e")
                    .Text(256, "a")
                    .Text(384, "l")
                    .U32(512, 1)
                    .U32(516, 2)
                    .U32(520, 5)
                    .U32(544, 3)
                    .U32(548, 4)
                    .U32(552, 6));
}

void ExpectMode(uint32_t flagsWord, uint32_t flags, uint8_t mode) {
  SCOPED_TRACE(flagsWord);
  ExpectCommand(
      [=] {
        return VDRZAX_SetLif("", "", 0, 0, 0, 0, 0, static_cast<int32_t>(flagsWord), "", nullptr);
      },
      19, Block().U32(552, flags).U8(788, mode));
}

TEST(Lifs, TheLowestOfTheThreeHighFlagsChoosesTheMode) {
  ExpectMode(0x00000000, 0, 0);
  ExpectMode(0x1FFFFFFF, 0x1FFFFFFF, 0);
  ExpectMode(0x20000000, 0, 1);
  ExpectMode(0x40000000, 0, 2);
  ExpectMode(0x80000000, 0, 3);
  ExpectMode(0x60000000, 0, 1);
  ExpectMode(0xA0000000, 0, 1);
  ExpectMode(0xC0000000, 0, 2);
  ExpectMode(0xE0000005, 5, 1);
  ExpectMode(0xFFFFFFFF, 0x1FFFFFFF, 1);
}

TEST(Lifs, DeleteSendsThreeNames) {
  ExpectCommand([] { return VDRZAX_DelLif("uplink", "aux", "edge-1"); }, 20,
                Block().Text(0, "edge-1").Text(256, "aux").Text(384, "uplink"));
}

TEST(Lifs, NamesOf64CharactersAreCutTo63AndTerminated) {
  const std::string lif(64, 'l');
  const std::string aux(64, 'a');
  const std::string instance(64, 'i');
  const Block names = Block().Text(0, std::string(63, 'i')).Text(384, std::string(63, 'l'));
  const Block all = Block(names).Text(256, std::string(63, 'a'));
  ExpectCommand([&] { return VDRZAX_DelLif(lif.c_str(), aux.c_str(), instance.c_str()); }, 20, all);
  ExpectCommand(
      [&] {
        return VDRZAX_SetLif(lif.c_str(), aux.c_str(), 0, 0, 0, 0, 0, 0, instance.c_str(), nullptr);
      },
      19, all);
  contract::RecordGetter getter = LifGetter();
  getter.call = [&](void** out) {
    return VDRZAX_GetLif(instance.c_str(), lif.c_str(), reinterpret_cast<LifRecord**>(out));
  };
  getter.block = names;
  contract::ExpectRecordGetter(getter);

  contract::ListGetter list = LifsGetter();
  list.call = [&](RecordList** out) { return VDRZAX_GetLifs(instance.c_str(), out); };
  list.block = Block().Text(0, std::string(63, 'i'));
  contract::ExpectListGetter(list);
  list = BridgeLifsGetter();
  list.call = [&](RecordList** out) { return VDRZAX_GetBridgeLifs(instance.c_str(), out); };
  list.block = Block().Text(0, std::string(63, 'i'));
  contract::ExpectListGetter(list);
}

TEST(Lifs, AMissingInstanceNameIsRefusedBeforeAnythingElseIsRead) {
  ExpectRefused([] { return VDRZAX_SetLif(nullptr, nullptr, 1, 2, 3, 4, 5, 6, nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_DelLif(nullptr, nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_GetLif(nullptr, nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_GetBridgeLif(nullptr, nullptr, nullptr); });
}

TEST(Lifs, TheGettersOfOneRefuseEitherMissingName) {
  auto* out = reinterpret_cast<LifRecord*>(1);
  ExpectRefused([&] { return VDRZAX_GetLif(nullptr, "uplink", &out); });
  ExpectRefused([&] { return VDRZAX_GetLif("edge-1", nullptr, &out); });
  ExpectRefused([&] { return VDRZAX_GetBridgeLif(nullptr, "uplink", &out); });
  ExpectRefused([&] { return VDRZAX_GetBridgeLif("edge-1", nullptr, &out); });
  EXPECT_EQ(out, reinterpret_cast<LifRecord*>(1));
}

TEST(Lifs, TheListGettersReportAFailedAllocationBeforeTheNameIsRead) {
  for (const int failing : {1, 2}) {
    fake::Device device;
    RecordList* list = nullptr;
    device.failingAllocation = failing;
    EXPECT_EQ(contract::Run([&] { return VDRZAX_GetLifs(nullptr, &list); }).error, ENOMEM);
    device.allocations = 0;
    EXPECT_EQ(contract::Run([&] { return VDRZAX_GetBridgeLifs(nullptr, &list); }).error, ENOMEM);
  }
}

TEST(LifsDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  RecordList* list = nullptr;
  EXPECT_DEATH(VDRZAX_SetLif(nullptr, "aux", 0, 0, 0, 0, 0, 0, "edge-1", nullptr), "");
  EXPECT_DEATH(VDRZAX_SetLif("uplink", nullptr, 0, 0, 0, 0, 0, 0, "edge-1", nullptr), "");
  EXPECT_DEATH(VDRZAX_DelLif(nullptr, "aux", "edge-1"), "");
  EXPECT_DEATH(VDRZAX_DelLif("uplink", nullptr, "edge-1"), "");
  EXPECT_DEATH(VDRZAX_GetLif("edge-1", "uplink", nullptr), "");
  EXPECT_DEATH(VDRZAX_GetBridgeLif("edge-1", "uplink", nullptr), "");
  EXPECT_DEATH(VDRZAX_GetLifs(nullptr, &list), "");
  EXPECT_DEATH(VDRZAX_GetLifs("edge-1", nullptr), "");
  EXPECT_DEATH(VDRZAX_GetBridgeLifs(nullptr, &list), "");
  EXPECT_DEATH(VDRZAX_GetBridgeLifs("edge-1", nullptr), "");
  EXPECT_DEATH(VDRZAX_GetExtVlanLifs(1, nullptr), "");
}

}  // namespace
