#include <gtest/gtest.h>
#include <unistd.h>
#include <vdrzax/bridge.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "bridge/bridge_lists.h"
#include "support/contract.h"
#include "support/hooks.h"

namespace {

using contract::ExpectCommand;
using contract::Steps;
using wire::Block;

const contract::ListGetter& SessionsGetter() {
  return getters::List("VDRZAX_GetBridgeBFDSessions");
}

// Records that differ from their neighbours, one after another. 255 of them are made once: a full
// reply is too large to keep more than the library's own copies of it.
void FillWithSessions(uint8_t* reply, std::size_t length) {
  static const fake::Bytes records = wire::Patterns(255, 39);
  for (std::size_t offset = 0; offset < length; offset += records.size()) {
    std::memcpy(reply + offset, records.data(), std::min(records.size(), length - offset));
  }
}

// The kernel writes `produced` bytes into the reply buffer and says that it wrote `length`.
void AnswerInPlace(fake::Device& device, std::size_t produced, uint32_t length) {
  device.answer = [=](const fake::Command& command) {
    FillWithSessions(static_cast<uint8_t*>(command.outBuffer), produced);
    return fake::Reply{.length = length};
  };
}

void ExpectSessions(std::size_t count, std::size_t produced, uint32_t length) {
  SCOPED_TRACE(length);
  fake::Device device;
  AnswerInPlace(device, produced, length);
  RecordList* list = nullptr;
  const auto outcome = contract::Run([&] { return VDRZAX_GetBridgeBFDSessions("edge-1", &list); });
  ASSERT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, contract::kUntouched);
  EXPECT_EQ(device.steps, (Steps{"calloc(1, 16)", "malloc(111820800)", "open64", "ioctl", "close",
                                 "calloc(2867200, 39)", "free(111820800)"}));
  contract::ExpectSent(device, 96, Block().Text(0, "edge-1").bytes(), 111820800);
  EXPECT_EQ(list->count, static_cast<int32_t>(count));
  const auto* entries = static_cast<const uint8_t*>(list->entries);
  const fake::Bytes period = wire::Patterns(255, 39);
  for (std::size_t index = 0; index < count; ++index) {
    ASSERT_EQ(std::memcmp(entries + index * 39, period.data() + index % 255 * 39, 39), 0) << index;
  }
  if (count < 2867200) {
    EXPECT_BYTES(wire::BytesOf(entries + count * 39, 39), fake::Bytes(39));
  }
  VDRZAX_ReleaseBridgeBFDSessions(list);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
}

void ExpectCutSessions(std::size_t length) {
  SCOPED_TRACE(length);
  fake::Device device;
  AnswerInPlace(device, length, static_cast<uint32_t>(length));
  auto* list = reinterpret_cast<RecordList*>(1);
  contract::ExpectFailure(
      device, [&] { return VDRZAX_GetBridgeBFDSessions("edge-1", &list); }, EBADMSG,
      {"calloc(1, 16)", "malloc(111820800)", "open64", "ioctl", "close", "calloc(2867200, 39)",
       "free(111820800)", "free(16)", "free(111820800)"});
  EXPECT_EQ(list, nullptr);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
}

// The memory of this process that is backed by pages.
std::size_t ResidentBytes() {
  std::size_t size = 0;
  std::size_t resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

TEST(BfdSessions, FewOfThemAreDecodedAndTheRestOfTheEntriesStaysZero) {
  ExpectSessions(0, 0, 0);
  ExpectSessions(1, 39, 39);
  ExpectSessions(3, 117, 117);
}

TEST(BfdSessions, AListAtItsCapOf2867200IsDecodedToTheLastRecord) {
  ExpectSessions(2867200, 111820800, 111820800);
}

TEST(BfdSessions, WhatTheLengthClaimsBeyondTheCapIsIgnored) {
  ExpectSessions(2867200, 111820800, 111820839);
  ExpectSessions(2867200, 111820800, 0x7FFFFFFF);
}

TEST(BfdSessions, ALengthOf2GibibytesAndMoreIsAnEmptyList) {
  ExpectSessions(0, 39, 0x80000000);
  ExpectSessions(0, 39, 0xFFFFFFFF);
}

TEST(BfdSessions, AReplyThatEndsInsideARecordIsRefusedAsAWhole) {
  for (const std::size_t length : {1u, 38u, 77u, 111820799u}) ExpectCutSessions(length);
}

TEST(BfdSessions, AReplyOf40BytesIsRefused) { ExpectCutSessions(40); }

TEST(BfdSessions, NothingIsLeftWhenAnAllocationOrTheCommandFails) {
  contract::ExpectListFailures(SessionsGetter());
}

TEST(BfdSessions, AnEmptyListAndAShortOneTouchLittleOfTheMemoryTheyReserve) {
  if (hooks::MemoryIsWatched()) GTEST_SKIP() << "records of both buffers are resident too";
  ResidentBytes();
  for (const std::size_t length : {0u, 39u}) {
    SCOPED_TRACE(length);
    fake::Device device;
    std::size_t during = 0;
    device.answer = [&](const fake::Command& command) {
      during = ResidentBytes();
      FillWithSessions(static_cast<uint8_t*>(command.outBuffer), length);
      return fake::Reply{.length = static_cast<uint32_t>(length)};
    };
    RecordList* list = nullptr;
    const std::size_t before = ResidentBytes();
    ASSERT_EQ(VDRZAX_GetBridgeBFDSessions(nullptr, &list), 0);
    const std::size_t after = ResidentBytes();
    ASSERT_GT(before, 0u);
    EXPECT_LT(std::max(during, after), before + (1 << 20));
    VDRZAX_ReleaseBridgeBFDSessions(list);
  }
}

TEST(BfdSessions, EachFieldStandsWhereItsNameSays) {
  fake::Bytes reply = Block()
                          .U16(0, 0x0102)
                          .U32(2, 0x03040506)
                          .U16(6, 0x0708)
                          .U32(8, 0x090A0B0C)
                          .U16(12, 0x0D0E)
                          .U32(14, 0x0F101112)
                          .U8(18, 0x13)
                          .U32(19, 0x14151617)
                          .U64(23, 0x2122232425262728)
                          .U64(31, 0x3132333435363738)
                          .bytes();
  reply.resize(39);
  fake::Device device;
  device.AnswerWith({.bytes = reply});
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeBFDSessions("edge-1", &list), 0);
  const BridgeBfdSessionRecord record = *static_cast<BridgeBfdSessionRecord*>(list->entries);
  VDRZAX_ReleaseBridgeBFDSessions(list);
  EXPECT_EQ(uint16_t{record.half0}, 0x0102u);
  EXPECT_EQ(uint32_t{record.word2}, 0x03040506u);
  EXPECT_EQ(uint16_t{record.half6}, 0x0708u);
  EXPECT_EQ(uint32_t{record.word8}, 0x090A0B0Cu);
  EXPECT_EQ(uint16_t{record.half12}, 0x0D0Eu);
  EXPECT_EQ(uint32_t{record.word14}, 0x0F101112u);
  EXPECT_EQ(record.byte18, 0x13);
  EXPECT_EQ(uint32_t{record.word19}, 0x14151617u);
  EXPECT_EQ(uint64_t{record.qword23}, 0x2122232425262728u);
  EXPECT_EQ(uint64_t{record.qword31}, 0x3132333435363738u);
}

