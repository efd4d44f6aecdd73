#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

#include "expect.h"
#include "run.h"

namespace {

using run::Execute;
using run::ExpectSuccess;
using run::kClient;
using run::kVdrsim;
using run::Program;
using run::Result;
using run::SupervisedLine;

// The sleep in the background ignores interrupts, as every shell starts it.
TEST(Signals, EndsWithItsProcessGroup) {
  Program program({kVdrsim, "run", "--", "sh", "-c", "sleep 1000 & echo ready; exec sleep 1000"});
  program.AwaitOutput("ready\n");
  program.SignalGroup(SIGINT);
  const Result result = program.Finish();
  EXPECT_EQ(result.signal, SIGINT);
  EXPECT_TRUE(result.leftNobody);
}

TEST(Signals, ForwardsASignalThatCameToItAlone) {
  for (const int number : {SIGINT, SIGQUIT, SIGTERM, SIGHUP}) {
    const std::string trap = "trap 'echo trapped; exit 9' " + std::to_string(number);
    Program program(
        {kVdrsim, "run", "--", "sh", "-c", trap + "; echo ready; while :; do sleep 0.01; done"});
    program.AwaitOutput("ready\n");
    program.Signal(number);
    const Result result = program.Finish();
    EXPECT_EQ(result.exitStatus, 9) << number;
    EXPECT_EQ(result.output, "ready\ntrapped\n") << number;
    EXPECT_TRUE(result.leftNobody) << number;
  }
}

// Meanwhile it must not take for gone what it can't see.
TEST(Signals, WhatIsLeftIsEndedAsSoonAsItCanBeLookedForAgain) {
  Program program(
      {kVdrsim, "run", "--", "sh", "-c",
       "sleep 1000 & trap '' TERM; prlimit --pid $PPID --nofile=3:; echo ready; read end; "
       "(sleep 0.3; prlimit --pid $PPID --nofile=1024:) &"});
  program.AwaitOutput("ready\n");
  program.Signal(SIGTERM);
  program.AwaitSignalsTaken();
  program.Type("\n");
  const Result result = program.Finish();
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_TRUE(result.leftNobody);
}

// A shell that stays between the terminal and vdrsim would get the key too, and end by it.
TEST(Signals, LeavesTheKeysOfTheTerminalToTheCommand) {
  Program terminal({"script", "-qec", "exec vdrsim run -- $CLIENT count 2", "/dev/null"});
  terminal.AwaitOutput("ready");
  terminal.Type("\x03");
  const Result result = terminal.Finish();
  EXPECT_EQ(result.exitStatus, 1) << "the interrupts that arrived";
  EXPECT_TRUE(result.leftNobody);
}

TEST(Signals, ServesACommandThatCleansUpWhenToldToStop) {
  const std::string cleaning = "trap '$CLIENT delete edge-1; $CLIENT list; exit 0' TERM; ";
  Program program({kVdrsim, "run", "--", "sh", "-c",
                   cleaning + "$CLIENT set edge-1 1; echo ready; while :; do sleep 0.01; done"});
  program.AwaitOutput("ready\n");
  program.Signal(SIGTERM);
  ExpectSuccess(program.Finish(), "ready\n");
}

TEST(Signals, EndsProcessesThatWouldOutliveACommandThatWasStopped) {
  const std::string obedient =
      "setsid sh -c '(trap \"echo ended; exit\" TERM; echo one; while :; do sleep 0.01; done) & "
      "echo two; sleep 1000' & ";
  const std::string deaf = "setsid sh -c 'trap \"\" TERM; echo three; sleep 1000' & ";
  Program program(
      {kVdrsim, "run", "--", "sh", "-c", obedient + deaf + "read line; echo ready; sleep 1000"});
  for (const char* line : {"one\n", "two\n", "three\n"}) program.AwaitOutput(line);
  program.CloseInput();
  program.AwaitOutput("ready\n");
  program.Signal(SIGTERM);
  const Result result = program.Finish();
  EXPECT_EQ(result.signal, SIGTERM);
  EXPECT_NE(result.output.find("ended\n"), std::string::npos) << result.output;
  EXPECT_TRUE(result.leftNobody);
}

// They concern neither the command nor what it leaves behind.
TEST(Signals, LeavesASignalIgnoredThatWasIgnored) {
  Program program({"sh", "-c",
                   "trap '' INT HUP; exec vdrsim run -- sh -c 'echo ready; read line; "
                   "(while kill -0 $$; do sleep 0.01; done 2>/dev/null; echo left) & exit 4'"});
  program.AwaitOutput("ready\n");
  program.SignalGroup(SIGINT);
  program.Signal(SIGHUP);
  const Result result = program.Finish();
  EXPECT_EQ(result.exitStatus, 4);
  EXPECT_EQ(result.output, "ready\nleft\n");
}

// While they are, the kernel keeps no exit status of a child.
TEST(Signals, LeavesTheEndOfAChildIgnoredThatWasIgnored) {
  const auto seen = [](std::vector<std::string> words, const std::vector<std::string>& command) {
    words.insert(words.begin(), {"env", "--ignore-signal=CHLD", "--block-signal=CHLD"});
    words.insert(words.end(), command.begin(), command.end());
    return Execute(words);
  };
  const std::vector<std::string> look = {"grep", "^Sig[BI]", "/proc/self/status"};
  ExpectSuccess(seen({kVdrsim, "run", "--"}, look), seen({}, look).output);
  EXPECT_EQ(seen({kVdrsim, "run", "--"}, {"sh", "-c", "exit 5"}).exitStatus, 5);
}

TEST(Signals, LeavesASignalBlockedThatWasBlocked) {
  Program program({"env", "--block-signal=TERM", kVdrsim, "run", "--", "sh", "-c",
                   "echo ready; read line; grep ^ShdPnd /proc/$$/status"});
  program.AwaitOutput("ready\n");
  program.Signal(SIGTERM);
  ExpectSuccess(program.Finish(), "ready\nShdPnd:\t0000000000000000\n");
}

TEST(Signals, LeavesTheCommandASignalBlocked) {
  const std::vector<std::string> look = {"env", "--block-signal=HUP", "--block-signal=USR1"};
  const auto seen = [&look](std::vector<std::string> command) {
    command.insert(command.begin(), look.begin(), look.end());
    for (const char* word : {"grep", "^SigBlk", "/proc/self/status"}) command.emplace_back(word);
    return Execute(command);
  };
  const Result without = seen({});
  ASSERT_EQ(without.exitStatus, 0);
  ExpectSuccess(seen({kVdrsim, "run", "--"}), without.output);
}

// It tells of a mistake of vdrsim itself, and is nobody else's.
TEST(Signals, OneOfAMistakeIsNotPassedOn) {
  for (const int number : {SIGILL, SIGTRAP, SIGSYS, SIGABRT}) {
    Program program({"sh", "-c",
                     "ulimit -c 0; exec vdrsim run -- sh -c 'trap \"\" ILL TRAP SYS ABRT; echo "
                     "ready; read line'"});
    program.AwaitOutput("ready\n");
    program.Signal(number);
    EXPECT_EQ(program.Finish().signal, number);
  }
}

TEST(Signals, OneForTheProcessGroupArrivesOnce) {
  for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGUSR1, SIGUSR2, SIGRTMAX}) {
    Program program({kVdrsim, "run", "--", kClient, "count", std::to_string(number)});
    program.AwaitOutput("ready\n");
    program.SignalGroup(number);
    EXPECT_EQ(program.Finish().exitStatus, 1) << number;
  }
}

