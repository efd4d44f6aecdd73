#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <string>

#include "subject.h"

// What is set of bridges, their endpoints and clusters, by the library, and where it shows.

namespace {

using library::BridgeNetworks;
using library::BridgePorts;
using library::ErrorOf;
using library::Numbered;
using library::Read;
using library::ReadList;
using library::ReadRecord;
using wire::Bytes;
using wire::Wire;

constexpr const char* kInstance = "edge-1";
constexpr const char* kLif = "bridged";

class BridgeSettings : public testing::Test {
 protected:
  BridgeSettings() {
    EXPECT_EQ(VDRZAX_SetVdrInstance(kInstance, 0, nullptr, 0, 0), 0);
    EXPECT_EQ(VDRZAX_SetBridgeLif(kLif, "", 0, 0, 0, kInstance, 1), 0);
    EXPECT_EQ(VDRZAX_BridgeAdd(kInstance, 7), 0);
  }
  ~BridgeSettings() override {
    EXPECT_EQ(VDRZAX_DelVdrInstance(kInstance), 0);
    EXPECT_EQ(VDRZAX_FlushBridgeCluster(nullptr, 1), 0);
  }

  static std::string DifferenceFrom(const Wire& record) {
    BridgeInstanceRecord* read = nullptr;
    const int result = VDRZAX_GetBridgeInstance(kInstance, &read);
    return Difference(ReadRecord(result, read, VDRZAX_ReleaseBridgeInstance), record);
  }
  static Read Sessions(const char* name) {
    RecordList* list = nullptr;
    const int result = VDRZAX_GetBridgeBFDSessions(name, &list);
    return ReadList(result, list, VDRZAX_ReleaseBridgeBFDSessions, 39);
  }
  static int AddEndpoint(const std::string& name, uint32_t bridge, uint16_t tag) {
    return ErrorOf(VDRZAX_AddBridgeEndpoint(kLif, "second", name.c_str(), bridge, 0x01020304,
                                            "fourth", tag, 0x81, "fifth", 0x91));
  }
};

TEST_F(BridgeSettings, EachShowsInTheBridge) {
  ASSERT_EQ(VDRZAX_BridgeEnable(kInstance, 7), 0);
  ASSERT_EQ(VDRZAX_SetBridgeRepMode(kInstance, 0x01020304), 0);
  ASSERT_EQ(VDRZAX_BridgeSetHAAdminState(kInstance, 0x05060708), 0);
  EXPECT_EQ(DifferenceFrom(Wire(393)
                               .U32(8, 7)
                               .Text(12, kInstance)
                               .U32(76, 1)
                               .U32(80, 0x01020304)
                               .U32(305, 0x05060708)
                               .U64(313, 2)),
            "");
}

TEST_F(BridgeSettings, ACommandOfTheCallersReadsItsValueElsewhere) {
  ASSERT_EQ(VDRZAX_SetBridgeRepMode(kInstance, 5), 0);
  ASSERT_EQ(VDRZAX_BridgeSetConfig(kInstance, 49, 6), 0);
  EXPECT_EQ(DifferenceFrom(Wire(393).U32(8, 7).Text(12, kInstance).U64(313, 1)), "");
  EXPECT_EQ(VDRZAX_BridgeSetConfig(kInstance, 53, 6), 0);
  EXPECT_EQ(DifferenceFrom(Wire(393).Text(12, kInstance).U64(313, 1)), "");
  EXPECT_EQ(ErrorOf(VDRZAX_BridgeSetConfig("edge-2", 53, 6)), ENOENT);
  EXPECT_EQ(ErrorOf(VDRZAX_BridgeSetConfig(kInstance, 255, 6)), ENOTTY);
}

TEST_F(BridgeSettings, NetworksAndPortsFollow) {
  ASSERT_EQ(AddEndpoint("end", 7, 0x0506), 0);
  const Wire networks = Wire(266).U64(0, 1).U32(8, 7).U64(133, 1).U32(141, 7).U16(145, 0x0506);
  EXPECT_EQ(Difference(BridgeNetworks(kInstance), networks), "");
  EXPECT_EQ(Difference(BridgePorts(kInstance, 0, 7), Wire(146).U32(8, 7)), "");
  EXPECT_EQ(Difference(BridgePorts(kInstance, 0x0506, 7), Wire(146)
                                                              .U64(0, 1)
                                                              .U32(8, 7)
                                                              .U16(12, 0x0506)
                                                              .U32(14, 0x01020304)
                                                              .Text(18, kLif)
                                                              .Text(82, "end")),
            "");
  EXPECT_EQ(BridgePorts(kInstance, 0x0506, 8).error, ENOENT);
  ASSERT_EQ(VDRZAX_BridgeDel(kInstance, 7), 0);
  EXPECT_EQ(BridgeNetworks(kInstance).error, ENOENT);
}

TEST_F(BridgeSettings, AnEndpointShowsInTheRepliesOfTheKernelsOwnLayout) {
  ASSERT_EQ(AddEndpoint("end", 7, 0x0506), 0);
  Bytes status(229);
  ASSERT_EQ(VDRZAX_GetBeStatus(kLif, status.data()), 0);
  const auto numbers = [](Wire record) {
    return record.U32(192, 7).U32(196, 0x01020304).U16(200, 0x0506).U8(202, 0x81).U8(203, 0x91);
  };
  const Wire texts = Wire(229).Text(0, "end").Text(64, "fourth").Text(128, "fifth");
  EXPECT_EQ(wire::Difference(status, numbers(texts).bytes()), "");
  Bytes stats(146);
  ASSERT_EQ(VDRZAX_GetBeStats(kLif, stats.data()), 0);
  EXPECT_EQ(wire::Difference(stats, Wire(146).Text(0, "end").U64(64, 1).U64(80, 1).bytes()), "");
  Bytes all(470);
  uint32_t count = 0;
  ASSERT_EQ(VDRZAX_GetBeAll(all.data(), 470, &count), 0);
  EXPECT_EQ(count, 1U);
  const Wire raw = Wire(470).Text(0, "end").Text(64, kLif).Text(128, "second");
  EXPECT_EQ(wire::Difference(all, numbers(raw).bytes()), "");
  EXPECT_EQ(ErrorOf(VDRZAX_GetBeAll(all.data(), 234, &count)), EINVAL);
}

TEST_F(BridgeSettings, FlushedEndpointsAreGone) {
  ASSERT_EQ(AddEndpoint("end", 7, 0), 0);
  ASSERT_EQ(VDRZAX_FlushBridgeEndpoint(0), 0);
  EXPECT_EQ(BridgePorts(kInstance, 0, 7).bytes.size(), 2U * 146) << "it has the first flag";
  ASSERT_EQ(VDRZAX_FlushBridgeEndpoint(1), 0);
  EXPECT_EQ(BridgePorts(kInstance, 0, 7).bytes.size(), 146U);
}

TEST_F(BridgeSettings, TheTransportNodeIsReadBack) {
  const std::string bytes(64, '\xfe');
  const auto set = [&](uint8_t sets) {
    return ErrorOf(VDRZAX_BridgeLocalTransportNodeSet("first", "second", "third", 0x01020304,
                                                      bytes.data(), sets));
  };
  ASSERT_EQ(set(1), 0);
  Bytes node(2048);
  ASSERT_EQ(VDRZAX_BridgeGetLocalTransportNode(node.data(), 0x05060708), 0);
  EXPECT_EQ(wire::Difference(node, Wire(2048)
                                       .Text(0, "first")
                                       .Text(64, "second")
                                       .Text(128, "third")
                                       .U32(144, 0x01020304)
                                       .Text(148, bytes)
                                       .U32(212, 0x05060708)
                                       .bytes()),
            "");
  ASSERT_EQ(set(0), 0);
  EXPECT_EQ(set(0), ENOENT);
  EXPECT_EQ(ErrorOf(VDRZAX_BridgeGetLocalTransportNode(node.data(), 0)), ENOENT);
}

// What the supervisor of this run has had in memory at most, in kB.
long PeakOfTheSupervisor() {
  std::ifstream status("/proc/" + std::to_string(getppid()) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) return std::stol(line.substr(6));
  }
  return -1;
}

