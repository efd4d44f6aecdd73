#include "scenario/scenario.h"

#include <gtest/gtest.h>

#include <string>

#include "scenario_document.h"
#include "state/state_writer.h"

namespace {

using vdrsim::Amounts;
using vdrsim::Complete;
using vdrsim::ObjectKinds;

std::string Document(const Amounts& amounts) {
  vdrsim::StateWriter writer(vdrsim::MakeHost(amounts),
                             amounts.instances > 0 ? vdrsim::MakeInstances(amounts) : nullptr);
  std::string document;
  for (auto piece = writer.Next(); !piece.empty(); piece = writer.Next()) document += piece;
  return document;
}

TEST(Scenario, IsAWholeDocument) {
  EXPECT_EQ(Document({.instances = 1,
                      .lifs = 2,
                      .addresses = 2,
                      .relayServers = 2,
                      .arps = 2,
                      .proxyArps = 2,
                      .ipv6Neighbours = 2,
                      .ipv6Proxies = 2,
                      .lifPolicies = 3,
                      .policyTableRefs = 2,
                      .bridgeLifs = 2,
                      .endpoints = 3,
                      .routes = 3,
                      .ipv6Routes = 2,
                      .bridges = 2,
                      .fdbTables = 2,
                      .fdbEntries = 2,
                      .groups = 1,
                      .localReceivers = 2,
                      .remoteReceivers = 2,
                      .instancePolicies = 2,
                      .connections = 2,
                      .policyKeys = 2,
                      .policies = 2,
                      .policyTables = 2,
                      .e2iEntries = 2,
                      .physicalMacs = 2,
                      .softRss = 2,
                      .publicAddresses = 2,
                      .publicItems = 2,
                      .bridgeClusters = 2,
                      .clusterNodes = 2,
                      .bfdPorts = 2,
                      .transportNodes = 1}),
            kScenarioDocument);
}

TEST(Scenario, OfNothingHasNothing) {
  EXPECT_EQ(Document({}), "{\n  \"format_version\": 1\n}\n");
  vdrsim::shape::Element element;
  EXPECT_FALSE(vdrsim::MakeInstances({})->Next(element));
}

TEST(Scenario, NumbersItsInstances) {
  EXPECT_EQ(Document({.instances = 2, .bridgeLifs = 1}), R"({
  "format_version": 1,
  "instances": {
    "edge-1": {
      "second": 1,
      "flag": 1,
      "bridgeLifs": {
        "bridge-lif-1-1": {
          "a5": 1
        }
      }
    },
    "edge-2": {
      "second": 2,
      "flag": 1,
      "bridgeLifs": {
        "bridge-lif-2-1": {
          "a5": 1
        }
      }
    }
  }
}
)");
}

TEST(Scenario, GoesOnWhereANumberOutgrowsItsByteOrItsRange) {
  const struct {
    Amounts amounts;
    const char* part;
  } kCases[] = {
      {{.instances = 1, .lifs = 4095}, "\"auxName\": \"uplink-4094\",\n          \"a5\": 4094,"},
      {{.instances = 1, .lifs = 4095}, "\"auxName\": \"uplink-4095\",\n          \"a5\": 1,"},
      {{.instances = 1, .lifs = 256, .addresses = 1}, "{\"address\": \"10.1.0.1\","},
      {{.instances = 1, .lifs = 256, .arps = 1},
       "{\"address\": \"20.0.1.0\", \"mac\": \"02:02:01:00:00:01\"}"},
      {{.instances = 1, .ipv6Routes = 258},
       "{\"destination\": \"2001:db8:102::\", \"prefixLength\": 48, \"gateway\": "
       "\"2001:db8::102\", \"interface\": \"\"}"},
      {{.instances = 1, .bridgeLifs = 1, .endpoints = 4094},
       "\"value2\": 4094,\n              \"tag\": 4094\n"},
      {{.instances = 1, .bridgeLifs = 1, .endpoints = 4095},
       "\"endpoint-4095\": {\n              \"value2\": 4095,\n              \"tag\": 1\n"},
      {{.publicAddresses = 65536, .publicItems = 1},
       "\"address\": \"50.1.0.0\",\n      \"c\": \"02:05:00:01:00:00\","},
  };
  for (const auto& [amounts, part] : kCases) {
    EXPECT_NE(Document(amounts).find(part), std::string::npos) << part;
  }
}

// However long the document is, there is never more of it than a piece.
TEST(Scenario, IsWrittenInPieces) {
  vdrsim::StateWriter writer(vdrsim::MakeHost({.publicAddresses = 5000, .publicItems = 1}));
  size_t pieces = 0;
  for (auto piece = writer.Next(); !piece.empty(); piece = writer.Next()) {
    EXPECT_LT(piece.size(), 66000U);
    ++pieces;
  }
  EXPECT_GT(pieces, 5U);
}

// The document alone doesn't tell.
TEST(Scenario, CountsTheItemsOfPublicAddresses) {
  EXPECT_EQ(vdrsim::MakeHost({.publicAddresses = 3, .publicItems = 5}).publicAddresses.itemCount,
            15U);
}

// The amounts that are not 0, by their options.
std::string Text(const Amounts& amounts) {
  std::string text;
  for (const vdrsim::ObjectKind& kind : ObjectKinds()) {
    if (const uint32_t amount = amounts.*kind.amount) {
      text += std::string(kind.option) + " " + std::to_string(amount) + " ";
    }
  }
  return text;
}

