#include <gtest/gtest.h>
#include <vdrzax/mcast.h>

#include <cstdlib>
#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using wire::Block;

const contract::ListGetter& LocalRcvrs() { return getters::List("VDRZAX_GetMRoutingLocalRcvrs"); }

fake::Bytes DecodedLocalRcvr(const fake::Bytes& source) {
  return wire::Decoded(source, {{0, 64, 't'}, {64, 4}, {68, 4}, {72, 16}});
}

TEST(LocalReceivers, TheyAreListedByTheContractOfAListGetter) {
  contract::ExpectListGetter(LocalRcvrs());
}

TEST(LocalReceivers, TheHeaderIsDroppedWhenTheCommandFails) {
  fake::Device device;
  RecordList* list = nullptr;
  RecordList* during = nullptr;
  device.answer = [&](const fake::Command&) {
    during = list;
    return fake::Failure(ENOENT);
  };
  EXPECT_EQ(VDRZAX_GetMRoutingLocalRcvrs("edge-1", 1, &list), -1);
  EXPECT_EQ(list, nullptr);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{16});
  ASSERT_NE(during, nullptr);
  EXPECT_BYTES(wire::BytesOf(during, 16), fake::Bytes(16));
  std::free(during);
}

TEST(LocalReceivers, AReplyOf0BytesGivesNone) {
  EXPECT_EQ(contract::DecodeAll(LocalRcvrs(), {}).size(), 0u);
}

TEST(LocalReceivers, AReplyOfMoreThan512RecordsGives512) {
  fake::Device device;
  device.AnswerWith({.bytes = wire::Patterns(512, 88), .length = 513 * 88});
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetMRoutingLocalRcvrs("edge-1", 1, &list), 0);
  EXPECT_EQ(list->count, 512);
  VDRZAX_ReleaseMRoutingLocalRcvrs(list);
}

TEST(LocalReceivers, EveryRecordIsCopiedFieldByField) {
  const auto records = contract::DecodeAll(LocalRcvrs(), wire::Patterns(512, 88));
  ASSERT_EQ(records.size(), 512u);
  for (const std::size_t index : {0u, 1u, 2u, 255u, 511u}) {
    EXPECT_BYTES(records[index], DecodedLocalRcvr(wire::Pattern(88, static_cast<unsigned>(index))));
  }
}

TEST(LocalReceivers, ANameThatFillsItsFieldArrivesTerminated) {
  const auto records = contract::DecodeAll(LocalRcvrs(), fake::Bytes(88, 'x'));
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0][62], 'x');
  EXPECT_EQ(records[0][63], 0);
  EXPECT_EQ(records[0][64], 'x');
  EXPECT_EQ(records[0][87], 'x');
}

TEST(LocalReceivers, BytesBehindATerminatorArriveAsZero) {
  fake::Bytes source = wire::Pattern(88);
  source[5] = 0;
  const auto records = contract::DecodeAll(LocalRcvrs(), source);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_BYTES(records[0], DecodedLocalRcvr(source));
  EXPECT_EQ(records[0][6], 0);
}

TEST(LocalReceivers, AddAndDeleteSendNameKeyAndReceiver) {
  const Block block = Block().Text(0, "edge-1").U32(256, 0x11223344).Text(272, "vm-7");
  ExpectCommand([] { return VDRZAX_AddMRoutingLocalRcvrs("edge-1", 0x11223344, "vm-7"); }, 133,
                block);
  ExpectCommand([] { return VDRZAX_DelMRoutingLocalRcvrs("edge-1", 0x11223344, "vm-7"); }, 134,
                block);
}

TEST(LocalReceivers, AddAndDeleteWithoutReceiverLeave272To335Zero) {
  const Block block = Block().Text(0, "edge-1").U32(256, 5);
  ExpectCommand([] { return VDRZAX_AddMRoutingLocalRcvrs("edge-1", 5, nullptr); }, 133, block);
  ExpectCommand([] { return VDRZAX_DelMRoutingLocalRcvrs("edge-1", 5, nullptr); }, 134, block);
}

TEST(LocalReceivers, NamesOf64CharactersAreCutTo63AndTerminated) {
  const std::string instance(64, 'n');
  const std::string receiver(70, 'r');
  const Block block =
      Block().Text(0, std::string(63, 'n')).U32(256, 1).Text(272, std::string(63, 'r'));
  ExpectCommand([&] { return VDRZAX_AddMRoutingLocalRcvrs(instance.c_str(), 1, receiver.c_str()); },
                133, block);
  ExpectCommand([&] { return VDRZAX_DelMRoutingLocalRcvrs(instance.c_str(), 1, receiver.c_str()); },
                134, block);

  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetMRoutingLocalRcvrs(instance.c_str(), 1, &list), 0);
  contract::ExpectSent(device, 128, Block().Text(0, std::string(63, 'n')).U32(256, 1).bytes(),
                       45056);
  VDRZAX_ReleaseMRoutingLocalRcvrs(list);
}

TEST(LocalReceivers, AFailedAllocationIsReportedBeforeTheNameIsRead) {
  for (const int failing : {1, 2}) {
    fake::Device device;
    device.failingAllocation = failing;
    RecordList* list = nullptr;
    const auto outcome =
        contract::Run([&] { return VDRZAX_GetMRoutingLocalRcvrs(nullptr, 1, &list); });
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.error, ENOMEM);
  }
}

TEST(LocalReceiversDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  RecordList* list = nullptr;
  EXPECT_DEATH(VDRZAX_GetMRoutingLocalRcvrs(nullptr, 1, &list), "");
  EXPECT_DEATH(VDRZAX_GetMRoutingLocalRcvrs("edge-1", 1, nullptr), "");
  EXPECT_DEATH(VDRZAX_AddMRoutingLocalRcvrs(nullptr, 1, "vm-7"), "");
  EXPECT_DEATH(VDRZAX_DelMRoutingLocalRcvrs(nullptr, 1, "vm-7"), "");
}

}  // namespace
