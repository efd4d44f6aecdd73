#include "journal/journal.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <ctime>
#include <fstream>
#include <functional>
#include <latch>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "allocations.h"
#include "datapath/datapath.h"
#include "in_process.h"
#include "support/any_memory.h"

namespace {

using in_process::Block;
using in_process::Execute;
using in_process::Result;
using in_process::Scalar;
using vdrsim::Answer;
using vdrsim::Call;
using vdrsim::Datapath;
using vdrsim::Entry;
using vdrsim::Journal;

// What a log was given, with bytes of its own.
struct Seen {
  Entry entry;
  wire::Bytes input;
  wire::Bytes output;
};

class Memory final : public vdrsim::Log {
 public:
  explicit Memory(std::vector<Seen>& seen) : seen_(seen) {}

  void Append(const Entry& entry) noexcept override {
    seen_.push_back({entry,
                     {entry.input.begin(), entry.input.end()},
                     {entry.output.begin(), entry.output.end()}});
  }
  void Sync() noexcept override { ++syncs; }
  bool Finish() noexcept override {
    isFinished = true;
    return isWhole;
  }

  int syncs = 0;
  bool isWhole = true;
  bool isFinished = false;

 private:
  std::vector<Seen>& seen_;
};

Journal::Logs Into(std::vector<Seen>& seen) {
  Journal::Logs logs;
  logs.push_back(std::make_unique<Memory>(seen));
  return logs;
}

class End final : public vdrsim::Executor {
 public:
  using Does = std::function<Answer(const Call&)>;
  explicit End(Does does) : does_(std::move(does)) {}
  Answer Execute(const Call& call) noexcept override { return does_(call); }

