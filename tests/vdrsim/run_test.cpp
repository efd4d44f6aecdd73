#include "run.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

#include "expect.h"

namespace {

using run::Execute;
using run::ExpectSuccess;
using run::ExpectUnusable;
using run::kClient;
using run::kRefuse;
using run::kVdrsim;
using run::Program;
using run::Result;
using run::Supervised;
using run::SupervisedLine;

TEST(Run, ProcessesShareOneDatapath) {
  ExpectSuccess(SupervisedLine("$CLIENT set edge-2 7 && (USE_UPGRADE_DEV= $CLIENT set edge-1 6) && "
                               "$CLIENT list && $CLIENT level 3 && $CLIENT level"),
                "edge-1 6\nedge-2 7\n3\n");
}

TEST(Run, EachHasADatapathOfItsOwn) {
  Program other({kVdrsim, "run", "--", "sh", "-c", "$CLIENT set edge-1 1; echo ready; read line"});
  other.AwaitOutput("ready\n");
  ExpectSuccess(SupervisedLine("$CLIENT list"));
  other.Finish();
  ExpectSuccess(SupervisedLine("$CLIENT list"));
}

TEST(Run, ADescriptorLivesThroughExec) {
  ExpectSuccess(SupervisedLine("exec 8<>/qorv/devices/char/zaxdriver/ryn_vdr; $CLIENT level 4; "
                               "$CLIENT level-on 8"),
                "4\n");
}

TEST(Run, ThereIsNoDeviceOutsideARun) {
  if (access("/qorv/devices", F_OK) == 0) GTEST_SKIP() << "this host may have the true device";
  const Result result = Execute({kClient, "list"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.output, "ENOENT\n");
}

TEST(Run, NeedsNoPrivilege) {
  const std::vector<std::string> list = {kVdrsim, "run", "--", kClient, "set", "edge-1", "1"};
  std::vector<std::string> unprivileged = {"setpriv", "--bounding-set=-all", "--inh-caps=-all",
                                           "--"};
  unprivileged.insert(unprivileged.end(), list.begin(), list.end());
  ExpectSuccess(Execute(geteuid() == 0 ? unprivileged : list));
}

TEST(Run, LeavesTheCommandItsDescriptorsAndSignals) {
  const std::vector<std::string> looks[] = {{"ls", "/proc/self/fd"},
                                            {"grep", "^Sig[BIC]", "/proc/self/status"}};
  for (const std::vector<std::string>& look : looks) {
    const Result without = Execute(look);
    ASSERT_EQ(without.exitStatus, 0);
    ExpectSuccess(Supervised(look), without.output);
  }
}

TEST(Run, PassesArgumentsOnUnread) {
  ExpectSuccess(Supervised({"echo", "--", "--help", "a b", ""}), "-- --help a b \n");
  ExpectSuccess(Execute({kVdrsim, "run", "echo", "--version", "--", "-h"}), "--version -- -h\n");
}

TEST(Run, PassesTheExitStatusOn) {
  ExpectSuccess(Supervised({"true"}));
  EXPECT_EQ(SupervisedLine("exit 3").exitStatus, 3);
  EXPECT_EQ(SupervisedLine("exit 255").exitStatus, 255);
}

TEST(Run, PassesADeadlySignalOn) {
  for (const int number : {SIGKILL, SIGTERM, SIGINT, SIGSEGV}) {
    const std::string suicide = "kill -" + std::to_string(number) + " $$";
    EXPECT_EQ(SupervisedLine(suicide).signal, number);
  }
  EXPECT_EQ(Execute({"sh", "-c", "vdrsim run -- sh -c 'kill -9 $$'; exit $?"}).exitStatus, 137);
}

TEST(Run, SaysThatACommandCannotBeStarted) {
  const Result missing = Supervised({"./no-such-command"});
  EXPECT_EQ(missing.exitStatus, 127);
  EXPECT_EQ(missing.output, "vdrsim: ./no-such-command: No such file or directory\n");
  const Result directory = Supervised({"/proc"});
  EXPECT_EQ(directory.exitStatus, 126);
  EXPECT_EQ(directory.output, "vdrsim: /proc: Permission denied\n");
}

TEST(Run, LastsUntilTheLastProcessEnds) {
  ExpectSuccess(SupervisedLine("$CLIENT set edge-1 5; "
                               "(while kill -0 $$; do sleep 0.01; done 2>&-; $CLIENT list) &"),
                "edge-1 5\n");
}

TEST(Run, IgnoresTheChildrenThatWereThereBefore) {
  Program shell({"sh", "-c", "sleep 1000 & echo $!; exec vdrsim run -- echo done"});
  shell.AwaitOutput("done\n");
  const Result result = shell.Finish();
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_FALSE(result.leftNobody) << "the sleep goes on";
  EXPECT_EQ(kill(std::stoi(result.output), SIGKILL), 0);
}

TEST(Run, EndsWhatItLeftBehindButNotTheChildrenThatWereThereBefore) {
  Program shell({"sh", "-c",
                 "sleep 1000 & echo $!; exec vdrsim"
                 " run -- sh -c 'sleep 1000 & echo ready; exec sleep 1000'"});
  shell.AwaitOutput("ready\n");
  shell.Signal(SIGTERM);
  const Result result = shell.Finish();
  EXPECT_EQ(result.signal, SIGTERM);
  EXPECT_FALSE(result.leftNobody) << "the older sleep goes on";
  EXPECT_EQ(kill(std::stoi(result.output), SIGKILL), 0);
}

TEST(Run, WithinARunIsRefused) {
  ExpectUnusable(Supervised({kVdrsim, "run", "--", "echo", "inner"}),
                 "vdrsim: already inside a vdrsim run");
}

TEST(Run, UnderAProcOfAnotherNamespaceIsRefused) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can make a namespace";
  ExpectUnusable(Execute({"unshare", "--pid", "--fork", kVdrsim, "run", "--", "echo", "started"}),
                 "vdrsim: /proc shows another PID namespace: ");
}

TEST(Run, WithoutProcIsRefused) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "the sanitizer itself needs it";
#endif
  if (geteuid() != 0) GTEST_SKIP() << "only root can make a namespace";
  ExpectUnusable(
      Execute({"unshare", "-m", "sh", "-c",
               "mount -t tmpfs none /proc && exec vdrsim run -- echo started"}),
      "vdrsim: cannot look at /proc/self: No such file or directory (/proc must be mounted)\n");
}

