#include <gtest/gtest.h>
#include <vdrzax/bridge.h>

#include <string>

#include "bridge/bridge_lists.h"
#include "support/contract.h"

namespace {

using wire::Block;

const contract::RecordGetter& InstanceGetter() {
  return getters::Record("VDRZAX_GetBridgeInstance");
}

const contract::ListGetter& InstancesGetter() { return getters::List("VDRZAX_GetBridgeInstances"); }

// What is copied of the 393 bytes of a bridge instance; 293 to 304 are not.
fake::Bytes DecodedInstance(const fake::Bytes& source) {
  return wire::Decoded(source, {{0, 8},
                                {8, 4},
                                {12, 64, 't'},
                                {76, 4},
                                {80, 4},
                                {84, 128, 't'},
                                {212, 81, 't'},
                                {305, 4},
                                {309, 4},
                                {313, 80}});
}

TEST(BridgeInstances, OneIsReadByTheContractOfARecordGetter) {
  contract::ExpectRecordGetter(InstanceGetter());
}

TEST(BridgeInstances, AllAreListedByTheContractOfAListGetterThatDropsItsHeader) {
  contract::ExpectListGetter(InstancesGetter());
}

TEST(BridgeInstances, ARecordIsCopiedFieldByField) {
  const fake::Bytes source = wire::Pattern(393);
  EXPECT_BYTES(contract::DecodeOne(InstanceGetter(), source), DecodedInstance(source));
}

TEST(BridgeInstances, EveryRecordOfAListIsCopiedFieldByField) {
  bridge::ExpectRecords(InstancesGetter(), DecodedInstance);
}

TEST(BridgeInstances, TheBytesAt293To304StayZero) {
  const fake::Bytes record = contract::DecodeOne(InstanceGetter(), fake::Bytes(393, 0xFF));
  EXPECT_EQ(record[291], 0xFF);
  EXPECT_BYTES(fake::Bytes(record.begin() + 293, record.begin() + 305), fake::Bytes(12));
  EXPECT_EQ(record[305], 0xFF);
}

TEST(BridgeInstances, EachFieldStandsWhereItsNameSays) {
  fake::Bytes reply = Block()
                          .U64(0, 0x1122334455667788)
                          .U32(8, 0x01020304)
                          .Text(12, "bridge")
                          .U32(76, 0x05060708)
                          .U32(80, 0x090A0B0C)
                          .Text(84, "long")
                          .Text(212, "second")
                          .U32(305, 0x0D0E0F10)
                          .U32(309, 0x11121314)
                          .U64(313, 0x2122232425262728)
                          .U64(385, 0x3132333435363738)
                          .bytes();
  reply.resize(393);
  fake::Device device;
  device.AnswerWith({.bytes = reply});
  BridgeInstanceRecord* out = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeInstance("edge-1", &out), 0);
  const BridgeInstanceRecord record = *out;
  VDRZAX_ReleaseBridgeInstance(out);
  EXPECT_EQ(uint64_t{record.qword0}, 0x1122334455667788u);
  EXPECT_EQ(uint32_t{record.word8}, 0x01020304u);
  EXPECT_STREQ(record.name, "bridge");
  EXPECT_EQ(uint32_t{record.word76}, 0x05060708u);
  EXPECT_EQ(uint32_t{record.word80}, 0x090A0B0Cu);
  EXPECT_STREQ(record.text84, "long");
  EXPECT_STREQ(record.text212, "second");
  EXPECT_EQ(uint32_t{record.word305}, 0x0D0E0F10u);
  EXPECT_EQ(uint32_t{record.word309}, 0x11121314u);
  EXPECT_EQ(uint64_t{record.qwords313[0]}, 0x2122232425262728u);
  EXPECT_EQ(uint64_t{record.qwords313[9]}, 0x3132333435363738u);
}

TEST(BridgeInstances, ATextThatFillsItsFieldArrivesTerminated) {
  const fake::Bytes record = contract::DecodeOne(InstanceGetter(), fake::Bytes(393, 'x'));
  for (const std::size_t end : {75u, 211u, 292u}) {
    EXPECT_EQ(record[end - 1], 'x');
    EXPECT_EQ(record[end], 0);
  }
}

TEST(BridgeInstances, BytesBehindATerminatorArriveAsZero) {
  fake::Bytes source = wire::Pattern(393);
  for (const std::size_t terminator : {12u, 100u, 290u}) source[terminator] = 0;
  EXPECT_BYTES(contract::DecodeOne(InstanceGetter(), source), DecodedInstance(source));
}

TEST(BridgeInstances, AnEmptyReplyIsAListWithEntriesThatAreAllZero) {
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeInstances(&list), 0);
  EXPECT_EQ(list->count, 0);
  EXPECT_BYTES(wire::BytesOf(list->entries, 1609728), fake::Bytes(1609728));
  VDRZAX_ReleaseBridgeInstances(list);
}

TEST(BridgeInstances, AMissingNameIsRefusedBeforeAnythingElse) {
  auto* out = reinterpret_cast<BridgeInstanceRecord*>(1);
  contract::ExpectRefused([&] { return VDRZAX_GetBridgeInstance(nullptr, &out); });
  EXPECT_EQ(out, reinterpret_cast<BridgeInstanceRecord*>(1));
  contract::ExpectRefused([] { return VDRZAX_GetBridgeInstance(nullptr, nullptr); });
}

TEST(BridgeInstances, ANameOf64CharactersIsCutTo63) {
  fake::Device device;
  device.AnswerWith({.bytes = wire::Pattern(393)});
  BridgeInstanceRecord* out = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeInstance(std::string(64, 'n').c_str(), &out), 0);
  contract::ExpectSent(device, 62, Block().Text(0, std::string(63, 'n')).bytes(), 393);
  VDRZAX_ReleaseBridgeInstance(out);
}

TEST(BridgeInstancesDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  device.answer = [](const fake::Command& command) {
    return fake::Reply{.bytes = fake::Bytes(command.request == 62 ? 393 : 0)};
  };
  EXPECT_DEATH(VDRZAX_GetBridgeInstance("edge-1", nullptr), "");
  EXPECT_DEATH(VDRZAX_GetBridgeInstances(nullptr), "");
  EXPECT_DEATH(VDRZAXGetBridgeInstances(nullptr), "");
}

}  // namespace
