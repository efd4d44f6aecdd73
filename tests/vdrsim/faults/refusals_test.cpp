#include <gtest/gtest.h>

#include <string>

#include "faults/rule.h"

// What is said of rules that are wrong, and where the mark stands below them.

namespace {

using namespace std::string_literals;

const std::string kNothing =
    "the rule does nothing: it takes an action (error=ERRNO, length=N, short=N, delay=TIME, kill)";
const std::string kNumber =
    "here belongs a number of 1 or more: when=3, when=2..4, when=3+, when=1+2 (the first and every "
    "second behind it), when=2..8+2";
const std::string kFollows = "nothing can follow here but .. and a number, or +";
const std::string kPercentage = "it takes a percentage above 0% and up to 100%, as 10% or 0.5%";
const std::string kTime = "it takes a whole number with its unit: 500us, 50ms or 2s";
const std::string kCondition = "it takes FIELD==VALUE or FIELD!=VALUE, as instance==edge-1";
const std::string kClauses =
    " is neither an action (error=ERRNO, length=N, short=N, delay=TIME, kill) nor a condition "
    "(when=N, if=FIELD==VALUE, prob=N%)";
const std::string kBegins = "; a rule begins with a command, as SetLif, a code, a %family or any";
const std::string kSetLif =
    "; there are a3, a4, a5, a6, a7, auxName, extra, flagsWord, instanceName, lifName, mode";
const std::string kSetLifIpv6 =
    "; there are addr, addrHigh, addrLow, instanceName, lifName, lifName276, prefixLength";

std::string MessageOf(const std::string& rule) try {
  vdrsim::ReadRule(rule);
  return "none";
} catch (const vdrsim::RuleError& error) {
  return error.what();
}

TEST(WrongRule, IsToldWithItsPlace) {
  const struct {
    std::string rule;
    std::string sentence;
    std::string mark;
  } kCases[] = {
      {"", "there is no command ''"s + kBegins, "^"},
      {"SetVdrInstanc:kill",
       "there is no command 'SetVdrInstanc' (did you mean 'SetVdrInstance'?)"s + kBegins,
       "^~~~~~~~~~~~~"},
      {"%lifs:kill",
       "there is no family 'lifs' (did you mean 'lif'?); there are %instance, %lif, %route, "
       "%policy, %bridge, %e2i, %mcast, %services",
       "^~~~~"},
      {"%:kill",
       "there is no family ''; there are %instance, %lif, %route, %policy, %bridge, %e2i, %mcast, "
       "%services",
       "^"},
      {"256:kill", "codes go up to 255", "^~~"},
      {"SetLif", kNothing, "      ^"},
      {"SetLif:when=3", kNothing, "             ^"},
      {"SetLif:if=lif==x", kNothing, "                ^"},
      {"SetLif:prob=5%", kNothing, "              ^"},
      {"SetLif:kil", "'kil'"s + kClauses + " (did you mean 'kill'?)", "       ^~~"},
      {"SetLif:kill=1", "it is written kill", "       ^~~~~~"},
      {"SetLif:kill=", "it is written kill", "       ^~~~~"},
      {"SetLif:error", "it is written error=ERRNO", "       ^~~~~"},
      {"SetLif:if", "it is written if=FIELD==VALUE", "       ^~"},
      {"SetLif:", "nothing stands between this colon and what follows", "       ^"},
      {"SetLif::kill", "nothing stands between this colon and what follows", "       ^"},
      {"SetLif:kill:02", "'02'"s + kClauses, "            ^~"},
      {"SetLif:error=0", "an errno value is 1 to 4095", "             ^"},
      {"SetLif:error=4096", "an errno value is 1 to 4095", "             ^~~~"},
      {"SetLif:error=", "there is no errno ''; it takes a name, as ENOMEM, or a number",
       "             ^"},
      {"SetLif:error=ENOMEN:when=3",
       "there is no errno 'ENOMEN' (did you mean 'ENOMEM'?); it takes a name, as ENOMEM, or a "
       "number",
       "             ^~~~~~"},
      {"SetLif:length=4294967296", "it takes a number of bytes, of 32 bits",
       "              ^~~~~~~~~~"},
      {"SetLif:length=", "it takes a number of bytes, of 32 bits", "              ^"},
      {"SetLif:short=-1", "it takes a number of bytes, of 32 bits", "             ^~"},
      {"SetLif:delay=50", kTime, "             ^~"},
      {"SetLif:delay=ms", kTime, "             ^~"},
      {"SetLif:delay=5 s", kTime, "             ^~~"},
      {"SetLif:delay=1.5s", kTime, "             ^~~~"},
      {"SetLif:delay=99999999999999999999s", kTime, "             ^~~~~~~~~~~~~~~~~~~~~"},
      {"SetLif:delay=86401s", "a delay is a day at most", "             ^~~~~~"},
      {"SetLif:delay=86400001ms", "a delay is a day at most", "             ^~~~~~~~~~"},
      {"SetLif:delay=86400000001us", "a delay is a day at most", "             ^~~~~~~~~~~~~"},
      {"SetLif:kill:when=", kNumber, "                 ^"},
      {"SetLif:kill:when=0", kNumber, "                 ^"},
      {"SetLif:kill:when=x", kNumber, "                 ^"},
      {"SetLif:kill:when=18446744073709551616", kNumber, "                 ^~~~~~~~~~~~~~~~~~~~"},
      {"SetLif:kill:when=4..2", "the last comes before the first", "                    ^"},
      {"SetLif:kill:when=4..", kNumber, "                    ^"},
      {"SetLif:kill:when=..4", kNumber, "                 ^~~"},
      {"SetLif:kill:when=1+0", kNumber, "                   ^"},
      {"SetLif:kill:when=4x", kFollows, "                  ^"},
      {"SetLif:kill:when=2..4x", kFollows, "                     ^"},
      {"SetLif:kill:when=1+2x", kFollows, "                    ^"},
      {"SetLif:kill:when=3++", kNumber, "                   ^"},
      {"SetLif:kill:when=1..2..3", kFollows, "                     ^~~"},
      {"any:error=1:error=2", "'error' is given twice", "            ^~~~~~~"},
      {"any:length=1:length=1", "'length' is given twice", "             ^~~~~~~~"},
      {"any:short=1:short=1", "'short' is given twice", "            ^~~~~~~"},
      {"any:delay=1s:delay=1s", "'delay' is given twice", "             ^~~~~~~~"},
      {"any:kill:kill", "'kill' is given twice", "         ^~~~"},
      {"any:kill:when=1:when=2", "'when' is given twice", "                ^~~~~~"},
      {"any:kill:prob=1%:prob=1%", "'prob' is given twice", "                 ^~~~~~~"},
      {"any:kill:prob=10", kPercentage, "              ^~"},
      {"any:kill:prob=%", kPercentage, "              ^"},
      {"any:kill:prob=", kPercentage, "              ^"},
      {"any:kill:prob=0%", kPercentage, "              ^~"},
      {"any:kill:prob=-1%", kPercentage, "              ^~~"},
      {"any:kill:prob=100.1%", kPercentage, "              ^~~~~~"},
      {"any:kill:prob=nan%", kPercentage, "              ^~~~"},
      {"any:kill:prob=1%%", kPercentage, "              ^~~"},
      {"any:kill:prob=5%5", kPercentage, "              ^~~"},
      {"any:kill:prob=1x%", kPercentage, "              ^~~"},
      {"any:kill:prob=1e999%", kPercentage, "              ^~~~~~"},
      {"SetLif:kill:if=lif", kCondition, "               ^~~"},
      {"SetLif:kill:if=lif=x", kCondition, "               ^~~~~"},
      {"SetLif:kill:if=lif!", kCondition, "               ^~~~"},
      {"SetLif:kill:if=lif!x", kCondition, "               ^~~~~"},
      {"SetLif:kill:if===x", kCondition, "               ^~~"},
      {"SetLif:kill:if=!=x", kCondition, "               ^~~"},
      {"SetLif:kill:if=lifNam==x",
       "no command of this rule has a field 'lifNam' (did you mean 'lifName'?)"s + kSetLif,
       "               ^~~~~~"},
      {"SetLif:kill:if=abc==x", "no command of this rule has a field 'abc'"s + kSetLif,
       "               ^~~"},
      {"SetLifIpv6:kill:if=prefixLe==1",
       "no command of this rule has a field 'prefixLe'"s + kSetLifIpv6,
       "                   ^~~~~~~~"},
      {"SetRoutev6:kill:if=x==1",
       "no command of this rule has a field 'x'; there are dest, destPart1, destPart2, gateway, "
       "gatewayPart1, gatewayPart2, ifName, instanceName, prefixLength",
       "                   ^"},
      {"PlumbVdrConnection:kill:if=x==1",
       "no command of this rule has a field 'x'; there are connectionName, fifth, fourth, second, "
       "seventh, sixth",
       "                           ^"},
      {"SetLifIpv6:kill:if=instance!=1:if=addrPart==1",
       "no command of this rule has a field 'addrPart'"s + kSetLifIpv6,
       "                                  ^~~~~~~~"},
      {"200:kill:if=lif==x", "no command of this rule has a field 'lif'", "            ^~~"},
      {"9:kill:if=value==1", "no command of this rule has a field 'value'", "          ^~~~~"},
      {"any:kill:if=lif2==1", "no command of this rule has a field 'lif2'", "            ^~~~"},
      {"any:kill:if=destt==1", "no command of this rule has a field 'destt' (did you mean 'dest'?)",
       "            ^~~~~"},
      {"SetLif:kill:if=instance==a:if=name==a",
       "no command of this rule has a field 'name'"s + kSetLif,
       "                              ^~~~"},
      {"SetLif:kill:if=mode==256", "the field mode takes a number of 8 bits",
       "                     ^~~"},
      {"SetLif:kill:if=mode==1.2.3.4", "the field mode takes a number of 8 bits",
       "                     ^~~~~~~"},
      {"SetLif:kill:if=mode==-1", "the field mode takes a number of 8 bits",
       "                     ^~"},
      {"SetMcastRouting:kill:if=value3==65536", "the field value3 takes a number of 16 bits",
       "                                ^~~~~"},
      {"SetLif:kill:if=a3==4294967296", "the field a3 takes a number of 32 bits or an IPv4 address",
       "                   ^~~~~~~~~~"},
      {"SetLif:kill:if=a3==1.2.3", "the field a3 takes a number of 32 bits or an IPv4 address",
       "                   ^~~~~"},
      {"SetRoutev6:kill:if=destPart1==18446744073709551616",
       "the field destPart1 takes a number of 64 bits",
       "                              ^~~~~~~~~~~~~~~~~~~~"},
      {"SetRoutev6:kill:if=destPart1==1.2.3.4", "the field destPart1 takes a number of 64 bits",
       "                              ^~~~~~~"},
      {"SetLifPolicy:kill:if=policyType==2147483648",
       "the field policyType takes a number of 32 bits with a sign",
       "                                 ^~~~~~~~~~"},
      {"SetLifPolicy:kill:if=policyType==-2147483649",
       "the field policyType takes a number of 32 bits with a sign",
       "                                 ^~~~~~~~~~~"},
      {"SetLifPolicy:kill:if=policyType==-",
       "the field policyType takes a number of 32 bits with a sign",
       "                                 ^"},
      {"SetLifPolicy:kill:if=policyType==--1",
       "the field policyType takes a number of 32 bits with a sign",
       "                                 ^~~"},
      {"SetLif:kill:if=lif==" + std::string(64, '0') + "1",
       "the field lif takes a text of at most 64 characters",
       "                    ^" + std::string(64, '~')},
      {"SetRoutev6:kill:if=ifName==" + std::string(65, '0'),
       "the field ifName takes a text of at most 64 characters",
       "                           ^" + std::string(64, '~')},
      {"SetVdrInstance:kill:if=text!=1234567890123456789",
       "the field text takes a text of at most 18 characters",
       "                             ^~~~~~~~~~~~~~~~~~~"},
      {"SetLif:kill:if=extra==1", "the field extra takes a MAC address, as 02:00:5e:10:00:01",
       "                      ^"},
      {"SetLifIpv6:kill:if=addr==1", "the field addr takes an IPv6 address",
       "                         ^"},
      {"SetLifIpv6:kill:if=addr==1.2.3.4", "the field addr takes an IPv6 address",
       "                         ^~~~~~~"},
      {"ConfigureLifDhcpRelay:kill:if=servers==00",
       "the field servers takes the 160 bytes of it in hexadecimal digits",
       "                                       ^~"},
      {"ConfigureLifDhcpRelay:kill:if=servers==" + std::string(322, '0'),
       "the field servers takes the 160 bytes of it in hexadecimal digits",
       "                                       ^" + std::string(321, '~')},
      {"SetLif:kill:if=extra==00:11:22:33:44:55:whn=3",
       "'whn'"s + kClauses + " (did you mean 'when'?)",
       "                                        ^~~"},
      {"SetLif:kill:if=lif==x:az=1", "'az'"s + kClauses, "                      ^~"},
      {"SetLif:kill:if=lif==x:za=1", "'za'"s + kClauses, "                      ^~"},
  };
  for (const auto& [rule, sentence, mark] : kCases) {
    EXPECT_EQ(MessageOf(rule), "fault rule: " + sentence + "\n  " + rule + "\n  " + mark);
  }
}

// What could drive a terminal is shown as a question mark, and a character of several bytes is one
// wide.
TEST(WrongRule, IsShownAsATerminalTakesIt) {
  EXPECT_EQ(MessageOf("a b\x7f~\x1f_\t:kill"), "fault rule: there is no command 'a b?~?_?'" +
                                                   kBegins + "\n  a b?~?_?:kill\n  ^~~~~~~~");
  EXPECT_EQ(MessageOf("\xc3\xa9\n:kill"),
            "fault rule: there is no command '\xc3\xa9?'" + kBegins + "\n  \xc3\xa9?:kill\n  ^~");
  EXPECT_EQ(MessageOf("SetLif:\xe2\x82\xac:kill"),
            "fault rule: '\xe2\x82\xac'" + kClauses + "\n  SetLif:\xe2\x82\xac:kill\n         ^");
}

// A text ends with its terminator, so that it can't hold one.
TEST(WrongRule, HasATerminatorInAText) {
  EXPECT_EQ(MessageOf("SetLif:kill:if=lif==a\0b"s),
            "fault rule: the field lif takes a text of at most 64 characters\n"
            "  SetLif:kill:if=lif==a?b\n                      ^~~");
}

}  // namespace
