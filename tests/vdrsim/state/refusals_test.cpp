#include <gtest/gtest.h>

#include <string>

#include "documents.h"

namespace {

using documents::Complaint;
using documents::With;

TEST(WrongState, IsToldWithLineAndColumnWhereItIsNoJson) {
  EXPECT_EQ(Complaint(""),
            "parse error at line 1, column 1: syntax error while parsing value - unexpected end of "
            "input; expected '[', '{', or a literal");
  EXPECT_EQ(Complaint("{\n  \"format_version\": 1,\n}"),
            "parse error at line 3, column 1: syntax error while parsing object key - unexpected "
            "'}'; expected string literal");
  EXPECT_TRUE(Complaint(With("") + "x").starts_with("parse error at line 1, column 22"));
  EXPECT_TRUE(Complaint("{\"\xff\": 1}").find("invalid string: ill-formed UTF-8") !=
              std::string::npos);
}

TEST(WrongState, IsToldByItsPath) {
  const struct {
    std::string members;
    std::string complaint;
  } kCases[] = {
      {R"("logLevell": 1)", "/logLevell: there is no such member (did you mean 'logLevel'?)"},
      {R"("instances": {"edge-1": {"secondd": 1}})",
       "/instances/edge-1/secondd: there is no such member (did you mean 'second'?)"},
      {R"("instances": {"edge-1": {"second": 4294967296}})",
       "/instances/edge-1/second: 4294967296 is not a whole number of 0 to 4294967295"},
      {R"("instances": {"edge-1": {"flag": 256}})",
       "/instances/edge-1/flag: 256 is not a whole number of 0 to 255"},
      {R"("instances": {"edge-1": {"mcastRouting": {"value3": 65536}}})",
       "/instances/edge-1/mcastRouting/value3: 65536 is not a whole number of 0 to 65535"},
      {R"("logLevel": -1)", "/logLevel: -1 is not a whole number of 0 to 4294967295"},
      {R"("logLevel": 1.5)", "/logLevel: 1.5 is not a whole number of 0 to 4294967295"},
      {R"("softRss": {"r": {"qword0": 18446744073709551616}})",
       "/softRss/r/qword0: 18446744073709551616 is not a whole number of 0 to "
       "18446744073709551615"},
      {R"("softRss": {"r": {"entryCount": 129}})",
       "/softRss/r/entryCount: 129 is not a whole number of 0 to 128"},
      {R"("logLevel": "1")", "/logLevel: '1' is not a number"},
      {R"("logLevel": null)", "/logLevel: null is not a number"},
      {R"("logLevel": true)", "/logLevel: true is not a number"},
      {R"("logLevel": false)", "/logLevel: false is not a number"},
      {R"("logLevel": 4294967295.0)",
       "/logLevel: 4294967295.0 is not a whole number of 0 to 4294967295"},
      {R"("logLevel": [1])", "/logLevel: is not a single value"},
      {R"("logLevel": {})", "/logLevel: is not a single value"},
      {R"("preUnloadAnnounced": 1)", "/preUnloadAnnounced: 1 is not true or false"},
      {R"("instances": [])", "/instances: is not an object"},
      {R"("instances": 5)", "/instances: is not an object"},
      {R"("policies": {})", "/policies: is not an array"},
      {R"("policies": "x")", "/policies: is not an array"},
      {R"("policies": [1])", "/policies/0: is not an object"},
      {R"("policies": [{"key": 1}, {"key": 2, "policies": [{}, {"arg3": "x"}]}])",
       "/policies/1/policies/1/arg3: 'x' is not a number"},
      {R"("policies": [{"policies": []}])", "/policies/0: 'key' is missing"},
      {R"("transportNode": [])", "/transportNode: is not an object"},
      {R"("instances": {"a": {"text": 1}})", "/instances/a/text: 1 is not a text"},
      {R"("instances": {"a": {"text": "1234567890123456789"}})",
       "/instances/a/text: '1234567890123456789' has 19 bytes, and there is room for 18"},
      {R"("instances": {"a": {"text": "1234567890123456789012345678901234567890"}})",
       "/instances/a/text: '1234567890123456789012345678901234567890' has 40 bytes, and there is "
       "room for 18"},
      {R"("instances": {"a": {"text": "1234567890123456789012345678901234567890\n"}})",
       "/instances/a/text: '1234567890123456789012345678901234567890'... has 41 bytes, and there "
       "is room for 18"},
      {R"("instances": {"a": {"text": "\\x"}})",
       R"(/instances/a/text: '\\x': a backslash is written \\, and a byte \xNN, from \x01 to \xff)"},
      {R"("instances": {"a": {"text": "\u0000"}})",
       "/instances/a/text: a text can't hold a byte of zero"},
      {R"("instances": {"": {}})", "/instances/: a name can't be empty"},
      {R"("instances": {"a/b~": {"x": 1}})", "/instances/a~1b~0/x: there is no such member"},
      {R"("instances": {"1234567890123456789012345678901234567890123456789012345678901234": {}})",
       "/instances/1234567890123456789012345678901234567890123456789012345678901234: "
       "'1234567890123456789012345678901234567890'... has 64 bytes, and there is room for 63"},
      {R"("instances": {"a": {"cpAddress": "10.0.0"}})",
       "/instances/a/cpAddress: '10.0.0' is not an IPv4 address"},
      {R"("instances": {"a": {"cpAddress": 5}})",
       "/instances/a/cpAddress: 5 is not an IPv4 address"},
      {R"("instances": {"a": {"cpAddress": "1.1.1.1\u0000"}})",
       R"(/instances/a/cpAddress: '1.1.1.1\x00' is not an IPv4 address)"},
      {R"("instances": {"a": {"policies": [{"type": 2147483648}]}})",
       "/instances/a/policies/0/type: 2147483648 is not a whole number of -2147483648 to "
       "2147483647"},
      {R"("instances": {"a": {"policies": [{"type": -2147483649}]}})",
       "/instances/a/policies/0/type: -2147483649 is not a whole number of -2147483648 to "
       "2147483647"},
      {R"("instances": {"a": {"policies": [{"type": -1.5}]}})",
       "/instances/a/policies/0/type: -1.5 is not a whole number of -2147483648 to 2147483647"},
      {R"("instances": {"a": {"policies": [{"type": "4"}]}})",
       "/instances/a/policies/0/type: '4' is not a number"},
      {R"("instances": {"a": {"ipv6Routes": [{"destination": "10.0.0.1"}]}})",
       "/instances/a/ipv6Routes/0/destination: '10.0.0.1' is not an IPv6 address"},
      {R"("instances": {"a": {"lifs": {"l": {"extra": "02:00:00:00:00"}}}})",
       "/instances/a/lifs/l/extra: '02:00:00:00:00' is not a hardware address such as "
       "02:00:5e:10:ab:ff"},
      {R"("instances": {"a": {"lifs": {"l": {"addresses": [{"address": "x:"}]}}}})",
       "/instances/a/lifs/l/addresses/0/address: 'x:' is not an IPv6 address"},
      {R"("instances": {"a": {"lifs": {"l": {"addresses": [{"address": 5}]}}}})",
       "/instances/a/lifs/l/addresses/0/address: 5 is not an IPv4 address"},
      {R"("instances": {"a": {"lifs": {"l": {"addresses":
          [{"address": "0a000001000000000000000000000000"}]}}}})",
       "/instances/a/lifs/l/addresses/0/address: '0a000001000000000000000000000000' is not an IPv4 "
       "address"},
      {R"("instances": {"a": {"lifs": {"l": {"relayServers": [{"address": 5}]}}}})",
       "/instances/a/lifs/l/relayServers/0/address: 5 is not an IPv4 address"},
      {R"("instances": {"a": {"lifs": {"l": {"relayServers":
          [{"address": "0a00000100000000000000000000000g"}]}}}})",
       "/instances/a/lifs/l/relayServers/0/address: '0a00000100000000000000000000000g' is not 16 "
       "bytes in hexadecimal"},
      {R"("instances": {"a": {"lifs": {"l": {"relayServers":
          [{"address": "2001:0db8:0000:0000:0000:0000:01"}]}}}})",
       "/instances/a/lifs/l/relayServers/0/address: '2001:0db8:0000:0000:0000:0000:01' is not an "
       "IPv6 address"},
      {R"("instances": {"a": {"lifs": {"l": {"arps": [{"address": "1.1.1.1", "mac": 5}]}}}})",
       "/instances/a/lifs/l/arps/0/mac: 5 is not a hardware address such as 02:00:5e:10:ab:ff"},
      {R"("instances": {"a": {"lifs": {"l": {"relayServers": [{}]}}}})",
       "/instances/a/lifs/l/relayServers/0: 'address' is missing"},
      {R"("instances": {"a": {"lifs": {"l": {"proxyArps": [{"address": "1.1.1.1", "mac": ""}]}}}})",
       "/instances/a/lifs/l/proxyArps/0/mac: there is no such member"},
      {R"("transportNode": {"bytes": "00"})",
       "/transportNode/bytes: '00' is not 64 bytes in hexadecimal"},
      {"\"transportNode\": {\"bytes\": \"" + std::string(130, '0') + "\"}",
       "/transportNode/bytes: '" + std::string(40, '0') + "'... is not 64 bytes in hexadecimal"},
      {R"("physicalMacs": [{"mac": "00:00:00:00:00:00"}])",
       "/physicalMacs: an address of zeros names none"},
      {R"("publicAddresses": [{"address": "1.1.1.1"}])",
       "/publicAddresses: an address without items is none"},
      {R"("instances": {"a": {"lifs": {"l": {"addresses": [{"address": "1.1.1.1"},
          {"address": "1.1.1.1", "mask": "255.0.0.0"}]}}}})",
       "/instances/a/lifs/l/addresses: an address is there twice"},
      {R"("instances": {"a": {"multicast": {"groups": [{"group": "1.1.1.1"}]}}})",
       "/instances/a/multicast/groups: a group without receivers is none"},
  };
  for (const auto& [members, complaint] : kCases) {
    EXPECT_EQ(Complaint(With(members)), complaint);
  }
}

