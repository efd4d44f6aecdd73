#include <gtest/gtest.h>
#include <vdrzax/bridge.h>

#include <array>
#include <cstdlib>
#include <string>

#include "bridge/bridge_lists.h"
#include "support/contract.h"

namespace {

using wire::Block;

const contract::ListGetter& EndpointsGetter() { return getters::List("VDRZAX_GetBridgeEndpoints"); }

// What is copied of the 235 bytes of an endpoint; the first 64 are not.
fake::Bytes DecodedEndpoint(const fake::Bytes& source) {
  return wire::Decoded(source, {{64, 64}, {128, 2}, {130, 1}, {131, 4}, {135, 4}, {139, 96}});
}

TEST(BridgeEndpointLists, AreReadByTheContractOfAListGetter) {
  contract::ExpectListGetter(EndpointsGetter());
}

TEST(BridgeEndpointLists, EveryRecordIsCopiedFieldByField) {
  bridge::ExpectRecords(EndpointsGetter(), DecodedEndpoint);
}

TEST(BridgeEndpointLists, AReplyOf470BytesIsTwoRecordsWhoseFirst64BytesAreZero) {
  const auto records = contract::DecodeAll(EndpointsGetter(), fake::Bytes(470, 0xFF));
  ASSERT_EQ(records.size(), 2u);
  for (const fake::Bytes& record : records) {
    EXPECT_BYTES(fake::Bytes(record.begin(), record.begin() + 64), fake::Bytes(64));
    EXPECT_BYTES(fake::Bytes(record.begin() + 64, record.end()), fake::Bytes(171, 0xFF));
  }
}

TEST(BridgeEndpointLists, ANameAreaIsCopiedAsBytesBeyondAZeroAndWithoutTerminator) {
  fake::Bytes source = wire::Pattern(235);
  source[70] = 0;
  const auto records = contract::DecodeAll(EndpointsGetter(), source);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_BYTES(records[0], DecodedEndpoint(source));
  EXPECT_NE(records[0][71], 0);
  EXPECT_NE(records[0][127], 0);
}

TEST(BridgeEndpointLists, EachFieldStandsWhereItsNameSays) {
  fake::Bytes reply = Block()
                          .Text(64, "endpoint")
                          .U16(128, 0x0102)
                          .U8(130, 0x03)
                          .U32(131, 0x04050607)
                          .U32(135, 0x08090A0B)
                          .U8(139, 0x0C)
                          .U8(234, 0x0D)
                          .bytes();
  reply.resize(235);
  fake::Device device;
  device.AnswerWith({.bytes = reply});
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeEndpoints("edge-1", &list), 0);
  const BridgeEndpointRecord record = *static_cast<BridgeEndpointRecord*>(list->entries);
  VDRZAX_ReleaseBridgeEndpoints(list);
  EXPECT_STREQ(reinterpret_cast<const char*>(record.nameArea), "endpoint");
  EXPECT_EQ(uint16_t{record.half128}, 0x0102u);
  EXPECT_EQ(record.flag, 0x03);
  EXPECT_EQ(uint32_t{record.word131}, 0x04050607u);
  EXPECT_EQ(uint32_t{record.word135}, 0x08090A0Bu);
  EXPECT_EQ(record.bytes139[0], 0x0C);
  EXPECT_EQ(record.bytes139[95], 0x0D);
}

TEST(BridgeEndpointLists, WithoutANameTheListSendsABlockThatIsZeroThroughout) {
  for (const bool fetch : {false, true}) {
    fake::Device device;
    auto* list = fetch ? static_cast<RecordList*>(std::calloc(1, 16)) : nullptr;
    ASSERT_EQ(
        fetch ? VDRZAXGetBridgeEndpoints(nullptr, list) : VDRZAX_GetBridgeEndpoints(nullptr, &list),
        0);
    contract::ExpectSent(device, 95, Block().bytes(), 6737920);
    VDRZAX_ReleaseBridgeEndpoints(list);
  }
}

TEST(BridgeEndpointLists, ANameOf64CharactersIsCutTo63) {
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeEndpoints(std::string(64, 'n').c_str(), &list), 0);
  contract::ExpectSent(device, 95, Block().Text(0, std::string(63, 'n')).bytes(), 6737920);
  VDRZAX_ReleaseBridgeEndpoints(list);
}

TEST(BridgeEndpointListsDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_GetBridgeEndpoints("e", nullptr), "");
  EXPECT_DEATH(VDRZAXGetBridgeEndpoints("e", nullptr), "");
}