// It is not in the group of vdrsim, but what came to that is for it too.
TEST(Signals, OneForTheProcessGroupArrivesAtACommandWithAGroupOfItsOwn) {
  Program program({kVdrsim, "run", "--", "setsid", kClient, "count", std::to_string(SIGUSR1)});
  program.AwaitOutput("ready\n");
  program.SignalGroup(SIGUSR1);
  EXPECT_EQ(program.Finish().exitStatus, 1);
}

TEST(Signals, OneThatBringsAValueArrivesWithIt) {
  Program program({kVdrsim, "run", "--", kClient, "value", std::to_string(SIGRTMIN)});
  program.AwaitOutput("ready\n");
  program.Queue(SIGRTMIN, 0x12345678);
  ExpectSuccess(program.Finish(), "ready\n12345678\n");
}

// The command waits by itself: a program that it started would be in the group, and end aloud.
TEST(Signals, OneForVdrsimAloneArrivesTooAfterOneForTheGroup) {
  Program program({kVdrsim, "run", "--", "sh", "-c",
                   "trap 'echo one' USR1; trap 'echo two; exit 6' USR2; echo ready; "
                   "while :; do read line; done"});
  program.AwaitOutput("ready\n");
  program.SignalGroup(SIGUSR1);
  program.AwaitOutput("one\n");
  program.AwaitSignalsTaken();
  program.Signal(SIGUSR1);
  program.AwaitOutput("one\none\n");
  program.AwaitSignalsTaken();
  program.SignalGroup(SIGUSR1);
  program.AwaitOutput("one\none\none\n");
  program.Signal(SIGUSR2);
  const Result result = program.Finish();
  EXPECT_EQ(result.exitStatus, 6);
  EXPECT_EQ(result.output, "ready\none\none\none\ntwo\n");
}

