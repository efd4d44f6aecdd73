#include "journal/spool.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <numeric>

#include "entries.h"

namespace {

using journal_test::Command;
using vdrsim::Entry;
using vdrsim::Spool;
using wire::Wire;

std::vector<uint64_t> Take(Spool& spool) {
  std::vector<std::byte> batch;
  EXPECT_TRUE(spool.Take(batch));
  std::vector<uint64_t> seqs;
  vdrsim::ForEachEntry(batch, [&](const Entry& entry) {
    seqs.push_back(entry.seq);
    EXPECT_EQ(entry.input.size(), entry.seq % 3 * 4);
    for (const std::byte byte : entry.input) EXPECT_EQ(byte, std::byte(entry.seq % 251));
  });
  return seqs;
}

void Append(Spool& spool, uint64_t seq) {
  const wire::Bytes input(seq % 3 * 4, std::byte(seq % 251));
  spool.Append(Command(seq, 1, input));
}

void ExpectAllInOrder(size_t memory) {
  Spool spool(memory);
  std::vector<uint64_t> seen;
  uint64_t next = 1;
  const auto takeOnce = [&] {
    for (const uint64_t seq : Take(spool)) seen.push_back(seq);
  };
  for (int round = 0; round < 30; ++round) {
    for (int count = 0; count < round * 7; ++count) Append(spool, next++);
    if (round % 3 == 1) takeOnce();
  }
  while (!spool.IsEmpty()) takeOnce();
  std::vector<uint64_t> all(next - 1);
  std::iota(all.begin(), all.end(), uint64_t{1});
  EXPECT_EQ(seen, all);
}

TEST(Spool, GivesBackWhatItWasGivenInItsOrder) { ExpectAllInOrder(Spool::kMemory); }

TEST(Spool, BeyondItsMemoryItUsesAFile) {
  ExpectAllInOrder(1000);
  Spool spool(1000);
  for (uint64_t seq = 1; seq <= 100; ++seq) Append(spool, seq);
  EXPECT_LT(Take(spool).size(), 100U) << "what is in the file comes in parts";
}

TEST(Spool, IsEmptyWhenAllIsTaken) {
  Spool spool(1);
  EXPECT_TRUE(spool.IsEmpty());
  for (uint64_t seq = 1; seq <= 3; ++seq) Append(spool, seq);
  for (uint64_t seq = 1; seq <= 3; ++seq) {
    EXPECT_FALSE(spool.IsEmpty());
    EXPECT_EQ(Take(spool), std::vector{seq});
  }
  EXPECT_TRUE(spool.IsEmpty());
}

}  // namespace
