#include <gtest/gtest.h>
#include <vdrzax/bridge.h>

#include <initializer_list>
#include <string>

#include "bridge/bridge_lists.h"
#include "support/contract.h"

namespace {

using wire::Block;

const contract::ListGetter& PortsGetter() { return getters::List("VDRZAX_GetBridgePorts"); }

// All 146 bytes of a port are copied.
fake::Bytes DecodedPort(const fake::Bytes& source) {
  return wire::Decoded(source, {{0, 8}, {8, 4}, {12, 2}, {14, 4}, {18, 128}});
}

TEST(BridgePorts, AreListedByTheContractOfAListGetterThatDropsItsHeader) {
  contract::ExpectListGetter(PortsGetter());
}

TEST(BridgePorts, EveryRecordIsCopiedFieldByField) {
  bridge::ExpectRecords(PortsGetter(), DecodedPort);
}

TEST(BridgePorts, EachFieldStandsWhereItsNameSays) {
  fake::Bytes reply = Block()
                          .U64(0, 0x1122334455667788)
                          .U32(8, 0x01020304)
                          .U16(12, 0x0506)
                          .U32(14, 0x0708090A)
                          .U64(18, 0x2122232425262728)
                          .U64(138, 0x3132333435363738)
                          .bytes();
  reply.resize(146);
  fake::Device device;
  device.AnswerWith({.bytes = reply});
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgePorts("first", "b-1", 1, 2, &list), 0);
  const BridgePortRecord record = *static_cast<BridgePortRecord*>(list->entries);
  VDRZAX_ReleaseBridgePorts(list);
  EXPECT_EQ(uint64_t{record.qword0}, 0x1122334455667788u);
  EXPECT_EQ(uint32_t{record.word8}, 0x01020304u);
  EXPECT_EQ(uint16_t{record.half12}, 0x0506u);
  EXPECT_EQ(uint32_t{record.word14}, 0x0708090Au);
  EXPECT_EQ(uint64_t{record.qwords18[0]}, 0x2122232425262728u);
  EXPECT_EQ(uint64_t{record.qwords18[15]}, 0x3132333435363738u);
}

TEST(BridgePorts, TheNetworkIsWidenedWithoutItsSignAndTheOneIsAlwaysSent) {
  for (const uint16_t network : std::initializer_list<uint16_t>{0x0000, 0x8000, 0xFFFF}) {
    fake::Device device;
    RecordList* list = nullptr;
    ASSERT_EQ(VDRZAX_GetBridgePorts("a", "b", network, 0, &list), 0);
    contract::ExpectSent(device, 64, Block().Text(0, "b").U32(260, network).U32(268, 1).bytes(),
                         4784128);
    VDRZAX_ReleaseBridgePorts(list);
  }
}

TEST(BridgePorts, NothingOfALongFirstNameShowsBehindAShortSecondOne) {
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgePorts(std::string(64, 'x').c_str(), "b", 0, 0, &list), 0);
  contract::ExpectSent(device, 64, Block().Text(0, "b").U32(268, 1).bytes(), 4784128);
  VDRZAX_ReleaseBridgePorts(list);
}

TEST(BridgePorts, ASecondNameOf64CharactersIsCutTo63) {
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgePorts("a", std::string(64, 'n').c_str(), 0, 0, &list), 0);
  contract::ExpectSent(device, 64, Block().Text(0, std::string(63, 'n')).U32(268, 1).bytes(),
                       4784128);
  VDRZAX_ReleaseBridgePorts(list);
}

TEST(BridgePorts, AFailedAllocationIsReportedBeforeTheNamesAreRead) {
  for (const int failing : {1, 2}) {
    fake::Device device;
    device.failingAllocation = failing;
    RecordList* list = nullptr;
    const auto outcome =
        contract::Run([&] { return VDRZAX_GetBridgePorts(nullptr, nullptr, 0, 0, &list); });
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.error, ENOMEM);
  }
}

TEST(BridgePortsDeathTest, BothNamesAreReadSoEachMustBeValid) {
  fake::Device device;
  RecordList* list = nullptr;
  EXPECT_DEATH(VDRZAX_GetBridgePorts(nullptr, "b", 1, 2, &list), "");
  EXPECT_DEATH(VDRZAX_GetBridgePorts("a", nullptr, 1, 2, &list), "");
}

TEST(BridgePortsDeathTest, AnUntestedOutputFaults) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_GetBridgePorts("a", "b", 1, 2, nullptr), "");
  EXPECT_DEATH(VDRZAXGetBridgePorts("a", "b", 1, 2, nullptr), "");
}

}  // namespace