TEST(Signals, EachOneThatWouldEndVdrsimIsPassedOn) {
  for (const int number : {SIGUSR1, SIGUSR2, SIGALRM, SIGPIPE, SIGWINCH, SIGRTMIN + 3}) {
    Program program({kVdrsim, "run", "--", kClient, "count", std::to_string(number)});
    program.AwaitOutput("ready\n");
    program.Signal(number);
    EXPECT_EQ(program.Finish().exitStatus, 1) << number;
  }
}

// What it left behind waits for the end of its input, and is served on.
TEST(Signals, AnInterruptThatTheCommandTookDoesNotConcernTheRun) {
  Program program({kVdrsim, "run", "--", "sh", "-c",
                   "exec 3<&0; trap '' INT; sh -c 'read x <&3; $CLIENT level' & "
                   "trap 'echo interrupted' INT; trap 'echo ended; exit 0' USR1; echo ready; "
                   "while :; do sleep 0.01; done"});
  program.AwaitOutput("ready\n");
  program.SignalGroup(SIGINT);
  program.AwaitOutput("interrupted\n");
  program.Signal(SIGUSR1);
  program.AwaitOutput("ended\n");
  program.CloseInput();
  ExpectSuccess(program.Finish(), "ready\ninterrupted\nended\n0\n");
}

// How a command ends that was told to stop, and whether what it leaves is ended too.
struct Stop {
  int signal;
  int exitStatus;
  bool endsAll;
};

TEST(Signals, WhatACommandLeavesEndsWithTheRunThatWasToldToStop) {
  const Stop stops[] = {{SIGTERM, 0, true},   {SIGHUP, 0, true},     {SIGINT, 130, true},
                        {SIGQUIT, 131, true}, {SIGINT, 0, false},    {SIGINT, 129, false},
                        {SIGINT, 131, false}, {SIGQUIT, 130, false}, {SIGQUIT, 3, false},
                        {SIGUSR1, 138, false}};
  for (const auto& [signal, exitStatus, endsAll] : stops) {
    const std::string number = std::to_string(signal);
    Program program({kVdrsim, "run", "--", "sh", "-c",
                     "exec 3<&0; { read line <&3; echo left; } & trap 'exit " +
                         std::to_string(exitStatus) + "' " + number +
                         "; echo ready; while :; do sleep 0.01; done"});
    program.AwaitOutput("ready\n");
    program.Signal(signal);
    if (endsAll) program.AwaitEnd();
    const Result result = program.Finish();
    EXPECT_EQ(result.exitStatus, exitStatus) << number;
    EXPECT_EQ(result.output, endsAll ? "ready\n" : "ready\nleft\n") << number;
    EXPECT_TRUE(result.leftNobody) << number;
  }
}

