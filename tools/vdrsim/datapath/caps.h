#pragma once

#include <cstddef>
#include <limits>

// How many objects of each kind there can be. Most are what a caller has room for when it lists
// them: one more could never be listed.
namespace vdrsim {

// Of these there is no list that could be full.
inline constexpr size_t kNoCap = std::numeric_limits<size_t>::max();

inline constexpr size_t kMostInstances = 1001;
inline constexpr size_t kMostConnections = 327;
inline constexpr size_t kMostPolicyTables = 1000;
inline constexpr size_t kMostE2i = 8192;
inline constexpr size_t kMostPhysicalMacs = 8192;
inline constexpr size_t kMostBridgeClusters = 10;
inline constexpr size_t kMostBfdPortConnections = 1524;

// In all instances, or clusters, together.
inline constexpr size_t kMostBridges = 4096;
inline constexpr size_t kMostBridgeEndpoints = 28672;
inline constexpr size_t kMostClusterNodes = 100;

// Of an instance. Of one IPv6 route more a caller by the library could read none.
inline constexpr size_t kMostLifs = 10000;  // and as many bridge LIFs
inline constexpr size_t kMostRoutes = 20000;
inline constexpr size_t kMostIpv6Routes = 29999;
inline constexpr size_t kMostMcastGroups = 4096;
inline constexpr size_t kMostNeighbours = 8192;  // of each list, of all LIFs together

// Of a LIF.
inline constexpr size_t kMostLifAddresses = 10;
inline constexpr size_t kMostRelayServers = 8;
inline constexpr size_t kMostPolicyTableRefs = 20;

// Of a LIF, and of an instance for itself.
inline constexpr size_t kMostLifPolicies = 20000;

// Of a key, of a table of a forwarding database, of a group.
inline constexpr size_t kMostPolicies = 1000;
inline constexpr size_t kMostFdbEntries = 10240;
inline constexpr size_t kMostLocalReceivers = 512;
inline constexpr size_t kMostRemoteReceivers = 2048;

// Of a public address. The list of all addresses has room for so many bytes.
inline constexpr size_t kMostPublicItems = 256;
inline constexpr size_t kPublicAddressBytes = 18;
inline constexpr size_t kPublicItemBytes = 4;
inline constexpr size_t kMostPublicAddressBytes = 8536064;

// Bytes of the indirection of a software RSS object.
inline constexpr size_t kMostRssEntries = 128;

}  // namespace vdrsim
