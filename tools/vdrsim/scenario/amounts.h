#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>

namespace vdrsim {

// How much of each kind a scenario has: of what belongs to another, for each of these.
struct Amounts {
  uint32_t instances = 0;
  uint32_t lifs = 0;
  uint32_t addresses = 0;
  uint32_t relayServers = 0;
  uint32_t arps = 0;
  uint32_t proxyArps = 0;
  uint32_t ipv6Neighbours = 0;
  uint32_t ipv6Proxies = 0;
  uint32_t lifPolicies = 0;
  uint32_t policyTableRefs = 0;
  uint32_t bridgeLifs = 0;
  uint32_t endpoints = 0;
  uint32_t routes = 0;
  uint32_t ipv6Routes = 0;
  uint32_t bridges = 0;
  uint32_t fdbTables = 0;
  uint32_t fdbEntries = 0;
  uint32_t groups = 0;
  uint32_t localReceivers = 0;
  uint32_t remoteReceivers = 0;
  uint32_t instancePolicies = 0;
  uint32_t connections = 0;
  uint32_t policyKeys = 0;
  uint32_t policies = 0;
  uint32_t policyTables = 0;
  uint32_t e2iEntries = 0;
  uint32_t physicalMacs = 0;
  uint32_t softRss = 0;
  uint32_t publicAddresses = 0;
  uint32_t publicItems = 0;
  uint32_t bridgeClusters = 0;
  uint32_t clusterNodes = 0;
  uint32_t bfdPorts = 0;
  uint32_t transportNodes = 0;
};

using Amount = uint32_t Amounts::*;

// One kind of objects that a scenario can have.
struct ObjectKind {
  const char* option;
  const char* what;
  Amount amount;
  Amount parent;  // what each of them belongs to, or NULL
  size_t most;    // of one parent
};

// Parents come before what belongs to them.
std::span<const ObjectKind> ObjectKinds();

// Why there can't be a scenario, for the person who asked for it.
class ImpossibleScenario : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Adds what others can't be without, and refuses what is beyond a cap: ImpossibleScenario.
Amounts Complete(Amounts amounts);

}  // namespace vdrsim
