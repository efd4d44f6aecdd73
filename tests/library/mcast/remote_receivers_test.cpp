#include <gtest/gtest.h>
#include <vdrzax/mcast.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

#include "support/contract.h"
#include "support/reply_buffer.h"

namespace {

using contract::ExpectCommand;
using contract::Steps;
using wire::Block;

constexpr MacValue kMac{{0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};

VTEPTable* NoTable() { return reinterpret_cast<VTEPTable*>(1); }

// A count and the entries behind it.
fake::Bytes TableReply(uint32_t count, std::size_t entries) {
  fake::Bytes reply(4);
  std::memcpy(reply.data(), &count, 4);
  const fake::Bytes patterns = wire::Patterns(entries, 68);
  reply.insert(reply.end(), patterns.begin(), patterns.end());
  return reply;
}

int32_t CountOf(const VTEPTable* table) {
  int32_t count;
  std::memcpy(&count, table, 4);
  return count;
}

void* EntriesOf(const VTEPTable* table) {
  void* entries;
  std::memcpy(&entries, reinterpret_cast<const char*>(table) + 8, 8);
  return entries;
}

// The steps of a read, up to the table's header.
Steps UpToHeader(const Steps& more) {
  Steps steps{"malloc(139268)", "open64", "ioctl", "close", "calloc(1, 16)"};
  steps.insert(steps.end(), more.begin(), more.end());
  return steps;
}

void ExpectTable(uint32_t count) {
  SCOPED_TRACE(count);
  fake::Device device;
  const fake::Bytes reply = TableReply(count, count);
  device.AnswerWith({.bytes = reply});
  VTEPTable* table = NoTable();
  const auto outcome =
      contract::Run([&] { return VDRZAX_GetMRoutingRemoteRcvrs("edge-1", 0x11223344, &table); });
  ASSERT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, contract::kUntouched);
  contract::ExpectSent(device, 129, Block().Text(0, "edge-1").U32(256, 0x11223344).bytes(), 139268);
  EXPECT_EQ(device.steps,
            UpToHeader({"calloc(" + std::to_string(count) + ", 68)", "free(139268)"}));
  EXPECT_EQ(CountOf(table), static_cast<int32_t>(count));
  EXPECT_BYTES(wire::BytesOf(EntriesOf(table), 68UL * count),
               fake::Bytes(reply.begin() + 4, reply.end()));
  VDRZAX_ReleaseVTEPTable(table);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
}

void ExpectNoTable(const fake::Reply& reply, int failingAllocation, int error, const Steps& steps) {
  fake::Device device;
  device.AnswerWith(reply);
  device.failingAllocation = failingAllocation;
  VTEPTable* table = NoTable();
  contract::ExpectFailure(
      device, [&] { return VDRZAX_GetMRoutingRemoteRcvrs("edge-1", 1, &table); }, error, steps);
  EXPECT_EQ(table, nullptr);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
}

void ExpectShort(const fake::Reply& reply) {
  ExpectNoTable(reply, 0, EBADMSG, UpToHeader({"free(16)", "free(139268)"}));
}

TEST(RemoteReceivers, TheTableIsAHeaderOf16BytesWithThePointerAt8) {
  ExpectTable(1);
  ExpectTable(3);
}

TEST(RemoteReceivers, TheTableHolds2048Entries) { ExpectTable(2048); }

TEST(RemoteReceivers, BytesBehindTheEntriesAreIgnored) {
  fake::Device device;
  device.AnswerWith({.bytes = TableReply(1, 3)});
  VTEPTable* table = nullptr;
  ASSERT_EQ(VDRZAX_GetMRoutingRemoteRcvrs("edge-1", 1, &table), 0);
  EXPECT_EQ(CountOf(table), 1);
  EXPECT_BYTES(wire::BytesOf(EntriesOf(table), 68), wire::Pattern(68, 0));
  VDRZAX_ReleaseVTEPTable(table);
}

TEST(RemoteReceivers, OfATableWithCount0ReleaseFreesTheHeaderAlone) {
  fake::Device device;
  device.AnswerWith({.bytes = TableReply(0, 0)});
  VTEPTable* table = nullptr;
  ASSERT_EQ(VDRZAX_GetMRoutingRemoteRcvrs("edge-1", 1, &table), 0);
  EXPECT_EQ(CountOf(table), 0);
  void* entries = EntriesOf(table);
  EXPECT_NE(entries, nullptr);
  VDRZAX_ReleaseVTEPTable(table);
  EXPECT_EQ(device.steps, UpToHeader({"calloc(0, 68)", "free(139268)", "free(16)"}));
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{0});
  std::free(entries);
}

TEST(RemoteReceivers, ThreeEntriesClaimedIn200BytesAreRefused) {
  fake::Bytes reply = TableReply(3, 3);
  ASSERT_EQ(reply.size(), 208u);
  reply.resize(200);
  ExpectShort({.bytes = reply});
}

