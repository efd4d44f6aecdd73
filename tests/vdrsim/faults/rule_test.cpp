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
  EXPECT_EQ(CodesOf("255"), std::set<uint32_t>{255}) << "the last one";
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

// Unequal to what nothing is: whatever has the field.
TEST(Rule, KnowsWhichCommandsHaveAField) {
  const auto codesWith = [](const char* field) {
    return CodesOf("any:if=" + std::string(field) + "!=::7");
  };
  EXPECT_EQ(codesWith("connection"), (std::set<uint32_t>{15, 16, 18, 149}));
  EXPECT_EQ(codesWith("dest"), (std::set<uint32_t>{110, 111}));
  EXPECT_EQ(codesWith("gateway"), (std::set<uint32_t>{110, 111}));
  EXPECT_EQ(codesWith("addr"), (std::set<uint32_t>{108, 109}));
  EXPECT_EQ(codesWith("ip"), (std::set<uint32_t>{112, 113}));
  EXPECT_EQ(codesWith("lif"),
            (std::set<uint32_t>{19, 20, 22, 25, 26, 27,  28,  29,  30,  31,  32,  33,  45, 46,
                                50, 51, 57, 58, 60, 108, 109, 125, 126, 146, 147, 148, 152}));
  EXPECT_EQ(codesWith("name"),
            (std::set<uint32_t>{0,  1,  2,  3,  4,   5,   6,   8,   87,  88,  89,  90,  91,  92,
                                93, 94, 95, 96, 103, 104, 106, 107, 153, 154, 155, 156, 157, 158}));
  const std::set<uint32_t> ofInstances = {0, 1, 2, 3, 4, 5, 6, 8, 23, 24, 87, 88};
  std::set<uint32_t> found;
  for (const uint32_t code : CodesOf("%instance:if=instance!=x")) found.insert(code);
  EXPECT_EQ(found, ofInstances);
  EXPECT_EQ(CodesOf("%bridge:if=instance!=x"),
            (std::set<uint32_t>{49, 53, 54, 55, 56, 57, 58, 62, 65, 66, 67, 118}));
}

TEST(Rule, AValueGoesOnBehindAColonWhereNoClauseBegins) {
  for (const char* value : {"a:", "a::b", "a:=b", "a:error", "a:A=1", "a:{=1", "a:`=1", "a:when",
                            "a:02=x", ":", "a:b:c:d", "a==b:c"}) {
    EXPECT_TRUE(Holds("lif==" + std::string(value), 19, Block().Text(384, value))) << value;
  }
  EXPECT_EQ(vdrsim::ReadRule("any:if=lif==a:kill").conditions[0].byRequest.size(),
            vdrsim::ReadRule("any:kill:if=lif==a").conditions[0].byRequest.size());
  EXPECT_TRUE(vdrsim::ReadRule("any:if=lif==a:kill").actions.kills);
}

TEST(Rule, ComparesNumbersOfAllWidths) {
  EXPECT_TRUE(Holds("mode==200", 19, Block().U8(788, 200)));
  EXPECT_TRUE(Holds("value3==0xfffe", 127, Block().U16(328, 0xfffe)));
  EXPECT_FALSE(Holds("value3==0xfe", 127, Block().U16(328, 0xfffe)));
  EXPECT_TRUE(Holds("a3==4294967295", 19, Block().U32(512, 0xffffffff)));
  EXPECT_TRUE(Holds("policyType==-2", 141, Block().U32(408, 0xfffffffe)));
  EXPECT_TRUE(Holds("policyType==2", 141, Block().U32(408, 2)));
  EXPECT_TRUE(Holds("policyType==-2147483648", 141, Block().U32(408, 0x80000000)));
  EXPECT_TRUE(Holds("policyType==2147483647", 141, Block().U32(408, 0x7fffffff)));
  EXPECT_TRUE(Holds("mode==255", 19, Block().U8(788, 255)));
  EXPECT_TRUE(Holds("value3==65535", 127, Block().U16(328, 0xffff)));
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
  EXPECT_EQ(vdrsim::ReadRule("any:error=1").actions.error, 1);
  EXPECT_EQ(vdrsim::ReadRule("any:error=4095").actions.error, 4095);
  EXPECT_EQ(vdrsim::ReadRule("any:error=0x16").actions.error, 22);
}

TEST(Rule, TimeHasAUnit) {
  using namespace std::chrono_literals;
  EXPECT_EQ(vdrsim::ReadRule("any:delay=500us").actions.delay, 500us);
  EXPECT_EQ(vdrsim::ReadRule("any:delay=50ms").actions.delay, 50ms);
  EXPECT_EQ(vdrsim::ReadRule("any:delay=86400s").actions.delay, 24h);
  EXPECT_EQ(vdrsim::ReadRule("any:delay=86400000ms").actions.delay, 24h);
  EXPECT_EQ(vdrsim::ReadRule("any:delay=86400000000us").actions.delay, 24h);
}

TEST(Rule, CountsFromAFirstToALastByAStep) {
  constexpr uint64_t kEver = UINT64_MAX;
  const struct {
    const char* when;
    uint64_t first, last, step;
  } kCases[] = {
      {"", 1, kEver, 1},
      {":when=3", 3, 3, 1},
      {":when=2..4", 2, 4, 1},
      {":when=4..4", 4, 4, 1},
      {":when=3+", 3, kEver, 1},
      {":when=1+2", 1, kEver, 2},
      {":when=2..8+2", 2, 8, 2},
      {":when=2..8+", 2, 8, 1},
      {":when=10..90+11", 10, 90, 11},
      {":when=7+0012", 7, kEver, 12},
      {":when=18446744073709551615", kEver, kEver, 1},
  };
  for (const auto& [when, first, last, step] : kCases) {
    const vdrsim::Counting counting = vdrsim::ReadRule("any:kill" + std::string(when)).counting;
    EXPECT_EQ(counting.first, first) << when;
    EXPECT_EQ(counting.last, last) << when;
    EXPECT_EQ(counting.step, step) << when;
  }
}

TEST(Rule, ProbabilityIsAPercentage) {
  EXPECT_EQ(vdrsim::ReadRule("any:kill:prob=25%").probability, 0.25);
  EXPECT_EQ(vdrsim::ReadRule("any:kill:prob=0.5%").probability, 0.005);
  EXPECT_EQ(vdrsim::ReadRule("any:kill:prob=100%").probability, 1.0);
  EXPECT_EQ(vdrsim::ReadRule("any:kill").probability, std::nullopt);
}

TEST(Rule, LengthHas32Bits) {
  EXPECT_EQ(vdrsim::ReadRule("any:length=4294967295").actions.length, 4294967295);
  EXPECT_EQ(vdrsim::ReadRule("any:short=0xffffffff").actions.written, 4294967295);
  EXPECT_EQ(vdrsim::ReadRule("any:short=0").actions.written, 0U);
}

}  // namespace
