#include <gtest/gtest.h>
#include <vdrzax/e2i.h>

#include <cstdlib>
#include <cstring>

#include "support/contract.h"
#include "support/reply_buffer.h"

namespace {

using contract::ExpectCommand;
using contract::Steps;
using wire::Block;

constexpr MacValue kMac{{0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};

E2IEntry* NoEntry() { return reinterpret_cast<E2IEntry*>(1); }
E2ITable* NoTable() { return reinterpret_cast<E2ITable*>(1); }

// A count and the entries behind it.
fake::Bytes TableReply(uint32_t count, std::size_t entries) {
  fake::Bytes reply(4);
  std::memcpy(reply.data(), &count, 4);
  const fake::Bytes patterns = wire::Patterns(entries, 26);
  reply.insert(reply.end(), patterns.begin(), patterns.end());
  return reply;
}

int32_t CountOf(const E2ITable* table) {
  int32_t count;
  std::memcpy(&count, table, 4);
  return count;
}

void* EntriesOf(const E2ITable* table) {
  void* entries;
  std::memcpy(&entries, reinterpret_cast<const char*>(table) + 4, 8);
  return entries;
}

// The steps of a read of the table, up to its entries.
Steps UpToEntries(const std::string& entries) {
  return {"malloc(212996)", "open64", "ioctl", "close", "calloc(1, 12)", entries};
}

void ExpectTable(uint32_t count) {
  SCOPED_TRACE(count);
  const fake::Bytes reply = TableReply(count, count);
  fake::Device device;
  device.AnswerWith({.bytes = reply});
  E2ITable* table = NoTable();
  const contract::Outcome outcome = contract::Run([&] { return VDRZAX_GetE2ITable(&table); });
  ASSERT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, contract::kUntouched);
  contract::ExpectSent(device, 164, Block().bytes(), 212996);
  Steps steps = UpToEntries("calloc(" + std::to_string(count) + ", 26)");
  steps.emplace_back("free(212996)");
  EXPECT_EQ(device.steps, steps);
  EXPECT_EQ(CountOf(table), static_cast<int32_t>(count));
  EXPECT_BYTES(wire::BytesOf(EntriesOf(table), size_t{26} * count),
               fake::Bytes(reply.begin() + 4, reply.end()));
  VDRZAX_ReleaseE2ITable(table);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
}

void ExpectNoTable(const fake::Reply& reply, int error, const Steps& steps, E2ITable* left) {
  fake::Device device;
  device.AnswerWith(reply);
  E2ITable* table = NoTable();
  contract::ExpectFailure(
      device, [&] { return VDRZAX_GetE2ITable(&table); }, error, steps);
  EXPECT_EQ(table, left);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
}

TEST(E2ITable, AddSendsEveryArgumentToItsPlace) {
  ExpectCommand([] { return VDRZAX_AddE2I(0x11223344, 0x55667788, &kMac, 0x99AABBCC, 0xDDEEFF01); },
                161,
                Block()
                    .U32(256, 0x11223344)
                    .U32(260, 0x55667788)
                    .Raw(264, {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E})
                    .U32(272, 0x99AABBCC)
                    .U32(276, 0xDDEEFF01));
}

TEST(E2ITableDeathTest, AddReadsItsAddressWithoutATest) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_AddE2I(1, 2, nullptr, 4, 5), "");
}

TEST(E2ITable, DeleteSendsTheKeyAlone) {
  ExpectCommand([] { return VDRZAX_DelE2I(0x11223344); }, 162, Block().U32(256, 0x11223344));
}

TEST(E2ITable, DeleteAllSends968ZeroBytes) {
  ExpectCommand([] { return VDRZAX_DelAllE2I(); }, 163, Block());
}

