#include <gtest/gtest.h>
#include <vdrzax/route.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using contract::ExpectRefused;
using contract::Outcome;
using contract::Steps;
using wire::Block;

struct Change {
  int (*call)(uint64_t, uint64_t, uint8_t, uint64_t, uint64_t, const char*, const char*);
  unsigned long code;
};

constexpr Change kChanges[] = {{VDRZAX_SetRoutev6, 110}, {VDRZAX_DelRoutev6, 111}};

TEST(Ipv6Routes, SetAndDeleteSendEveryArgumentToItsPlace) {
  for (const Change& change : kChanges) {
    ExpectCommand(
        [&] {
          return change.call(0x1122334455667788, 0x99AABBCCDDEEFF01, 0x40, 0x0203040506070809,
                             0x0A0B0C0D0E0F1011, "uplink", "edge-1");
        },
        change.code,
        Block()
            .Text(0, "edge-1")
            .U64(260, 0x1122334455667788)
            .U64(268, 0x99AABBCCDDEEFF01)
            .U8(276, 0x40)
            .U64(293, 0x0203040506070809)
            .U64(301, 0x0A0B0C0D0E0F1011)
            .Text(309, "uplink"));
  }
}

TEST(Ipv6Routes, DeleteSendsTheSameBlockAsSet) {
  fake::Device device;
  EXPECT_EQ(VDRZAX_SetRoutev6(1, 2, 3, 4, 5, "uplink", "edge-1"), 0);
  EXPECT_EQ(VDRZAX_DelRoutev6(1, 2, 3, 4, 5, "uplink", "edge-1"), 0);
  ASSERT_EQ(device.commands.size(), 2u);
  EXPECT_EQ(device.commands[0].request, 110u);
  EXPECT_EQ(device.commands[1].request, 111u);
  EXPECT_BYTES(device.commands[1].input, device.commands[0].input);
}

TEST(Ipv6Routes, WithoutAnInterface64ZeroBytesAreSentAt309) {
  for (const Change& change : kChanges) {
    ExpectCommand([&] { return change.call(1, 2, 3, 4, 5, nullptr, "e"); }, change.code,
                  Block().Text(0, "e").U64(260, 1).U64(268, 2).U8(276, 3).U64(293, 4).U64(301, 5));
  }
}

TEST(Ipv6Routes, ANameOf64CharactersIsSentWholeWithoutTerminator) {
  const std::string name(64, 'n');
  const std::string interface(64, 'i');
  const Block whole = Block().Text(0, name).Text(309, interface);
  for (const Change& change : kChanges) {
    ExpectCommand([&] { return change.call(0, 0, 0, 0, 0, interface.c_str(), name.c_str()); },
                  change.code, whole);
    ExpectCommand(
        [&] {
          return change.call(0, 0, 0, 0, 0, (interface + "more").c_str(), (name + "more").c_str());
        },
        change.code, whole);
  }
}

TEST(Ipv6Routes, AMissingNameIsRefusedBySetAndDelete) {
  for (const Change& change : kChanges) {
    ExpectRefused([&] { return change.call(1, 2, 3, 4, 5, "uplink", nullptr); });
    ExpectRefused([&] { return change.call(1, 2, 3, 4, 5, nullptr, nullptr); });
  }
}

fake::Bytes FourBytes(uint32_t value) { return wire::BytesOf(&value, 4); }

// A kernel that reports `routes` and answers the table with `table`.
void Script(fake::Device& device, uint32_t routes, fake::Reply table) {
  device.answer = [routes, table = std::move(table)](const fake::Command& command) {
    return command.request == 115 ? fake::Reply{.bytes = FourBytes(routes)} : table;
  };
}

// What a call leaves behind. Both outputs begin with values that no call writes.
struct Read {
  int result = 0;
  int error = 0;
  void* table = &Untouched();
  uint32_t count = 0xDEAD;

  static char& Untouched() {
    static char anything;
    return anything;
  }
};

Read ReadTable(const char* name = "edge-1") {
  Read read;
  const Outcome outcome =
      contract::Run([&] { return VDRZAX_GetRoutesv6(name, &read.table, &read.count); });
  read.result = outcome.result;
  read.error = outcome.error;
  return read;
}

void ExpectOutOfMemoryBeforeTheTable(const fake::Device& device, const Read& read,
                                     const Steps& steps) {
  EXPECT_EQ(read.result, -1);
  EXPECT_EQ(read.error, ENOMEM);
  EXPECT_EQ(read.table, &Read::Untouched());
  EXPECT_EQ(read.count, 0xDEADu);
  EXPECT_EQ(device.steps, steps);
}

