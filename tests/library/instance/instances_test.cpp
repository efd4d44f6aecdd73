#include <gtest/gtest.h>
#include <vdrzax/instance.h>

#include <cstring>
#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using contract::ExpectRefused;
using wire::Block;

const contract::RecordGetter& InstanceGetter() { return getters::Record("VDRZAX_GetInstance"); }

const contract::ListGetter& InstancesGetter() { return getters::List("VDRZAX_GetInstances"); }

// What is copied of the 577 bytes of an instance; 414 and 415 are not.
fake::Bytes DecodedInstance(const fake::Bytes& source) {
  return wire::Decoded(
      source,
      {{0, 64, 't'}, {64, 4},   {68, 4},  {72, 1},  {73, 256, 't'}, {329, 64, 't'}, {393, 6},
       {399, 4},     {403, 4},  {407, 4}, {411, 1}, {412, 2},       {416, 1},       {417, 1},
       {418, 13},    {431, 16}, {447, 6}, {453, 1}, {454, 2},       {456, 1},       {457, 64, 't'},
       {521, 2},     {523, 40}, {563, 4}, {567, 1}, {568, 4},       {572, 4},       {576, 1}});
}

TEST(Instances, OneIsReadByTheContractOfARecordGetter) {
  contract::ExpectRecordGetter(InstanceGetter());
}

TEST(Instances, AllAreListedByTheContractOfAListGetter) {
  contract::ListGetter getter = InstancesGetter();
  getter.call = [](RecordList** out) { return VDRZAX_GetInstances(nullptr, 0, out); };
  getter.block = Block();
  contract::ExpectListGetter(getter);
}

TEST(Instances, ARecordIsCopiedFieldByField) {
  const fake::Bytes source = wire::Pattern(577);
  EXPECT_BYTES(contract::DecodeOne(InstanceGetter(), source), DecodedInstance(source));
}

TEST(Instances, ARecordReadBackHasZeroAt414And415) {
  fake::Bytes source(577, 0xFF);
  const fake::Bytes record = contract::DecodeOne(InstanceGetter(), source);
  EXPECT_EQ(record[413], 0xFF);
  EXPECT_EQ(record[414], 0);
  EXPECT_EQ(record[415], 0);
  EXPECT_EQ(record[416], 0xFF);
}

TEST(Instances, ATextThatFillsItsFieldArrivesTerminated) {
  const fake::Bytes record = contract::DecodeOne(InstanceGetter(), fake::Bytes(577, 'x'));
  for (const std::size_t end : {63u, 328u, 392u, 520u}) {
    EXPECT_EQ(record[end - 1], 'x');
    EXPECT_EQ(record[end], 0);
  }
}

TEST(Instances, BytesBehindATerminatorArriveAsZero) {
  fake::Bytes source = wire::Pattern(577);
  for (const std::size_t terminator : {3u, 73u, 335u, 519u}) source[terminator] = 0;
  EXPECT_BYTES(contract::DecodeOne(InstanceGetter(), source), DecodedInstance(source));
}

TEST(Instances, EveryRecordOfAListIsCopiedFieldByField) {
  const fake::Bytes source = wire::Patterns(1001, 577);
  const auto records = contract::DecodeAll(InstancesGetter(), source);
  ASSERT_EQ(records.size(), 1001u);
  for (const std::size_t index : {0u, 1u, 2u, 500u, 1000u}) {
    EXPECT_BYTES(records[index], DecodedInstance(wire::Pattern(577, static_cast<unsigned>(index))));
  }
}

TEST(Instances, TheEntriesBehindTheLastRecordAreZero) {
  fake::Device device;
  device.AnswerWith({.bytes = wire::Patterns(2, 577)});
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetInstances(nullptr, 0, &list), 0);
  EXPECT_EQ(list->count, 2);
  const auto* entries = static_cast<const uint8_t*>(list->entries);
  EXPECT_BYTES(wire::BytesOf(entries + 2UL * 577, 999UL * 577), fake::Bytes(999UL * 577));
  VDRZAX_ReleaseInstances(list);
}

TEST(Instances, AMissingNameIsRefusedByAllButTheList) {
  auto* out = reinterpret_cast<InstanceRecord*>(1);
  ExpectRefused([&] { return VDRZAX_GetInstance(nullptr, &out); });
  EXPECT_EQ(out, reinterpret_cast<InstanceRecord*>(1));
  ExpectRefused([] { return VDRZAX_SetVdrInstance(nullptr, 1, "x", 2, 3); });
  ExpectRefused([] { return VDRZAX_DelVdrInstance(nullptr); });
  ExpectRefused([] { return VDRZAX_SetVdrInstanceTunables(nullptr, "x", 1); });
}

TEST(Instances, AMissingNameIsRefusedBeforeAnUntestedArgumentIsRead) {
  ExpectRefused([] { return VDRZAX_GetInstance(nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_SetVdrInstanceTunables(nullptr, nullptr, 1); });
}

TEST(Instances, WithFilter0TheNameIsIgnored) {
  contract::ListGetter getter = InstancesGetter();
  getter.call = [](RecordList** out) { return VDRZAX_GetInstances("edge-1", 0, out); };
  getter.block = Block();
  contract::ExpectListGetter(getter);
}

TEST(Instances, WithFilter1TheNameAndTheByteAreSent) {
  contract::ExpectListGetter(InstancesGetter());
}

TEST(Instances, AFilterOf255IsSentAsItStands) {
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetInstances("edge-1", 255, &list), 0);
  contract::ExpectSent(device, 0, Block().Text(0, "edge-1").U8(368, 255).bytes(), 577577);
  VDRZAX_ReleaseInstances(list);
}