TEST(RawBridgeEndpoints, StatisticsGoStraightIntoTheCallers146Bytes) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_GetBeStats"));
}

TEST(RawBridgeEndpoints, TheStatusGoesStraightIntoTheCallers229Bytes) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_GetBeStatus"));
}

TEST(RawBridgeEndpoints, AMissingBufferIsGivenToTheKernel) {
  fake::Device device;
  uint32_t count = 7;
  EXPECT_EQ(VDRZAX_GetBeAll(nullptr, 470, &count), 0);
  ASSERT_EQ(device.commands.size(), 1u);
  EXPECT_EQ(device.commands[0].outBuffer, nullptr);
  EXPECT_EQ(device.commands[0].outLength, 470u);
}

TEST(RawBridgeEndpoints, ALifNameOf64CharactersIsCutTo63) {
  const std::string name(64, 'n');
  contract::RawGetter getter = getters::Raw("VDRZAX_GetBeStats");
  getter.call = [&](void* buffer) { return VDRZAX_GetBeStats(name.c_str(), buffer); };
  getter.block = Block().Text(384, std::string(63, 'n'));
  contract::ExpectRawGetter(getter);
  getter = getters::Raw("VDRZAX_GetBeStatus");
  getter.call = [&](void* buffer) { return VDRZAX_GetBeStatus(name.c_str(), buffer); };
  getter.block = Block().Text(384, std::string(63, 'n'));
  contract::ExpectRawGetter(getter);
}

TEST(RawBridgeEndpoints, AllOfThemGoStraightIntoTheCallersBufferOfTheCallersCapacity) {
  contract::ExpectRawGetter({.name = "VDRZAX_GetBeAll",
                             .call =
                                 [](void* buffer) {
                                   uint32_t count;
                                   return VDRZAX_GetBeAll(buffer, 1000, &count);
                                 },
                             .code = 52,
                             .size = 1000});
}

TEST(RawBridgeEndpoints, TheCountIsTheLengthDividedBy235Unsigned) {
  struct Division {
    uint32_t length;
    uint32_t count;
  };
  for (const Division division :
       {Division{0, 0}, Division{234, 0}, Division{235, 1}, Division{469, 1}, Division{470, 2},
        Division{1000, 4}, Division{0x80000000, 9138228}, Division{0xFFFFFFFF, 18276456}}) {
    SCOPED_TRACE(division.length);
    std::array<uint8_t, 10> buffer{};
    fake::Device device;
    device.AnswerWith({.length = division.length});
    uint32_t count = 99;
    EXPECT_EQ(VDRZAX_GetBeAll(buffer.data(), 10, &count), 0);
    EXPECT_EQ(count, division.count);
  }
}

TEST(RawBridgeEndpoints, AKernelThatLeavesTheLengthAloneHasFilledTheCapacity) {
  std::array<uint8_t, 480> buffer{};
  fake::Device device;
  device.AnswerWith({.keepsLength = true});
  uint32_t count = 99;
  EXPECT_EQ(VDRZAX_GetBeAll(buffer.data(), 480, &count), 0);
  EXPECT_EQ(count, 2u);
}

TEST(RawBridgeEndpoints, TheCountIsStoredOnlyAfterSuccess) {
  uint32_t count = 99;
  std::array<uint8_t, 470> buffer{};
  {
    fake::Device device;
    device.openError = ENOENT;
    contract::ExpectFailure(device, [&] { return VDRZAX_GetBeAll(buffer.data(), 470, &count); },
                            ENOENT, {"open64"});
    EXPECT_EQ(VDRZAX_GetBeAll(buffer.data(), 470, nullptr), -1);
  }
  {
    fake::Device device;
    device.AnswerWith({.length = 470, .result = -1, .error = EXDEV});
    contract::ExpectFailure(device, [&] { return VDRZAX_GetBeAll(buffer.data(), 470, &count); },
                            EXDEV, {"open64", "ioctl", "close"});
    EXPECT_EQ(VDRZAX_GetBeAll(buffer.data(), 470, nullptr), -1);
  }
  EXPECT_EQ(count, 99u);
}

TEST(RawBridgeEndpointsDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  std::array<uint8_t, 470> buffer{};
  EXPECT_DEATH(VDRZAX_GetBeStats(nullptr, buffer.data()), "");
  EXPECT_DEATH(VDRZAX_GetBeStatus(nullptr, buffer.data()), "");
  EXPECT_DEATH(VDRZAX_GetBeAll(buffer.data(), 470, nullptr), "");
}

}  // namespace