TEST(Amounts, GainWhatTheyCannotBeWithout) {
  const std::pair<Amounts, const char*> kCases[] = {
      {{}, ""},
      {{.addresses = 3}, "--instances 1 --lifs 1 --addresses 3 "},
      {{.relayServers = 3}, "--instances 1 --lifs 1 --relay-servers 3 "},
      {{.arps = 3}, "--instances 1 --lifs 1 --arps 3 "},
      {{.proxyArps = 3}, "--instances 1 --lifs 1 --proxy-arps 3 "},
      {{.ipv6Neighbours = 3}, "--instances 1 --lifs 1 --ipv6-neighbours 3 "},
      {{.ipv6Proxies = 3}, "--instances 1 --lifs 1 --ipv6-proxies 3 "},
      {{.lifPolicies = 3}, "--instances 1 --lifs 1 --lif-policies 3 "},
      {{.policyTableRefs = 3}, "--instances 1 --lifs 1 --policy-table-refs 3 "},
      {{.instances = 2, .lifs = 3, .arps = 4}, "--instances 2 --lifs 3 --arps 4 "},
      {{.endpoints = 3}, "--instances 1 --bridge-lifs 1 --endpoints 3 "},
      {{.routes = 3}, "--instances 1 --routes 3 "},
      {{.ipv6Routes = 3}, "--instances 1 --ipv6-routes 3 "},
      {{.bridges = 3}, "--instances 1 --bridges 3 "},
      {{.fdbEntries = 3}, "--instances 1 --bridges 1 --fdb-tables 1 --fdb-entries 3 "},
      {{.bridges = 2, .fdbTables = 3}, "--instances 1 --bridges 2 --fdb-tables 3 "},
      {{.groups = 3}, "--instances 1 --groups 3 --local-receivers 1 "},
      {{.localReceivers = 3}, "--instances 1 --groups 1 --local-receivers 3 "},
      {{.remoteReceivers = 3}, "--instances 1 --groups 1 --remote-receivers 3 "},
      {{.instancePolicies = 3}, "--instances 1 --instance-policies 3 "},
      {{.connections = 3}, "--connections 3 "},
      {{.policyKeys = 3}, "--policy-keys 3 --policies 1 "},
      {{.policies = 3}, "--policy-keys 1 --policies 3 "},
      {{.policyTables = 3}, "--policy-tables 3 "},
      {{.e2iEntries = 3}, "--e2i-entries 3 "},
      {{.physicalMacs = 3}, "--physical-macs 3 "},
      {{.softRss = 3}, "--soft-rss 3 "},
      {{.publicAddresses = 3}, "--public-addresses 3 --public-items 1 "},
      {{.publicItems = 3}, "--public-addresses 1 --public-items 3 "},
      {{.bridgeClusters = 3}, "--clusters 3 "},
      {{.clusterNodes = 3}, "--clusters 1 --nodes 3 "},
      {{.bfdPorts = 3}, "--bfd-ports 3 "},
      {{.transportNodes = 1}, "--transport-nodes 1 "},
  };
  for (const auto& [asked, completed] : kCases) EXPECT_EQ(Text(Complete(asked)), completed);
}

std::string Refusal(const Amounts& amounts) try {
  Complete(amounts);
  return "";
} catch (const vdrsim::ImpossibleScenario& refusal) {
  return refusal.what();
}

TEST(Amounts, CanReachEachCapOfTheirProductsAndNoMore) {
  const struct {
    Amounts most;
    Amounts more;
    const char* refusal;
  } kCases[] = {
      {{.instances = 2, .bridges = 2048},
       {.instances = 2, .bridges = 2049},
       "4098 bridges in all instances are more than the 4096 that there can be"},
      {{.instances = 2, .bridgeLifs = 7, .endpoints = 2048},
       {.instances = 2, .bridgeLifs = 7, .endpoints = 2049},
       "28686 endpoints in all instances are more than the 28672 that there can be"},
      {{.lifs = 2, .arps = 4096},
       {.lifs = 2, .arps = 4097},
       "8194 ARP entries in each instance are more than the 8192 that there can be"},
      {{.lifs = 2, .proxyArps = 4096},
       {.lifs = 2, .proxyArps = 4097},
       "8194 proxy ARP entries in each instance are more than the 8192 that there can be"},
      {{.lifs = 2, .ipv6Neighbours = 2000, .ipv6Proxies = 2096},
       {.lifs = 2, .ipv6Neighbours = 2000, .ipv6Proxies = 2097},
       "8194 IPv6 neighbours and proxies in each instance are more than the 8192 that there can "
       "be"},
      {{.bridgeClusters = 2, .clusterNodes = 50},
       {.bridgeClusters = 2, .clusterNodes = 51},
       "102 nodes in all clusters are more than the 100 that there can be"},
      {{.publicAddresses = 388002},
       {.publicAddresses = 388003},
       "8536066 bytes of public addresses are more than the 8536064 that there can be"},
      {{.publicAddresses = 8192, .publicItems = 256},
       {.publicAddresses = 8193, .publicItems = 256},
       "8537106 bytes of public addresses are more than the 8536064 that there can be"},
  };
  for (const auto& [most, more, refusal] : kCases) {
    EXPECT_EQ(Refusal(most), "");
    EXPECT_EQ(Refusal(more), refusal);
  }
}

}  // namespace
