#include "journal/queued_log.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include "entries.h"

namespace {

using journal_test::Command;
using vdrsim::Entry;
using vdrsim::QueuedLog;
using vdrsim::Target;

class Numbers final : public vdrsim::Form {
 public:
  void PutBeginning(std::string& out) const override { out += "numbers\n"; }
  void Put(const Entry& entry, std::string& out) const override {
    out += std::to_string(entry.seq) + "\n";
  }
};

std::string Lines(uint64_t count) {
  std::string lines = "numbers\n";
  for (uint64_t seq = 1; seq <= count; ++seq) lines += std::to_string(seq) + "\n";
  return lines;
}

std::string Content(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

class QueuedLogTest : public testing::Test {
 protected:
  QueuedLogTest() {
    std::string name = testing::TempDir() + "queued-log-XXXXXX";
    folder_ = mkdtemp(name.data());
  }
  ~QueuedLogTest() override { std::filesystem::remove_all(folder_); }

  std::string Path(const char* name) const { return folder_ + "/" + name; }
  static void Append(QueuedLog& log, uint64_t count) {
    const wire::Wire input(968);
    for (uint64_t seq = 1; seq <= count; ++seq) log.Append(Command(seq, 1, input));
  }

  std::string folder_;
};

std::unique_ptr<const Numbers> Form() { return std::make_unique<Numbers>(); }

TEST_F(QueuedLogTest, WritesAllInOrder) {
  std::ofstream(Path("file")) << "what was there before";
  QueuedLog log(Target::File(Path("file")), Form());
  Append(log, 20000);
  EXPECT_TRUE(log.Finish());
  EXPECT_EQ(Content(Path("file")), Lines(20000));
}

TEST_F(QueuedLogTest, WhatIsSyncedIsInTheFile) {
  QueuedLog log(Target::File(Path("file")), Form());
  Append(log, 100);
  log.Sync();
  EXPECT_EQ(Content(Path("file")), Lines(100));
}

TEST_F(QueuedLogTest, AFileIsForWhomTheUmaskSays) {
  const mode_t before = umask(0002);
  const Target target = Target::File(Path("file"));
  umask(before);
  struct stat made {};
  ASSERT_EQ(stat(Path("file").c_str(), &made), 0);
  EXPECT_EQ(made.st_mode & 0777U, 0664U);
}

TEST_F(QueuedLogTest, AFileThatCannotBeCreatedIsRefusedByName) {
  try {
    const Target target = Target::File(Path("missing/file"));
    FAIL() << "there is no such folder";
  } catch (const std::runtime_error& failure) {
    EXPECT_EQ(std::string(failure.what()), Path("missing/file") + ": No such file or directory");
  }
}

TEST_F(QueuedLogTest, AFullDiskIsToldOnceAndAppendingGoesOn) {
  testing::internal::CaptureStderr();
  QueuedLog log(Target::File("/dev/full"), Form());
  Append(log, 1000);
  log.Sync();
  Append(log, 1000);
  EXPECT_FALSE(log.Finish());
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vdrsim: /dev/full: No space left on device; the rest of the run is missing there\n");
}

// More than its memory and the FIFO hold by themselves.
TEST_F(QueuedLogTest, ASlowReaderHoldsNobodyUpAndGetsAll) {
  ASSERT_EQ(mkfifo(Path("fifo").c_str(), 0600), 0);
  auto log = std::make_unique<QueuedLog>(Target::File(Path("fifo")), Form(), 10000);
  Append(*log, 20000);
  log->Sync();
  std::string seen;
  std::thread reader([&] { seen = Content(Path("fifo")); });
  EXPECT_TRUE(log->Finish());
  log.reset();
  reader.join();
  EXPECT_EQ(seen, Lines(20000));
}

TEST_F(QueuedLogTest, AReaderThatGoesAwayIsTold) {
  ASSERT_EQ(mkfifo(Path("fifo").c_str(), 0600), 0);
  QueuedLog log(Target::File(Path("fifo")), Form());
  testing::internal::CaptureStderr();
  {
    std::ifstream reader(Path("fifo"));
    std::string line;
    std::getline(reader, line);
    EXPECT_EQ(line, "numbers");
  }
  Append(log, 1000);
  EXPECT_FALSE(log.Finish());
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vdrsim: " + Path("fifo") + ": Broken pipe; the rest of the run is missing there\n");
}

TEST_F(QueuedLogTest, WhoWaitsForAReaderAtTheEndCanBeToldToStop) {
  ASSERT_EQ(mkfifo(Path("fifo").c_str(), 0600), 0);
  sigset_t stop;
  sigemptyset(&stop);
  sigaddset(&stop, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &stop, nullptr);
  QueuedLog log(Target::File(Path("fifo")), Form());
  Append(log, 1);
  testing::internal::CaptureStderr();
  (void)raise(SIGTERM);
  EXPECT_FALSE(log.Finish());
  EXPECT_EQ(
      testing::internal::GetCapturedStderr(),
      "vdrsim: " + Path("fifo") + ": nobody reads it; the rest of the run is missing there\n");
  int taken = 0;
  sigwait(&stop, &taken);
  pthread_sigmask(SIG_UNBLOCK, &stop, nullptr);
}

}  // namespace