TEST(RemoteReceivers, AReplyOneByteShortIsRefused) {
  ExpectShort({.bytes = TableReply(3, 3), .length = 207});
  ExpectShort({.bytes = TableReply(2048, 2048), .length = 139267});
  ExpectShort({.bytes = TableReply(0, 0), .length = 3});
}

TEST(RemoteReceivers, ALengthOf2To31AndMoreIsAShortReply) {
  ExpectShort({.bytes = TableReply(1, 1), .length = 0x80000000u});
  ExpectShort({.bytes = TableReply(0, 0), .length = 0xFFFFFFFFu});
}

TEST(RemoteReceivers, ANegativeNeededSizeIsRefusedWhateverTheLength) {
  for (const uint32_t count : {0xFFFFFFFFu, 0xFFFFFFFEu, 31580642u}) {
    SCOPED_TRACE(count);
    ExpectShort({.bytes = TableReply(count, 2), .length = 0x7FFFFFFFu});
    ExpectShort({.bytes = TableReply(count, 2), .length = 0xFFFFFFFFu});
  }
}

TEST(RemoteReceivers, TheNeededSizeWrapsIn32Bits) {
  // 63161284 x 68 + 4 is 20 in 32 bits.
  ExpectShort({.bytes = TableReply(63161284, 1), .length = 19});
  ExpectNoTable({.bytes = TableReply(63161284, 1), .length = 20}, 3, ENOMEM,
                UpToHeader({"calloc(63161284, 68)", "free(16)", "free(139268)"}));
}

TEST(RemoteReceivers, ANegativeCountWhoseSizeWrapsIsAFailedAllocation) {
  for (const uint32_t count : {0x80000000u, 0xC0000000u, 0xC0000001u}) {
    SCOPED_TRACE(count);
    ExpectNoTable({.bytes = TableReply(count, 1)}, 0, ENOMEM,
                  UpToHeader({"free(16)", "free(139268)"}));
  }
}

TEST(RemoteReceivers, ASizeThatWrapsToNothingIsRefused) {
  // 252645135 x 68 + 4 is 0 in 32 bits.
  ExpectShort({.bytes = TableReply(252645135, 1)});
  ExpectShort({.bytes = TableReply(252645135, 1), .length = 0});
}

TEST(RemoteReceivers, AFailedReadLeavesThePointerAsItWas) {
  VTEPTable* table = NoTable();
  contract::ExpectFailuresAround([&] { return VDRZAX_GetMRoutingRemoteRcvrs("edge-1", 1, &table); },
                                 {"malloc(139268)", 139268});
  EXPECT_EQ(table, NoTable());
}

TEST(RemoteReceivers, ATableThatCannotBeAllocatedLeavesNull) {
  ExpectNoTable({.bytes = TableReply(2, 2)}, 2, ENOMEM, UpToHeader({"free(139268)"}));
  ExpectNoTable({.bytes = TableReply(2, 2)}, 3, ENOMEM,
                UpToHeader({"calloc(2, 68)", "free(16)", "free(139268)"}));
}

TEST(RemoteReceivers, AddSendsEveryArgumentToItsPlace) {
  ExpectCommand(
      [] {
        return VDRZAX_AddMRoutingRemoteRcvrs("edge-1", 0xA1A2A3A4, 0xB1B2B3B4, &kMac, 0xD1D2D3D4,
                                             0xE1E2E3E4);
      },
      131,
      Block()
          .Text(0, "edge-1")
          .U32(256, 0xA1A2A3A4)
          .U32(272, 0xD1D2D3D4)
          .U32(276, 0xB1B2B3B4)
          .Raw(280, {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E})
          .U32(288, 0xE1E2E3E4));
}

TEST(RemoteReceivers, TheGetterCutsANameOf64CharactersTo63) {
  fake::Device device;
  device.AnswerWith({.bytes = TableReply(1, 1)});
  VTEPTable* table = nullptr;
  ASSERT_EQ(VDRZAX_GetMRoutingRemoteRcvrs(std::string(64, 'n').c_str(), 1, &table), 0);
  contract::ExpectSent(device, 129, Block().Text(0, std::string(63, 'n')).U32(256, 1).bytes(),
                       139268);
  VDRZAX_ReleaseVTEPTable(table);
}

TEST(RemoteReceivers, AddCutsANameOf64CharactersTo63) {
  const std::string name(64, 'n');
  const MacValue zero{};
  ExpectCommand([&] { return VDRZAX_AddMRoutingRemoteRcvrs(name.c_str(), 0, 0, &zero, 0, 0); }, 131,
                Block().Text(0, std::string(63, 'n')));
}

