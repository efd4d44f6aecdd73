#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

#include "expect.h"
#include "run.h"

// vdrsim ctl, as a test calls it within a run.

namespace {

using run::Execute;
using run::ExpectSuccess;
using run::kVdrsim;
using run::Program;
using run::Result;
using run::SupervisedLine;

TEST(Ctl, ChangesTheFaultsOfItsRun) {
  ExpectSuccess(SupervisedLine("vdrsim ctl fault add SetVdrInstance:error=EIO:when=2+\n"
                               "for i in 1 2 3; do $CLIENT set edge-1 $i; done\n"
                               "vdrsim ctl fault list\n"
                               "vdrsim ctl fault clear && vdrsim ctl fault list\n"
                               "$CLIENT set edge-1 4 && $CLIENT list"),
                "EIO\nEIO\n2\tSetVdrInstance:error=EIO:when=2+\nedge-1 4\n");
}

TEST(Ctl, SaysWhatIsWrongWithARule) {
  const Result result = SupervisedLine("vdrsim ctl fault add SetVdrInstanc:kill");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.output.substr(0, result.output.find(';')),
            "vdrsim: fault rule: there is no command 'SetVdrInstanc' (did you mean "
            "'SetVdrInstance'?)");
  EXPECT_NE(result.output.find("\n  SetVdrInstanc:kill\n  ^~~~~~~~~~~~~\n"), std::string::npos);
}

TEST(Ctl, IsNoTargetOfFaultsAndOfNoneCounted) {
  ExpectSuccess(SupervisedLine("vdrsim ctl fault add any:error=EIO\n"
                               "vdrsim ctl fault list\n"
                               "vdrsim ctl fault clear"),
                "0\tany:error=EIO\nvdrsim: this fault never matched: any:error=EIO\n");
}

