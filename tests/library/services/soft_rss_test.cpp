#include <gtest/gtest.h>
#include <vdrzax/services.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

#include "support/contract.h"
#include "support/reply_buffer.h"

namespace {

using contract::ExpectCommand;
using contract::ExpectRefused;
using contract::Steps;
using wire::Block;

SoftRssStats* NoStats() { return reinterpret_cast<SoftRssStats*>(1); }

// 852 bytes of statistics with the count at 4.
fake::Bytes StatsReply(uint32_t queues) {
  fake::Bytes reply = wire::Pattern(852);
  std::memcpy(reply.data() + 4, &queues, 4);
  return reply;
}

fake::Bytes ReadStats(const fake::Reply& reply) {
  fake::Device device;
  device.AnswerWith(reply);
  SoftRssStats* stats = NoStats();
  const auto outcome = contract::Run([&] { return VDRZAX_SoftRSSGetStats("rss-0", &stats); });
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, contract::kUntouched);
  EXPECT_EQ(device.steps,
            (Steps{"malloc(852)", "open64", "ioctl", "close", "malloc(852)", "free(852)"}));
  contract::ExpectSent(device, 153, Block().Text(256, "rss-0").bytes(), 852);
  fake::Bytes record = wire::BytesOf(stats, 852);
  std::free(stats);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
  return record;
}

// Fresh memory is 0xA5 throughout; of it the count and the counters of `queues` are overwritten.
fake::Bytes CopiedStats(const fake::Bytes& reply, std::size_t queues) {
  fake::Bytes record(852, 0xA5);
  const auto copy = [&](std::size_t offset, std::size_t width) {
    const auto begin = reply.begin() + static_cast<std::ptrdiff_t>(offset);
    std::copy_n(begin, width, record.begin() + static_cast<std::ptrdiff_t>(offset));
  };
  copy(4, 4);
  copy(8, 4 * queues);
  copy(76, 8 * queues);
  copy(204, 8 * queues);
  copy(332, 8 * queues);
  return record;
}

TEST(SoftRss, StatsCopyTheCountersOfTheQueuesAndLeaveTheRestAsMallocGaveIt) {
  for (const uint32_t queues : {1u, 3u, 15u, 16u}) {
    SCOPED_TRACE(queues);
    const fake::Bytes reply = StatsReply(queues);
    EXPECT_BYTES(ReadStats({.bytes = reply}), CopiedStats(reply, queues));
  }
}

TEST(SoftRss, StatsOf16QueuesLeave0To3And72To75And460To851AsMallocGaveThem) {
  const fake::Bytes record = ReadStats({.bytes = StatsReply(16)});
  for (std::size_t offset = 0; offset < 852; ++offset) {
    const bool untouched = offset < 4 || (offset >= 72 && offset < 76) || offset >= 460;
    if (untouched) {
      EXPECT_EQ(record[offset], 0xA5) << offset;
    }
  }
}

TEST(SoftRss, StatsOf0QueuesCopyTheCountAlone) {
  const fake::Bytes record = ReadStats({.bytes = StatsReply(0)});
  fake::Bytes expected(852, 0xA5);
  std::fill_n(expected.begin() + 4, 4, uint8_t{0});
  EXPECT_BYTES(record, expected);
}

TEST(SoftRss, TheQueueCountIsNotComparedWith16) {
  for (const uint32_t queues : {17u, 18u, 64u, 65u}) {
    SCOPED_TRACE(queues);
    const fake::Bytes reply = StatsReply(queues);
    EXPECT_BYTES(ReadStats({.bytes = reply}), CopiedStats(reply, queues));
  }
}