TEST(WrongState, HasNoVersionOrAnotherOne) {
  EXPECT_EQ(Complaint("{}"), "/: 'format_version' is missing");
  EXPECT_EQ(Complaint(R"({"format_version": 2})"),
            "/format_version: 2 is not understood, 1 is the only version");
  EXPECT_EQ(Complaint(R"({"format_version": 4294967297})"),
            "/format_version: 4294967297 is not a whole number of 0 to 4294967295");
  EXPECT_EQ(Complaint(R"({"format_version": "1"})"), "/format_version: '1' is not a number");
  EXPECT_EQ(Complaint("[]"), "/: a state is an object");
  EXPECT_EQ(Complaint("1"), "/: a state is an object");
}

TEST(WrongState, SaysSomethingTwice) {
  EXPECT_EQ(Complaint(With(R"("logLevel": 1, "logLevel": 1)")), "/logLevel: is there twice");
  EXPECT_EQ(Complaint(With(R"("instances": {"a": {}, "b": {}, "a": {}})")),
            "/instances/a: is there twice");
  EXPECT_EQ(Complaint(With(R"("e2iEntries": [{"key": 1}, {"key": 2}, {"key": 1}])")),
            "/e2iEntries/2: is there twice");
  EXPECT_EQ(Complaint(With(R"("publicAddresses": [{"address": "1.1.1.1",
                               "items": ["2.2.2.2", "2.2.2.2"]}])")),
            "/publicAddresses/0/items/1: is there twice");
}

}  // namespace