 private:
  Does does_;
};

int64_t Now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * int64_t{1'000'000'000} + time.tv_nsec;
}

TEST(Journal, TellsWhatACommandWasAndBecame) {
  std::vector<Seen> seen;
  Datapath datapath;
  Journal journal(datapath, Into(seen));
  EXPECT_EQ(Execute(journal, 2, Block("edge-1")).error, 0);
  const Result read = Execute(journal, 1, Block("edge-1"), 600);
  EXPECT_EQ(read.reply.size(), 577U) << "the answer is handed on";
  EXPECT_EQ(Execute(journal, 1, Block("edge-2"), 600).error, ENOENT);
  EXPECT_EQ(Execute(journal, 175, Scalar(7), 4).error, ENOTTY);
  ASSERT_EQ(seen.size(), 4U);
  EXPECT_EQ(seen[0].entry.seq, 1U);
  EXPECT_EQ(seen[0].entry.code, 2U);
  EXPECT_EQ(seen[0].entry.process, 1);
  EXPECT_EQ(seen[0].entry.thread, 1);
  EXPECT_EQ(seen[0].input, Block("edge-1").bytes());
  EXPECT_EQ(seen[0].entry.length, 0U);
  EXPECT_EQ(seen[1].entry.seq, 2U);
  EXPECT_EQ(seen[1].entry.capacity, 600U);
  EXPECT_EQ(seen[1].entry.produced, 577U);
  EXPECT_EQ(seen[1].entry.length, 577U);
  EXPECT_EQ(seen[2].entry.error, ENOENT);
  EXPECT_EQ(seen[2].entry.produced, 0U);
  EXPECT_EQ(seen[2].entry.length, 600U) << "a failure leaves the length as it was";
  EXPECT_EQ(seen[3].entry.error, ENOTTY);
  EXPECT_EQ(seen[3].input, Scalar(7));
}

TEST(Journal, TellsWhatIsClaimed) {
  std::vector<Seen> seen;
  End end([](const Call&) {
    Answer answer;
    answer.reply.Fill(4);
    answer.claimed = 3;
    return answer;
  });
  Journal journal(end, Into(seen));
  Execute(journal, 9, {}, 4);
  ASSERT_EQ(seen.size(), 1U);
  EXPECT_EQ(seen[0].entry.length, 3U);
  EXPECT_EQ(seen[0].entry.produced, 4U);
}

TEST(Journal, KeepsOutputsWhereTheyAreWanted) {
  for (const size_t instances : {1U, 400U}) {
    std::vector<Seen> seen;
    Datapath datapath;
    for (size_t number = 0; number < instances; ++number) {
      Execute(datapath, 2, Block("edge-" + std::to_string(number)));
    }
    Journal journal(datapath, Into(seen), Journal::Keeps::Outputs);
    const Result read = Execute(journal, 0, Block(), 577577);
    EXPECT_EQ(read.reply.size(), instances * 577);
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(wire::Difference(seen[0].output, read.reply), "");
    EXPECT_EQ(seen[0].entry.produced, instances * 577);
  }
}

TEST(Journal, AMarkStandsBetweenTheCommands) {
  std::vector<Seen> seen;
  Datapath datapath;
  Journal::Logs logs = Into(seen);
  const auto* log = static_cast<const Memory*>(logs.front().get());
  Journal journal(datapath, std::move(logs));
  const int64_t start = Now();
  Execute(journal, 9, {}, 4);
  EXPECT_TRUE(journal.Mark("here"));
  EXPECT_EQ(log->syncs, 1);
  Execute(journal, 9, {}, 4);
  EXPECT_TRUE(journal.Finish());
  ASSERT_EQ(seen.size(), 4U);
  EXPECT_EQ(seen[1].entry.kind, Entry::Kind::Mark);
  EXPECT_EQ(seen[1].entry.seq, 2U);
  EXPECT_EQ(seen[1].input.size(), 4U);
  EXPECT_EQ(seen[2].entry.seq, 3U);
  EXPECT_EQ(seen[3].entry.kind, Entry::Kind::End);
  EXPECT_EQ(seen[3].entry.seq, 3U);
  int64_t time = start;
  for (const Seen& one : seen) EXPECT_LE(std::exchange(time, one.entry.time), one.entry.time);
  EXPECT_LE(time, Now());
}

TEST(Journal, FinishesAllLogsAndSaysWhenOneIsNotWhole) {
  std::vector<Seen> seen;
  for (const size_t incomplete : {0U, 1U}) {
    Journal::Logs logs = Into(seen);
    logs.push_back(std::make_unique<Memory>(seen));
    const std::array all = {static_cast<Memory*>(logs[0].get()),
                            static_cast<Memory*>(logs[1].get())};
    all.at(incomplete)->isWhole = false;
    Datapath datapath;
    Journal journal(datapath, std::move(logs));
    EXPECT_FALSE(journal.Finish());
    for (const Memory* log : all) EXPECT_TRUE(log->isFinished);
  }
}

TEST(Journal, AReplyThatCannotBeKeptIsHandedOnAndMissed) {
  std::vector<Seen> seen;
  End end([](const Call&) {
    Answer answer;
    answer.reply.Fill(1000);
    return answer;
  });
  Journal journal(end, Into(seen), Journal::Keeps::Outputs);
  AnyMemory memory;
  Answer answer;
  {
    const allocations::Limit limit(999);
    answer = journal.Execute({.process = 1,
                              .thread = 1,
                              .node = vdrsim::Node::Normal,
                              .code = 9,
                              .input = {},
                              .capacity = 1000,
                              .destination = memory});
  }
  EXPECT_EQ(answer.error, 0);
  EXPECT_EQ(answer.reply.Next().size(), 1000U);
  ASSERT_EQ(seen.size(), 1U);
  EXPECT_EQ(seen[0].entry.produced, 1000U);
  EXPECT_TRUE(seen[0].output.empty());
  testing::internal::CaptureStderr();
  EXPECT_FALSE(journal.Finish());
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vdrsim: a reply is not in the recording: out of memory\n");
}

TEST(Journal, WithoutLogsThereIsNothingToMark) {
  Datapath datapath;
  Journal journal(datapath, {});
  EXPECT_EQ(Execute(journal, 10, Scalar(5)).error, 0);
  EXPECT_FALSE(journal.Mark("here"));
  EXPECT_TRUE(journal.Finish());
}

// The first to take effect is the last to come back.
TEST(Journal, ASlowCommandHoldsNobodyUpAndStandsWhereItTookEffect) {
  std::vector<Seen> seen;
  std::latch hasTakenPlace(1);
  std::latch mayComeBack(1);
  End end([&](const Call& call) {
    call.TakePlace();
    if (call.code == 1) {
      hasTakenPlace.count_down();
      mayComeBack.wait();
    }
    return Answer();
  });
  Journal journal(end, Into(seen));
  std::thread slow([&] { Execute(journal, 1, Block("slow")); });
  hasTakenPlace.wait();
  Execute(journal, 2, Scalar(2));
  Execute(journal, 3, Scalar(3));
  EXPECT_TRUE(seen.empty());
  mayComeBack.count_down();
  slow.join();
  ASSERT_EQ(seen.size(), 3U);
  for (uint32_t index = 0; index < 3; ++index) {
    EXPECT_EQ(seen[index].entry.code, index + 1);
    EXPECT_EQ(seen[index].entry.seq, index + 1);
  }
  EXPECT_EQ(seen[0].input, Block("slow").bytes());
  EXPECT_EQ(seen[1].input, Scalar(2));
}

// Takes no memory once it has some.
class Numbers final : public vdrsim::Log {
 public:
  explicit Numbers(std::vector<uint64_t>& seqs) : seqs_(seqs) { seqs.reserve(10); }
  void Append(const Entry& entry) noexcept override { seqs_.push_back(entry.seq); }
  void Sync() noexcept override {}
  bool Finish() noexcept override { return true; }

