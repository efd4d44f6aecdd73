#include <gtest/gtest.h>
#include <vdrzax/services.h>

#include <cstring>
#include <initializer_list>

#include "support/contract.h"
#include "support/reply_buffer.h"

namespace {

using contract::ExpectCommand;
using contract::Outcome;
using contract::Steps;
using wire::Block;

constexpr MacValue kMac{{0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};

VMPublicIPEntry* NoEntry() { return reinterpret_cast<VMPublicIPEntry*>(1); }
VMPublicIPTable* NoTable() { return reinterpret_cast<VMPublicIPTable*>(1); }

void Append(fake::Bytes& bytes, const fake::Bytes& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

// An entry that says it has `items`, of `size` bytes.
fake::Bytes Entry(uint32_t items, std::size_t size) {
  fake::Bytes entry = wire::Pattern(size, items);
  std::memcpy(entry.data() + 14, &items, 4);
  return entry;
}

fake::Bytes Entry(uint32_t items) { return Entry(items, 18 + 4 * std::size_t{items}); }

// A count and entries of the given numbers of items behind it.
fake::Bytes Table(uint32_t count, std::initializer_list<uint32_t> items) {
  fake::Bytes table(4);
  std::memcpy(table.data(), &count, 4);
  for (const uint32_t number : items) Append(table, Entry(number));
  return table;
}

void ExpectEntry(const fake::Reply& reply) {
  fake::Device device;
  device.AnswerWith(reply);
  VMPublicIPEntry* entry = NoEntry();
  const Outcome outcome =
      contract::Run([&] { return VDRZAX_GetVMPublicIPEntry(0x11223344, &entry); });
  ASSERT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, contract::kUntouched);
  EXPECT_EQ(device.steps, (Steps{"calloc(1, 1042)", "open64", "ioctl", "close"}));
  contract::ExpectSent(device, 170, Block().U32(256, 0x11223344).bytes(), 1042);
  EXPECT_EQ(device.commands[0].outBuffer, entry);
  fake::Bytes expected = reply.bytes;
  expected.resize(1042);
  EXPECT_BYTES(wire::BytesOf(entry, 1042), expected);
  VDRZAX_ReleaseVMPublicIPEntry(entry);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
}

void ExpectNoEntry(const fake::Reply& reply) {
  fake::Device device;
  device.AnswerWith(reply);
  VMPublicIPEntry* entry = NoEntry();
  contract::ExpectFailure(device, [&] { return VDRZAX_GetVMPublicIPEntry(1, &entry); },
                          contract::kUntouched,
                          {"calloc(1, 1042)", "open64", "ioctl", "close", "free(1042)"});
  EXPECT_EQ(entry, NoEntry());
}

void ExpectTable(const fake::Reply& reply) {
  fake::Device device;
  device.AnswerWith(reply);
  VMPublicIPTable* table = NoTable();
  const Outcome outcome = contract::Run([&] { return VDRZAX_GetVMPublicIPTable(&table); });
  ASSERT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, contract::kUntouched);
  EXPECT_EQ(device.steps, (Steps{"calloc(1, 8536068)", "open64", "ioctl", "close"}));
  contract::ExpectSent(device, 171, {}, 8536068);
  EXPECT_EQ(device.commands[0].outBuffer, table);
  EXPECT_BYTES(wire::BytesOf(table, reply.bytes.size()), reply.bytes);
  VDRZAX_ReleaseVMPublicIPTable(table);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
}

void ExpectNoTable(const fake::Reply& reply) {
  fake::Device device;
  device.AnswerWith(reply);
  VMPublicIPTable* table = NoTable();
  contract::ExpectFailure(device, [&] { return VDRZAX_GetVMPublicIPTable(&table); },
                          contract::kUntouched,
                          {"calloc(1, 8536068)", "open64", "ioctl", "close", "free(8536068)"});
  EXPECT_EQ(table, NoTable());
}

TEST(VMPublicIP, AddSendsEveryArgumentToItsPlace) {
  ExpectCommand([] { return VDRZAX_AddVMPublicIP(0xA1A2A3A4, 0xB1B2B3B4, &kMac, 0xD1D2D3D4); }, 166,
                Block()
                    .U32(256, 0xA1A2A3A4)
                    .Raw(260, {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E})
                    .U32(268, 0xD1D2D3D4)
                    .U32(272, 0xB1B2B3B4));
}

TEST(VMPublicIP, AddWithoutItsSixBytesFailsWithErrnoAsItWas) {
  fake::Device device;
  contract::ExpectFailure(device, [] { return VDRZAX_AddVMPublicIP(1, 2, nullptr, 3); },
                          contract::kUntouched, {});
}

TEST(VMPublicIP, DeleteSendsBothAddresses) {
  ExpectCommand([] { return VDRZAX_DelVMPublicIP(0xA1A2A3A4, 0xB1B2B3B4); }, 167,
                Block().U32(256, 0xA1A2A3A4).U32(272, 0xB1B2B3B4));
}

TEST(VMPublicIP, DeleteOfAnEntrySendsTheKey) {
  ExpectCommand([] { return VDRZAX_DelVMPublicIPEntry(0x11223344); }, 168,
                Block().U32(256, 0x11223344));
}

TEST(VMPublicIP, DeleteOfAllSendsNoInput) {
  ExpectCommand([] { return VDRZAX_DelAllVMPublicIPEntries(); }, 169, fake::Bytes{});
}

TEST(VMPublicIP, AnEntryIsHandedOverAsTheKernelWroteIt) {
  for (const uint32_t items : {0u, 1u, 2u, 255u, 256u}) {
    SCOPED_TRACE(items);
    ExpectEntry({.bytes = Entry(items)});
  }
}

TEST(VMPublicIP, AnEntryMayBeLongerThanItsItems) {
  ExpectEntry({.bytes = Entry(2, 27)});
  ExpectEntry({.bytes = Entry(2, 1042)});
  ExpectEntry({.bytes = Entry(2), .length = 0x7FFFFFFF});
}

TEST(VMPublicIP, AnEntryOf17BytesOrLessIsRefused) {
  for (const uint32_t length : {0u, 1u, 16u, 17u}) {
    SCOPED_TRACE(length);
    ExpectNoEntry({.bytes = Entry(0), .length = length});
  }
}

TEST(VMPublicIP, AnEntryOf18BytesWithoutItemsIsAccepted) { ExpectEntry({.bytes = Entry(0, 18)}); }

TEST(VMPublicIP, AnEntryShorterThanItsItemsIsRefused) {
  ExpectNoEntry({.bytes = Entry(2, 22)});
  ExpectNoEntry({.bytes = Entry(2, 25)});
  ExpectNoEntry({.bytes = Entry(256, 1041)});
  ExpectNoEntry({.bytes = Entry(257, 1042)});
}

TEST(VMPublicIP, AnEntryLengthBeyond1042IsAcceptedWhenItCoversTheItems) {
  ExpectNoEntry({.bytes = Entry(257, 1042), .length = 1045});
  ExpectEntry({.bytes = Entry(257, 1042), .length = 1046});
}

TEST(VMPublicIP, TheSizeOfAnEntryDoesNotWrap) {
  for (const uint32_t items : {0x40000000u, 0x3FFFFFFCu, 0x80000000u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(items);
    ExpectNoEntry({.bytes = Entry(items, 1042)});
    ExpectNoEntry({.bytes = Entry(items, 1042), .length = 0x7FFFFFFF});
  }
}

TEST(VMPublicIP, AnEntryOfNegativeLengthIsRefused) {
  ExpectNoEntry({.bytes = Entry(0), .length = 0x80000000u});
  ExpectNoEntry({.bytes = Entry(0), .length = 0xFFFFFFFFu});
  ExpectNoEntry({.bytes = Entry(0xFFFFFFFFu, 18), .length = 0xFFFFFFFFu});
}

TEST(VMPublicIP, TheEntryIsDroppedWhenTheCommandFails) {
  VMPublicIPEntry* entry = NoEntry();
  contract::ExpectFailuresAround([&] { return VDRZAX_GetVMPublicIPEntry(1, &entry); },
                                 {"calloc(1, 1042)", 1042, true});
  EXPECT_EQ(entry, NoEntry());
}

TEST(VMPublicIP, ATableIsHandedOverAsTheKernelWroteIt) {
  ExpectTable({.bytes = Table(1, {0})});
  ExpectTable({.bytes = Table(1, {256})});
  ExpectTable({.bytes = Table(2, {3, 1})});
}

TEST(VMPublicIP, TheWalkPassesOverEntriesOfDifferentSizes) {
  const fake::Bytes table = Table(5, {3, 0, 256, 1, 300});
  ASSERT_EQ(table.size(), 2334u);
  ExpectTable({.bytes = table});
  ExpectNoTable({.bytes = table, .length = 2333});
}

TEST(VMPublicIP, ATableHolds8192EntriesOf256Items) {
  fake::Bytes table(4);
  table[1] = 0x20;
  const fake::Bytes entry = Entry(256);
  for (int index = 0; index < 8192; ++index) Append(table, entry);
  ASSERT_EQ(table.size(), 8536068u);
  ExpectTable({.bytes = table});
  ExpectNoTable({.bytes = table, .length = 8536067});
}

TEST(VMPublicIP, ATableOf4BytesWithoutEntriesIsAccepted) { ExpectTable({.bytes = Table(0, {})}); }

TEST(VMPublicIP, ATableOf3BytesOrLessIsRefused) {
  for (const uint32_t length : {0u, 1u, 3u}) {
    SCOPED_TRACE(length);
    ExpectNoTable({.bytes = Table(0, {}), .length = length});
  }
}

TEST(VMPublicIP, ATableWhoseLastEntryEndsOneByteBeyondTheLengthIsRefused) {
  fake::Bytes table = Table(2, {3, 2});
  table.pop_back();
  ExpectNoTable({.bytes = table});
}

TEST(VMPublicIP, ATableThatEndsInsideTheHeaderOfAnEntryIsRefused) {
  const fake::Bytes table = Table(2, {1, 0});
  ASSERT_EQ(table.size(), 44u);
  for (uint32_t length = 4; length < 44; ++length) {
    SCOPED_TRACE(length);
    ExpectNoTable({.bytes = table, .length = length});
  }
  ExpectTable({.bytes = table, .length = 44});
}

TEST(VMPublicIP, ATableThatClaimsMoreEntriesThanItHasIsRefused) {
  ExpectNoTable({.bytes = Table(2, {7})});
  ExpectNoTable({.bytes = Table(0xFFFFFFFF, {7})});
}

TEST(VMPublicIP, EachByteOfTheNumberOfEntriesCounts) {
  for (const uint32_t entries : {0x00000100u, 0x00010000u, 0x01000000u, 0x80000000u}) {
    SCOPED_TRACE(entries);
    ExpectNoTable({.bytes = Table(entries, {})});
  }
}

TEST(VMPublicIP, BytesBehindTheLastEntryAreAccepted) {
  ExpectTable({.bytes = Table(1, {2, 5})});
  ExpectTable({.bytes = Table(0, {2})});
}

TEST(VMPublicIP, TheSizesOfATableDoNotWrap) {
  for (const uint32_t items : {0x40000000u, 0x3FFFFFFCu, 0x80000000u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(items);
    fake::Bytes table = Table(1, {});
    Append(table, Entry(items, 18));
    ExpectNoTable({.bytes = table});
    ExpectNoTable({.bytes = table, .length = 0x7FFFFFFF});
  }
}

TEST(VMPublicIP, ATableOfNegativeLengthIsAcceptedWhenItHasNoEntries) {
  for (const uint32_t length : {0x80000000u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(length);
    ExpectTable({.bytes = Table(0, {}), .length = length});
    ExpectNoTable({.bytes = Table(1, {0}), .length = length});
  }
}

TEST(VMPublicIP, AFullTableIsReadToItsLastByteAndNoFurther) {
  // The last entry leaves 16 bytes of the buffer, in which the count of another would not fit.
  fake::Bytes table(4);
  uint32_t count = 8192;
  std::memcpy(table.data(), &count, 4);
  for (int index = 0; index < 8191; ++index) Append(table, Entry(256));
  Append(table, Entry(252));
  ASSERT_EQ(table.size(), 8536052u);
  table.resize(8536068, 0xFF);
  ExpectTable({.bytes = table});
  count = 8193;
  std::memcpy(table.data(), &count, 4);
  ExpectNoTable({.bytes = table});
}

TEST(VMPublicIP, TheTableIsDroppedWhenTheCommandFails) {
  VMPublicIPTable* table = NoTable();
  contract::ExpectFailuresAround([&] { return VDRZAX_GetVMPublicIPTable(&table); },
                                 {"calloc(1, 8536068)", 8536068, true});
  EXPECT_EQ(table, NoTable());
}

TEST(VMPublicIPDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  device.AnswerWith({.bytes = Entry(0)});
  EXPECT_DEATH(VDRZAX_GetVMPublicIPEntry(1, nullptr), "");
  device.AnswerWith({.bytes = Table(0, {})});
  EXPECT_DEATH(VDRZAX_GetVMPublicIPTable(nullptr), "");
}

TEST(VMPublicIP, ReleaseAcceptsNull) {
  fake::Device device;
  VDRZAX_ReleaseVMPublicIPEntry(nullptr);
  VDRZAX_ReleaseVMPublicIPTable(nullptr);
  EXPECT_EQ(device.steps, Steps{});
}

}  // namespace