// The table of `capacity` bytes is read after the count was.
void ExpectTableOf(uint32_t capacity, uint32_t routes) {
  SCOPED_TRACE(routes);
  fake::Device device;
  Script(device, routes, {.bytes = wire::Pattern(2UL * 776)});
  const Read read = ReadTable();
  EXPECT_EQ(read.result, 0);
  EXPECT_EQ(read.error, contract::kUntouched);
  EXPECT_EQ(read.count, 2u);
  EXPECT_BYTES(wire::BytesOf(read.table, 2UL * 776), wire::Pattern(2UL * 776));
  EXPECT_EQ(device.steps,
            (Steps{"open64", "ioctl", "close", "malloc(" + std::to_string(capacity) + ")", "open64",
                   "ioctl", "close"}));
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{capacity});

  ASSERT_EQ(device.commands.size(), 2u);
  const Block name = Block().Text(0, "edge-1");
  for (const fake::Command& command : device.commands) {
    EXPECT_EQ(command.node, "/qorv/devices/char/zaxdriver/ryn_vdr");
    EXPECT_EQ(command.inLength, 968u);
    EXPECT_BYTES(command.input, name.bytes());
  }
  EXPECT_EQ(device.commands[0].request, 115u);
  EXPECT_EQ(device.commands[0].outLength, 4u);
  EXPECT_NE(device.commands[0].outBuffer, nullptr);
  EXPECT_EQ(device.commands[1].request, 114u);
  EXPECT_EQ(device.commands[1].outLength, capacity);
  EXPECT_EQ(device.commands[1].outBuffer, read.table);
  std::free(read.table);
}

TEST(Ipv6Routes, TheCountIsAskedForFirstAndThenTheTable) { ExpectTableOf(15520000, 2); }

TEST(Ipv6Routes, FewerThan20000RoutesAreReadInto15520000Bytes) {
  ExpectTableOf(15520000, 0);
  ExpectTableOf(15520000, 19999);
}

TEST(Ipv6Routes, From20000RoutesOnTheyAreReadInto23280000Bytes) {
  ExpectTableOf(23280000, 20000);
  ExpectTableOf(23280000, 29999);
}

TEST(Ipv6Routes, From30000RoutesOnNothingIsAllocatedAndMemoryIsSaidToBeOut) {
  for (const uint32_t routes : {30000u, 30001u, 0x7FFFFFFFu}) {
    fake::Device device;
    Script(device, routes, {});
    ExpectOutOfMemoryBeforeTheTable(device, ReadTable(), {"open64", "ioctl", "close"});
  }
}

TEST(Ipv6Routes, ANegativeCountIsReadInto15520000Bytes) {
  ExpectTableOf(15520000, 0x80000000);
  ExpectTableOf(15520000, 0xFFFFFFFF);
}

TEST(Ipv6Routes, TheLengthOfTheReplyToTheCountIsNotExamined) {
  for (const uint32_t length : {0u, 3u, 5u, 0xFFFFFFFFu}) {
    fake::Device device;
    device.answer = [length](const fake::Command& command) {
      return command.request == 115 ? fake::Reply{.bytes = FourBytes(20000), .length = length}
                                    : fake::Reply{};
    };
    const Read read = ReadTable();
    EXPECT_EQ(read.result, 0);
    EXPECT_EQ(device.Live(), std::vector<std::size_t>{23280000});
    std::free(read.table);
  }
}

TEST(Ipv6Routes, AFailedQueryOfTheCountIsSaidToBeOutOfMemory) {
  for (const int error : {EPERM, EXDEV}) {
    fake::Device device;
    device.AnswerWith(fake::Failure(error));
    ExpectOutOfMemoryBeforeTheTable(device, ReadTable(), {"open64", "ioctl", "close"});
  }
}

TEST(Ipv6Routes, AMissingNodeIsSaidToBeOutOfMemory) {
  fake::Device device;
  device.openError = ENOENT;
  ExpectOutOfMemoryBeforeTheTable(device, ReadTable(), {"open64"});
}

TEST(Ipv6Routes, ATableThatCannotBeAllocatedLeavesNull) {
  fake::Device device;
  Script(device, 1, {});
  device.failingAllocation = 1;
  const Read read = ReadTable();
  EXPECT_EQ(read.result, -1);
  EXPECT_EQ(read.error, ENOMEM);
  EXPECT_EQ(read.table, nullptr);
  EXPECT_EQ(read.count, 0xDEADu);
  EXPECT_EQ(device.steps, (Steps{"open64", "ioctl", "close", "malloc(15520000)"}));
}

