#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "subject.h"

// What is no kind of objects with a life of their own, by the library.

namespace {

using library::ErrorOf;
using library::ReadRecord;
using wire::Wire;

constexpr const char* kInstance = "edge-1";
constexpr const char* kLif = "uplink";
constexpr MacValue kMac{{2, 0x12, 0x22, 0x32, 0x42, 0x52}};

class OneOfAKind : public testing::Test {
 protected:
  OneOfAKind() {
    EXPECT_EQ(VDRZAX_SetVdrInstance(kInstance, 0, nullptr, 0, 0), 0);
    EXPECT_EQ(VDRZAX_SetLif(kLif, "", 0, 0, 0, 0, 0, 0, kInstance, nullptr), 0);
  }
  ~OneOfAKind() override { EXPECT_EQ(VDRZAX_DelVdrInstance(kInstance), 0); }
};

// What a call wrote into a buffer of `size` bytes.
template <typename Get>
std::string BufferDifference(size_t size, const Get& get, const Wire& expected) {
  wire::Bytes buffer(size);
  if (const int error = ErrorOf(get(buffer.data()))) return "errno " + std::to_string(error);
  return wire::Difference(buffer, expected.bytes());
}

TEST_F(OneOfAKind, TheMulticastRouterAndTheDomainOfAnInstance) {
  uint32_t ip = 0;
  EXPECT_EQ(ErrorOf(VDRZAX_GetMRoutingMRouterIP(kInstance, 1, &ip)), ENOENT);
  EXPECT_EQ(ErrorOf(VDRZAX_DelMRoutingMRouter(kInstance)), ENOENT);
  ASSERT_EQ(VDRZAX_AddMRoutingMRouter(kInstance, 0x0a000001), 0);
  ASSERT_EQ(VDRZAX_GetMRoutingMRouterIP(kInstance, 1, &ip), 0);
  EXPECT_EQ(ip, 0x0a000001U);
  ASSERT_EQ(VDRZAX_SetMcastRouting(kInstance, "label", 1, 2, 3, 4), 0);
  MRoutingDomain* domain = nullptr;
  const int result = VDRZAX_GetMRoutingDomain(kInstance, &domain);
  EXPECT_EQ(Difference(ReadRecord(result, domain, VDRZAX_ReleaseMRoutingDomainData),
                       Wire(148)
                           .Text(0, kInstance)
                           .Text(64, "label")
                           .U32(112, 2)
                           .U16(116, 3)
                           .U8(118, 4)
                           .U8(119, 1)
                           .U32(120, 0x0a000001)
                           .U32(144, 1)),
            "");
  ASSERT_EQ(VDRZAX_DelMRoutingMRouter(kInstance), 0);
  EXPECT_EQ(ErrorOf(VDRZAX_GetMRoutingMRouterIP(kInstance, 1, &ip)), ENOENT);
}

TEST_F(OneOfAKind, TheReplicationAddressOfAGroup) {
  uint32_t ip = 0;
  EXPECT_EQ(ErrorOf(VDRZAX_GetMRoutingReplicationIP(kInstance, 7, &ip)), ENOENT);
  ASSERT_EQ(VDRZAX_AddMRoutingRemoteRcvrs(kInstance, 7, 0x0a000002, &kMac, 0, 0), 0);
  ASSERT_EQ(VDRZAX_GetMRoutingReplicationIP(kInstance, 7, &ip), 0);
  EXPECT_EQ(ip, 0x0a000002U);
}

TEST_F(OneOfAKind, TheStatusOfAFullSyncSave) {
  uint32_t before = 0;
  ASSERT_EQ(VDRZAX_GetFullSyncSaveStatus(&before), 0);
  uint32_t saved = 0;
  ASSERT_EQ(VDRZAX_PerformFullSyncSave(0x81, &saved), 0);
  EXPECT_EQ(saved, (before & ~0xffU) + 0x181);
  uint32_t after = 0;
  ASSERT_EQ(VDRZAX_GetFullSyncSaveStatus(&after), 0);
  EXPECT_EQ(after, saved);
}

TEST_F(OneOfAKind, ASoftwareRssObject) {
  SoftRssTunables tunables{};
  EXPECT_EQ(ErrorOf(VDRZAX_SoftRSSGetTunables("rss-1", &tunables)), ENOENT);
  tunables.qword0 = 0x0102030405060708;
  ASSERT_EQ(VDRZAX_SoftRSSSetTunables("rss-1", &tunables), 0);
  SoftRssIndTable table{.entries = {9, 8, 7}, .entryCount = 3};
  ASSERT_EQ(VDRZAX_SoftRSSTableSet("rss-1", &table), 0);
  EXPECT_EQ(BufferDifference(
                12,
                [](void* to) {
                  return VDRZAX_SoftRSSGetTunables("rss-1", static_cast<SoftRssTunables*>(to));
                },
                Wire(12).U64(0, 0x0102030405060708).U32(8, 3)),
            "");
  EXPECT_EQ(
      BufferDifference(
          128,
          [](void* to) { return VDRZAX_SoftRSSGetIndTable("rss-1", static_cast<uint8_t*>(to)); },
          Wire(128).Text(0, "\x09\x08\x07")),
      "");
  const auto counts = [] {
    SoftRssStats* stats = nullptr;
    EXPECT_EQ(VDRZAX_SoftRSSGetStats("rss-1", &stats), 0);
    const std::vector<uint64_t> read{stats->queueCount, stats->qwords76[0], stats->qwords76[1],
                                     stats->qwords76[2], stats->qwords76[3]};
    std::free(stats);
    return read;
  };
  EXPECT_EQ(counts(), (std::vector<uint64_t>{4, 2, 0, 2, 0}));
  ASSERT_EQ(VDRZAX_SoftRSSStatsReset("rss-1"), 0);
  EXPECT_EQ(counts(), (std::vector<uint64_t>{4, 0, 0, 0, 0}));
}

TEST_F(OneOfAKind, AnEntryOfThePublicAddresses) {
  ASSERT_EQ(VDRZAX_AddVMPublicIP(7, 0x21222324, &kMac, 0x41424344), 0);
  VMPublicIPEntry* entry = nullptr;
  const int result = VDRZAX_GetVMPublicIPEntry(7, &entry);
  EXPECT_EQ(Difference(ReadRecord(result, entry, VDRZAX_ReleaseVMPublicIPEntry),
                       Wire(1042)
                           .U32(0, 7)
                           .Text(4, "\x02\x12\x22\x32\x42\x52")
                           .U32(10, 0x41424344)
                           .U32(14, 1)
                           .U32(18, 0x21222324)),
            "");
  ASSERT_EQ(VDRZAX_DelVMPublicIPEntry(7), 0);
  EXPECT_EQ(ErrorOf(VDRZAX_DelVMPublicIPEntry(7)), ENOENT);
  ASSERT_EQ(VDRZAX_AddVMPublicIP(8, 1, &kMac, 1), 0);
  ASSERT_EQ(VDRZAX_DelAllVMPublicIPEntries(), 0);
  EXPECT_EQ(ErrorOf(VDRZAX_DelVMPublicIPEntry(8)), ENOENT);
}

TEST_F(OneOfAKind, TheFlTablesAndTheLocale) {
  ASSERT_EQ(VDRZAX_AddE2I(7, 0, &kMac, 0, 0), 0);
  const Wire table = Wire(426080).Text(0, "\x02\x12\x22\x32\x42\x52").U32(8, 7);
  EXPECT_EQ(BufferDifference(
                426080, [](void* to) { return VDRZAX_DumpFLTable(0, to); }, table),
            "");
  EXPECT_EQ(BufferDifference(
                426080, [](void* to) { return VDRZAX_DumpFLTable(1, to); }, Wire(426080)),
            "");
  ASSERT_EQ(VDRZAX_DelAllE2I(), 0);
  EXPECT_EQ(BufferDifference(
                426080, [](void* to) { return VDRZAX_DumpFLTable(0, to); }, Wire(426080)),
            "");
  EXPECT_EQ(BufferDifference(16, VDRZAX_GetLocaleId, Wire(16).Text(0, "vdrsim")), "");
}

TEST_F(OneOfAKind, TheNumberOfPoliciesAndTheResultOfACommand) {
  const auto set = [](void* result) { return VDRZAX_SetPolicy(7, 5, 6, 1, result); };
  EXPECT_EQ(BufferDifference(88, set, Wire(88).U32(4, 7).U32(8, 5).U32(12, 6)), "");
  uint32_t count = 0;
  ASSERT_EQ(VDRZAX_GetPolicyCount(7, &count), 0);
  EXPECT_EQ(count, 1U);
  const auto remove = [](void* result) { return VDRZAX_DelPolicy(7, 5, 6, result); };
  EXPECT_EQ(BufferDifference(88, remove, Wire(88).U32(4, 7).U32(8, 5).U32(12, 6)), "");
}

TEST_F(OneOfAKind, TheReferenceOfALifToPolicyTables) {
  LifPolicyTableRef* ref = nullptr;
  EXPECT_EQ(ErrorOf(VDRZAX_GetLifPolicyTableRef(kInstance, kLif, &ref)), ENOENT);
  const PolicyTableRefEntry entries[] = {{1, 2, 3}, {4, 5, 6}};
  const auto set = [&](void* result) {
    return VDRZAX_SetLifPolicyTableRef(kInstance, kLif, 2, entries, result);
  };
  EXPECT_EQ(BufferDifference(88, set, Wire(88).Text(4, kLif)), "");
  const int result = VDRZAX_GetLifPolicyTableRef(kInstance, kLif, &ref);
  EXPECT_EQ(Difference(ReadRecord(result, ref, VDRZAX_ReleaseLifPolicyTableRef), Wire(546)
                                                                                     .Text(0, kLif)
                                                                                     .U16(64, 2)
                                                                                     .U64(66, 1)
                                                                                     .U64(74, 2)
                                                                                     .U64(82, 3)
                                                                                     .U64(90, 4)
                                                                                     .U64(98, 5)
                                                                                     .U64(106, 6)),
            "");
  ASSERT_EQ(VDRZAX_DelLifPolicyTableRef(kInstance, kLif, nullptr), 0);
  EXPECT_EQ(ErrorOf(VDRZAX_DelLifPolicyTableRef(kInstance, kLif, nullptr)), ENOENT);
}

TEST_F(OneOfAKind, AConnectionAlone) {
  ASSERT_EQ(VDRZAX_PlumbVdrConnection("conn", "2", 3, "4", "5", "sixth that is cut", 0x01020304),
            0);
  const auto get = [](void* to) { return VDRZAX_GetConnection("conn", to); };
  EXPECT_EQ(BufferDifference(152, get,
                             Wire(152)
                                 .Text(0, "conn")
                                 .Text(64, "2")
                                 .Text(80, "4")
                                 .Text(98, "5")
                                 .U32(130, 0x01020304)
                                 .U8(134, 2)
                                 .U32(136, 0x01020304)
                                 .Text(140, "sixth that ")),
            "");
  const auto getVmac = [](void* to) { return VDRZAX_GetVMAC("conn", to); };
  EXPECT_EQ(BufferDifference(6, getVmac, Wire(6).U8(0, 2).U32(2, 0x01020304)), "");
  ASSERT_EQ(VDRZAX_UnPlumbVdrConnection("conn"), 0);
  uint32_t pending = 7;
  ASSERT_EQ(VDRZAX_VDRDevCheckConnDeletion(&pending), 0);
  EXPECT_EQ(pending, 0U);
}

TEST_F(OneOfAKind, TheControlPlaneOfAnInstance) {
  ASSERT_EQ(VDRZAX_CPActivate(0x05060708), 0);
  ASSERT_EQ(VDRZAX_SetVdrInstanceCPSyncState(kInstance, 0x01020304), 0);
  ASSERT_EQ(VDRZAX_SetCPIp(kInstance, 0x0a000001), 0);
  Wire entries(1420);
  for (size_t index = 0; index < 5; ++index) {
    entries.U64(index * 284, index)
        .U32(index * 284 + 8, 0x01020304)
        .U32(index * 284 + 12, 0x05060708);
  }
  CPSyncStateRecord* state = nullptr;
  int result = VDRZAX_GetVdrInstanceCPSyncState(kInstance, &state);
  const auto release = [](CPSyncStateRecord* read) { std::free(read); };
  EXPECT_EQ(Difference(ReadRecord<CPSyncStateRecord>(result, state, release), entries), "");
  InstanceRecord* instance = nullptr;
  result = VDRZAX_GetInstance(kInstance, &instance);
  EXPECT_EQ(Difference(ReadRecord(result, instance, VDRZAX_ReleaseInstance),
                       Wire(577).Text(0, kInstance).U32(403, 0x0a000001)),
            "");
}

}  // namespace