// The command that is sent, without the bytes that the library does not set.
int DeleteRemoteReceiver(fake::Device& device, const char* name) {
  const int result = VDRZAX_DelMRoutingRemoteRcvrs(name, 0xA1A2A3A4, 0xB1B2B3B4);
  for (fake::Command& command : device.commands) {
    if (command.input.size() != 968) continue;
    std::fill(command.input.begin() + 64, command.input.begin() + 256, uint8_t{0});
    std::fill(command.input.begin() + 260, command.input.begin() + 276, uint8_t{0});
    std::fill(command.input.begin() + 280, command.input.end(), uint8_t{0});
  }
  return result;
}

TEST(RemoteReceivers, DeleteSetsThreeFields) {
  fake::Device device;
  const auto outcome = contract::Run([&] { return DeleteRemoteReceiver(device, "edge-1"); });
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, contract::kUntouched);
  EXPECT_EQ(device.steps, (Steps{"open64", "ioctl", "close"}));
  contract::ExpectSent(
      device, 132, Block().Text(0, "edge-1").U32(256, 0xA1A2A3A4).U32(276, 0xB1B2B3B4).bytes(), 0);
}

TEST(RemoteReceivers, DeleteCutsANameOf64CharactersTo63) {
  fake::Device device;
  EXPECT_EQ(DeleteRemoteReceiver(device, std::string(64, 'n').c_str()), 0);
  contract::ExpectSent(
      device, 132,
      Block().Text(0, std::string(63, 'n')).U32(256, 0xA1A2A3A4).U32(276, 0xB1B2B3B4).bytes(), 0);
}

TEST(RemoteReceivers, AFailedDeleteHasTheErrnoOfTheDevice) {
  const auto remove = [] { return VDRZAX_DelMRoutingRemoteRcvrs("edge-1", 1, 2); };
  {
    fake::Device device;
    device.openError = ENOENT;
    contract::ExpectFailure(device, remove, ENOENT, {"open64"});
  }
  fake::Device device;
  device.AnswerWith(fake::Failure(EXDEV));
  contract::ExpectFailure(device, remove, EXDEV, {"open64", "ioctl", "close"});
}

// Leaves bytes behind on the part of the stack that the next call uses.
__attribute__((noinline)) void PaintStack() {
  volatile uint8_t paint[16384];
  for (volatile uint8_t& byte : paint) byte = 0x5A;
}

TEST(RemoteReceivers, DeleteDoesNotClearTheRestOfItsBlock) {
  fake::Device device;
  // Once before, so that the dynamic linker does not walk over the paint.
  ASSERT_EQ(VDRZAX_DelMRoutingRemoteRcvrs("e", 0, 0), 0);
  PaintStack();
  ASSERT_EQ(VDRZAX_DelMRoutingRemoteRcvrs("e", 0, 0), 0);
  ASSERT_EQ(device.commands.size(), 2u);
  const fake::Bytes& block = device.commands[1].input;
  ASSERT_EQ(block.size(), 968u);
  const auto painted = std::count(block.begin() + 280, block.end(), uint8_t{0x5A});
  EXPECT_GT(painted, 0);
}

TEST(RemoteReceiversDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  device.AnswerWith({.bytes = TableReply(1, 1)});
  VTEPTable* table = nullptr;
  EXPECT_DEATH(VDRZAX_GetMRoutingRemoteRcvrs(nullptr, 1, &table), "");
  EXPECT_DEATH(VDRZAX_GetMRoutingRemoteRcvrs("edge-1", 1, nullptr), "");
  EXPECT_DEATH(VDRZAX_AddMRoutingRemoteRcvrs(nullptr, 1, 2, &kMac, 3, 4), "");
  EXPECT_DEATH(VDRZAX_AddMRoutingRemoteRcvrs("edge-1", 1, 2, nullptr, 3, 4), "");
  EXPECT_DEATH(VDRZAX_DelMRoutingRemoteRcvrs(nullptr, 1, 2), "");
}

TEST(RemoteReceivers, ReleaseAcceptsNull) {
  fake::Device device;
  VDRZAX_ReleaseVTEPTable(nullptr);
  EXPECT_EQ(device.steps, Steps{});
}

TEST(RemoteReceivers, ReleaseOfATableWithoutEntriesFreesTheHeader) {
  auto* table = static_cast<VTEPTable*>(std::calloc(1, 16));
  table->count = 5;
  VDRZAX_ReleaseVTEPTable(table);
}

TEST(RemoteReceivers, ReleaseFreesTheEntriesOfANegativeCountToo) {
  fake::Device device;
  device.AnswerWith({.bytes = TableReply(1, 1)});
  VTEPTable* table = nullptr;
  ASSERT_EQ(VDRZAX_GetMRoutingRemoteRcvrs("edge-1", 1, &table), 0);
  table->count = -1;
  VDRZAX_ReleaseVTEPTable(table);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
}

}  // namespace
