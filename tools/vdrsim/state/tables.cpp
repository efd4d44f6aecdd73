#include "state/tables.h"

#include "datapath/caps.h"
#include "datapath/state.h"
#include "state/members.h"
#include "state/object_forms.h"

// The members of each structure of a state, and how each looks in a document. A structure that gains
// a member which has no row here does not compile.
namespace vdrsim {

namespace {

using namespace shape;
using forms::Ipv4As;
using forms::kScalar;
using requests::Name;

using Ipv4Word = Ipv4As<uint32_t>;
using Ipv4Bytes = Ipv4As<Ipv4>;

// Whether a table has all members of its structure, but for those that follow from others.
template <typename Type>
consteval bool Covers(std::span<const Member> members, size_t derived = 0) {
  return members.size() + derived == MemberCount<Type>();
}

template <auto Pointer>
constexpr Member HasCount(const char* name, std::string_view remark) {
  return Has<Pointer>(name, &kScalar<forms::CountOf>, remark);
}

constexpr Member kCountsMembers[] = {
    HasCount<&Counts::sets>("sets", "commands that set something"),
    HasCount<&Counts::deletes>("deletes", "commands that deleted something"),
    HasCount<&Counts::lookups>("lookups", "commands that only read"),
    HasCount<&Counts::failures>("failures", "commands that failed"),
};
static_assert(Covers<Counts>(kCountsMembers));
constexpr Struct kCounts{"Counts", kCountsMembers};

// Counters take no part in comparisons, so they are asked themselves.
template <auto Pointer>
constexpr Member kCounters{
    .name = "counters",
    .shape = &kCounts,
    .find = [](const void* owner) -> const void* {
      const Counts& counts = Pointed<Pointer>::In(owner).counts();
      return counts == Counts{} ? nullptr : &counts;
    },
    .make = [](void* owner) -> void* { return &Pointed<Pointer>::In(owner).counts(); },
    .function = {},
    .argument = "the commands that it has seen",
};

// The address of a LIF, or of a server. Its form tells the family.
template <typename Owner>
constexpr Member Address(std::string_view remark) {
  return {.name = "address",
          .shape = &kScalar<forms::AddressIn<Owner>>,
          .find = [](const void* owner) { return owner; },
          .make = [](void* owner) { return owner; },
          .function = {},
          .argument = remark,
          .isRequired = true};
}

constexpr Member kLifAddressMembers[] = {
    Address<LifAddress>(
        "`ip` of `VDRZAX_SetLifIp`, `addrHigh` and `addrLow` of `VDRZAX_SetLifIpv6`"),
    Set<&LifAddress::mask, From<"SetLifIp", "mask">, Ipv4Word>("mask"),
    Set<&LifAddress::prefixLength, From<"SetLifIpv6", "prefixLength">>("prefixLength"),
};
static_assert(Covers<LifAddress>(kLifAddressMembers, 1));
constexpr Struct kLifAddress{"LifAddress", kLifAddressMembers};

constexpr Member kRelayServerMembers[] = {
    Address<RelayServer>("one of the servers of command 33, which the library only clears"),
};
static_assert(Covers<RelayServer>(kRelayServerMembers, 1));
constexpr Struct kRelayServer{"RelayServer", kRelayServerMembers};

template <Name Argument>
using FromEndpoint = From<"AddBridgeEndpoint", Argument>;
constexpr Member kBridgeEndpointMembers[] = {
    Set<&BridgeEndpoint::secondName, FromEndpoint<"secondName">>("secondName"),
    Set<&BridgeEndpoint::fourthName, FromEndpoint<"fourthName">>("fourthName"),
    Set<&BridgeEndpoint::fifthName, FromEndpoint<"fifthName">>("fifthName"),
    Set<&BridgeEndpoint::value1, FromEndpoint<"value1">>("value1"),
    Set<&BridgeEndpoint::value2, FromEndpoint<"value2">>("value2"),
    Set<&BridgeEndpoint::tag, FromEndpoint<"tag">>("tag"),
    Set<&BridgeEndpoint::flag1, FromEndpoint<"flag1">>("flag1"),
    Set<&BridgeEndpoint::flag2, FromEndpoint<"flag2">>("flag2"),
    kCounters<&BridgeEndpoint::counters>,
};
static_assert(Covers<BridgeEndpoint>(kBridgeEndpointMembers));
constexpr Struct kBridgeEndpoint{"BridgeEndpoint", kBridgeEndpointMembers};
constexpr Collection kEndpoints =
    ByName<Table<std::string, BridgeEndpoint>, FromEndpoint<"endpointName">, kMostBridgeEndpoints>(
        &kBridgeEndpoint);

// The bytes of the address follow from its text.
constexpr Member kNeighbourMembers[] = {
    {.name = "mac",
     .shape = &kScalar<forms::NeighbourMac>,
     .find = Find<&Neighbour::macText>,
     .make = [](void* owner) { return owner; },
     .function = From<"SetArp", "macText">::kFunction,
     .argument = From<"SetArp", "macText">::kArgument},
};
static_assert(Covers<Neighbour>(kNeighbourMembers, 1));
constexpr Struct kNeighbour{"Neighbour", kNeighbourMembers};
constexpr Struct kProxy{"Proxy", {}};

constexpr Member kIpv4KeyMembers[] = {Itself<From<"SetArp", "ip">, forms::LongIpv4>("address")};
constexpr Struct kIpv4Key{"Ipv4", kIpv4KeyMembers};
constexpr Member kIpv6KeyMembers[] = {Itself<From<"SetArpv6", "ipPart1">, forms::Ipv6>("address")};
constexpr Struct kIpv6Key{"Ipv6", kIpv6KeyMembers};
constexpr Collection kArps = Array<Neighbours, kMostNeighbours>(&kNeighbour, &kIpv4Key);
constexpr Collection kProxyArps = Array<Neighbours, kMostNeighbours>(&kProxy, &kIpv4Key);
constexpr Collection kIpv6Neighbours = Array<Neighbours, kMostNeighbours>(&kNeighbour, &kIpv6Key);
constexpr Collection kIpv6Proxies = Array<Neighbours, kMostNeighbours>(&kProxy, &kIpv6Key);

template <Name Argument>
using FromLifPolicy = From<"SetLifPolicy", Argument>;
constexpr Member kLifPolicyKeyMembers[] = {
    KeyPart<&LifPolicyKey::type, FromLifPolicy<"policyType">>("type"),
    KeyPart<&LifPolicyKey::arg1, FromLifPolicy<"routeArg1">, Ipv4Word>("arg1"),
    KeyPart<&LifPolicyKey::arg2, FromLifPolicy<"routeArg2">, Ipv4Word>("arg2"),
    KeyPart<&LifPolicyKey::arg3, FromLifPolicy<"routeArg3">, Ipv4Word>("arg3"),
    KeyPart<&LifPolicyKey::flags, FromLifPolicy<"routeFlags">>("flags"),
    KeyPart<&LifPolicyKey::ifName, FromLifPolicy<"ifName">>("ifName"),
};
static_assert(Covers<LifPolicyKey>(kLifPolicyKeyMembers) && Covers<LifPolicy>({}));
constexpr Struct kLifPolicyKey{"", kLifPolicyKeyMembers};
constexpr Struct kLifPolicy{"LifPolicy", {}};
constexpr Collection kLifPolicies =
    Array<LifPolicies, kMostLifPolicies>(&kLifPolicy, &kLifPolicyKey);

using RefEntry = std::array<uint64_t, 3>;
template <size_t Index>
constexpr Member RefWord(const char* name) {
  return {.name = name,
          .shape = &kScalar<forms::Numbers<uint64_t>>,
          .find = [](const void* owner) -> const void* {
            return &(*static_cast<const RefEntry*>(owner))[Index];
          },
          .make = [](void* owner) -> void* { return &(*static_cast<RefEntry*>(owner))[Index]; },
          .function = From<"SetLifPolicyTableRef", "bytes">::kFunction,
          .argument = From<"SetLifPolicyTableRef", "bytes">::kArgument};
}
constexpr Member kRefEntryMembers[] = {
    RefWord<0>("qword0"),
    RefWord<1>("qword8"),
    RefWord<2>("qword16"),
};
static_assert(std::size(kRefEntryMembers) == std::tuple_size_v<RefEntry>);
constexpr Struct kRefEntry{"RefEntry", kRefEntryMembers};
constexpr Collection kRefEntries = Array<std::vector<RefEntry>, kMostPolicyTableRefs>(&kRefEntry);
constexpr Member kPolicyTableRefMembers[] = {
    Has<&PolicyTableRef::entries>("entries", &kRefEntries),
};
static_assert(Covers<PolicyTableRef>(kPolicyTableRefMembers));
constexpr Struct kPolicyTableRef{"PolicyTableRef", kPolicyTableRefMembers};

constexpr Collection kLifAddresses =
    Array<std::vector<LifAddress>, kMostLifAddresses>(&kLifAddress);
constexpr Collection kRelayServers =
    Array<std::vector<RelayServer>, kMostRelayServers>(&kRelayServer);

template <Name Argument>
using FromLif = From<"SetLif", Argument>;
constexpr Member kLifMembers[] = {
    Set<&Lif::auxName, FromLif<"auxName">>("auxName"),
    Set<&Lif::a3, FromLif<"a3">>("a3"),
    Set<&Lif::a4, FromLif<"a4">>("a4"),
    Set<&Lif::a5, FromLif<"a5">>("a5"),
    Set<&Lif::a6, FromLif<"a6">>("a6"),
    Set<&Lif::a7, FromLif<"a7">>("a7"),
    Set<&Lif::extra, FromLif<"extra">>("extra"),
    Set<&Lif::flags, FromLif<"flagsWord">>("flags"),
    Set<&Lif::mode, FromLif<"mode">>("mode"),
    Has<&Lif::isEnabled>("isEnabled", &kScalar<forms::Truth>, "`VDRZAX_EnableLif`"),
    Has<&Lif::isUnderVxlanControl>("isUnderVxlanControl", &kScalar<forms::Truth>,
                                   "`VDRZAX_SetLifVxlanCP`"),
    Has<&Lif::routesMulticast>("routesMulticast", &kScalar<forms::Truth>,
                               "`VDRZAX_SetLifMcastRouting`"),
    Set<&Lif::diIp, From<"SetLifDIIp", "ip">, Ipv4Word>("diIp"),
    Set<&Lif::vxlanMulticastIp, From<"SetLifVxlanMulticastIp", "ip">, Ipv4Word>("vxlanMulticastIp"),
    Set<&Lif::mtu, From<"RAMTUSetv6", "mtu">>("mtu"),
    Has<&Lif::addresses>("addresses", &kLifAddresses),
    Has<&Lif::relayServers>("relayServers", &kRelayServers),
    Has<&Lif::endpoints>("endpoints", &kEndpoints, "of a bridge LIF"),
    Has<&Lif::arps>("arps", &kArps),
    Has<&Lif::proxyArps>("proxyArps", &kProxyArps),
    Has<&Lif::ipv6Neighbours>("ipv6Neighbours", &kIpv6Neighbours),
    Has<&Lif::ipv6Proxies>("ipv6Proxies", &kIpv6Proxies),
    Has<&Lif::policies>("policies", &kLifPolicies, "of type 4"),
    Has<&Lif::policyTableRef>("policyTableRef", &kPolicyTableRef),
    kCounters<&Lif::counters>,
    Has<&Lif::cachedCounts>("cachedCounts", &kCounts, "as `VDRZAX_GetLifStats` saw them last"),
};
static_assert(Covers<Lif>(kLifMembers));
constexpr Struct kLif{"Lif", kLifMembers};
constexpr Collection kLifs = ByName<Table<std::string, Lif>, FromLif<"lifName">, kMostLifs>(&kLif);

template <Name Argument>
using FromRoute = From<"SetRoute", Argument>;
constexpr Member kRouteKeyMembers[] = {
    KeyPart<&RouteKey::destination, FromRoute<"routeArg1">, Ipv4Bytes>("destination"),
    KeyPart<&RouteKey::mask, FromRoute<"routeArg2">, Ipv4Bytes>("mask"),
    KeyPart<&RouteKey::third, FromRoute<"routeArg3">, Ipv4Bytes>("third"),
    KeyPart<&RouteKey::interface, FromRoute<"ifName">>("interface"),
};
static_assert(Covers<RouteKey>(kRouteKeyMembers));
constexpr Struct kRouteKey{"", kRouteKeyMembers};
constexpr Member kRouteMembers[] = {Set<&Route::flags, FromRoute<"routeFlags">>("flags")};
static_assert(Covers<Route>(kRouteMembers));
constexpr Struct kRoute{"Route", kRouteMembers};
constexpr Collection kRoutes = Array<Table<RouteKey, Route>, kMostRoutes>(&kRoute, &kRouteKey);

template <Name Argument>
using FromIpv6Route = From<"SetRoutev6", Argument>;
constexpr Member kIpv6RouteKeyMembers[] = {
    KeyPart<&Ipv6RouteKey::destination, FromIpv6Route<"destPart1">, forms::Ipv6>("destination"),
    KeyPart<&Ipv6RouteKey::prefixLength, FromIpv6Route<"prefixLength">>("prefixLength"),
    KeyPart<&Ipv6RouteKey::gateway, FromIpv6Route<"gatewayPart1">, forms::Ipv6>("gateway"),
    KeyPart<&Ipv6RouteKey::interface, FromIpv6Route<"ifName">>("interface"),
};
static_assert(Covers<Ipv6RouteKey>(kIpv6RouteKeyMembers) && Covers<Ipv6Route>({}));
constexpr Struct kIpv6RouteKey{"", kIpv6RouteKeyMembers};
constexpr Struct kIpv6Route{"Ipv6Route", {}};
constexpr Collection kIpv6Routes =
    Array<Table<Ipv6RouteKey, Ipv6Route>, kMostIpv6Routes>(&kIpv6Route, &kIpv6RouteKey);

constexpr Member kBridgeKeyMembers[] = {
    Itself<From<"BridgeAdd", "value">, forms::Numbers<uint32_t>>("value"),
};
constexpr Struct kBridgeKey{"", kBridgeKeyMembers};
constexpr Member kBridgeMembers[] = {
    Has<&Bridge::isEnabled>("isEnabled", &kScalar<forms::Truth>, "`VDRZAX_BridgeEnable`"),
    kCounters<&Bridge::counters>,
};
static_assert(Covers<Bridge>(kBridgeMembers));
constexpr Struct kBridge{"Bridge", kBridgeMembers};
constexpr Collection kBridges = Array<Table<uint32_t, Bridge>, kMostBridges>(&kBridge, &kBridgeKey);

template <Name Argument>
using FromFdb = From<"BridgeSetFdbEntry", Argument>;
constexpr Member kFdbTableNameMembers[] = {
    KeyPart<&FdbTableName::segment, FromFdb<"segment">>("segment"),
    KeyPart<&FdbTableName::selector, FromFdb<"selector">>("selector"),
};
static_assert(Covers<FdbTableName>(kFdbTableNameMembers));
constexpr Struct kFdbTableName{"", kFdbTableNameMembers};
constexpr Member kFdbKeyMembers[] = {Itself<FromFdb<"macText">, forms::Mac>("mac")};
constexpr Struct kFdbKey{"", kFdbKeyMembers};
constexpr Member kFdbEntryMembers[] = {
    Set<&FdbEntry::value, FromFdb<"value">>("value"),
    Set<&FdbEntry::flag, FromFdb<"flag">>("flag"),
};
static_assert(Covers<FdbEntry>(kFdbEntryMembers));
constexpr Struct kFdbEntry{"FdbEntry", kFdbEntryMembers};

// The member of an element that is a collection itself.
constexpr Member Elements(const char* name, const Collection& collection) {
  return {.name = name,
          .shape = &collection,
          .find = [](const void* owner) { return owner; },
          .make = [](void* owner) { return owner; },
          .function = {},
          .argument = {}};
}

using FdbEntries = Table<MacAddress, FdbEntry>;
constexpr Collection kFdbEntries = Array<FdbEntries, kMostFdbEntries>(&kFdbEntry, &kFdbKey);
constexpr Member kFdbTableMembers[] = {Elements("entries", kFdbEntries)};
constexpr Struct kFdbTable{"FdbTable", kFdbTableMembers};
constexpr Collection kForwarding =
    Array<Table<FdbTableName, FdbEntries>, kNoCap>(&kFdbTable, &kFdbTableName);

constexpr Member kBridgingMembers[] = {
    Has<&Bridging::bridges>("bridges", &kBridges),
    Has<&Bridging::forwarding>("forwarding", &kForwarding),
    Set<&Bridging::replicationMode, From<"SetBridgeRepMode", "mode">>("replicationMode"),
    Set<&Bridging::haAdminState, From<"BridgeSetHAAdminState", "state">>("haAdminState"),
};
static_assert(Covers<Bridging>(kBridgingMembers));
constexpr Struct kBridging{"Bridging", kBridgingMembers};

static_assert(Covers<LocalReceiver>({}));
constexpr Struct kLocalReceiver{"LocalReceiver", {}};
// None is a name as well.
constexpr Collection kLocalReceivers = Make<Table<std::string, LocalReceiver>, kMostLocalReceivers>(
    &kLocalReceiver, &kScalar<forms::Text<From<"AddMRoutingLocalRcvrs", "rcvrName">::kNameRoom>>,
    nullptr);

template <Name Argument>
using FromReceiver = From<"AddMRoutingRemoteRcvrs", Argument>;
constexpr Member kRemoteKeyMembers[] = {
    Itself<FromReceiver<"b">, forms::Numbers<uint32_t>>("b"),
};
constexpr Struct kRemoteKey{"", kRemoteKeyMembers};
constexpr Member kRemoteReceiverMembers[] = {
    Set<&RemoteReceiver::c, FromReceiver<"c">>("c"),
    Set<&RemoteReceiver::d, FromReceiver<"d">>("d"),
    Set<&RemoteReceiver::e, FromReceiver<"e">>("e"),
};
static_assert(Covers<RemoteReceiver>(kRemoteReceiverMembers));
constexpr Struct kRemoteReceiver{"RemoteReceiver", kRemoteReceiverMembers};
constexpr Collection kRemoteReceivers =
    Array<Table<uint32_t, RemoteReceiver>, kMostRemoteReceivers>(&kRemoteReceiver, &kRemoteKey);

constexpr Member kGroupKeyMembers[] = {Itself<FromReceiver<"a">, Ipv4Word>("group")};
constexpr Struct kGroupKey{"", kGroupKeyMembers};
constexpr Member kMcastGroupMembers[] = {
    Has<&McastGroup::localReceivers>("localReceivers", &kLocalReceivers),
    Has<&McastGroup::remoteReceivers>("remoteReceivers", &kRemoteReceivers),
};
static_assert(Covers<McastGroup>(kMcastGroupMembers));
constexpr Struct kMcastGroup{"McastGroup", kMcastGroupMembers};
constexpr Collection kGroups =
    Array<Table<uint32_t, McastGroup>, kMostMcastGroups>(&kMcastGroup, &kGroupKey);
constexpr Member kMulticastMembers[] = {
    Has<&Multicast::groups>("groups", &kGroups),
    Set<&Multicast::router, From<"AddMRoutingMRouter", "ip">, Ipv4Word>("router"),
};
static_assert(Covers<Multicast>(kMulticastMembers));
constexpr Struct kMulticast{"Multicast", kMulticastMembers};

template <Name Argument>
using FromMcastRouting = From<"SetMcastRouting", Argument>;
constexpr Member kMcastRoutingMembers[] = {
    Set<&Instance::McastRouting::name2, FromMcastRouting<"name2">>("name2"),
    Set<&Instance::McastRouting::value1, FromMcastRouting<"value1">>("value1"),
    Set<&Instance::McastRouting::value2, FromMcastRouting<"value2">>("value2"),
    Set<&Instance::McastRouting::value3, FromMcastRouting<"value3">>("value3"),
    Set<&Instance::McastRouting::flag, FromMcastRouting<"flag">>("flag"),
};
static_assert(Covers<Instance::McastRouting>(kMcastRoutingMembers));
constexpr Struct kMcastRouting{"McastRouting", kMcastRoutingMembers};

template <Name Argument>
using FromInstance = From<"SetVdrInstance", Argument>;
constexpr Member kInstanceMembers[] = {
    Set<&Instance::second, FromInstance<"second">>("second"),
    Set<&Instance::fourth, FromInstance<"fourth">>("fourth"),
    Set<&Instance::flag, FromInstance<"flag">>("flag"),
    Set<&Instance::text, FromInstance<"text">>("text"),
    Set<&Instance::tunables, From<"SetVdrInstanceTunables", "tunables">>("tunables"),
    Set<&Instance::tunablesValue, From<"SetVdrInstanceTunables", "value">>("tunablesValue"),
    Set<&Instance::cpAddress, From<"SetCPIp", "address">, Ipv4Word>("cpAddress"),
    Set<&Instance::cpSyncState, From<"SetVdrInstanceCPSyncState", "state">>("cpSyncState"),
    Has<&Instance::mcastRouting>("mcastRouting", &kMcastRouting),
    Has<&Instance::lifs>("lifs", &kLifs),
    Has<&Instance::bridgeLifs>("bridgeLifs", &kLifs, "of `VDRZAX_SetBridgeLif`"),
    Has<&Instance::routes>("routes", &kRoutes),
    Has<&Instance::ipv6Routes>("ipv6Routes", &kIpv6Routes),
    Has<&Instance::bridging>("bridging", &kBridging),
    Has<&Instance::multicast>("multicast", &kMulticast),
    Has<&Instance::policies>("policies", &kLifPolicies, "of types other than 4"),
    kCounters<&Instance::counters>,
};
static_assert(Covers<Instance>(kInstanceMembers));
constexpr Struct kInstance{"Instance", kInstanceMembers};
constexpr Collection kInstances =
    ByName<Table<std::string, Instance>, FromInstance<"name">, kMostInstances>(&kInstance);

template <Name Argument>
using FromConnection = From<"PlumbVdrConnection", Argument>;
constexpr Member kConnectionMembers[] = {
    Set<&Connection::second, FromConnection<"second">>("second"),
    Set<&Connection::fourth, FromConnection<"fourth">>("fourth"),
    Set<&Connection::fifth, FromConnection<"fifth">>("fifth"),
    Set<&Connection::sixth, FromConnection<"sixth">>("sixth"),
    Set<&Connection::seventh, FromConnection<"seventh">>("seventh"),
};
static_assert(Covers<Connection>(kConnectionMembers));
constexpr Struct kConnection{"Connection", kConnectionMembers};
constexpr Collection kConnections =
    ByName<Table<std::string, Connection>, FromConnection<"connectionName">, kMostConnections>(
        &kConnection);

template <Name Argument>
using FromPolicy = From<"SetPolicy", Argument>;
constexpr Member kPolicyArgsMembers[] = {
    KeyPart<&PolicyArgs::arg1, FromPolicy<"policyArg1">>("arg1"),
    KeyPart<&PolicyArgs::arg2, FromPolicy<"policyArg2">>("arg2"),
};
static_assert(Covers<PolicyArgs>(kPolicyArgsMembers));
constexpr Struct kPolicyArgs{"", kPolicyArgsMembers};
constexpr Member kPolicyMembers[] = {Set<&Policy::arg3, FromPolicy<"policyArg3">>("arg3")};
static_assert(Covers<Policy>(kPolicyMembers));
constexpr Struct kPolicy{"Policy", kPolicyMembers};
constexpr Collection kPoliciesOfKey = Array<Policies, kMostPolicies>(&kPolicy, &kPolicyArgs);
constexpr Member kPolicyKeyMembers[] = {
    Itself<FromPolicy<"policyKey">, forms::Numbers<uint32_t>>("key"),
};
constexpr Struct kPolicyKey{"", kPolicyKeyMembers};
constexpr Member kPolicyListMembers[] = {Elements("policies", kPoliciesOfKey)};
constexpr Struct kPolicyList{"PolicyList", kPolicyListMembers};
constexpr Collection kPolicies =
    Array<Table<uint32_t, Policies>, kNoCap>(&kPolicyList, &kPolicyKey);

constexpr Member kTableKeyMembers[] = {
    Itself<From<"SetPolicyTable", "policyKey">, forms::Numbers<uint32_t>>("key"),
};
constexpr Struct kTableKey{"", kTableKeyMembers};
constexpr Member kPolicyTableMembers[] = {
    Set<&PolicyTable::name, From<"SetPolicyTable", "tableName">>("name"),
};
static_assert(Covers<PolicyTable>(kPolicyTableMembers));
constexpr Struct kPolicyTable{"PolicyTable", kPolicyTableMembers};
constexpr Collection kPolicyTables =
    Array<Table<uint32_t, PolicyTable>, kMostPolicyTables>(&kPolicyTable, &kTableKey);

template <Name Argument>
using FromE2i = From<"AddE2I", Argument>;
constexpr Member kE2iKeyMembers[] = {Itself<FromE2i<"key">, forms::Numbers<uint32_t>>("key")};
constexpr Struct kE2iKey{"", kE2iKeyMembers};
constexpr Member kE2iMembers[] = {
    Set<&E2i::value2, FromE2i<"value2">>("value2"),
    Set<&E2i::mac, FromE2i<"mac">>("mac"),
    Set<&E2i::value4, FromE2i<"value4">>("value4"),
    Set<&E2i::value5, FromE2i<"value5">>("value5"),
};
static_assert(Covers<E2i>(kE2iMembers));
constexpr Struct kE2i{"E2i", kE2iMembers};
constexpr Collection kE2iEntries = Array<Table<uint32_t, E2i>, kMostE2i>(&kE2i, &kE2iKey);

constexpr Member kPhysicalMacKeyMembers[] = {Itself<From<"AddPmac", "mac">, forms::Mac>("mac")};
constexpr Struct kPhysicalMacKey{"", kPhysicalMacKeyMembers};
constexpr Member kPhysicalMacMembers[] = {
    Set<&PhysicalMac::value, From<"AddPmac", "value">>("value"),
};
static_assert(Covers<PhysicalMac>(kPhysicalMacMembers));
constexpr Struct kPhysicalMac{"PhysicalMac", kPhysicalMacMembers};
constexpr Collection kPhysicalMacs =
    Array<Table<MacAddress, PhysicalMac>, kMostPhysicalMacs>(&kPhysicalMac, &kPhysicalMacKey);

constexpr Member kFullSyncSavesMembers[] = {
    Has<&FullSyncSaves::count>("count", &kScalar<forms::Numbers<uint32_t>>,
                               "how often `VDRZAX_PerformFullSyncSave` saved"),
    Set<&FullSyncSaves::lastFlag, From<"PerformFullSyncSave", "flag">>("lastFlag"),
};
static_assert(Covers<FullSyncSaves>(kFullSyncSavesMembers));
constexpr Struct kFullSyncSaves{"FullSyncSaves", kFullSyncSavesMembers};

using FromRssTable = From<"SoftRSSTableSet", "entryCount">;
constexpr Member kSoftRssMembers[] = {
    Set<&SoftRss::qword0, From<"SoftRSSSetTunables", "qword0">>("qword0"),
    Set<&SoftRss::entryCount, FromRssTable, forms::NumberUpTo<kMostRssEntries>>("entryCount"),
    Set<&SoftRss::indirection, From<"SoftRSSTableSet", "bytes">>("indirection"),
    kCounters<&SoftRss::counters>,
};
static_assert(Covers<SoftRss>(kSoftRssMembers));
constexpr Struct kSoftRss{"SoftRss", kSoftRssMembers};
constexpr Collection kSoftRssObjects =
    ByName<Table<std::string, SoftRss>, From<"SoftRSSSetTunables", "name">, kNoCap>(&kSoftRss);

template <Name Argument>
using FromPublic = From<"AddVMPublicIP", Argument>;
constexpr Collection kPublicItems = Array<std::set<uint32_t>, kMostPublicItems>(&kScalar<Ipv4Word>);
constexpr Member kPublicKeyMembers[] = {Itself<FromPublic<"a">, Ipv4Word>("address")};
constexpr Struct kPublicKey{"", kPublicKeyMembers};
constexpr Member kPublicAddressMembers[] = {
    Set<&PublicAddress::c, FromPublic<"c">>("c"),
    Set<&PublicAddress::d, FromPublic<"d">>("d"),
    Has<&PublicAddress::items>("items", &kPublicItems, "each `b` of `VDRZAX_AddVMPublicIP`"),
};
static_assert(Covers<PublicAddress>(kPublicAddressMembers));
constexpr Struct kPublicAddress{"PublicAddress", kPublicAddressMembers};
constexpr Collection kPublicAddresses =
    Array<Table<uint32_t, PublicAddress>, kNoCap>(&kPublicAddress, &kPublicKey);
// How many items there are in all follows from the entries.
static_assert(MemberCount<PublicAddresses>() == 2);

template <Name Argument>
using FromNode = From<"BridgeClusterNodeSet", Argument, 93>;
template <Name Argument>
using FromProfile = From<"BridgeClusterBfdHAProfileSet", Argument>;
constexpr Collection kNodes =
    ByName<Table<std::string, MacAddress>, FromNode<"nodeName">, kMostClusterNodes>(
        &kScalar<forms::Mac>);
constexpr Member kBridgeClusterMembers[] = {
    Has<&BridgeCluster::nodes>("nodes", &kNodes, "`mac` of `VDRZAX_BridgeClusterNodeSet`"),
    Set<&BridgeCluster::profile, FromProfile<"profile">>("profile"),
    Set<&BridgeCluster::profileValue1, FromProfile<"value1">>("profileValue1"),
    Set<&BridgeCluster::profileValue2, FromProfile<"value2">>("profileValue2"),
    Set<&BridgeCluster::debugLevel, From<"SetBridgeClusterDebug", "level">>("debugLevel"),
};
static_assert(Covers<BridgeCluster>(kBridgeClusterMembers));
constexpr Struct kBridgeCluster{"BridgeCluster", kBridgeClusterMembers};
constexpr Collection kBridgeClusters =
    ByName<Table<std::string, BridgeCluster>, FromNode<"name">, kMostBridgeClusters>(
        &kBridgeCluster);

template <Name Argument>
using FromPort = From<"PlumbBFDPortConnection", Argument>;
constexpr Member kBfdPortConnectionMembers[] = {
    Set<&BfdPortConnection::name2, FromPort<"name2">>("name2"),
    Set<&BfdPortConnection::mac, FromPort<"mac">>("mac"),
};
static_assert(Covers<BfdPortConnection>(kBfdPortConnectionMembers));
constexpr Struct kBfdPortConnection{"BfdPortConnection", kBfdPortConnectionMembers};
constexpr Collection kBfdPortConnections =
    ByName<Table<std::string, BfdPortConnection>, FromPort<"portName">, kMostBfdPortConnections>(
        &kBfdPortConnection);

template <Name Argument>
using FromTransport = From<"BridgeLocalTransportNodeSet", Argument, 100>;
constexpr Member kTransportNodeMembers[] = {
    Set<&TransportNode::name1, FromTransport<"name1">>("name1"),
    Set<&TransportNode::name2, FromTransport<"name2">>("name2"),
    Set<&TransportNode::name3, FromTransport<"name3">>("name3"),
    Set<&TransportNode::value, FromTransport<"value">>("value"),
    Set<&TransportNode::bytes, FromTransport<"bytes">>("bytes"),
};
static_assert(Covers<TransportNode>(kTransportNodeMembers));
constexpr Struct kTransportNode{"TransportNode", kTransportNodeMembers};

constexpr Member kPublicAddressesMember{
    .name = "publicAddresses",
    .shape = &kPublicAddresses,
    .find = [](const void* owner) -> const void* {
      const auto& entries = static_cast<const State*>(owner)->publicAddresses.entries;
      return entries.IsEmpty() ? nullptr : &entries;
    },
    .make = [](void* owner) -> void* {
      return &static_cast<State*>(owner)->publicAddresses.entries;
    },
    .function = {},
    .argument = "in 8536064 bytes: 18 for each, and 4 for each item",
};
static_assert(kMostPublicAddressBytes == 8536064);

constexpr Member kStateMembers[] = {
    Has<&State::instances>("instances", &kInstances),
    Set<&State::logLevel, From<"SetLogLevel", "value">>("logLevel"),
    Set<&State::extendedLogLevel, From<"SetExtendedLogLevel", "value">>("extendedLogLevel"),
    Set<&State::statsLevel, From<"SetStatsLevel", "value">>("statsLevel"),
    Set<&State::txDispatchQueueSize, From<"SetTxDispQueueSize", "value">>("txDispatchQueueSize"),
    Has<&State::preUnloadAnnounced>("preUnloadAnnounced", &kScalar<forms::Truth>,
                                    "`VDRZAX_PreUnload`"),
    Set<&State::cpActivation, From<"CPActivate", "value">>("cpActivation"),
    Has<&State::connections>("connections", &kConnections),
    Has<&State::policies>("policies", &kPolicies),
    Has<&State::policyTables>("policyTables", &kPolicyTables),
    Has<&State::e2iEntries>("e2iEntries", &kE2iEntries),
    Has<&State::physicalMacs>("physicalMacs", &kPhysicalMacs),
    Has<&State::fullSyncSaves>("fullSyncSaves", &kFullSyncSaves),
    Has<&State::softRss>("softRss", &kSoftRssObjects),
    kPublicAddressesMember,
    Has<&State::bridgeClusters>("bridgeClusters", &kBridgeClusters),
    Has<&State::bfdPortConnections>("bfdPortConnections", &kBfdPortConnections),
    Has<&State::transportNode>("transportNode", &kTransportNode),
    kCounters<&State::counters>,
};
static_assert(Covers<State>(kStateMembers));
constexpr Struct kState{"State", kStateMembers};

constexpr Member kHeaderMembers[] = {
    {.name = "format_version",
     .shape = &kScalar<forms::Version<kStateVersion>>,
     .find = FindAlways<&StateHeader::version>,
     .make = Make<&StateHeader::version>,
     .function = {},
     .argument = {},
     .isRequired = true},
};
static_assert(Covers<StateHeader>(kHeaderMembers));
constexpr Struct kHeader{"StateHeader", kHeaderMembers};

}  // namespace

const Struct& HeaderTable() { return kHeader; }
const Struct& StateTable() { return kState; }

}  // namespace vdrsim
