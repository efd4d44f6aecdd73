#include "journal/spool.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <new>
#include <numeric>

#include "allocations.h"
#include "entries.h"
#include "soft_limit.h"
#include "spool_file.h"

namespace {

using journal_test::CanHoldFilesWithoutName;
using journal_test::Command;
using journal_test::FileWithoutNameIn;
using journal_test::TemporaryFilesIn;
using journal_test::TemporaryFolder;
using vdrsim::Entry;
using vdrsim::Spool;

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

TEST(Spool, LeavesOutputsOut) {
  Spool spool;
  const wire::Bytes output(9);
  Entry entry = Command(1, 1, {});
  entry.output = output;
  spool.Append(entry);
  std::vector<std::byte> batch;
  EXPECT_TRUE(spool.Take(batch));
  vdrsim::ForEachEntry(batch, [](const Entry& kept) { EXPECT_TRUE(kept.output.empty()); });
}

TEST(Spool, WithoutMemoryHoldsWhatItHeld) {
  Spool spool;
  Append(spool, 1);
  {
    const wire::Bytes input(100000);
    const allocations::Limit limit(10000);
    EXPECT_THROW(spool.Append(Command(2, 1, input)), std::bad_alloc);
  }
  Append(spool, 3);
  EXPECT_EQ(Take(spool), (std::vector<uint64_t>{1, 3}));
}

TEST(Spool, UsesItsFileFromItsBoundOn) {
  Spool spool(sizeof(Entry));
  Append(spool, 3);
  Append(spool, 6);
  EXPECT_EQ(Take(spool), std::vector{uint64_t{3}});
  EXPECT_EQ(Take(spool), std::vector{uint64_t{6}});
}

void ExpectFileIn(const char* temporary, const std::string& folder) {
  if (!CanHoldFilesWithoutName(folder)) GTEST_SKIP() << folder << " can't hold such a file";
  const TemporaryFilesIn used(temporary);
  Spool spool(1);
  for (uint64_t seq = 1; seq <= 2; ++seq) Append(spool, seq);
  EXPECT_TRUE(FileWithoutNameIn(folder)) << folder;
}

TEST(Spool, WithoutAFolderForTemporaryFilesItsFileIsOnADisk) {
  ExpectFileIn(nullptr, "/var/tmp");
  ExpectFileIn("/no/folder", "/var/tmp");
}

class SpoolFile : public testing::Test {
 protected:
  void SetUp() override {
    if (!CanHoldFilesWithoutName(folder_.path())) GTEST_SKIP() << "it is somewhere else";
  }

  off_t Size() const {
    struct stat status {};
    EXPECT_EQ(fstat(folder_.file().value(), &status), 0);
    return status.st_size;
  }
  void ShortenTo(off_t size) const { EXPECT_EQ(ftruncate(folder_.file().value(), size), 0); }

  TemporaryFolder folder_{};
};

TEST_F(SpoolFile, IsThereBeyond16Mebibytes) {
  const wire::Bytes mebibyte(1 << 20);
  Spool spool;
  for (uint64_t seq = 1; seq <= 16; ++seq) spool.Append(Command(seq, 1, mebibyte));
  EXPECT_FALSE(folder_.file());
  spool.Append(Command(17, 1, mebibyte));
  EXPECT_TRUE(folder_.file());
}

TEST_F(SpoolFile, GivesItsRoomBack) {
  Spool spool(1);
  for (int round = 0; round < 2; ++round) {
    for (uint64_t seq = 1; seq <= 3; ++seq) Append(spool, seq);
    EXPECT_EQ(Size(), static_cast<off_t>(2 * sizeof(Entry) + 4 + 8));
    for (uint64_t seq = 1; seq <= 3; ++seq) Take(spool);
    EXPECT_EQ(Size(), 0);
  }
}

TEST_F(SpoolFile, LosesWhatCannotBeRead) {
  for (const off_t left : {off_t{0}, off_t{sizeof(Entry) + 4}, off_t{2 * sizeof(Entry) + 4 + 7}}) {
    Spool spool(1);
    for (uint64_t seq = 1; seq <= 3; ++seq) Append(spool, seq);
    ShortenTo(left);
    std::vector<std::byte> batch;
    EXPECT_EQ(spool.Take(batch), left > 0);
    EXPECT_EQ(batch.empty(), left == 0);
    EXPECT_FALSE(spool.Take(batch));
    EXPECT_TRUE(batch.empty());
    EXPECT_EQ(Take(spool), std::vector{uint64_t{3}});
    for (uint64_t seq = 4; seq <= 5; ++seq) Append(spool, seq);
    EXPECT_EQ(Take(spool), std::vector{uint64_t{4}});
  }
}

// A file that takes nothing, a part of an entry, or one and a part.
TEST_F(SpoolFile, WhatItCannotTakeStaysInMemory) {
  for (const rlim_t room : {rlim_t{0}, rlim_t{20}, rlim_t{sizeof(Entry) + 20}}) {
    Spool spool(1);
    {
      const SoftLimit limit(RLIMIT_FSIZE, room);
      for (uint64_t seq = 1; seq <= 6; ++seq) Append(spool, seq);
    }
    Append(spool, 7);
    std::vector<uint64_t> seen;
    while (!spool.IsEmpty()) {
      for (const uint64_t seq : Take(spool)) seen.push_back(seq);
    }
    EXPECT_EQ(seen, (std::vector<uint64_t>{1, 2, 3, 4, 5, 6, 7})) << room;
  }
}

TEST(Spool, WithoutAFileAllStaysInMemory) {
  Spool spool(1);
  const SoftLimit limit(RLIMIT_NOFILE, 0);
  for (uint64_t seq = 1; seq <= 3; ++seq) Append(spool, seq);
  EXPECT_EQ(Take(spool), (std::vector<uint64_t>{1, 2, 3}));
}

}  // namespace