TEST(Run, TellsTheCommandThatItIsInARun) {
  ExpectSuccess(SupervisedLine("echo $VDRSIM"), "1\n");
  ExpectSuccess(Execute({"env", "VDRSIM=0", kVdrsim, "run", "--", "sh", "-c", "echo $VDRSIM"}),
                "1\n");
}

TEST(Run, RestsWhileNobodyCallsIt) {
  ExpectSuccess(SupervisedLine("for look in $(seq 1000); do if grep -q '^State:.S' "
                               "/proc/$PPID/status; then echo rests; break; fi; done"),
                "rests\n");
}

TEST(Run, HasAWitnessBesideItThatIsKnownByItsName) {
  ExpectSuccess(SupervisedLine("for child in $(cat /proc/$PPID/task/$PPID/children); do "
                               "cat /proc/$child/comm; done"),
                "vdrsim-witness\nsh\n");
}

TEST(Run, ItsWitnessHoldsNothingThatOthersWaitFor) {
  ExpectSuccess(SupervisedLine("for child in $(cat /proc/$PPID/task/$PPID/children); do "
                               "if [ $child != $$ ]; then ls /proc/$child/fd; "
                               "readlink /proc/$child/cwd; fi; done"),
                "0\n/\n");
}

TEST(Run, FillsNoPlaceThatIsTaken) {
  const std::string others =
      Execute({"sh", "-c", "readlink /proc/$$/fd/* | grep -c /dev/null; true"}).output;
  ExpectSuccess(SupervisedLine("readlink /proc/$PPID/fd/* | grep -c /dev/null; true"), others);
}

TEST(Run, LeavesClosedWhatWasClosed) {
  const std::string list = "; exec vdrsim run -- ls /proc/self/fd";
  const std::string without = "; exec ls /proc/self/fd";
  for (const std::string closed : {"exec 0<&-", "exec 2>&-", "exec 0<&- 2>&-"}) {
    const Result result = Execute({"sh", "-c", closed + list});
    EXPECT_EQ(result.output, Execute({"sh", "-c", closed + without}).output);
    EXPECT_EQ(result.exitStatus, 0);
  }
}

// So that nothing of its own gets their numbers.
TEST(Run, FillsThePlacesThatAreEmpty) {
  ExpectSuccess(Execute({"sh", "-c",
                         "exec vdrsim run -- sh -c 'readlink /proc/$PPID/fd/0; readlink "
                         "/proc/$PPID/fd/2' 0<&- 2>&-"}),
                "/dev/null\n/dev/null\n");
}

// Either there are too few to begin, and one line says so, or they suffice to the end.
TEST(Run, EndsHoweverFewDescriptorsItMayHave) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer needs descriptors of its own to look at memory";
#endif
  for (int few = 4; few <= 20; ++few) {
    const Result result =
        Execute({"sh", "-c",
                 "exec 3>&- 4>&- 5>&- 6>&- 7>&- 8>&- 9>&-; ulimit -n " + std::to_string(few) +
                     "; exec vdrsim run -- sh -c '(sleep 0.1; $CLIENT level) & exit 5'"});
    if (result.exitStatus == 2) {
      ExpectUnusable(result, "vdrsim: cannot ");
      EXPECT_NE(result.output.find(": Too many open files\n"), std::string::npos) << result.output;
    } else {
      EXPECT_EQ(result.exitStatus, 5) << few;
      EXPECT_TRUE(result.leftNobody) << few;
    }
  }
}

