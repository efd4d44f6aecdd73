#include "common/standard_streams.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

namespace {

// One of the standard streams leads elsewhere while this is there.
class Redirected {
 public:
  Redirected(int stream, int other) : stream_(stream), saved_(dup(stream)) {
    EXPECT_EQ(std::fflush(stdout), 0) << "what was printed before belongs there";
    dup2(other, stream);
  }
  ~Redirected() {
    dup2(saved_, stream_);
    close(saved_);
  }
  Redirected(const Redirected&) = delete;

 private:
  int stream_;
  int saved_;
};

template <typename Call>
std::string Written(int stream, Call call) {
  int ends[2];
  EXPECT_EQ(pipe(ends), 0);
  {
    const Redirected redirected(stream, ends[1]);
    call();
  }
  close(ends[1]);
  char text[256];
  const ssize_t length = read(ends[0], text, sizeof text);
  close(ends[0]);
  return {text, static_cast<std::size_t>(length)};
}

TEST(Complaints, AreALineAfterTheProgramsName) {
  const auto complain = [] { tools::Complain("tool", "no room"); };
  EXPECT_EQ(Written(STDERR_FILENO, complain), "tool: no room\n");
}

TEST(Complaints, HaveTheirAdviceOnALineOfItsOwn) {
  const auto complain = [] { tools::Complain("tool", "no room", "Make some"); };
  EXPECT_EQ(Written(STDERR_FILENO, complain), "tool: no room\nMake some\n");
}

TEST(Complaints, CantFailLoudly) {
  const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
  const Redirected redirected(STDERR_FILENO, full);
  tools::Complain("tool", "no room", "Make some");
  close(full);
}

TEST(Printing, WritesTheWholeTextAtOnce) {
  const auto print = [] {
    errno = EIO;
    EXPECT_EQ(tools::Print("a\nb"), 0);
  };
  EXPECT_EQ(Written(STDOUT_FILENO, print), "a\nb");
}

TEST(Printing, SaysWhatKeptTheTextBack) {
  const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
  int small = 0;
  int large = 0;
  {
    const Redirected redirected(STDOUT_FILENO, full);
    small = tools::Print("a");
    large = tools::Print(std::string(1 << 20, 'a'));
  }
  close(full);
  EXPECT_EQ(small, ENOSPC);
  EXPECT_EQ(large, ENOSPC);
}

}  // namespace
