#include <gtest/gtest.h>

#include "subject.h"

// What is set of one LIF, by the library, and where it shows.

namespace {

using library::ErrorOf;
using library::ReadList;
using library::ReadRecord;
using wire::Wire;

constexpr const char* kInstance = "edge-1";
constexpr const char* kLif = "uplink";

class LifSettings : public testing::Test {
 protected:
  LifSettings() {
    EXPECT_EQ(VDRZAX_SetVdrInstance(kInstance, 0, nullptr, 0, 0), 0);
    EXPECT_EQ(VDRZAX_SetLif(kLif, "", 0, 0, 0, 0, 0, 0, kInstance, nullptr), 0);
  }
  ~LifSettings() override { EXPECT_EQ(VDRZAX_DelVdrInstance(kInstance), 0); }

  static std::string DifferenceFrom(const Wire& record) {
    LifRecord* read = nullptr;
    const int result = VDRZAX_GetLif(kInstance, kLif, &read);
    return Difference(ReadRecord(result, read, VDRZAX_ReleaseLif), record);
  }
};

Wire Record() { return Wire(961).Text(0, kLif); }

struct Setting {
  const char* function;
  std::function<int()> call;
  Wire record;
};

TEST_F(LifSettings, EachShows) {
  const Setting settings[] = {
      {"SetLifDIIp", [] { return VDRZAX_SetLifDIIp(kInstance, kLif, 0x0a000001); },
       Record().U32(154, 0x0a000001)},
      {"SetLifDIIp again", [] { return VDRZAX_SetLifDIIp(kInstance, kLif, 0); }, Record()},
      {"SetLifVxlanMulticastIp",
       [] { return VDRZAX_SetLifVxlanMulticastIp(kInstance, kLif, 0xe0000001); },
       Record().U32(166, 0xe0000001)},
      {"SetLifVxlanMulticastIp again",
       [] { return VDRZAX_SetLifVxlanMulticastIp(kInstance, kLif, 0); }, Record()},
      {"RAMTUSetv6", [] { return VDRZAX_RAMTUSetv6(kInstance, kLif, 0x01020304); },
       Record().U32(162, 0x01020304)},
      {"RAMTUSetv6 again", [] { return VDRZAX_RAMTUSetv6(kInstance, kLif, 0); }, Record()},
      {"SetLifVxlanCP", [] { return VDRZAX_SetLifVxlanCP(kInstance, kLif); }, Record().U8(160, 1)},
      {"DelLifVxlanCP", [] { return VDRZAX_DelLifVxlanCP(kInstance, kLif); }, Record()},
      {"EnableLif", [] { return VDRZAX_EnableLif(kInstance, kLif); }, Record().U8(159, 1)},
      {"DisableLif", [] { return VDRZAX_DisableLif(kInstance, kLif); }, Record()},
      {"SetLifMcastRouting", [] { return VDRZAX_SetLifMcastRouting(kInstance, kLif, 2); },
       Record().U8(161, 1)},
      {"SetLifMcastRouting off", [] { return VDRZAX_SetLifMcastRouting(kInstance, kLif, 0); },
       Record()},
      {"ConfigureLifDhcpRelay",
       [] { return VDRZAX_ConfigureLifDhcpRelay(kInstance, kLif, nullptr); }, Record()},
      {"SetLifIp", [] { return VDRZAX_SetLifIp(kInstance, kLif, 0x0a000001, 0xffffff00); },
       Record().U32(566, 1).U32(326, 0x0a000001).U32(330, 0xffffff00).U32(342, 1)},
      {"DelLifIp", [] { return VDRZAX_DelLifIp(kInstance, kLif, 0x0a000001, 0xffffff00); },
       Record()},
      {"SetLifIpv6",
       [] {
         return VDRZAX_SetLifIpv6(kInstance, kLif, 0x0102030405060708, 0x1112131415161718, 64);
       },
       Record()
           .U32(566, 1)
           .U64(326, 0x0102030405060708)
           .U64(334, 0x1112131415161718)
           .U32(342, 3)
           .U8(346, 64)},
      {"DelLifIpv6",
       [] {
         return VDRZAX_DelLifIpv6(kInstance, kLif, 0x0102030405060708, 0x1112131415161718, 64);
       },
       Record()},
  };
  for (const Setting& setting : settings) {
    SCOPED_TRACE(setting.function);
    ASSERT_EQ(ErrorOf(setting.call()), 0);
    EXPECT_EQ(DifferenceFrom(setting.record), "");
  }
}

TEST_F(LifSettings, MulticastRoutingShowsInTheInstance) {
  ASSERT_EQ(VDRZAX_SetMcastRouting(kInstance, "group", 0x01020304, 0x05060708, 0x090a, 0x0b), 0);
  InstanceRecord* read = nullptr;
  const int result = VDRZAX_GetInstance(kInstance, &read);
  const Wire record = Wire(577)
                          .Text(0, kInstance)
                          .Text(457, "group")
                          .U16(521, 0x090a)
                          .U32(563, 0x01020304)
                          .U8(567, 0x0b)
                          .U32(568, 0x05060708);
  EXPECT_EQ(Difference(ReadRecord(result, read, VDRZAX_ReleaseInstance), record), "");
}

TEST_F(LifSettings, ThoseOfAVlanAreFoundWithoutTheirInstance) {
  ASSERT_EQ(VDRZAX_SetLif(kLif, "", 0, 0, 100, 0, 0, 0, kInstance, nullptr), 0);
  for (const uint16_t vlan : {uint16_t{100}, uint16_t{101}}) {
    RecordList* list = nullptr;
    const int result = VDRZAX_GetExtVlanLifs(vlan, &list);
    const Wire expected = vlan == 100 ? Record().U32(136, 100) : Wire(0);
    EXPECT_EQ(Difference(ReadList(result, list, VDRZAX_ReleaseLifs, 961), expected), "");
  }
}

// Sets, deletes, lookups, failures.
Wire Counts(uint32_t type, size_t first, const uint64_t (&counts)[4]) {
  Wire record = Wire(852).U32(0, type);
  for (size_t slot = 0; slot < 4; ++slot) record.U64(first + slot * 8, counts[slot]);
  return record;
}

using GetStats = int (*)(const char* instance, const char* lif, StatsRecord** out);

std::string StatsDifference(GetStats get, const Wire& expected) {
  StatsRecord* read = nullptr;
  const int result = get(kInstance, kLif, &read);
  return Difference(ReadRecord(result, read, VDRZAX_ReleaseStats), expected);
}

TEST_F(LifSettings, CommandsAreCounted) {
  ASSERT_EQ(VDRZAX_EnableLif(kInstance, kLif), 0);
  ASSERT_EQ(VDRZAX_DelLifVxlanCP(kInstance, kLif), 0);
  ASSERT_EQ(VDRZAX_DelLifIp(kInstance, kLif, 7, 7), -1);
  const Wire counted = Counts(0, 4, {2, 1, 0, 1});
  EXPECT_EQ(StatsDifference(VDRZAX_GetLifStatsCached, Counts(0, 4, {0, 0, 0, 0})), "");
  EXPECT_EQ(StatsDifference(VDRZAX_GetLifStats, counted), "");
  EXPECT_EQ(StatsDifference(VDRZAX_GetLifStatsCached, counted), "");
  ASSERT_EQ(VDRZAX_ResetLifStats(kInstance, kLif), 0);
  EXPECT_EQ(StatsDifference(VDRZAX_GetLifStats, Counts(0, 4, {0, 0, 0, 0})), "");

  StatsRecord* read = nullptr;
  int result = VDRZAX_GetVdrInstanceCPStats(kInstance, &read);
  // The instance itself and the LIF were set as well.
  EXPECT_EQ(Difference(ReadRecord(result, read, VDRZAX_ReleaseStats), Counts(1, 4, {3, 1, 0, 1})),
            "");
  ASSERT_EQ(VDRZAX_ResetVdrDiStats(), 0);
  uint32_t level = 0;
  ASSERT_EQ(VDRZAX_GetLogLevel(&level), 0);
  result = VDRZAX_GetVdrDiStats(&read);
  EXPECT_EQ(Difference(ReadRecord(result, read, VDRZAX_ReleaseStats), Counts(3, 12, {0, 0, 1, 0})),
            "");
}

}  // namespace