class AllBfdSessions : public BridgeSettings {};

// In a run of its own, whose memory is that of this alone: 111820800 bytes are delivered.
TEST_F(AllBfdSessions, AreDeliveredInLittleMemory) {
  for (int number = 0; number < 28672; ++number) {
    ASSERT_EQ(AddEndpoint(Numbered("endpoint", number), 7, 5), 0);
  }
  ASSERT_EQ(VDRZAX_BridgeClusterSet("owner", 1), 0);
  for (int number = 0; number < 100; ++number) {
    const MacValue mac{{2, 0, 0, 0, 0, static_cast<uint8_t>(number)}};
    ASSERT_EQ(VDRZAX_BridgeClusterNodeSet("owner", Numbered("node", number).c_str(), &mac, 1), 0);
  }
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeBFDSessions(kInstance, &list), 0);
  const long peak = PeakOfTheSupervisor();
  ASSERT_EQ(list->count, 2867200);
  const auto* sessions = static_cast<const BridgeBfdSessionRecord*>(list->entries);
  for (uint32_t index = 0; index < 2867200; ++index) {
    ASSERT_EQ(+sessions[index].qword23, index / 100);
    ASSERT_EQ(uint32_t{sessions[index].half6}, index % 100);
    ASSERT_EQ(uint32_t{sessions[index].half12}, index % 100 << 8);
    ASSERT_EQ(+sessions[index].word2, 7U);
  }
  VDRZAX_ReleaseBridgeBFDSessions(list);
  EXPECT_GT(peak, 0);
  EXPECT_LT(peak, 32 * 1024);
}

TEST_F(BridgeSettings, SessionsAreThoseOfTheNamedInstance) {
  ASSERT_EQ(AddEndpoint("end", 7, 5), 0);
  const MacValue mac{{2, 0x12, 0x22, 0x32, 0x42, 0x52}};
  ASSERT_EQ(VDRZAX_BridgeClusterSet("owner", 1), 0);
  ASSERT_EQ(VDRZAX_BridgeClusterNodeSet("owner", "node", &mac, 1), 0);
  ASSERT_EQ(VDRZAX_BridgeClusterBfdHAProfileSet("owner", 0x81, 0x0b0c0d0e, 0xf1f2f3f4), 0);
  const Wire session = Wire(39)
                           .U16(0, 5)
                           .U32(2, 7)
                           .Text(8, "\x02\x12\x22\x32\x42\x52")
                           .U32(14, 0x01020304)
                           .U8(18, 0x81)
                           .U32(19, 0x0b0c0d0e)
                           .U64(31, 0xf1f2f3f4);
  EXPECT_EQ(Difference(Sessions(kInstance), session), "");
  EXPECT_EQ(Difference(Sessions(nullptr), session), "");
  EXPECT_EQ(Sessions("edge-2").error, ENOENT);
}

}  // namespace
