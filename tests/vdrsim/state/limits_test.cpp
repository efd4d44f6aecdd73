#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>

#include "documents.h"
#include "scenario/scenario.h"
#include "state/shape.h"
#include "state/state_rules.h"

// How much a document can hold, and what is said of one that holds more.

namespace {

using documents::Complaint;
using documents::With;

std::string Named(size_t number) { return fmt::format("\"n{}\": {{}}", number); }
std::string NamedMac(size_t number) {
  return fmt::format("\"n{}\": \"02:00:00:00:00:01\"", number);
}
std::string Keyed(size_t number) { return fmt::format("{{\"key\": {}}}", number); }
std::string Flagged(size_t number) { return fmt::format("{{\"flags\": {}}}", number); }
std::string OfArg(size_t number) { return fmt::format("{{\"arg1\": {}}}", number); }
std::string Leading(size_t number) { return fmt::format("{{\"interface\": \"{}\"}}", number); }
std::string Valued(size_t number) { return fmt::format("{{\"value\": {}}}", number); }
std::string Receiving(size_t number) { return fmt::format("{{\"b\": {}}}", number); }
std::string Word(size_t number) { return fmt::format("{{\"qword0\": {}}}", number); }
std::string Ipv4(size_t number) {
  return fmt::format("\"10.0.{}.{}\"", number / 256, number % 256);
}
std::string AtIpv4(size_t number) { return "{\"address\": " + Ipv4(number) + "}"; }
std::string AtIpv6(size_t number) { return fmt::format("{{\"address\": \"::{:x}\"}}", number); }
std::string OfMac(size_t number) {
  return fmt::format("{{\"mac\": \"02:00:00:00:{:02x}:{:02x}\"}}", number / 256, number % 256);
}
std::string Group(size_t number) {
  return "{\"group\": " + Ipv4(number) + ", \"localReceivers\": {\"\": {}}}";
}

std::string Elements(size_t count, std::string (*element)(size_t)) {
  std::string elements;
  for (size_t number = 0; number < count; ++number) {
    elements.append(number > 0 ? ", " : "").append(element(number));
  }
  return elements;
}

TEST(Limits, ADocumentHoldsSoManyOfAKindAndNoMore) {
  const struct {
    const char* before;
    const char* after;
    const char* path;
    size_t most;
    std::string (*element)(size_t);
  } kCases[] = {
      {R"("instances": {)", "}", "/instances/n", 1001, Named},
      {R"("connections": {)", "}", "/connections/n", 327, Named},
      {R"("bridgeClusters": {)", "}", "/bridgeClusters/n", 10, Named},
      {R"("bfdPortConnections": {)", "}", "/bfdPortConnections/n", 1524, Named},
      {R"("policyTables": [)", "]", "/policyTables/", 1000, Keyed},
      {R"("e2iEntries": [)", "]", "/e2iEntries/", 8192, Keyed},
      {R"("physicalMacs": [)", "]", "/physicalMacs/", 8192, OfMac},
      {R"("policies": [{"key": 1, "policies": [)", "]}]", "/policies/0/policies/", 1000, OfArg},
      {R"("bridgeClusters": {"c": {"nodes": {)", "}}}", "/bridgeClusters/c/nodes/n", 100, NamedMac},
      {R"("publicAddresses": [{"address": "1.1.1.1", "items": [)", "]}]",
       "/publicAddresses/0/items/", 256, Ipv4},
      {R"("instances": {"i": {"lifs": {)", "}}}", "/instances/i/lifs/n", 10000, Named},
      {R"("instances": {"i": {"bridgeLifs": {)", "}}}", "/instances/i/bridgeLifs/n", 10000, Named},
      {R"("instances": {"i": {"routes": [)", "]}}", "/instances/i/routes/", 20000, Leading},
      {R"("instances": {"i": {"ipv6Routes": [)", "]}}", "/instances/i/ipv6Routes/", 29999, Leading},
      {R"("instances": {"i": {"policies": [)", "]}}", "/instances/i/policies/", 20000, Flagged},
      {R"("instances": {"i": {"bridging": {"bridges": [)", "]}}}", "/instances/i/bridging/bridges/",
       4096, Valued},
      {R"("instances": {"i": {"bridging": {"forwarding": [{"entries": [)", "]}]}}}",
       "/instances/i/bridging/forwarding/0/entries/", 10240, OfMac},
      {R"("instances": {"i": {"multicast": {"groups": [)", "]}}}", "/instances/i/multicast/groups/",
       4096, Group},
      {R"("instances": {"i": {"multicast": {"groups": [{"group": "1.1.1.1", "localReceivers": {)",
       "}}]}}}", "/instances/i/multicast/groups/0/localReceivers/n", 512, Named},
      {R"("instances": {"i": {"multicast": {"groups": [{"group": "1.1.1.1", "remoteReceivers": [)",
       "]}]}}}", "/instances/i/multicast/groups/0/remoteReceivers/", 2048, Receiving},
      {R"("instances": {"i": {"bridgeLifs": {"l": {"endpoints": {)", "}}}}}",
       "/instances/i/bridgeLifs/l/endpoints/n", 28672, Named},
      {R"("instances": {"i": {"lifs": {"l": {"policies": [)", "]}}}}",
       "/instances/i/lifs/l/policies/", 20000, Flagged},
      {R"("instances": {"i": {"lifs": {"l": {"addresses": [)", "]}}}}",
       "/instances/i/lifs/l/addresses/", 10, AtIpv4},
      {R"("instances": {"i": {"lifs": {"l": {"relayServers": [)", "]}}}}",
       "/instances/i/lifs/l/relayServers/", 8, AtIpv4},
      {R"("instances": {"i": {"lifs": {"l": {"arps": [)", "]}}}}", "/instances/i/lifs/l/arps/",
       8192, AtIpv4},
      {R"("instances": {"i": {"lifs": {"l": {"proxyArps": [)", "]}}}}",
       "/instances/i/lifs/l/proxyArps/", 8192, AtIpv4},
      {R"("instances": {"i": {"lifs": {"l": {"ipv6Neighbours": [)", "]}}}}",
       "/instances/i/lifs/l/ipv6Neighbours/", 8192, AtIpv6},
      {R"("instances": {"i": {"lifs": {"l": {"ipv6Proxies": [)", "]}}}}",
       "/instances/i/lifs/l/ipv6Proxies/", 8192, AtIpv6},
      {R"("instances": {"i": {"lifs": {"l": {"policyTableRef": {"entries": [)", "]}}}}}",
       "/instances/i/lifs/l/policyTableRef/entries/", 20, Word},
  };
  for (const auto& [before, after, path, most, element] : kCases) {
    const std::string full = before + Elements(most, element);
    EXPECT_EQ(Complaint(With(full + after)), "");
    EXPECT_EQ(Complaint(With(full + ", " + element(most) + after)),
              fmt::format("{0}{1}: is one more than the {1} that there can be", path, most));
  }
}

// Two of a kind that hold as much together as one can, and one that is held beyond that.
TEST(Limits, SoMuchIsHeldInAllAndNoMore) {
  const auto named = [](size_t count) { return Elements(count, Named); };
  const auto macs = [](size_t count) { return Elements(count, NamedMac); };
  const auto bridges = [](size_t count) { return Elements(count, Valued); };
  const auto ipv4 = [](size_t count) { return Elements(count, AtIpv4); };
  const auto ipv6 = [](size_t count) { return Elements(count, AtIpv6); };
  const struct {
    const char* format;
    std::string (*elements)(size_t);
    size_t most;
    const char* complaint;
  } kCases[] = {
      {R"("instances": {{"a": {{"bridgeLifs": {{"l": {{"endpoints": {{{}}}}}}}}},
                        "b": {{"bridgeLifs": {{"l": {{"endpoints": {{{}}}}}}}}}}})",
       named, 28672, "/instances: there are 28673 bridge endpoints in all, and there can be 28672"},
      {R"("instances": {{"a": {{"bridging": {{"bridges": [{}]}}}},
                        "b": {{"bridging": {{"bridges": [{}]}}}}}})",
       bridges, 4096, "/instances: there are 4097 bridges in all, and there can be 4096"},
      {R"("bridgeClusters": {{"a": {{"nodes": {{{}}}}}, "b": {{"nodes": {{{}}}}}}})", macs, 100,
       "/bridgeClusters: there are 101 nodes in all, and there can be 100"},
      {R"("instances": {{"i": {{"lifs": {{"l": {{"arps": [{}]}}, "m": {{"arps": [{}]}}}}}}}})",
       ipv4, 8192, "/instances/i/lifs: there are 8193 arps in all, and there can be 8192"},
      {R"("instances": {{"i": {{"lifs": {{"l": {{"proxyArps": [{}]}},
                                          "m": {{"proxyArps": [{}]}}}}}}}})",
       ipv4, 8192, "/instances/i/lifs: there are 8193 proxyArps in all, and there can be 8192"},
      {R"("instances": {{"i": {{"lifs": {{"l": {{"ipv6Neighbours": [{}]}},
                                          "m": {{"ipv6Proxies": [{}]}}}}}}}})",
       ipv6, 8192,
       "/instances/i/lifs: there are 8193 ipv6Neighbours and ipv6Proxies in all, and there can be "
       "8192"},
  };
  for (const auto& [format, elements, most, complaint] : kCases) {
    const std::string some = elements(most / 3);
    EXPECT_EQ(Complaint(With(fmt::format(fmt::runtime(format), some, elements(most - most / 3)))),
              "");
    EXPECT_EQ(
        Complaint(With(fmt::format(fmt::runtime(format), some, elements(most + 1 - most / 3)))),
        complaint);
  }
}

// Too many for a document of a test.
std::string PublicAddressesComplaint(uint32_t addresses) {
  vdrsim::State state = vdrsim::MakeHost({.publicAddresses = addresses, .publicItems = 1});
  state.publicAddresses.itemCount = 0;
  try {
    Complete(state);
    EXPECT_EQ(state.publicAddresses.itemCount, addresses);
    return "";
  } catch (const vdrsim::shape::Unfit& complaint) {
    return complaint.what();
  }
}

TEST(Limits, PublicAddressesFillTheirList) {
  EXPECT_EQ(PublicAddressesComplaint(388002), "");
  EXPECT_EQ(PublicAddressesComplaint(388003),
            "/publicAddresses: there are 8536066 bytes in their list, and there can be 8536064");
}

}  // namespace