TEST(E2ITable, AnEntryOfExactly26BytesIsCopiedWhole) {
  fake::Device device;
  const fake::Bytes reply = wire::Pattern(26);
  device.AnswerWith({.bytes = reply});
  E2IEntry* entry = NoEntry();
  const auto outcome = contract::Run([&] { return VDRZAX_GetE2IEntry(0x11223344, &entry); });
  ASSERT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, contract::kUntouched);
  contract::ExpectSent(device, 165, Block().U32(256, 0x11223344).bytes(), 26);
  EXPECT_EQ(device.steps,
            (Steps{"malloc(26)", "open64", "ioctl", "close", "calloc(1, 26)", "free(26)"}));
  EXPECT_BYTES(wire::BytesOf(entry, 26), reply);
  std::free(entry);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
}

TEST(E2ITable, AnEntryReplyOfAnyOtherLengthIsRefused) {
  for (const uint32_t length : {0u, 25u, 27u, 52u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(length);
    fake::Device device;
    device.AnswerWith({.bytes = wire::Pattern(26), .length = length});
    E2IEntry* entry = NoEntry();
    contract::ExpectFailure(device, [&] { return VDRZAX_GetE2IEntry(1, &entry); }, EBADMSG,
                            {"malloc(26)", "open64", "ioctl", "close", "free(26)"});
    EXPECT_EQ(entry, NoEntry());
  }
}

TEST(E2ITable, AFailedReadOfAnEntryLeavesThePointerAsItWas) {
  E2IEntry* entry = NoEntry();
  contract::ExpectFailuresAround([&] { return VDRZAX_GetE2IEntry(1, &entry); }, {"malloc(26)", 26});
  EXPECT_EQ(entry, NoEntry());
}

TEST(E2ITable, AnEntryThatCannotBeAllocatedLeavesNull) {
  fake::Device device;
  device.AnswerWith({.bytes = wire::Pattern(26)});
  device.failingAllocation = 2;
  E2IEntry* entry = NoEntry();
  contract::ExpectFailure(device, [&] { return VDRZAX_GetE2IEntry(1, &entry); }, ENOMEM,
                          {"malloc(26)", "open64", "ioctl", "close", "calloc(1, 26)", "free(26)"});
  EXPECT_EQ(entry, nullptr);
}

TEST(E2ITable, TheTableIsAHeaderOf12BytesWithThePointerAt4) {
  ExpectTable(1);
  ExpectTable(3);
}

TEST(E2ITable, TheTableHolds8192Entries) { ExpectTable(8192); }

TEST(E2ITable, TheCountIsNotComparedWithTheLengthOfTheReply) {
  for (const uint32_t length : {0u, 3u, 4u, 30u, 55u, 212996u}) {
    SCOPED_TRACE(length);
    fake::Device device;
    const fake::Bytes reply = TableReply(2, 2);
    device.AnswerWith({.bytes = reply, .length = length});
    E2ITable* table = nullptr;
    ASSERT_EQ(VDRZAX_GetE2ITable(&table), 0);
    EXPECT_EQ(CountOf(table), 2);
    EXPECT_BYTES(wire::BytesOf(EntriesOf(table), 52), fake::Bytes(reply.begin() + 4, reply.end()));
    VDRZAX_ReleaseE2ITable(table);
  }
}

TEST(E2ITable, FewerEntriesAreTakenThanTheReplyHolds) {
  fake::Device device;
  device.AnswerWith({.bytes = TableReply(1, 3)});
  E2ITable* table = nullptr;
  ASSERT_EQ(VDRZAX_GetE2ITable(&table), 0);
  EXPECT_EQ(CountOf(table), 1);
  EXPECT_EQ(device.Live().size(), 2u);
  VDRZAX_ReleaseE2ITable(table);
}

TEST(E2ITable, OfATableWithCount0ReleaseFreesTheHeaderAlone) {
  fake::Device device;
  device.AnswerWith({.bytes = TableReply(0, 0)});
  E2ITable* table = nullptr;
  ASSERT_EQ(VDRZAX_GetE2ITable(&table), 0);
  EXPECT_EQ(CountOf(table), 0);
  void* entries = EntriesOf(table);
  EXPECT_NE(entries, nullptr);
  Steps steps = UpToEntries("calloc(0, 26)");
  steps.insert(steps.end(), {"free(212996)", "free(12)"});
  VDRZAX_ReleaseE2ITable(table);
  EXPECT_EQ(device.steps, steps);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{0});
  std::free(entries);
}