// What a container or an old kernel withholds, by call and errno value, and what is said about it.
struct Withheld {
  std::vector<std::string> refusal;
  std::string line;
};

TEST(Run, SaysWhatTheKernelOrAContainerWithholds) {
  const Withheld cases[] = {
      {{"seccomp", "1"},
       "vdrsim: cannot supervise system calls: Operation not permitted (it takes"},
      {{"seccomp", "38"}, "vdrsim: cannot supervise system calls: Function not implemented (it"},
      // The first operation, which installs filters, alone.
      {{"seccomp", "1", "0", "0xffffffff", "1"},
       "vdrsim: cannot supervise system calls: Operation not permitted (it takes"},
      {{"prctl", "1", "0", "0xffffffff", "38"},
       "vdrsim: cannot set no_new_privs: Operation not permitted"},
      // A kernel that can inject a descriptor but not answer with it.
      {{"ioctl", "22", "1", "0xffffffff", "0x40182103"},
       "vdrsim: cannot inject a descriptor into a supervised process: Invalid argument (it takes"},
      // What a filter can notify of, alone.
      {{"seccomp", "38", "0", "0xffffffff", "3"},
       "vdrsim: cannot supervise system calls: Function not implemented (it takes"},
      {{"memfd_create", "38"}, "vdrsim: cannot create a memory file: Function not implemented\n"},
      // The file for the filter, which has no flag but that it closes.
      {{"memfd_create", "38", "1", "0xffffffff", "1"},
       "vdrsim: cannot create a memory file: Function not implemented\n"},
      // To open the memory files anew, for reading and writing.
      {{"openat", "13", "2", "0xffffffff", "0x80002"},
       "vdrsim: cannot open a memory file anew through /proc/self/fd: Permission denied\n"},
      // To read a file from its beginning, as that of this process's own status.
      {{"pread64", "1", "3", "0xffffffffffffffff", "0"},
       "vdrsim: cannot look at the children of this process: Function not implemented (it takes "
       "Linux 5.14 or later with CONFIG_SECCOMP_FILTER)\n"},
      // A thread, and no copy of the process.
      {{"clone3", "11"}, "vdrsim: cannot start a thread: Resource temporarily unavailable\n"},
      // What the child does first ends it.
      {{"prctl", "0", "0", "0xffffffff", "38"},
       "vdrsim: the process that was to become the command ended before it could\n"},
      // The filter's file can't be handed over.
      {{"sendmsg", "109"},
       "vdrsim: the process that was to become the command ended before it could\n"},
      // The sealing of a file.
      {{"fcntl", "1", "1", "0xffffffff", "1033"},
       "vdrsim: cannot seal a memory file: Operation not permitted\n"},
      {{"lseek", "1"}, "vdrsim: cannot read the seccomp filter: Operation not permitted\n"},
      {{"signalfd4", "38"}, "vdrsim: cannot hold signals: Function not implemented\n"},
      {{"socketpair", "1"}, "vdrsim: cannot create a socket pair: Operation not permitted\n"},
      {{"eventfd2", "38"}, "vdrsim: cannot create an event counter: Function not implemented\n"},
      // A copy of the process, and no thread.
      {{"clone", "11", "0", "0x100", "0"},
       "vdrsim: cannot start a process: Resource temporarily unavailable\n"},
      {{"process_vm_readv", "1"},
       "vdrsim: cannot read the memory of the command: Operation not permitted (a container"},
  };
  for (const Withheld& withheld : cases) {
    std::vector<std::string> arguments = {kRefuse};
    arguments.insert(arguments.end(), withheld.refusal.begin(), withheld.refusal.end());
    for (const char* argument : {"--", kVdrsim.c_str(), "run", "--", "echo", "started"}) {
      arguments.emplace_back(argument);
    }
    ExpectUnusable(Execute(arguments), withheld.line);
  }
}

TEST(Run, WithoutAThreadForItsJournalIsRefused) {
  ExpectUnusable(Execute({kRefuse, "clone3", "11", "--", kVdrsim, "run", "--trace", "--", "echo"}),
                 "vdrsim: Resource temporarily unavailable\n");
}

