#include "journal/queued_log.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <string>
#include <thread>

#include "allocations.h"
#include "entries.h"
#include "soft_limit.h"
#include "spool_file.h"

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
  std::string Fifo() const {
    EXPECT_EQ(mkfifo(Path("fifo").c_str(), 0600), 0);
    return Path("fifo");
  }
  static void Append(QueuedLog& log, uint64_t count) {
    const wire::Wire input(968);
    for (uint64_t seq = 1; seq <= count; ++seq) log.Append(Command(seq, 1, input));
  }

  std::string folder_;
};

std::unique_ptr<const Numbers> Form() { return std::make_unique<Numbers>(); }

// Why a file is refused.
std::string Refusal(const std::string& path) {
  try {
    const Target target = Target::File(path);
    return "";
  } catch (const std::runtime_error& failure) {
    return failure.what();
  }
}

// Standard error is captured.
void ExpectFailure(QueuedLog& log, const std::string& name, const std::string& why) {
  EXPECT_FALSE(log.Finish());
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vdrsim: " + name + ": " + why + "; the rest of the run is missing there\n");
}

// Holds a signal, which this process has been sent.
class Told {
 public:
  explicit Told(int signal) {
    sigemptyset(&stop_);
    sigaddset(&stop_, signal);
    pthread_sigmask(SIG_BLOCK, &stop_, nullptr);
    kill(getpid(), signal);
  }
  Told(const Told&) = delete;
  ~Told() {
    int taken = 0;
    sigwait(&stop_, &taken);
    pthread_sigmask(SIG_UNBLOCK, &stop_, nullptr);
  }

 private:
  sigset_t stop_{};
};

TEST_F(QueuedLogTest, WritesAllInOrder) {
  std::ofstream(Path("file")) << "what was there before";
  QueuedLog log(Target::File(Path("file")), Form());
  Append(log, 20000);
  EXPECT_TRUE(log.Finish());
  EXPECT_EQ(Content(Path("file")), Lines(20000));
}

TEST_F(QueuedLogTest, NobodyHasToReadABeginningAlone) {
  QueuedLog log(Target::File(Fifo()), Form());
  testing::internal::CaptureStderr();
  EXPECT_TRUE(log.Finish());
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
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
  EXPECT_EQ(Refusal(Path("missing/file")), Path("missing/file") + ": No such file or directory");
}

// Nobody will ever read it.
TEST_F(QueuedLogTest, ASocketIsNotWaitedFor) {
  sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
  std::ranges::copy(Path("socket"), address.sun_path);
  const int bound = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(bound, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(Refusal(Path("socket")), Path("socket") + ": No such device or address");
  close(bound);
}

TEST_F(QueuedLogTest, AFifoIsNotWaitedForWithoutDescriptors) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "sanitizers look at memory by pipes";
#endif
  const std::string fifo = Fifo();
  const SoftLimit limit(RLIMIT_NOFILE, 0);
  EXPECT_EQ(Refusal(fifo), fifo + ": Too many open files");
}

TEST_F(QueuedLogTest, WhatTakesThePlaceOfAFifoIsToldWhenItCannotBeWritten) {
  const std::string fifo = Fifo();
  Target target = Target::File(fifo);
  std::filesystem::remove(fifo);
  std::filesystem::create_directory(fifo);
  testing::internal::CaptureStderr();
  QueuedLog log(std::move(target), Form());
  Append(log, 1);
  ExpectFailure(log, fifo, "Is a directory");
}

TEST_F(QueuedLogTest, SignalsAreNotForItsThread) {
  const QueuedLog log(Target::File(Path("file")), Form());
  sigset_t held;
  pthread_sigmask(SIG_SETMASK, nullptr, &held);
  EXPECT_EQ(sigismember(&held, SIGUSR1), 0) << "they are for whoever made it";
  const Told stays(SIGUSR1);
}

TEST_F(QueuedLogTest, WithoutMemoryTheRestIsMissed) {
  QueuedLog log(Target::File(Path("file")), Form());
  Append(log, 1);
  log.Sync();
  testing::internal::CaptureStderr();
  {
    const wire::Bytes input(100000);
    const allocations::Limit limit(0);
    log.Append(Command(2, 1, input));
  }
  log.Append(Command(3, 1, {}));
  ExpectFailure(log, Path("file"), "Cannot allocate memory");
  EXPECT_EQ(Content(Path("file")), Lines(1));
}

