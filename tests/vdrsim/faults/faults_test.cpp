#include "faults/faults.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <initializer_list>
#include <string>
#include <vector>

#include "end.h"

namespace {

using faults::Caller;
using faults::End;
using in_process::Block;
using in_process::Bytes;
using namespace std::chrono_literals;

class Faults : public testing::Test {
 protected:
  void Add(std::initializer_list<const char*> rules) {
    for (const char* rule : rules) faults_.Add(vdrsim::ReadRule(rule));
  }

  int ErrorOf(uint32_t code, const in_process::Wire& block = Block()) {
    return faults::Execute(faults_, caller_, code, block.bytes()).error;
  }

  // The errors of the same command given so many times.
  std::vector<int> ErrorsOf(uint32_t code, int times) {
    std::vector<int> errors;
    for (int i = 0; i < times; ++i) errors.push_back(ErrorOf(code));
    return errors;
  }

  // The bytes that are written, and the number that is claimed.
  std::pair<size_t, uint32_t> Reply(uint32_t code) {
    vdrsim::Answer answer = faults::Execute(faults_, caller_, code, Block().bytes());
    EXPECT_EQ(answer.error, 0);
    size_t written = 0;
    for (auto piece = answer.reply.Next(); !piece.empty(); piece = answer.reply.Next()) {
      written += piece.size();
    }
    EXPECT_EQ(written, answer.reply.size());
    return {written, answer.claimed.value_or(answer.reply.size())};
  }