TEST(E2ITable, ANegativeCountIsAFailedAllocation) {
  for (const uint32_t count : {0xFFFFFFFFu, 0x80000000u, 0x80000001u, 0xC0000000u}) {
    SCOPED_TRACE(count);
    ExpectNoTable(
        {.bytes = TableReply(count, 0)}, ENOMEM,
        {"malloc(212996)", "open64", "ioctl", "close", "calloc(1, 12)", "free(12)", "free(212996)"},
        nullptr);
  }
}

// The entries of such a count would be read past the reply, so they must not be allocated here.
TEST(E2ITable, ACountBeyond8192IsTakenAsItStands) {
  for (const uint32_t count : {8193u, 0x7FFFFFFFu}) {
    SCOPED_TRACE(count);
    fake::Device device;
    device.AnswerWith({.bytes = TableReply(count, 0)});
    device.failingAllocation = 3;
    Steps steps = UpToEntries("calloc(" + std::to_string(count) + ", 26)");
    steps.insert(steps.end(), {"free(12)", "free(212996)"});
    E2ITable* table = NoTable();
    contract::ExpectFailure(
        device, [&] { return VDRZAX_GetE2ITable(&table); }, ENOMEM, steps);
    EXPECT_EQ(table, nullptr);
  }
}

TEST(E2ITable, AReplyThatClaimsMoreThan212996BytesLeavesThePointerAsItWas) {
  for (const uint32_t length : {212997u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(length);
    ExpectNoTable({.bytes = TableReply(1, 1), .length = length}, EBADMSG,
                  {"malloc(212996)", "open64", "ioctl", "close", "free(212996)"}, NoTable());
  }
}

TEST(E2ITable, AFailedReadOfTheTableLeavesThePointerAsItWas) {
  E2ITable* table = NoTable();
  contract::ExpectFailuresAround([&] { return VDRZAX_GetE2ITable(&table); },
                                 {"malloc(212996)", 212996});
  EXPECT_EQ(table, NoTable());
}

TEST(E2ITable, ATableThatCannotBeAllocatedLeavesNull) {
  for (const int failing : {2, 3}) {
    SCOPED_TRACE(failing);
    fake::Device device;
    device.AnswerWith({.bytes = TableReply(2, 2)});
    device.failingAllocation = failing;
    Steps steps = UpToEntries("calloc(2, 26)");
    if (failing == 2) steps.pop_back();
    if (failing == 3) steps.emplace_back("free(12)");
    steps.emplace_back("free(212996)");
    E2ITable* table = NoTable();
    contract::ExpectFailure(
        device, [&] { return VDRZAX_GetE2ITable(&table); }, ENOMEM, steps);
    EXPECT_EQ(table, nullptr);
    EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
  }
}

TEST(E2ITableDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  device.AnswerWith({.bytes = wire::Pattern(26)});
  EXPECT_DEATH(VDRZAX_GetE2IEntry(1, nullptr), "");
  device.AnswerWith({.bytes = TableReply(1, 1)});
  EXPECT_DEATH(VDRZAX_GetE2ITable(nullptr), "");
}

TEST(E2ITable, ReleaseAcceptsNull) {
  fake::Device device;
  VDRZAX_ReleaseE2ITable(nullptr);
  EXPECT_EQ(device.steps, Steps{});
}

TEST(E2ITable, ReleaseOfATableWithoutEntriesFreesTheHeader) {
  auto* table = static_cast<E2ITable*>(std::calloc(1, 12));
  table->count = 5;
  VDRZAX_ReleaseE2ITable(table);
}

TEST(E2ITable, ReleaseOfANegativeCountLooksAtNoEntries) {
  auto* table = static_cast<E2ITable*>(std::calloc(1, 12));
  table->count = -1;
  table->entries = NoEntry();
  VDRZAX_ReleaseE2ITable(table);
}

}  // namespace