TEST_F(QueuedLogTest, WhatWaitsInAFileThatCannotBeReadIsMissed) {
  const journal_test::TemporaryFolder temporary;
  if (!journal_test::CanHoldFilesWithoutName(temporary.path())) GTEST_SKIP() << "it is elsewhere";
  const std::string fifo = Fifo();
  auto log = std::make_unique<QueuedLog>(Target::File(fifo), Form(), 1000);
  Append(*log, 100);
  ASSERT_EQ(ftruncate(temporary.file().value(), 0), 0);
  std::string seen;
  testing::internal::CaptureStderr();
  std::thread reader([&] { seen = Content(fifo); });
  ExpectFailure(*log, fifo, "Input/output error");
  log.reset();
  reader.join();
  EXPECT_EQ(seen, "numbers\n");
}

TEST_F(QueuedLogTest, NobodyIsToldThatStandardErrorIsFull) {
  const int before = dup(STDERR_FILENO);
  const int full = open("/dev/full", O_WRONLY);
  dup2(full, STDERR_FILENO);
  Target target = Target::StandardError();
  dup2(before, STDERR_FILENO);
  close(before);
  close(full);
  testing::internal::CaptureStderr();
  QueuedLog log(std::move(target), Form());
  Append(log, 1);
  EXPECT_TRUE(log.Finish());
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(QueuedLogTest, AFullDiskIsToldOnceAndAppendingGoesOn) {
  testing::internal::CaptureStderr();
  QueuedLog log(Target::File("/dev/full"), Form());
  Append(log, 1000);
  log.Sync();
  Append(log, 1000);
  ExpectFailure(log, "/dev/full", "No space left on device");
}

TEST_F(QueuedLogTest, NobodyWaitsForWhatIsMissedOfAFile) {
  testing::internal::CaptureStderr();
  QueuedLog log(Target::File(Path("file")), Form());
  {
    const SoftLimit limit(RLIMIT_FSIZE, 4096);
    Append(log, 20000);
    log.Sync();
    ExpectFailure(log, Path("file"), "File too large");
  }
  EXPECT_EQ(Content(Path("file")), Lines(20000).substr(0, 4096));
}

// More than its memory and the FIFO hold by themselves.
TEST_F(QueuedLogTest, ASlowReaderHoldsNobodyUpAndGetsAll) {
  auto log = std::make_unique<QueuedLog>(Target::File(Fifo()), Form(), 10000);
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
  QueuedLog log(Target::File(Fifo()), Form());
  testing::internal::CaptureStderr();
  {
    std::ifstream reader(Path("fifo"));
    std::string line;
    std::getline(reader, line);
    EXPECT_EQ(line, "numbers");
  }
  Append(log, 1000);
  ExpectFailure(log, Path("fifo"), "Broken pipe");
}

TEST_F(QueuedLogTest, WhoWaitsForAReaderAtTheEndCanBeToldToStop) {
  const std::string fifo = Fifo();
  for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
    QueuedLog log(Target::File(fifo), Form());
    Append(log, 1);
    const Told stop(signal);
    testing::internal::CaptureStderr();
    ExpectFailure(log, fifo, "nobody reads it");
  }
}

// Of what the FIFO can't hold.
TEST_F(QueuedLogTest, WhoWaitsForAReaderToGoOnCanBeToldToStop) {
  const std::string fifo = Fifo();
  const int reader = open(fifo.c_str(), O_RDONLY | O_NONBLOCK);
  QueuedLog log(Target::File(fifo), Form());
  Append(log, 100000);
  {
    const Told stop(SIGTERM);
    testing::internal::CaptureStderr();
    ExpectFailure(log, fifo, "nobody reads it");
  }
  close(reader);
}

TEST_F(QueuedLogTest, OneThatIsGivenUpWaitsForNobody) {
  const std::string fifo = Fifo();
  testing::internal::CaptureStderr();
  {
    QueuedLog log(Target::File(fifo), Form());
    Append(log, 1);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vdrsim: " + fifo + ": nobody reads it; the rest of the run is missing there\n");
}

// Whose lines take more memory than there is.
class Starving final : public vdrsim::Form {
 public:
  void PutBeginning(std::string& out) const override { out += "numbers\n"; }
  void Put(const Entry&, std::string&) const override { throw std::bad_alloc(); }
};

TEST_F(QueuedLogTest, WithoutMemoryForALineTheRestIsMissed) {
  testing::internal::CaptureStderr();
  QueuedLog log(Target::File(Path("file")), std::make_unique<Starving>());
  Append(log, 1);
  ExpectFailure(log, Path("file"), "Cannot allocate memory");
  EXPECT_EQ(Content(Path("file")), "numbers\n");
}

TEST_F(QueuedLogTest, OfSeveralFailuresTheFirstIsTold) {
  const std::string fifo = Fifo();
  testing::internal::CaptureStderr();
  {
    QueuedLog log(Target::File(fifo), Form());
    const wire::Bytes input(100000);
    const allocations::Limit limit(0);
    log.Append(Command(1, 1, input));
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vdrsim: " + fifo + ": Cannot allocate memory; the rest of the run is missing there\n");
}

}  // namespace
