#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

#include "expect.h"
#include "run.h"

namespace {

using run::Execute;
using run::ExpectSuccess;
using run::kClient;
using run::kCrowd;
using run::kExecRace;
using run::kOwnPages;
using run::kVdrsim;
using run::Program;
using run::Result;
using run::Supervised;
using run::SupervisedWith;

TEST(Attack, AProgramThatIsExecutedMeanwhileGetsNothingOfTheReply) {
  ExpectSuccess(Supervised({kExecRace, "300"}), "0 of 300 damaged\n");
}

TEST(Attack, ACallerWhoseMemoryTheRunItselfHasToServeHoldsNobodyUp) {
  const Result result = Supervised({kOwnPages, "serve"});
  if (result.output == "no userfaultfd\n") GTEST_SKIP();
  ExpectSuccess(result);
}

// One more than the 64 workers that there can be.
TEST(Attack, AWorkerThatWasBlockedServesAgain) {
  const Result result = Supervised(
      {"sh", "-c", R"(i=0; while [ $((i += 1)) -le 65 ]; do "$0" serve || exit; done)", kOwnPages});
  if (result.output.starts_with("no userfaultfd\n")) GTEST_SKIP();
  ExpectSuccess(result);
}

// More callers than the 64 workers that there can be, each blocked for good.
TEST(Attack, ABlockedRunCanBeEnded) {
  Program program({kVdrsim, "run", "--", kOwnPages, "block", "100", "64"});
  program.AwaitOutput("\n");
  program.Signal(SIGTERM);
  const Result result = program.Finish();
  if (result.output == "no userfaultfd\n") GTEST_SKIP();
  EXPECT_EQ(result.signal, SIGTERM);
  EXPECT_TRUE(result.leftNobody);
}

// They and the first thread are all that there are, though some have rested before.
TEST(Attack, NoMoreThan64WorkersAreBlocked) {
#if defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "the sanitizer has threads of its own";
#endif
  const std::string script =
      "for i in 1 2 3 4 5 6 7 8; do $CLIENT level >/dev/null; done; said=$(mktemp); "
      "\"$0\" block 100 64 >\"$said\" & until [ -s \"$said\" ]; do sleep 0.01; done; "
      "if grep -q userfaultfd \"$said\"; then echo none; else "
      "sleep 0.5; ls /proc/$PPID/task | wc -l; kill -9 $!; fi; rm "
      "\"$said\"";
  const Result result =
      SupervisedWith({"--fault", "GetLogLevel:delay=1ms"}, {"sh", "-c", script, kOwnPages});
  if (result.output == "none\n") GTEST_SKIP();
  ExpectSuccess(result, "65\n");
}

TEST(Attack, PermissionsThatACallerTakesAwayAreNobodyElsesConcern) {
  std::vector<std::string> arguments = {kVdrsim, "run", "--", kClient, "check", "permissions"};
  if (geteuid() == 0) {
    const std::vector<std::string> plain = {"setpriv", "--bounding-set=-all", "--inh-caps=-all",
                                            "--"};
    arguments.insert(arguments.begin(), plain.begin(), plain.end());
  }
  ExpectSuccess(Execute(arguments));
}

TEST(Attack, ACrowdLosesAndMixesNothing) {
  ExpectSuccess(Supervised({kCrowd, "share", "64", "8"}), "512 instances\n");
}

// A sanitizer keeps what was freed, and more beside.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
const std::string kAllowedGrowth = "1000000";
#else
const std::string kAllowedGrowth = "512";
#endif

TEST(Attack, ClientsThatAreKilledLeaveNothingBehind) {
  ExpectSuccess(Supervised({kCrowd, "kill", "500", kAllowedGrowth}));
}

// They fall to vdrsim when their parent, which it had as a child before the run, ends during it.
TEST(Attack, ProcessesThatWereNeverInTheRunAreLeftAlone) {
  for (const std::string ending : {"exit 0", "kill -TERM \\$PPID; sleep 1000"}) {
    Program shell(
        {"sh", "-c",
         "sh -c 'sleep 1000 & echo $!; exec sleep 1000' & parent=$!; exec "
         "vdrsim run -- sh -c \"read line; kill -9 $parent; while kill -0 $parent; do :; done "
         "2>/dev/null; " +
             ending + "\""});
    shell.AwaitOutput("\n");
    const Result result = shell.Finish();
    EXPECT_FALSE(result.leftNobody) << "the sleep goes on";
    EXPECT_EQ(kill(std::stoi(result.output), SIGKILL), 0) << result.output;
  }
}

}  // namespace