TEST(Instances, AFailedAllocationIsReportedBeforeTheNameIsRead) {
  for (const int failing : {1, 2}) {
    fake::Device device;
    device.failingAllocation = failing;
    RecordList* list = nullptr;
    const auto outcome = contract::Run([&] { return VDRZAX_GetInstances(nullptr, 1, &list); });
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.error, ENOMEM);
  }
}

TEST(InstancesDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  RecordList* list = nullptr;
  EXPECT_DEATH(VDRZAX_GetInstances(nullptr, 1, &list), "");
  EXPECT_DEATH(VDRZAX_GetInstances(nullptr, 0, nullptr), "");
  EXPECT_DEATH(VDRZAX_GetInstance("edge-1", nullptr), "");
  EXPECT_DEATH(VDRZAX_SetVdrInstanceTunables("edge-1", nullptr, 1), "");
}

TEST(Instances, SetSendsEveryArgumentToItsPlace) {
  ExpectCommand(
      [] { return VDRZAX_SetVdrInstance("edge-1", 0x11223344, "0a:0b", 0x55667788, 0x99); }, 2,
      Block()
          .Text(0, "edge-1")
          .U32(256, 0x11223344)
          .Text(332, "0a:0b")
          .U32(352, 0x55667788)
          .U8(368, 0x99));
}

TEST(Instances, SetWithoutTextLeaves332To349Zero) {
  ExpectCommand([] { return VDRZAX_SetVdrInstance("edge-1", 1, nullptr, 2, 3); }, 2,
                Block().Text(0, "edge-1").U32(256, 1).U32(352, 2).U8(368, 3));
}

TEST(Instances, SetSendsATextOf18CharactersWithoutTerminator) {
  ExpectCommand([] { return VDRZAX_SetVdrInstance("e", 0, "ABCDEFGHIJKLMNOPQR", 0, 0); }, 2,
                Block().Text(0, "e").Text(332, "ABCDEFGHIJKLMNOPQR"));
  ExpectCommand([] { return VDRZAX_SetVdrInstance("e", 0, "ABCDEFGHIJKLMNOPQRST", 0, 0); }, 2,
                Block().Text(0, "e").Text(332, "ABCDEFGHIJKLMNOPQR"));
}

TEST(Instances, ANameOf64CharactersIsCutTo63AndTerminated) {
  const std::string name(64, 'n');
  const Block cut = Block().Text(0, std::string(63, 'n'));
  ExpectCommand([&] { return VDRZAX_DelVdrInstance(name.c_str()); }, 3, cut);
  ExpectCommand([&] { return VDRZAX_DelVdrInstance((name + "more").c_str()); }, 3, cut);
  ExpectCommand([&] { return VDRZAX_SetVdrInstance(name.c_str(), 0, nullptr, 0, 0); }, 2, cut);
  ExpectCommand([&] { return VDRZAX_SetVdrInstanceTunables(name.c_str(), "", 0); }, 4, cut);
  contract::ListGetter getter = InstancesGetter();
  getter.call = [&](RecordList** out) { return VDRZAX_GetInstances(name.c_str(), 1, out); };
  getter.block = Block(cut).U8(368, 1);
  contract::ExpectListGetter(getter);
}

TEST(Instances, DeleteSendsTheNameAlone) {
  ExpectCommand([] { return VDRZAX_DelVdrInstance("edge-1"); }, 3, Block().Text(0, "edge-1"));
}

TEST(Instances, AnEmptyNameSends968ZeroBytes) {
  ExpectCommand([] { return VDRZAX_DelVdrInstance(""); }, 3, Block());
}

TEST(Instances, TunablesAreSentAsTextAndValue) {
  ExpectCommand([] { return VDRZAX_SetVdrInstanceTunables("edge-1", "mtu", 0xFFFFFFFF); }, 4,
                Block().Text(0, "edge-1").Text(260, "mtu").U32(324, 0xFFFFFFFF));
}

TEST(Instances, ATunablesTextOf70CharactersIsCutTo63AndTerminated) {
  const std::string text(70, 't');
  ExpectCommand([&] { return VDRZAX_SetVdrInstanceTunables("e", text.c_str(), 1); }, 4,
                Block().Text(0, "e").Text(260, std::string(63, 't')).U32(324, 1));
}

TEST(Instances, ReleaseClearsTheSixBytesAt393OfEachRecordAndNothingElse) {
  fake::Device device;
  device.AnswerWith({.bytes = fake::Bytes(2UL * 577, 0x55)});
  device.keepFreedContent = true;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetInstances(nullptr, 0, &list), 0);
  fake::Bytes expected = wire::BytesOf(list->entries, 577577);
  for (const std::size_t record : {0u, 577u}) {
    for (std::size_t offset = 393; offset < 399; ++offset) {
      EXPECT_EQ(expected[record + offset], 0x55);
      expected[record + offset] = 0;
    }
  }
  device.freed.clear();
  VDRZAX_ReleaseInstances(list);
  ASSERT_EQ(device.freed.size(), 2u);
  EXPECT_EQ(device.freed[1].size, 16u);
  EXPECT_BYTES(device.freed[0].content, expected);
}

TEST(Instances, ACutReplyClearsTheAddressesOfTheRecordsThatItDecoded) {
  fake::Device device;
  device.AnswerWith({.bytes = fake::Bytes(577 + 10, 0x55)});
  device.keepFreedContent = true;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetInstances(nullptr, 0, &list), -1);
  ASSERT_EQ(device.freed.size(), 3u);
  EXPECT_EQ(device.freed[0].size, 577577u);
  EXPECT_EQ(device.freed[0].content[392], 0);
  EXPECT_EQ(device.freed[0].content[393], 0);
  EXPECT_EQ(device.freed[0].content[398], 0);
  EXPECT_EQ(device.freed[0].content[399], 0x55);
}

}  // namespace