TEST(Run, WorksOnAKernelThatKnowsLess) {
  const std::vector<std::vector<std::string>> missing = {
      // The flag that makes waiting callers deaf to signals.
      {"seccomp", "22", "1", "0x20", "0x20"},
      // The flag for files that nobody executes.
      {"memfd_create", "22", "1", "0x8", "0x8"},
      // The request for waking up in step.
      {"ioctl", "22", "1", "0xffffffff", "0x40082104"},
      // The question of what is mapped and may be written.
      {"ioctl", "25", "1", "0xffffffff", "0xc0686611"},
#ifndef __SANITIZE_ADDRESS__
      // The pipes of the witness; without one, every signal counts as meant for vdrsim alone. Sanitizers
      // look at memory by pipes of their own.
      {"pipe2", "24"},
#endif
  };
  for (const auto& refusal : missing) {
    std::vector<std::string> arguments = {kRefuse};
    arguments.insert(arguments.end(), refusal.begin(), refusal.end());
    for (const char* argument : {"--", kVdrsim.c_str(), "run", kClient.c_str(), "check"}) {
      arguments.emplace_back(argument);
    }
    arguments.emplace_back("beside-threads");
    ExpectSuccess(Execute(arguments));
  }
}

TEST(CommandLine, WrongUsageHasStatusTwo) {
  const std::vector<std::vector<std::string>> wrong = {
      {}, {"run"}, {"run", "--"}, {"run", "--bogus", "true"}, {"--bogus"}};
  for (std::vector<std::string> arguments : wrong) {
    arguments.insert(arguments.begin(), kVdrsim);
    const Result result = Execute(arguments);
    EXPECT_EQ(result.exitStatus, 2) << arguments.back();
    EXPECT_EQ(result.output.substr(0, 8), "vdrsim: ") << arguments.back();
    EXPECT_NE(result.output.find("\nTry 'vdrsim "), std::string::npos) << result.output;
  }
}

TEST(CommandLine, AnOptionThatIsNoneIsNamed) {
  EXPECT_EQ(Execute({kVdrsim, "--bogus"}).output,
            "vdrsim: unknown option --bogus\nTry 'vdrsim --help'\n");
  EXPECT_EQ(Execute({kVdrsim, "run", "--bogus", "true"}).output,
            "vdrsim: The following argument was not expected: --bogus\n"
            "Try 'vdrsim run --help'\n");
}

TEST(CommandLine, SaysWhatWasMeantWhereTheWordRunIsMissing) {
  const Result result = Execute({kVdrsim, "vdrctl", "instance", "list"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.output.substr(0, 8), "vdrsim: ");
  EXPECT_NE(result.output.find("\ndid you mean vdrsim run -- vdrctl instance list\n"),
            std::string::npos)
      << result.output;
}

// Standard error closed, full, and both with a standard output that is no better.
const char* const kDeafStreams[] = {"2>&-", "2>/dev/full", ">&- 2>&-", ">/dev/full 2>/dev/full"};

TEST(CommandLine, TheStatusDoesNotDependOnWhoHearsTheMessage) {
  for (const std::string streams : kDeafStreams) {
    const auto status = [&streams](const std::string& arguments) {
      return Execute({"sh", "-c", "exec vdrsim " + arguments + " " + streams}).exitStatus;
    };
    EXPECT_EQ(status("walk true"), 2) << streams;
    EXPECT_EQ(status("run -- vdrsim run -- true"), 2) << streams;
    EXPECT_EQ(status("run -- ./no-such-command"), 127) << streams;
    EXPECT_EQ(status("run -- /proc"), 126) << streams;
    EXPECT_EQ(status("run -- true"), 0) << streams;
    EXPECT_EQ(status("run -- sh -c 'exit 3'"), 3) << streams;
  }
}

TEST(CommandLine, WhatCouldNotBePrintedIsAnError) {
  for (const std::string arguments : {"--help", "--version", "run --help"}) {
    const std::string line = "exec vdrsim " + arguments;
    ExpectUnusable(Execute({"sh", "-c", line + " >/dev/full"}),
                   "vdrsim: standard output: No space left on device\n");
    ExpectUnusable(Execute({"sh", "-c", line + " >&-"}),
                   "vdrsim: standard output: Bad file descriptor\n");
    for (const std::string streams : {">&- 2>&-", ">/dev/full 2>/dev/full"}) {
      EXPECT_EQ(Execute({"sh", "-c", line + " " + streams}).exitStatus, 2);
    }
  }
}

TEST(CommandLine, HelpAndVersionArePrinted) {
  EXPECT_NE(Execute({kVdrsim, "--help"}).output.find("Usage: vdrsim"), std::string::npos);
  EXPECT_NE(Execute({kVdrsim, "run", "--help"}).output.find("COMMAND..."), std::string::npos);
  const Result version = Execute({kVdrsim, "--version"});
  ExpectSuccess(version, "vdrsim " VERSION "\n");
}

}  // namespace
