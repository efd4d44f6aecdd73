#include <gtest/gtest.h>
#include <vdrzax/bridge.h>

#include <cstdlib>
#include <string>

#include "bridge/bridge_lists.h"
#include "support/contract.h"

namespace {

using wire::Block;

const contract::ListGetter& NetworksGetter() { return getters::List("VDRZAX_GetBridgeNetworks"); }

// What is copied of the 133 bytes of a network; 125 to 132 are not.
fake::Bytes DecodedNetwork(const fake::Bytes& source) {
  return wire::Decoded(
      source, {{0, 8}, {8, 4}, {12, 2}, {14, 4}, {18, 2}, {20, 4}, {24, 4}, {28, 1}, {29, 96}});
}

TEST(BridgeNetworks, AreListedByTheContractOfAListGetterThatDropsItsHeader) {
  contract::ExpectListGetter(NetworksGetter());
}

TEST(BridgeNetworks, EveryRecordIsCopiedFieldByField) {
  bridge::ExpectRecords(NetworksGetter(), DecodedNetwork);
}

TEST(BridgeNetworks, TheBytesAt125To132StayZero) {
  const auto records = contract::DecodeAll(NetworksGetter(), fake::Bytes(266, 0xFF));
  ASSERT_EQ(records.size(), 2u);
  for (const fake::Bytes& record : records) {
    EXPECT_EQ(record[124], 0xFF);
    EXPECT_BYTES(fake::Bytes(record.begin() + 125, record.end()), fake::Bytes(8));
  }
  EXPECT_EQ(records[1][0], 0xFF);
}

TEST(BridgeNetworks, EachFieldStandsWhereItsNameSays) {
  fake::Bytes reply = Block()
                          .U64(0, 0x1122334455667788)
                          .U32(8, 0x01020304)
                          .U16(12, 0x0506)
                          .U32(14, 0x0708090A)
                          .U16(18, 0x0B0C)
                          .U32(20, 0x0D0E0F10)
                          .U32(24, 0x11121314)
                          .U8(28, 0x15)
                          .U64(29, 0x2122232425262728)
                          .U64(117, 0x3132333435363738)
                          .bytes();
  reply.resize(133);
  fake::Device device;
  device.AnswerWith({.bytes = reply});
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeNetworks("first", "b-1", &list), 0);
  const BridgeNetworkRecord record = *static_cast<BridgeNetworkRecord*>(list->entries);
  VDRZAX_ReleaseBridgeNetworks(list);
  EXPECT_EQ(uint64_t{record.qword0}, 0x1122334455667788u);
  EXPECT_EQ(uint32_t{record.word8}, 0x01020304u);
  EXPECT_EQ(uint16_t{record.half12}, 0x0506u);
  EXPECT_EQ(uint32_t{record.word14}, 0x0708090Au);
  EXPECT_EQ(uint16_t{record.half18}, 0x0B0Cu);
  EXPECT_EQ(uint32_t{record.word20}, 0x0D0E0F10u);
  EXPECT_EQ(uint32_t{record.word24}, 0x11121314u);
  EXPECT_EQ(record.byte28, 0x15u);
  EXPECT_EQ(uint64_t{record.qwords29[0]}, 0x2122232425262728u);
  EXPECT_EQ(uint64_t{record.qwords29[11]}, 0x3132333435363738u);
}

TEST(BridgeNetworks, OfTheNamesAAndBOnlyBIsSent) {
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeNetworks("a", "b", &list), 0);
  contract::ExpectSent(device, 63, Block().Text(0, "b").bytes(), 4358144);
  VDRZAX_ReleaseBridgeNetworks(list);
}

TEST(BridgeNetworks, NothingOfALongFirstNameShowsBehindAShortSecondOne) {
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeNetworks(std::string(64, 'x').c_str(), "", &list), 0);
  contract::ExpectSent(device, 63, Block().bytes(), 4358144);
  VDRZAX_ReleaseBridgeNetworks(list);
}

TEST(BridgeNetworks, ASecondNameOf64CharactersIsCutTo63) {
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeNetworks("a", std::string(64, 'n').c_str(), &list), 0);
  contract::ExpectSent(device, 63, Block().Text(0, std::string(63, 'n')).bytes(), 4358144);
  VDRZAX_ReleaseBridgeNetworks(list);
}

TEST(BridgeNetworks, AFailedAllocationIsReportedBeforeTheNamesAreRead) {
  for (const int failing : {1, 2}) {
    fake::Device device;
    device.failingAllocation = failing;
    RecordList* list = nullptr;
    const auto outcome =
        contract::Run([&] { return VDRZAX_GetBridgeNetworks(nullptr, nullptr, &list); });
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.error, ENOMEM);
  }
}

TEST(BridgeNetworks, ReleaseOfASingleRecordFreesItAndAcceptsNull) {
  fake::Device device;
  VDRZAX_ReleaseBridgeNetwork(nullptr);
  EXPECT_EQ(device.steps, contract::Steps{});
  auto* record = static_cast<BridgeNetworkRecord*>(std::calloc(1, 133));
  device.Remember(record, 133);
  VDRZAX_ReleaseBridgeNetwork(record);
  EXPECT_EQ(device.steps, contract::Steps{"free(133)"});
}

TEST(BridgeNetworksDeathTest, BothNamesAreReadSoEachMustBeValid) {
  fake::Device device;
  RecordList* list = nullptr;
  EXPECT_DEATH(VDRZAX_GetBridgeNetworks(nullptr, "b", &list), "");
  EXPECT_DEATH(VDRZAX_GetBridgeNetworks("a", nullptr, &list), "");
}

TEST(BridgeNetworksDeathTest, AnUntestedOutputFaults) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_GetBridgeNetworks("a", "b", nullptr), "");
  EXPECT_DEATH(VDRZAXGetBridgeNetworks("a", "b", nullptr), "");
}

}  // namespace