TEST(BfdSessions, WithoutANameTheListSendsABlockThatIsZeroThroughout) {
  for (const bool fetch : {false, true}) {
    fake::Device device;
    auto* list = fetch ? static_cast<RecordList*>(std::calloc(1, 16)) : nullptr;
    ASSERT_EQ(fetch ? VDRZAXGetBridgeBFDSessions(nullptr, list)
                    : VDRZAX_GetBridgeBFDSessions(nullptr, &list),
              0);
    contract::ExpectSent(device, 96, Block().bytes(), 111820800);
    VDRZAX_ReleaseBridgeBFDSessions(list);
  }
}

TEST(BfdSessions, ANameOf64CharactersIsCutTo63) {
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeBFDSessions(std::string(64, 'n').c_str(), &list), 0);
  contract::ExpectSent(device, 96, Block().Text(0, std::string(63, 'n')).bytes(), 111820800);
  VDRZAX_ReleaseBridgeBFDSessions(list);
}

TEST(BfdSessionsDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_GetBridgeBFDSessions("e", nullptr), "");
  EXPECT_DEATH(VDRZAXGetBridgeBFDSessions("e", nullptr), "");
}

TEST(BfdPortConnections, PlumbSendsBothNamesAndTheMac) {
  const MacValue mac{{0x02, 0x13, 0x24, 0x35, 0x46, 0x57}};
  ExpectCommand(
      [&] { return VDRZAX_PlumbBFDPortConnection("port-1", "second", &mac); }, 97,
      Block().Text(256, "port-1").Text(320, "second").Raw(336, {2, 0x13, 0x24, 0x35, 0x46, 0x57}));
}

TEST(BfdPortConnections, PlumbWithoutAMacLeaves336To341Zero) {
  ExpectCommand([] { return VDRZAX_PlumbBFDPortConnection("port-1", "second", nullptr); }, 97,
                Block().Text(256, "port-1").Text(320, "second"));
}

TEST(BfdPortConnections, TheSecondNameOf16CharactersIsCutTo15) {
  for (const char* name : {"ABCDEFGHIJKLMNO", "ABCDEFGHIJKLMNOP", "ABCDEFGHIJKLMNOPQ"}) {
    ExpectCommand([&] { return VDRZAX_PlumbBFDPortConnection("p", name, nullptr); }, 97,
                  Block().Text(256, "p").Text(320, "ABCDEFGHIJKLMNO"));
  }
}

TEST(BfdPortConnections, UnplumbSendsThePortNameAlone) {
  ExpectCommand([] { return VDRZAX_UnPlumbBFDPortConnection("port-1"); }, 98,
                Block().Text(256, "port-1"));
}

TEST(BfdPortConnections, APortNameOf64CharactersIsCutTo63) {
  const std::string name(64, 'n');
  const Block cut = Block().Text(256, std::string(63, 'n'));
  ExpectCommand([&] { return VDRZAX_PlumbBFDPortConnection(name.c_str(), "", nullptr); }, 97, cut);
  ExpectCommand([&] { return VDRZAX_UnPlumbBFDPortConnection(name.c_str()); }, 98, cut);
}

TEST(BfdPortConnections, AreReadIntoTheCallers131072BytesByABlockOfZeros) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_GetBFDPortConnections"));
}

TEST(BfdPortConnectionsDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_PlumbBFDPortConnection(nullptr, "b", nullptr), "");
  EXPECT_DEATH(VDRZAX_PlumbBFDPortConnection("a", nullptr, nullptr), "");
  EXPECT_DEATH(VDRZAX_UnPlumbBFDPortConnection(nullptr), "");
}

}  // namespace