 private:
  std::vector<uint64_t>& seqs_;
};

// Returns when a thread waits for something, or is over.
void AwaitRest(pid_t thread) {
  const std::string path = "/proc/self/task/" + std::to_string(thread) + "/stat";
  std::string word;
  char state = 'R';
  while (state == 'R') {
    state = 'X';
    std::ifstream(path) >> word >> word >> state;
  }
}

TEST(Journal, WithoutMemoryACommandWaitsForThoseBefore) {
  std::vector<uint64_t> seqs;
  std::latch hasTakenPlace(1);
  std::latch mayComeBack(1);
  std::atomic<pid_t> starving = 0;
  std::atomic<bool> isBack = false;
  End end([&](const Call& call) {
    call.TakePlace();
    if (call.code == 1) {
      hasTakenPlace.count_down();
      mayComeBack.wait();
    } else {
      starving = gettid();
      starving.notify_one();
    }
    return Answer();
  });
  Journal::Logs logs;
  logs.push_back(std::make_unique<Numbers>(seqs));
  Journal journal(end, std::move(logs));
  std::thread slow([&] { Execute(journal, 1, {}); });
  hasTakenPlace.wait();
  std::thread starved([&] {
    const allocations::Limit limit(0);
    Execute(journal, 2, {});
    isBack = true;
  });
  starving.wait(0);
  AwaitRest(starving);
  EXPECT_FALSE(isBack);
  mayComeBack.count_down();
  slow.join();
  starved.join();
  EXPECT_EQ(seqs, (std::vector<uint64_t>{1, 2}));
}

// Each thread writes numbers of its own into one setting and reads what is there; by the order of the
// log each must have read the number that was written last.
TEST(Journal, TheOrderIsThatOfTheEffects) {
  constexpr int kThreads = 64;
  constexpr uint32_t kRounds = 200;
  std::vector<Seen> seen;
  Datapath datapath;
  Journal journal(datapath, Into(seen), Journal::Keeps::Outputs);
  std::vector<std::thread> threads;
  std::latch start(kThreads);
  for (uint32_t thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      start.arrive_and_wait();
      for (uint32_t round = 0; round < kRounds; ++round) {
        Execute(journal, 10, Scalar(1 + thread * kRounds + round));
        Execute(journal, 9, {}, 4);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  ASSERT_EQ(seen.size(), size_t{2} * kThreads * kRounds);
  wire::Bytes last;
  int64_t time = 0;
  for (size_t index = 0; index < seen.size(); ++index) {
    const auto& [entry, input, output] = seen[index];
    ASSERT_EQ(entry.seq, index + 1);
    ASSERT_GE(entry.time, std::exchange(time, entry.time));
    if (entry.code == 10) last = input;
    ASSERT_EQ(output, entry.code == 9 ? last : wire::Bytes()) << "seq " << entry.seq;
  }
}

}  // namespace