TEST(Ctl, IsOfNoUseOutsideARun) {
  const Result result = Execute({kVdrsim, "ctl", "fault", "list"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_EQ(result.output, "vdrsim: this is not in a run: start one by vdrsim run -- COMMAND\n");
}

TEST(Ctl, PutsOneStateInThePlaceOfAnother) {
  ExpectSuccess(SupervisedLine("file=$(mktemp)\n"
                               "$CLIENT set edge-1 1 && vdrsim ctl state save $file\n"
                               "$CLIENT set edge-1 2 && $CLIENT set edge-2 2 && $CLIENT list\n"
                               "vdrsim ctl state load $file\n"
                               "vdrsim ctl state show | cmp - $file && $CLIENT list\n"
                               "$CLIENT delete edge-1 && vdrsim ctl state load - <$file\n"
                               "$CLIENT list; rm $file"),
                "edge-1 2\nedge-2 2\nedge-1 1\nedge-1 1\n");
}

// Whatever is called so.
TEST(Ctl, ADashIsStandardInput) {
  ExpectSuccess(SupervisedLine("cd $(mktemp -d) && mkdir -- - && vdrsim ctl state show >here\n"
                               "$CLIENT set edge-1 1 && vdrsim ctl state load - <here\n"
                               "$CLIENT list; rm -r \"$PWD\""),
                "");
}

TEST(Ctl, AStateThatIsWrongChangesNothing) {
  const Result result = SupervisedLine(
      "$CLIENT set edge-1 1\n"
      "echo '{\"version\": 1, \"instances\": 7}' | vdrsim ctl state load -\n"
      "echo $?\n"
      "vdrsim ctl state load /nonexistent; echo $?\n"
      "vdrsim ctl state save /nonexistent/file; echo $?\n"
      "vdrsim ctl state load /; echo $?\n"
      "$CLIENT list");
  ExpectSuccess(result,
                "vdrsim: standard input: /version: there is no such member\n1\n"
                "vdrsim: /nonexistent: No such file or directory\n1\n"
                "vdrsim: /nonexistent/file: No such file or directory\n1\n"
                "vdrsim: /: Is a directory\n1\n"
                "edge-1 1\n");
}

TEST(Ctl, MarksTheJournal) {
  const Result result = Execute({kVdrsim, "run", "--journal", "/dev/stderr", "--", "sh", "-c",
                                 "$CLIENT level; vdrsim ctl journal mark 'second step'; "
                                 "$CLIENT level 1"});
  EXPECT_EQ(result.exitStatus, 0);
  const size_t mark = result.output.find("second step");
  ASSERT_NE(mark, std::string::npos) << result.output;
  EXPECT_LT(result.output.find("GetLogLevel"), mark);
  EXPECT_GT(result.output.find("SetLogLevel"), mark);
  EXPECT_EQ(result.output.find("\"code\":255"), std::string::npos) << "it is no command itself";
}

TEST(Ctl, SaysThatThereIsNoJournal) {
  const Result result = SupervisedLine("vdrsim ctl journal mark text");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.output,
            "vdrsim: this run keeps no journal: start it with --journal FILE or --trace\n");
}

TEST(Shell, IsTheOneOfTheEnvironmentWithTheToolsOnItsPath) {
  setenv("SHELL", "/bin/sh", 1);
  Program shell({"env", "PATH=/usr/bin:/bin", kVdrsim, "run", "--shell"});
  shell.Type("command -v vdrsim; vdrctl --version >/dev/null && echo found; exit 5\n");
  const Result result = shell.Finish();
  EXPECT_EQ(result.exitStatus, 5);
  EXPECT_EQ(result.output,
            "vdrsim: /bin/sh in a run: the datapath is simulated until you leave it by exit or "
            "Ctrl-D\n" +
                kVdrsim + "\nfound\n");
}

TEST(Shell, StandsForACommand) {
  EXPECT_EQ(Execute({kVdrsim, "run", "--shell", "--", "true"}).exitStatus, 2);
  EXPECT_EQ(Execute({kVdrsim, "run"}).output,
            "vdrsim: COMMAND is required\nTry 'vdrsim run --help'\n");
}

TEST(Ctl, TakesVerbsThatItKnows) {
  for (const char* arguments : {"", "fault", "fault add", "fault sing", "fault list more"}) {
    const Result result = SupervisedLine(std::string("vdrsim ctl ") + arguments);
    EXPECT_EQ(result.exitStatus, 2) << arguments << result.output;
  }
}

// As many as there are wait at once, and none of them takes the place of one that doesn't.
class ManyDelayed : public testing::Test {
 protected:
  static constexpr const char* kWait =
      "until [ \"$(vdrsim ctl fault list | cut -f 1)\" = 100 ]; do sleep 0.01; done\n";
  const std::vector<std::string> start_ = {kVdrsim, "run", "--fault", "SetLogLevel:delay=86400s",
                                           "--",    "sh",  "-c"};

  std::vector<std::string> Running(const std::string& script) {
    std::vector<std::string> command = start_;
    command.push_back(
        "i=0; while [ $i -lt 100 ]; do $CLIENT level 1 & all=\"$all $!\"; i=$((i + 1)); done\n" +
        std::string(kWait) + script);
    return command;
  }
};

TEST_F(ManyDelayed, HoldNobodyElseUp) {
  ExpectSuccess(Execute(Running("$CLIENT set edge-1 1; $CLIENT list; $CLIENT level\n"
                                "{ kill -KILL $all; wait; } 2>/dev/null")),
                "edge-1 1\n0\n");
}

TEST_F(ManyDelayed, EndWithTheRun) {
  Program program(Running("trap 'exit 9' TERM; echo ready; while :; do sleep 0.01; done"));
  program.AwaitOutput("ready\n");
  program.Signal(SIGTERM);
  const Result result = program.Finish();
  EXPECT_EQ(result.exitStatus, 9);
  EXPECT_TRUE(result.leftNobody);
}

}  // namespace
