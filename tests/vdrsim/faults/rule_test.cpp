#include "faults/rule.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <set>
#include <string>

#include "end.h"
#include "faults/faults.h"

namespace {

using in_process::Block;
using in_process::Wire;

// Tells whether a rule is for a command.
bool IsFor(const std::string& which, uint32_t code, const Wire& block = Block()) {
  faults::End end;
  faults::Caller caller;
  vdrsim::Faults faults(end, 1);
  faults.Add(vdrsim::ReadRule(which + ":error=77"));
  return faults::Execute(faults, caller, code, block.bytes()).error == 77;
}

// Tells whether a condition is true of a command.
bool Holds(const std::string& condition, uint32_t code, const Wire& block) {
  return IsFor("any:if=" + condition, code, block);
}

std::set<uint32_t> CodesOf(const std::string& which) {
  std::set<uint32_t> codes;
  for (uint32_t code = 0; code <= 255; ++code) {
    if (IsFor(which, code)) codes.insert(code);
  }
  return codes;
}

std::string MessageOf(const std::string& rule) {
  try {
    vdrsim::ReadRule(rule);
  } catch (const vdrsim::RuleError& error) {
    return error.what();
  }
  return "none";
}

TEST(Rule, IsForACommandByItsName) {
  EXPECT_EQ(CodesOf("SetVdrInstance"), std::set<uint32_t>{2});
  EXPECT_EQ(CodesOf("GetRoutesv6"), (std::set<uint32_t>{114, 115})) << "a function of two codes";
}

TEST(Rule, IsForTheOneOfTwoCommandsOfACodeThatItNames) {
  const Wire proxy = Block("edge-1").U8(917, 1);
  EXPECT_TRUE(IsFor("SetArp", 38));
  EXPECT_FALSE(IsFor("SetArp", 38, proxy));
  EXPECT_FALSE(IsFor("SetProxyArp", 38));
  EXPECT_TRUE(IsFor("SetProxyArp", 38, proxy));
  EXPECT_TRUE(IsFor("38", 38));
  EXPECT_TRUE(IsFor("38", 38, proxy));
}

TEST(Rule, IsForACode) {
  EXPECT_EQ(CodesOf("19"), std::set<uint32_t>{19});
  EXPECT_EQ(CodesOf("0x13"), std::set<uint32_t>{19});
  EXPECT_EQ(CodesOf("200"), std::set<uint32_t>{200}) << "that no command has";
}

TEST(Rule, IsForAFamily) {
  EXPECT_EQ(CodesOf("%mcast"),
            (std::set<uint32_t>{128, 129, 130, 131, 132, 133, 134, 135, 136, 137, 138, 139}));
  std::set<uint32_t> all;
  size_t count = 0;
  for (const char* family :
       {"%instance", "%lif", "%route", "%policy", "%bridge", "%e2i", "%mcast", "%services"}) {
    const std::set<uint32_t> codes = CodesOf(family);
    EXPECT_FALSE(codes.empty()) << family;
    all.insert(codes.begin(), codes.end());
    count += codes.size();
  }
  EXPECT_EQ(all.size(), count) << "a command is of one family";
}

TEST(Rule, IsForAnyCommand) { EXPECT_EQ(CodesOf("any").size(), 256); }

TEST(Rule, ComparesATextToItsTerminator) {
  const Wire block = Block("edge-1");
  EXPECT_TRUE(Holds("instanceName==edge-1", 19, block));
  EXPECT_FALSE(Holds("instanceName==edge", 19, block));
  EXPECT_FALSE(Holds("instanceName==edge-10", 19, block));
  EXPECT_TRUE(Holds("instanceName==", 19, Block()));
  EXPECT_FALSE(Holds("instanceName==", 19, block));
  EXPECT_TRUE(Holds("instanceName==edge-1", 19, Block("edge-1").U8(7, 'x'))) << "what is behind";
  const std::string full(64, 'x');
  EXPECT_TRUE(Holds("instanceName==" + full, 19, Block(full))) << "a text without terminator";
}

TEST(Rule, UnequalIsOnlyWhatHasTheField) {
  EXPECT_TRUE(Holds("lif!=a", 19, Block().Text(384, "b")));
  EXPECT_FALSE(Holds("lif!=a", 19, Block().Text(384, "a")));
  EXPECT_FALSE(Holds("lif!=a", 2, Block())) << "an instance has no LIF";
  EXPECT_FALSE(Holds("lif!=a", 200, Block()));
}

TEST(Rule, LeavesNameOutOfTheNamesOfFields) {
  EXPECT_TRUE(Holds("instance==edge-1", 19, Block("edge-1")));
  EXPECT_TRUE(Holds("connection==c", 16, Block().Text(256, "c")));
  EXPECT_TRUE(Holds("instance==edge-1", 2, Block("edge-1"))) << "whose field is called name";
  EXPECT_TRUE(Holds("name==edge-1", 2, Block("edge-1")));
  EXPECT_FALSE(Holds("instance==b", 61, Block("b"))) << "the name of a bridge";
}

TEST(Rule, ComparesNumbersOfAllWidths) {
  EXPECT_TRUE(Holds("mode==200", 19, Block().U8(788, 200)));
  EXPECT_TRUE(Holds("value3==0xfffe", 127, Block().U16(328, 0xfffe)));
  EXPECT_FALSE(Holds("value3==0xfe", 127, Block().U16(328, 0xfffe)));
  EXPECT_TRUE(Holds("a3==4294967295", 19, Block().U32(512, 0xffffffff)));
  EXPECT_TRUE(Holds("policyType==-2", 141, Block().U32(408, 0xfffffffe)));
  EXPECT_TRUE(Holds("destPart1==0x8000000000000001", 110, Block().U64(260, 0x8000000000000001)));
}

TEST(Rule, ComparesAddressesAsPeopleWriteThem) {
  EXPECT_TRUE(Holds("ip==10.1.2.3", 26, Block().U32(512, 0x0302010a)));
  EXPECT_FALSE(Holds("ip==10.1.2.3", 26, Block().U32(512, 0x0a010203)));
  EXPECT_TRUE(Holds("extra==02:00:5e:10:00:ff", 19, Block().U64(524, 0xff00105e0002)));
  EXPECT_FALSE(Holds("extra==02:00:5e:10:00:fe", 19, Block().U64(524, 0xff00105e0002)));
  const Wire route = Block().U64(260, 0xb80d0120).U64(268, 0x0100000000000000);
  EXPECT_TRUE(Holds("dest==2001:db8::1", 110, route));
  EXPECT_FALSE(Holds("dest==2001:db8::2", 110, route));
  EXPECT_TRUE(Holds("addr!=::", 108, Block().U64(256, 1)));
  EXPECT_FALSE(Holds("addr!=::", 108, Block()));
}

TEST(Rule, ComparesBytes) {
  const std::string zeros(318, '0');
  EXPECT_TRUE(Holds("servers==fE" + zeros, 33, Block().U8(560, 0xfe)));
  EXPECT_FALSE(Holds("servers==fE" + zeros, 33, Block().U8(719, 0xfe)));
}

TEST(Rule, AnInputThatEndsBeforeTheFieldIsNeitherEqualNorNot) {
  faults::End end;
  faults::Caller caller;
  vdrsim::Faults faults(end, 1);
  faults.Add(vdrsim::ReadRule("SetLif:error=77:if=mode==0"));
  faults.Add(vdrsim::ReadRule("SetLif:error=77:if=mode!=0"));
  const in_process::Bytes input(788);
  EXPECT_EQ(faults::Execute(faults, caller, 19, input).error, 0);
  EXPECT_EQ(faults::Execute(faults, caller, 19, in_process::Bytes(789)).error, 77);
}

TEST(Rule, AllConditionsMustHold) {
  const std::string both = "SetLif:if=instance==e:if=lif==l";
  EXPECT_TRUE(IsFor(both, 19, Block("e").Text(384, "l")));
  EXPECT_FALSE(IsFor(both, 19, Block("e").Text(384, "m")));
  EXPECT_FALSE(IsFor(both, 19, Block("f").Text(384, "l")));
}

TEST(Rule, ErrnoIsANameOrANumber) {
  EXPECT_EQ(vdrsim::ReadRule("any:error=ENOMEM").actions.error, 12);
  EXPECT_EQ(vdrsim::ReadRule("any:error=EWOULDBLOCK").actions.error, 11);
  EXPECT_EQ(vdrsim::ReadRule("any:error=ENOTSUP").actions.error, 95);
  EXPECT_EQ(vdrsim::ReadRule("any:error=EOPNOTSUPP").actions.error, 95);
  EXPECT_EQ(vdrsim::ReadRule("any:error=4095").actions.error, 4095);
  EXPECT_EQ(vdrsim::ReadRule("any:error=0x16").actions.error, 22);
}

TEST(Rule, TimeHasAUnit) {
  using namespace std::chrono_literals;
  EXPECT_EQ(vdrsim::ReadRule("any:delay=500us").actions.delay, 500us);
  EXPECT_EQ(vdrsim::ReadRule("any:delay=50ms").actions.delay, 50ms);
  EXPECT_EQ(vdrsim::ReadRule("any:delay=86400s").actions.delay, 24h);
}

TEST(Rule, MarksThePlaceOfAnError) {
  EXPECT_EQ(MessageOf("SetLif:error=ENOMEN:when=3"),
            "fault rule: there is no errno 'ENOMEN' (did you mean 'ENOMEM'?); it takes a name, as "
            "ENOMEM, or a number\n"
            "  SetLif:error=ENOMEN:when=3\n"
            "               ^~~~~~");
  EXPECT_EQ(MessageOf("SetLif:"),
            "fault rule: nothing stands between this colon and what follows\n"
            "  SetLif:\n"
            "         ^");
  EXPECT_EQ(MessageOf("\xc3\xa9\n:kill").substr(MessageOf("\xc3\xa9\n:kill").find("\n")),
            "\n  \xc3\xa9?:kill\n  ^~");
}

// A rule that is refused, and what its message begins with.
struct Refusal {
  const char* rule;
  const char* beginning;
};

class Refused : public testing::TestWithParam<Refusal> {};

TEST_P(Refused, IsNamed) {
  const auto& [rule, beginning] = GetParam();
  const std::string expected = std::string("fault rule: ") + beginning;
  EXPECT_EQ(MessageOf(rule).substr(0, expected.size()), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Rule, Refused,
    testing::Values(
        Refusal{"", "there is no command ''"},
        Refusal{"SetVdrInstanc:kill",
                "there is no command 'SetVdrInstanc' (did you mean 'SetVdrInstance'?)"},
        Refusal{"%lifs:kill", "there is no family 'lifs' (did you mean 'lif'?)"},
        Refusal{"256:kill", "codes go up to 255"}, Refusal{"SetLif", "the rule does nothing"},
        Refusal{"SetLif:when=3", "the rule does nothing"},
        Refusal{"SetLif:kil", "'kil' is neither"}, Refusal{"SetLif:kill=1", "it is written kill"},
        Refusal{"SetLif:error", "it is written error=ERRNO"},
        Refusal{"SetLif:error=0", "an errno value is 1 to 4095"},
        Refusal{"SetLif:error=4096", "an errno value is 1 to 4095"},
        Refusal{"SetLif:error=", "there is no errno ''"},
        Refusal{"SetLif:length=4294967296", "it takes a number of bytes"},
        Refusal{"SetLif:short=-1", "it takes a number of bytes"},
        Refusal{"SetLif:delay=50", "it takes a whole number with its unit"},
        Refusal{"SetLif:delay=ms", "it takes a whole number with its unit"},
        Refusal{"SetLif:delay=86401s", "a delay is a day at most"},
        Refusal{"SetLif:delay=86400001ms", "a delay is a day at most"},
        Refusal{"SetLif:kill:when=0", "here belongs a number"},
        Refusal{"SetLif:kill:when=4..2", "the last comes before the first"},
        Refusal{"SetLif:kill:when=4..", "here belongs a number"},
        Refusal{"SetLif:kill:when=1+0", "here belongs a number"},
        Refusal{"SetLif:kill:when=4x", "nothing can follow here"},
        Refusal{"SetLif:kill:when=1:when=2", "'when' is given twice"},
        Refusal{"SetLif:error=1:error=2", "'error' is given twice"},
        Refusal{"SetLif:kill:prob=10", "it takes a percentage"},
        Refusal{"SetLif:kill:prob=0%", "it takes a percentage"},
        Refusal{"SetLif:kill:prob=100.1%", "it takes a percentage"},
        Refusal{"SetLif:kill:prob=nan%", "it takes a percentage"},
        Refusal{"SetLif:kill:prob=1%%", "it takes a percentage"},
        Refusal{"SetLif:kill:if=lif=x", "it takes FIELD==VALUE"},
        Refusal{"SetLif:kill:if===x", "it takes FIELD==VALUE"},
        Refusal{
            "SetLif:kill:if=lifNam==x",
            "no command of this rule has a field 'lifNam' (did you mean 'lifName'?); there are"},
        Refusal{"SetLif:kill:if=mode==256", "the field mode takes a number of 8 bits\n"},
        Refusal{"SetLifPolicy:kill:if=policyType==2147483648",
                "the field policyType takes a number of 32 bits with a sign"},
        Refusal{"SetLifIp:kill:if=ip==10.0.0.256",
                "the field ip takes a number of 32 bits or an IPv4 address"},
        Refusal{"SetLif:kill:if=extra==1", "the field extra takes a MAC address"},
        Refusal{"SetLifIpv6:kill:if=addr==1", "the field addr takes an IPv6 address"},
        Refusal{"ConfigureLifDhcpRelay:kill:if=servers==00",
                "the field servers takes the 160 bytes of it"},
        Refusal{"SetLif:kill:if=extra==00:11:22:33:44:55:whn=3", "'whn' is neither"},
        Refusal{
            "SetLif:kill:if=lif==00000000000000000000000000000000000000000000000000000000000000001",
            "the field lif takes a text of at most 64 characters"}));

}  // namespace
