#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <iterator>
#include <string>
#include <vector>

#include "subject.h"

// What follows from routes, neighbours and LIFs, and what empties them, by the library.

namespace {

using library::ErrorOf;
using library::Read;
using library::ReadList;
using library::ReadRecord;
using wire::Wire;

constexpr const char* kInstance = "edge-1";
constexpr const char* kLif = "uplink";
constexpr const char* kMac = "02:12:22:32:42:52";

class Routing : public testing::Test {
 protected:
  Routing() {
    EXPECT_EQ(VDRZAX_SetVdrInstance(kInstance, 0, nullptr, 0, 0), 0);
    EXPECT_EQ(VDRZAX_SetLif(kLif, "", 0, 0, 100, 0, 0, 0, kInstance, nullptr), 0);
  }
  ~Routing() override { EXPECT_EQ(VDRZAX_DelVdrInstance(kInstance), 0); }
};

uint32_t Ip(uint32_t number) { return htonl(number); }

int SetRoute(uint32_t destination, uint32_t mask, const char* lif = nullptr) {
  return VDRZAX_SetRoute(Ip(destination), Ip(mask), 3, lif, kInstance, 4, nullptr);
}

Wire Record(uint32_t destination, uint32_t mask, const char* lif = nullptr) {
  Wire record = Wire(668).U32(0, Ip(destination)).U32(4, Ip(mask)).U32(8, 3).U32(12, 4);
  return lif ? record.U8(17, 1).Text(36, lif) : record;
}

Read Resolve(uint32_t address, uint32_t mask) {
  RouteRecord* record = nullptr;
  const int result = VDRZAX_GetResolveRoute(kInstance, Ip(address), Ip(mask), 5, &record);
  return ReadRecord(result, record, VDRZAX_ReleaseRoute);
}

TEST_F(Routing, TheLongestPrefixIsResolved) {
  ASSERT_EQ(SetRoute(0x0a000000, 0xff000000), 0);
  ASSERT_EQ(SetRoute(0x0a010000, 0xffff0000, kLif), 0);
  EXPECT_EQ(Difference(Resolve(0x0a010203, 0xffffffff), Record(0x0a010000, 0xffff0000, kLif)), "");
  EXPECT_EQ(Difference(Resolve(0x0a010203, 0), Record(0x0a010000, 0xffff0000, kLif)), "");
  EXPECT_EQ(Difference(Resolve(0x0a010203, 0xfffe0000), Record(0x0a000000, 0xff000000)), "");
  EXPECT_EQ(Resolve(0x0b000000, 0xffffffff).error, ENOENT);
}

TEST_F(Routing, ALifIsSelectedByTheRoutesOverIt) {
  ASSERT_EQ(SetRoute(1, 2), 0);
  ASSERT_EQ(SetRoute(1, 2, "lan"), 0);
  ASSERT_EQ(SetRoute(1, 2, kLif), 0);
  RecordList* list = nullptr;
  const int result = VDRZAX_GetLifSelectionRoutes(kInstance, &list);
  EXPECT_EQ(Difference(ReadList(result, list, VDRZAX_ReleaseRoutes, 668), Record(1, 2, kLif)), "");
}

Read DemuxRoutes() {
  RecordList* list = nullptr;
  const int result = VDRZAX_GetDemuxRoutes(&list);
  return ReadList(result, list, VDRZAX_ReleaseDemuxRoutes, 148);
}

TEST_F(Routing, AnAddressOfALifIsADemuxRoute) {
  ASSERT_EQ(VDRZAX_SetLifIp(kInstance, kLif, 0x01020304, 0x05060708), 0);
  EXPECT_EQ(Difference(DemuxRoutes(), Wire(148)
                                          .U32(0, 0x01020304)
                                          .U32(4, 0x05060708)
                                          .U32(8, 100)
                                          .Text(20, kInstance)
                                          .Text(84, kLif)),
            "");
}

TEST_F(Routing, ThereIsRoomForThirtyThousandDemuxRoutes) {
  for (int number = 0; number < 3000; ++number) {
    const std::string lif = library::Numbered("lif", number);
    ASSERT_EQ(VDRZAX_SetLif(lif.c_str(), "", 0, 0, 0, 0, 0, 0, kInstance, nullptr), 0);
    for (uint32_t address = 0; address < 10; ++address) {
      ASSERT_EQ(VDRZAX_SetLifIp(kInstance, lif.c_str(), address, 0), 0);
    }
  }
  EXPECT_EQ(DemuxRoutes().bytes.size(), 4440000U);
  ASSERT_EQ(VDRZAX_SetLifIp(kInstance, kLif, 1, 0), 0);
  EXPECT_EQ(DemuxRoutes().error, EINVAL);
}

TEST_F(Routing, TheResultNamesTheRoute) {
  const Wire expected = Wire(88).U32(4, 1).U32(8, 2).U32(12, 3).Text(16, kLif);
  wire::Bytes result(88, std::byte{0xff});
  ASSERT_EQ(VDRZAX_SetRoute(1, 2, 3, kLif, kInstance, 4, result.data()), 0);
  EXPECT_EQ(wire::Difference(result, expected.bytes()), "");
  result.assign(88, std::byte{0xff});
  ASSERT_EQ(VDRZAX_DelRoute(1, 2, 3, kLif, kInstance, result.data()), 0);
  EXPECT_EQ(wire::Difference(result, expected.bytes()), "");
  EXPECT_EQ(ErrorOf(VDRZAX_DelRoute(1, 2, 3, kLif, kInstance, result.data())), ENOENT);
  EXPECT_EQ(wire::Difference(result, Wire(88).bytes()), "");
}

using ListOfNeighbours = int (*)(const char* instance, const char* lif, void* buffer);

size_t CountOf(ListOfNeighbours list, const char* lif = nullptr) {
  wire::Bytes buffer(7667712);
  EXPECT_EQ(list(kInstance, lif, buffer.data()), 0);
  size_t count = 0;
  while (buffer[count * 936 + 16] != std::byte{0}) ++count;
  return count;
}

// One of each kind, and a LIF of its own for each neighbour.
void Fill() {
  ASSERT_EQ(VDRZAX_SetLif("lan", "", 0, 0, 0, 0, 0, 0, kInstance, nullptr), 0);
  for (const char* lif : {kLif, "lan"}) {
    ASSERT_EQ(VDRZAX_SetArp(1, kMac, lif, kInstance), 0);
    ASSERT_EQ(VDRZAX_SetProxyArp(1, lif, kInstance), 0);
    ASSERT_EQ(VDRZAX_SetArpv6(1, 2, kMac, lif, kInstance), 0);
    ASSERT_EQ(VDRZAX_SetProxyArpv6(1, 2, lif, kInstance), 0);
  }
  ASSERT_EQ(SetRoute(1, 2), 0);
  ASSERT_EQ(VDRZAX_SetRoutev6(1, 2, 3, 4, 5, nullptr, kInstance), 0);
}

// IPv4 routes, IPv6 routes, ARPs, proxy ARPs, IPv6 neighbours and proxies together.
std::vector<size_t> Present() {
  RecordList* routes = nullptr;
  const int result = VDRZAX_GetRoutes(kInstance, &routes);
  void* ipv6Routes = nullptr;
  uint32_t ipv6Count = 0;
  EXPECT_EQ(VDRZAX_GetRoutesv6(kInstance, &ipv6Routes, &ipv6Count), 0);
  free(ipv6Routes);
  return {ReadList(result, routes, VDRZAX_ReleaseRoutes, 668).bytes.size() / 668, ipv6Count,
          CountOf(VDRZAX_GetArps), CountOf(VDRZAX_GetProxyArps), CountOf(VDRZAX_GetArpsv6)};
}

using Counts = std::vector<size_t>;

TEST_F(Routing, NeighboursAreListedForOneLifOrAll) {
  Fill();
  for (const auto list : {VDRZAX_GetArps, VDRZAX_GetProxyArps}) {
    EXPECT_EQ(CountOf(list, "lan"), 1U);
    EXPECT_EQ(CountOf(list), 2U);
  }
  EXPECT_EQ(CountOf(VDRZAX_GetArpsv6, "lan"), 2U);
  EXPECT_EQ(Present(), (Counts{1, 1, 2, 2, 4}));
}

TEST_F(Routing, ClearingLeavesProxies) {
  Fill();
  ASSERT_EQ(VDRZAX_ClearArp(kInstance, "lan"), 0);
  EXPECT_EQ(Present(), (Counts{1, 1, 1, 2, 4}));
  ASSERT_EQ(VDRZAX_ClearArp(kInstance, nullptr), 0);
  EXPECT_EQ(Present(), (Counts{1, 1, 0, 2, 4}));
  ASSERT_EQ(VDRZAX_ClearArpv6(kInstance, "lan"), 0);
  EXPECT_EQ(Present(), (Counts{1, 1, 0, 2, 3}));
  ASSERT_EQ(VDRZAX_ClearArpv6(kInstance, nullptr), 0);
  EXPECT_EQ(Present(), (Counts{1, 1, 0, 2, 2}));
}

TEST_F(Routing, EachFlushEmptiesItsTable) {
  const Counts left[] = {{0, 0, 0, 0, 0}, {0, 1, 2, 2, 4}, {1, 0, 2, 2, 4}, {1, 1, 0, 2, 4},
                         {1, 1, 2, 0, 4}, {1, 1, 2, 2, 2}, {1, 1, 2, 2, 2}};
  for (uint32_t target = 0; target < std::size(left); ++target) {
    SCOPED_TRACE(target);
    for (const char* name : {kInstance, static_cast<const char*>(nullptr)}) {
      Fill();
      ASSERT_EQ(VDRZAX_GenericFlush(target, 1, 2, 3, name, 4), 0);
      EXPECT_EQ(Present(), left[target]);
    }
  }
  EXPECT_EQ(ErrorOf(VDRZAX_GenericFlush(7, 0, 0, 0, kInstance, 0)), EINVAL);
  EXPECT_EQ(ErrorOf(VDRZAX_GenericFlush(0, 0, 0, 0, "edge-2", 0)), ENOENT);
}

TEST_F(Routing, ClearingThePathMtuIsCounted) {
  ASSERT_EQ(VDRZAX_ResetVdrDiStats(), 0);
  ASSERT_EQ(VDRZAX_PMTUTableCearv6(), 0);
  StatsRecord* read = nullptr;
  const int result = VDRZAX_GetVdrDiStats(&read);
  EXPECT_EQ(
      Difference(ReadRecord(result, read, VDRZAX_ReleaseStats), Wire(852).U32(0, 3).U64(20, 1)),
      "");
}

}  // namespace