TEST(Ipv6Routes, AFailedTableCommandFreesTheBufferAndLeavesItsAddressInPlace) {
  fake::Device device;
  Script(device, 1, fake::Failure(EXDEV));
  const Read read = ReadTable();
  EXPECT_EQ(read.result, -1);
  EXPECT_EQ(read.error, EXDEV);
  EXPECT_EQ(device.steps, (Steps{"open64", "ioctl", "close", "malloc(15520000)", "open64", "ioctl",
                                 "close", "free(15520000)"}));
  ASSERT_EQ(device.commands.size(), 2u);
  EXPECT_EQ(read.table, device.commands[1].outBuffer);
}

TEST(Ipv6Routes, ANodeThatVanishesBetweenTheCommandsKeepsTheErrnoOfItsOpen) {
  fake::Device device;
  device.answer = [&](const fake::Command&) {
    device.openError = ENOENT;
    return fake::Reply{.bytes = FourBytes(20000)};
  };
  const Read read = ReadTable();
  EXPECT_EQ(read.result, -1);
  EXPECT_EQ(read.error, ENOENT);
  EXPECT_EQ(read.count, 30000u);
  EXPECT_NE(read.table, nullptr);
  EXPECT_NE(read.table, &Read::Untouched());
  EXPECT_EQ(device.steps,
            (Steps{"open64", "ioctl", "close", "malloc(23280000)", "open64", "free(23280000)"}));
}

TEST(Ipv6Routes, AFailedTableCommandWritesTheCountOfTheUntouchedCapacity) {
  for (const auto& [routes, count] : {std::pair{19999u, 20000u}, std::pair{20000u, 30000u}}) {
    fake::Device device;
    Script(device, routes, fake::Failure(EXDEV));
    const Read read = ReadTable();
    EXPECT_EQ(read.result, -1);
    EXPECT_EQ(read.count, count);
  }
}

TEST(Ipv6Routes, AFailedTableCommandWritesTheCountOfTheLengthThatTheKernelLeft) {
  fake::Device device;
  Script(device, 1, {.length = 5 * 776, .result = -1, .error = EIO});
  const Read read = ReadTable();
  EXPECT_EQ(read.result, -1);
  EXPECT_EQ(read.error, EIO);
  EXPECT_EQ(read.count, 5u);
}

TEST(Ipv6Routes, TheCountIsTheLengthOfTheReplyDividedBy776) {
  const std::pair<uint32_t, uint32_t> kExpected[] = {
      {0, 0}, {775, 0}, {776, 1}, {1000, 1}, {1552, 2}, {15520000, 20000}, {0xFFFFFFFF, 5534751}};
  for (const auto& [length, count] : kExpected) {
    fake::Device device;
    Script(device, 1, {.length = length});
    const Read read = ReadTable();
    EXPECT_EQ(read.result, 0);
    EXPECT_EQ(read.count, count);
    std::free(read.table);
  }
}

TEST(Ipv6Routes, TheBlockOfTheTableIsFilledAnew) {
  fake::Device device;
  device.answer = [](const fake::Command& command) {
    std::memset(const_cast<void*>(command.inBuffer), 0xFF, command.inLength);
    return fake::Reply{.bytes = FourBytes(0)};
  };
  const Read read = ReadTable();
  EXPECT_EQ(read.result, 0);
  ASSERT_EQ(device.commands.size(), 2u);
  EXPECT_BYTES(device.commands[1].input, Block().Text(0, "edge-1").bytes());
  std::free(read.table);
}

TEST(Ipv6Routes, AnInstanceNameOf64CharactersIsSentWholeInBothCommands) {
  const std::string name(64, 'n');
  fake::Device device;
  Script(device, 0, {});
  const Read read = ReadTable((name + "more").c_str());
  EXPECT_EQ(read.result, 0);
  ASSERT_EQ(device.commands.size(), 2u);
  for (const fake::Command& command : device.commands) {
    EXPECT_BYTES(command.input, Block().Text(0, name).bytes());
  }
  std::free(read.table);
}

TEST(Ipv6RoutesDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  Script(device, 0, {});
  void* table = nullptr;
  uint32_t count = 0;
  EXPECT_DEATH(VDRZAX_GetRoutesv6(nullptr, &table, &count), "");
  EXPECT_DEATH(VDRZAX_GetRoutesv6("edge-1", nullptr, &count), "");
  EXPECT_DEATH(VDRZAX_GetRoutesv6("edge-1", &table, nullptr), "");
}

}  // namespace