TEST(SoftRss, TheLengthOfTheStatsIsNotExamined) {
  for (const uint32_t length : {0u, 4u, 851u, 853u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(length);
    const fake::Bytes reply = StatsReply(2);
    EXPECT_BYTES(ReadStats({.bytes = reply, .length = length}), CopiedStats(reply, 2));
  }
}

TEST(SoftRss, AFailedReadOfStatsLeavesThePointerAsItWas) {
  SoftRssStats* stats = NoStats();
  contract::ExpectFailuresAround([&] { return VDRZAX_SoftRSSGetStats("rss-0", &stats); },
                                 {"malloc(852)", 852});
  EXPECT_EQ(stats, NoStats());
}

TEST(SoftRss, StatsThatCannotBeAllocatedLeaveNull) {
  fake::Device device;
  device.AnswerWith({.bytes = StatsReply(2)});
  device.failingAllocation = 2;
  SoftRssStats* stats = NoStats();
  contract::ExpectFailure(device, [&] { return VDRZAX_SoftRSSGetStats("rss-0", &stats); }, ENOMEM,
                          {"malloc(852)", "open64", "ioctl", "close", "malloc(852)", "free(852)"});
  EXPECT_EQ(stats, nullptr);
}

TEST(SoftRss, ResetSendsTheNameAt256) {
  ExpectCommand([] { return VDRZAX_SoftRSSStatsReset("rss-0"); }, 154, Block().Text(256, "rss-0"));
}

TEST(SoftRss, TunablesAreReadIntoTheCallersTwelveBytes) {
  for (const uint32_t length : {0u, 11u, 12u, 13u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(length);
    fake::Device device;
    const fake::Bytes reply = wire::Pattern(12);
    device.AnswerWith({.bytes = reply, .length = length});
    fake::Bytes tunables(16, 0xEE);
    const auto outcome = contract::Run([&] {
      return VDRZAX_SoftRSSGetTunables("rss-0",
                                       reinterpret_cast<SoftRssTunables*>(tunables.data()));
    });
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.error, contract::kUntouched);
    contract::ExpectSent(device, 155, Block().Text(256, "rss-0").bytes(), 12);
    EXPECT_EQ(device.steps, (Steps{"malloc(12)", "open64", "ioctl", "close", "free(12)"}));
    fake::Bytes expected = reply;
    expected.resize(16, 0xEE);
    EXPECT_BYTES(tunables, expected);
  }
}

TEST(SoftRss, TunablesAreOverwrittenAlsoWhenTheCommandFails) {
  SoftRssTunables tunables;
  const auto read = [&] {
    std::memset(&tunables, 0xEE, sizeof tunables);
    return VDRZAX_SoftRSSGetTunables("rss-0", &tunables);
  };
  contract::ExpectFailuresAround(read, {"malloc(12)", 12});
  EXPECT_BYTES(wire::BytesOf(&tunables, 12), fake::Bytes(12, 0xA5));
  {
    SCOPED_TRACE("the node is missing");
    fake::Device device;
    device.openError = ENOENT;
    EXPECT_EQ(read(), -1);
    EXPECT_BYTES(wire::BytesOf(&tunables, 12), fake::Bytes(12, 0xA5));
  }
  {
    SCOPED_TRACE("the kernel wrote before it failed");
    fake::Device device;
    device.AnswerWith({.bytes = wire::Pattern(12), .result = -1, .error = EIO});
    EXPECT_EQ(read(), -1);
    EXPECT_BYTES(wire::BytesOf(&tunables, 12), wire::Pattern(12));
  }
}

TEST(SoftRss, TunablesStayAsTheyWereWithoutAReplyBuffer) {
  SoftRssTunables tunables;
  std::memset(&tunables, 0xEE, sizeof tunables);
  fake::Device device;
  device.failingAllocation = 1;
  EXPECT_EQ(VDRZAX_SoftRSSGetTunables("rss-0", &tunables), -1);
  EXPECT_BYTES(wire::BytesOf(&tunables, 12), fake::Bytes(12, 0xEE));
}

TEST(SoftRss, OfTheTunablesOnlyTheFirst8BytesAreSent) {
  SoftRssTunables tunables;
  tunables.qword0 = 0x1122334455667788;
  tunables.word8 = 0xFFFFFFFF;
  ExpectCommand([&] { return VDRZAX_SoftRSSSetTunables("rss-0", &tunables); }, 156,
                Block().Text(256, "rss-0").U64(320, 0x1122334455667788));
}

TEST(SoftRss, TheIndirectionTableIsCopiedWholeWhateverTheLength) {
  for (const uint32_t length : {0u, 127u, 128u, 129u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(length);
    fake::Device device;
    const fake::Bytes reply = wire::Pattern(128);
    device.AnswerWith({.bytes = reply, .length = length});
    fake::Bytes table(132, 0xEE);
    const auto outcome =
        contract::Run([&] { return VDRZAX_SoftRSSGetIndTable("rss-0", table.data()); });
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.error, contract::kUntouched);
    contract::ExpectSent(device, 157, Block().Text(256, "rss-0").bytes(), 128);
    EXPECT_EQ(device.steps, (Steps{"malloc(128)", "open64", "ioctl", "close", "free(128)"}));
    fake::Bytes expected = reply;
    expected.resize(132, 0xEE);
    EXPECT_BYTES(table, expected);
  }
}

TEST(SoftRss, BytesThatTheKernelDidNotFillComeFromTheReplyBuffer) {
  fake::Device device;
  device.AnswerWith({.bytes = {1, 2}});
  fake::Bytes table(128, 0xEE);
  EXPECT_EQ(VDRZAX_SoftRSSGetIndTable("rss-0", table.data()), 0);
  fake::Bytes expected(128, 0xA5);
  expected[0] = 1;
  expected[1] = 2;
  EXPECT_BYTES(table, expected);
}

TEST(SoftRss, AFailedReadLeavesTheIndirectionTableAsItWas) {
  fake::Bytes table(128, 0xEE);
  contract::ExpectFailuresAround([&] { return VDRZAX_SoftRSSGetIndTable("rss-0", table.data()); },
                                 {"malloc(128)", 128});
  EXPECT_BYTES(table, fake::Bytes(128, 0xEE));
}

// A caller's table with the count at 128, in memory that ends with it or behind it.
fake::Bytes TableToSet(int32_t count, std::size_t size) {
  fake::Bytes table = wire::Pattern(size);
  std::memcpy(table.data() + 128, &count, 4);
  return table;
}

int SetTable(const fake::Bytes& table) {
  return VDRZAX_SoftRSSTableSet("rss-0", reinterpret_cast<const SoftRssIndTable*>(table.data()));
}

TEST(SoftRss, TableSetSendsAsManyEntriesAsItSaysAndTheCountAt448) {
  for (const int32_t count : {1, 4, 127, 128}) {
    SCOPED_TRACE(count);
    const fake::Bytes table = TableToSet(count, 132);
    ExpectCommand([&] { return SetTable(table); }, 158,
                  Block()
                      .Text(256, "rss-0")
                      .Raw(320, fake::Bytes(table.begin(), table.begin() + count))
                      .U32(448, static_cast<uint32_t>(count)));
  }
}

TEST(SoftRss, TableSetOf0EntriesOrLessSendsTheCountAlone) {
  for (const int32_t count : {0, -1, -128, INT32_MIN}) {
    SCOPED_TRACE(count);
    const fake::Bytes table = TableToSet(count, 132);
    ExpectCommand([&] { return SetTable(table); }, 158,
                  Block().Text(256, "rss-0").U32(448, static_cast<uint32_t>(count)));
  }
}

TEST(SoftRss, TableSetOfMoreThan128EntriesRunsOverTheCountAndBeyond) {
  for (const int32_t count : {129, 132, 133, 500, 648}) {
    SCOPED_TRACE(count);
    const fake::Bytes table = TableToSet(count, 648);
    ExpectCommand([&] { return SetTable(table); }, 158,
                  Block()
                      .Text(256, "rss-0")
                      .U32(448, static_cast<uint32_t>(count))
                      .Raw(320, fake::Bytes(table.begin(), table.begin() + count)));
  }
}

TEST(SoftRss, AMissingNameIsRefusedByAll) {
  SoftRssStats* stats = NoStats();
  ExpectRefused([&] { return VDRZAX_SoftRSSGetStats(nullptr, &stats); });
  EXPECT_EQ(stats, NoStats());
  ExpectRefused([] { return VDRZAX_SoftRSSStatsReset(nullptr); });
  SoftRssTunables tunables;
  std::memset(&tunables, 0xEE, sizeof tunables);
  ExpectRefused([&] { return VDRZAX_SoftRSSGetTunables(nullptr, &tunables); });
  EXPECT_BYTES(wire::BytesOf(&tunables, 12), fake::Bytes(12, 0xEE));
  ExpectRefused([&] { return VDRZAX_SoftRSSSetTunables(nullptr, &tunables); });
  fake::Bytes table(132, 0);
  ExpectRefused([&] { return VDRZAX_SoftRSSGetIndTable(nullptr, table.data()); });
  EXPECT_BYTES(table, fake::Bytes(132));
  ExpectRefused([&] {
    return VDRZAX_SoftRSSTableSet(nullptr, reinterpret_cast<SoftRssIndTable*>(table.data()));
  });
}

TEST(SoftRss, AMissingNameIsRefusedBeforeAnUntestedArgumentIsRead) {
  ExpectRefused([] { return VDRZAX_SoftRSSGetStats(nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_SoftRSSGetTunables(nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_SoftRSSSetTunables(nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_SoftRSSGetIndTable(nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_SoftRSSTableSet(nullptr, nullptr); });
}

TEST(SoftRss, ANameOf64CharactersIsCutTo63AndTerminatedByAll) {
  const std::string name(64, 'n');
  const Block cut = Block().Text(256, std::string(63, 'n'));
  ExpectCommand([&] { return VDRZAX_SoftRSSStatsReset(name.c_str()); }, 154, cut);
  SoftRssTunables tunables{};
  ExpectCommand([&] { return VDRZAX_SoftRSSSetTunables(name.c_str(), &tunables); }, 156, cut);
  SoftRssIndTable table{};
  ExpectCommand([&] { return VDRZAX_SoftRSSTableSet(name.c_str(), &table); }, 158, cut);
  {
    fake::Device device;
    EXPECT_EQ(VDRZAX_SoftRSSGetTunables(name.c_str(), &tunables), 0);
    contract::ExpectSent(device, 155, cut.bytes(), 12);
  }
  {
    fake::Device device;
    EXPECT_EQ(VDRZAX_SoftRSSGetIndTable(name.c_str(), table.entries), 0);
    contract::ExpectSent(device, 157, cut.bytes(), 128);
  }
  fake::Device device;
  device.AnswerWith({.bytes = StatsReply(1)});
  SoftRssStats* stats = nullptr;
  ASSERT_EQ(VDRZAX_SoftRSSGetStats(name.c_str(), &stats), 0);
  contract::ExpectSent(device, 153, cut.bytes(), 852);
  std::free(stats);
}

TEST(SoftRssDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  device.AnswerWith({.bytes = fake::Bytes(8)});
  EXPECT_DEATH(VDRZAX_SoftRSSGetStats("rss-0", nullptr), "");
  EXPECT_DEATH(VDRZAX_SoftRSSGetTunables("rss-0", nullptr), "");
  EXPECT_DEATH(VDRZAX_SoftRSSSetTunables("rss-0", nullptr), "");
  EXPECT_DEATH(VDRZAX_SoftRSSGetIndTable("rss-0", nullptr), "");
  EXPECT_DEATH(VDRZAX_SoftRSSTableSet("rss-0", nullptr), "");
}

}  // namespace