  Caller caller_{};
  End end_{};
  vdrsim::Faults faults_{end_, 1};
};

TEST_F(Faults, WithoutRulesHandEverythingOn) {
  EXPECT_EQ(ErrorsOf(19, 2), (std::vector{0, 0}));
  EXPECT_EQ(end_.codes, (std::vector<uint32_t>{19, 19}));
}

TEST_F(Faults, AnErrorKeepsTheCommandFromBeingCarriedOut) {
  Add({"SetLif:error=ENOMEM"});
  EXPECT_EQ(ErrorOf(19), ENOMEM);
  EXPECT_TRUE(end_.codes.empty());
  EXPECT_EQ(ErrorOf(20), 0);
  EXPECT_EQ(end_.codes, std::vector<uint32_t>{20});
}

TEST_F(Faults, OfTwoErrorsTheFirstCounts) {
  Add({"%lif:error=EIO", "SetLif:error=ENOMEM"});
  EXPECT_EQ(ErrorOf(19), EIO);
  EXPECT_TRUE(faults_.NeverMatched().empty()) << "the second was right for it too";
}

TEST_F(Faults, DelaysAddUpAndComeBeforeTheError) {
  Add({"SetLif:delay=50ms", "SetLif:error=EAGAIN:delay=7us", "any:delay=2s"});
  EXPECT_EQ(ErrorOf(19), EAGAIN);
  EXPECT_EQ(caller_.waited, 2s + 50ms + 7us);
  EXPECT_EQ(ErrorOf(20), 0);
  EXPECT_EQ(caller_.waited, 4s + 50ms + 7us);
}

TEST_F(Faults, ACallerThatIsGoneAfterItsDelayHasNoEffect) {
  Add({"SetLif:delay=1ms"});
  caller_.staysThere = false;
  EXPECT_EQ(ErrorOf(19), ESRCH);
  EXPECT_TRUE(end_.codes.empty());
  EXPECT_EQ(ErrorOf(20), 0) << "who has no delay is not asked";
}

TEST_F(Faults, AKilledCallersCommandHasNoEffect) {
  Add({"SetLif:kill"});
  ErrorOf(19);
  EXPECT_EQ(caller_.kills, 1);
  EXPECT_TRUE(end_.codes.empty());
  ErrorOf(20);
  EXPECT_EQ(caller_.kills, 1);
}

TEST_F(Faults, LengthIsClaimedAndShortIsWritten) {
  const std::pair<size_t, uint32_t> asItIs{16, 16};
  EXPECT_EQ(Reply(22), asItIs);
  Add({"21:length=5", "GetLif:short=5", "23:short=4:length=0x400", "24:short=17"});
  EXPECT_EQ(Reply(21), std::pair(size_t{16}, 5U));
  EXPECT_EQ(Reply(22), std::pair(size_t{5}, 5U));
  EXPECT_EQ(Reply(23), std::pair(size_t{4}, 1024U));
  EXPECT_EQ(Reply(24), asItIs);
}

TEST_F(Faults, OfTwoLengthsTheFirstCounts) {
  Add({"21:length=5", "21:length=6:short=1", "21:short=2"});
  EXPECT_EQ(Reply(21), std::pair(size_t{1}, 5U));
}

// As a recording can: it may claim what is not there.
TEST_F(Faults, AReplyThatClaimsSomethingItselfIsSpoiledToo) {
  end_.claimed = 99;
  Add({"21:short=5", "22:length=6", "23:short=5:length=6"});
  EXPECT_EQ(Reply(20), std::pair(size_t{16}, 99U));
  EXPECT_EQ(Reply(21), std::pair(size_t{5}, 5U));
  EXPECT_EQ(Reply(22), std::pair(size_t{16}, 6U));
  EXPECT_EQ(Reply(23), std::pair(size_t{5}, 6U));
}

TEST_F(Faults, TheReplyOfAFailureStaysAsItIs) {
  Add({"21:length=5"});
  end_.error = ENOENT;
  const vdrsim::Answer answer = faults::Execute(faults_, caller_, 21, Block().bytes());
  EXPECT_EQ(answer.error, ENOENT);
  EXPECT_FALSE(answer.claimed);
}

TEST_F(Faults, CountWhatTheyAreFor) {
  const std::pair<const char*, std::vector<int>> cases[] = {
      {"3", {0, 0, 5, 0, 0, 0, 0}},      {"2..4", {0, 5, 5, 5, 0, 0, 0}},
      {"3+", {0, 0, 5, 5, 5, 5, 5}},     {"1+2", {5, 0, 5, 0, 5, 0, 5}},
      {"2..6+2", {0, 5, 0, 5, 0, 5, 0}}, {"2..5+2", {0, 5, 0, 5, 0, 0, 0}},
      {"2+3", {0, 5, 0, 0, 5, 0, 0}},
  };
  for (const auto& [when, expected] : cases) {
    faults_.Clear();
    faults_.Add(vdrsim::ReadRule(std::string("SetLif:error=5:when=") + when));
    ErrorOf(20);
    EXPECT_EQ(ErrorsOf(19, 7), expected) << when;
  }
}

TEST_F(Faults, CountOnlyWhatTheirConditionsAreTrueOf) {
  Add({"SetLif:error=5:if=lif==b:when=2"});
  std::vector<int> errors;
  for (const char* lif : {"b", "a", "b", "b"}) {
    errors.push_back(ErrorOf(19, Block("edge-1").Text(384, lif)));
  }
  EXPECT_EQ(errors, (std::vector{0, 0, 5, 0}));
}

TEST_F(Faults, CountWhateverOtherRulesDo) {
  Add({"SetLif:error=5:when=1", "SetLif:error=6:when=2"});
  EXPECT_EQ(ErrorsOf(19, 3), (std::vector{5, 6, 0}));
}

TEST_F(Faults, ChanceIsRepeatedByItsSeed) {
  const auto errors = [](uint64_t seed) {
    End end;
    Caller caller;
    vdrsim::Faults faults(end, seed);
    faults.Add(vdrsim::ReadRule("any:error=5:prob=25%"));
    std::vector<int> all;
    for (int i = 0; i < 1000; ++i) all.push_back(faults::Execute(faults, caller, 9).error);
    return all;
  };
  const std::vector<int> first = errors(1);
  EXPECT_EQ(errors(1), first);
  EXPECT_NE(errors(2), first);
  EXPECT_NE(errors(uint64_t{1} << 32 | 1), first);
  const auto hits = std::ranges::count(first, 5);
  EXPECT_GT(hits, 200);
  EXPECT_LT(hits, 300);
}

// Which of 64 commands each of two rules acts on.
std::pair<uint64_t, uint64_t> Chances(uint64_t seed) {
  End end;
  Caller caller;
  vdrsim::Faults faults(end, seed);
  faults.Add(vdrsim::ReadRule("any:length=7:prob=50%"));
  faults.Add(vdrsim::ReadRule("any:short=0:prob=50%"));
  std::pair<uint64_t, uint64_t> acts{};
  for (int command = 0; command < 64; ++command) {
    const vdrsim::Answer answer = faults::Execute(faults, caller, 9);
    acts.first = acts.first << 1 | (answer.claimed == 7U ? 1 : 0);
    acts.second = acts.second << 1 | (answer.reply.size() == 0 ? 1 : 0);
  }
  return acts;
}

// A seed that was noted gives the same chances tomorrow, on another host.
TEST(Chances, AreThoseOfTheirSeedForever) {
  EXPECT_EQ(Chances(0), (std::pair<uint64_t, uint64_t>(0x46a4c77f568f8b42, 0x3ebce5e9706456f6)));
  EXPECT_EQ(Chances(0x123456789abcdef1),
            (std::pair<uint64_t, uint64_t>(0x29fa1da183cbcf8c, 0xe23926b4e14f3516)));
}

TEST_F(Faults, RulesHaveChancesOfTheirOwn) {
  Add({"any:length=1:prob=50%", "any:short=0:prob=50%"});
  bool differ = false;
  for (int i = 0; i < 64; ++i) {
    const auto [written, claimed] = Reply(9);
    differ |= (claimed == 1) != (written == 0);
  }
  EXPECT_TRUE(differ);
}

TEST_F(Faults, CertaintyAlwaysHits) {
  Add({"any:error=5:prob=100%"});
  EXPECT_EQ(std::ranges::count(ErrorsOf(9, 1000), 5), 1000);
}

TEST_F(Faults, RulesThatNeverMatchedAreKnownAlsoWhenCleared) {
  Add({"SetLif:error=5:when=2", "DelLif:error=5", "any:error=5:prob=0.0000000001%"});
  ErrorOf(19);
  EXPECT_EQ(faults_.NeverMatched(),
            (std::vector<std::string>{"SetLif:error=5:when=2", "DelLif:error=5"}))
      << "chance is no matter of the test's";
  faults_.Clear();
  EXPECT_EQ(ErrorsOf(19, 2), (std::vector{0, 0}));
  Add({"GetLif:kill"});
  EXPECT_EQ(faults_.NeverMatched(),
            (std::vector<std::string>{"SetLif:error=5:when=2", "DelLif:error=5", "GetLif:kill"}));
}

TEST_F(Faults, AreListedWithTheTimesThatTheyActed) {
  Add({"SetLif:error=5:when=2+", "GetLif:kill"});
  ErrorsOf(19, 4);
  const auto list = faults_.List();
  ASSERT_EQ(list.size(), 2);
  EXPECT_EQ(list[0].rule, "SetLif:error=5:when=2+");
  EXPECT_EQ(list[0].times, 3);
  EXPECT_EQ(list[1].rule, "GetLif:kill");
  EXPECT_EQ(list[1].times, 0);
}

}  // namespace