TEST(Signals, OneAfterTheCommandEndsWhatItLeft) {
  Program program({kVdrsim, "run", "--", "sh", "-c",
                   "sh -c 'trap \"\" INT; while kill -0 '$$'; do :; done 2>/dev/null; echo left; "
                   "exec sleep 1000' & sleep 0.1"});
  program.AwaitOutput("left\n");
  program.SignalGroup(SIGINT);
  ExpectSuccess(program.Finish(), "left\n");
}

// Its parent has ended, so that it is a child of vdrsim.
TEST(Signals, AStopOfWhatTheCommandLeftStopsNothingElse) {
  const std::string left = "sh -c 'sh -c \"kill -STOP \\$\\$; echo goes on\" >&3 & echo $!'";
  ExpectSuccess(SupervisedLine("exec 3>&1; " + left +
                               " | { read pid; until grep -q '^State:.T' /proc/$pid/status; do "
                               "sleep 0.01; done; $CLIENT level; kill -CONT $pid; }"),
                "0\ngoes on\n");
}

// Only who looks at it needs to be told.
TEST(Signals, ThatARunWaitsIsSaidOnATerminalAlone) {
  ExpectSuccess(SupervisedLine("(sleep 0.5; echo left) &"), "left\n");
}

// A shell that controls jobs, on a terminal, in which lines are typed.
Program Shell() {
  return Program({"script", "-qec", "PS1=outer: bash --norc --noprofile -i", "/dev/null"});
}

TEST(Terminal, AStopByKeyStopsTheRunUntilItIsToldToGoOn) {
  Program shell = Shell();
  shell.AwaitOutput("outer:");
  shell.Type("vdrsim run -- sh -c 'echo u''p; read x; echo got $x; $CLIENT level'\n");
  shell.AwaitOutput("up\r\n");
  shell.Type("\x1a");
  shell.AwaitOutput("Stopped");
  shell.Type("fg\n");
  shell.Type("hello\n");
  shell.AwaitOutput("got hello\r\n0\r\n");
  shell.Type("exit 5\n");
  EXPECT_EQ(shell.Finish().exitStatus, 5);
}

TEST(Terminal, AStopByKeyThatTheCommandIgnoresStopsNothing) {
  Program shell = Shell();
  shell.AwaitOutput("outer:");
  shell.Type(
      "vdrsim run -- sh -c 'trap \"\" TSTP; echo u''p; read x; $CLIENT level 3; "
      "$CLIENT level'\n");
  shell.AwaitOutput("up\r\n");
  shell.Type("\x1ago\n");
  shell.AwaitOutput("3\r\n");
  shell.Type("exit 5\n");
  const Result result = shell.Finish();
  EXPECT_EQ(result.exitStatus, 5);
  EXPECT_EQ(result.output.find("Stopped"), std::string::npos);
}

TEST(Terminal, AShellInARunCanBeSuspended) {
  Program shell = Shell();
  shell.AwaitOutput("outer:");
  shell.Type("PS1=inner: vdrsim run -- bash --norc --noprofile -i\n");
  shell.AwaitOutput("inner:");
  shell.Type("suspend\n");
  shell.AwaitOutput("Stopped");
  shell.Type("fg\n");
  shell.Type("$CLIENT level 4; $CLIENT level; exit 3\n");
  shell.AwaitOutput("4\r\n");
  shell.Type("exit $(($? + 2))\n");
  EXPECT_EQ(shell.Finish().exitStatus, 5);
}

TEST(Terminal, ThatARunWaitsForWhatTheCommandLeftIsSaidOnce) {
  Program terminal({"script", "-qec",
                    "exec vdrsim run -- sh -c 'sleep 1000 & (sleep 0.5; echo one has ended) & "
                    "exit 3'",
                    "/dev/null"});
  terminal.AwaitOutput(
      "vdrsim: the command has ended; waiting for processes that it left "
      "(Ctrl-C ends them)\r\n");
  terminal.AwaitOutput("one has ended\r\n");
  terminal.Type("\x03");
  const Result result = terminal.Finish();
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_EQ(result.output.find("waiting"), result.output.rfind("waiting"));
  EXPECT_TRUE(result.leftNobody);
}

}  // namespace
