#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "expect.h"
#include "run.h"

// Faults as programs of a run meet them.

namespace {

using run::ExpectSuccess;
using run::Result;
using run::SupervisedWith;

Result Line(const std::vector<std::string>& options, const std::string& line) {
  return SupervisedWith(options, {"sh", "-c", line});
}

TEST(Faults, AnErrorHasNoEffect) {
  ExpectSuccess(Line({"--fault", "SetVdrInstance:error=ENOMEM:when=2"},
                     "$CLIENT set a 1; $CLIENT set b 2; $CLIENT set c 3; $CLIENT list"),
                "ENOMEM\na 1\nc 3\n");
}

TEST(Faults, AShortReplyIsShort) {
  ExpectSuccess(
      Line({"--fault", "GetInstances:short=577"}, "$CLIENT set a 1; $CLIENT set b 2; $CLIENT list"),
      "a 1\n");
}

TEST(Faults, AKilledCallerIsKilledAndNobodyElse) {
  ExpectSuccess(Line({"--fault", "SetVdrInstance:kill:if=instance==b"},
                     "{ for name in a b c; do sh -c \"exec $CLIENT set $name 1\"; echo $?; done; } "
                     "2>/dev/null; "
                     "$CLIENT list"),
                "0\n137\n0\na 1\nc 1\n");
}

TEST(Faults, RulesThatNeverMatchedAreNamed) {
  const std::vector<std::string> options = {"--fault", "DelLif:kill", "--fault", "any:delay=1us"};
  ExpectSuccess(Line(options, "$CLIENT level"),
                "0\nvdrsim: this fault never matched: DelLif:kill\n");
}

TEST(Faults, StrictOnesFailTheRun) {
  const std::vector<std::string> options = {"--strict-faults", "--fault",
                                            "DelVdrInstance:error=EIO"};
  const Result result = Line(options, "exit 3");
  EXPECT_EQ(result.exitStatus, 125);
  EXPECT_EQ(result.output, "vdrsim: this fault never matched: DelVdrInstance:error=EIO\n");
  ExpectSuccess(Line(options, "$CLIENT delete a; true"), "EIO\n");
}

// It is printed once, however many rules go by chance.
TEST(Faults, ChancesAreRepeatedByTheSeedThatWasPrinted) {
  const std::string line = "for i in 1 2 3 4 5 6 7 8 9 10 11 12; do $CLIENT level; done; true";
  const std::vector<std::string> options = {"--fault", "any:error=EIO:prob=50%", "--fault",
                                            "GetLogLevel:delay=1us:prob=50%"};
  const Result first = Line(options, line);
  const std::string announcement = "vdrsim: chances begin at --seed ";
  ASSERT_EQ(first.output.substr(0, announcement.size()), announcement);
  const size_t end = first.output.find('\n');
  const std::string seed = first.output.substr(announcement.size(), end - announcement.size());
  std::vector<std::string> repeated = options;
  repeated.insert(repeated.end(), {"--seed", seed});
  ExpectSuccess(Line(repeated, line), first.output.substr(end + 1));
}

TEST(Faults, ARuleThatIsWrongStartsNothing) {
  const Result result = Line({"--fault", "SetLif:kil"}, "echo started");
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.output.substr(0, result.output.find('(')),
            "vdrsim: fault rule: 'kil' is neither an action ");
  EXPECT_NE(result.output.find("\n  SetLif:kil\n         ^~~\n"), std::string::npos);
}

}  // namespace
