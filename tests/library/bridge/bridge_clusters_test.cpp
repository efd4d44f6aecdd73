#include <gtest/gtest.h>
#include <vdrzax/bridge.h>

#include <string>

#include "bridge/bridge_lists.h"
#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using wire::Block;

constexpr MacValue kMac{{0x02, 0x13, 0x24, 0x35, 0x46, 0x57}};

const contract::ListGetter& ClustersGetter() { return getters::List("VDRZAX_GetBridgeClusters"); }

const contract::ListGetter& NodesGetter() { return getters::List("VDRZAX_GetBridgeClusterNodes"); }

// What is copied of the 183 bytes of a cluster; 64 to 71 are not.
fake::Bytes DecodedCluster(const fake::Bytes& source) {
  return wire::Decoded(
      source, {{0, 64}, {72, 4}, {76, 96}, {172, 2}, {174, 2}, {176, 2}, {178, 1}, {179, 4}});
}

// All 71 bytes of a node are copied.
fake::Bytes DecodedNode(const fake::Bytes& source) {
  return wire::Decoded(source, {{0, 64}, {64, 4}, {68, 2}, {70, 1}});
}

TEST(BridgeClusters, AreListedByTheContractOfAListGetter) {
  contract::ExpectListGetter(ClustersGetter());
}

TEST(BridgeClusters, EveryRecordIsCopiedFieldByField) {
  bridge::ExpectRecords(ClustersGetter(), DecodedCluster);
}

TEST(BridgeClusters, TheBytesAt64To71StayZero) {
  const auto records = contract::DecodeAll(ClustersGetter(), fake::Bytes(366, 0xFF));
  ASSERT_EQ(records.size(), 2u);
  for (const fake::Bytes& record : records) {
    EXPECT_EQ(record[63], 0xFF);
    EXPECT_BYTES(fake::Bytes(record.begin() + 64, record.begin() + 72), fake::Bytes(8));
    EXPECT_EQ(record[72], 0xFF);
  }
}

TEST(BridgeClusters, ANameAreaIsCopiedAsBytesBeyondAZeroAndWithoutTerminator) {
  fake::Bytes source = wire::Pattern(183);
  source[3] = 0;
  const auto records = contract::DecodeAll(ClustersGetter(), source);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_BYTES(records[0], DecodedCluster(source));
  EXPECT_NE(records[0][4], 0);
  EXPECT_NE(records[0][63], 0);
}

TEST(BridgeClusters, EachFieldStandsWhereItsNameSays) {
  fake::Bytes reply = Block()
                          .Text(0, "cluster")
                          .U32(72, 0x01020304)
                          .U8(76, 0x11)
                          .U8(171, 0x12)
                          .U16(172, 0x0506)
                          .U16(174, 0x0708)
                          .U16(176, 0x090A)
                          .U8(178, 0x0B)
                          .U32(179, 0x0C0D0E0F)
                          .bytes();
  reply.resize(183);
  fake::Device device;
  device.AnswerWith({.bytes = reply});
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeClusters("edge-1", &list), 0);
  const BridgeClusterRecord record = *static_cast<BridgeClusterRecord*>(list->entries);
  VDRZAX_ReleaseBridgeClusters(list);
  EXPECT_STREQ(reinterpret_cast<const char*>(record.nameArea), "cluster");
  EXPECT_EQ(uint32_t{record.word72}, 0x01020304u);
  EXPECT_EQ(record.bytes76[0], 0x11);
  EXPECT_EQ(record.bytes76[95], 0x12);
  EXPECT_EQ(uint16_t{record.half172}, 0x0506u);
  EXPECT_EQ(uint16_t{record.half174}, 0x0708u);
  EXPECT_EQ(uint16_t{record.half176}, 0x090Au);
  EXPECT_EQ(record.byte178, 0x0B);
  EXPECT_EQ(uint32_t{record.word179}, 0x0C0D0E0Fu);
}

TEST(BridgeClusters, WithoutANameTheListSendsABlockThatIsZeroThroughout) {
  contract::ListGetter getter = ClustersGetter();
  getter.call = [](RecordList** out) { return VDRZAX_GetBridgeClusters(nullptr, out); };
  getter.fetch = [](RecordList* list) { return VDRZAXGetBridgeClusters(nullptr, list); };
  getter.block = Block();
  contract::ExpectListGetter(getter);
}

TEST(BridgeClusters, AnythingButZeroCreatesAndZeroDeletes) {
  const Block block = Block().Text(0, "edge-1");
  ExpectCommand([] { return VDRZAX_BridgeClusterSet("edge-1", 1); }, 90, block);
  ExpectCommand([] { return VDRZAX_BridgeClusterSet("edge-1", 0x80); }, 90, block);
  ExpectCommand([] { return VDRZAX_BridgeClusterSet("edge-1", 0); }, 91, block);
}

TEST(BridgeClusters, FlushSendsTheNameWithBothCommands) {
  const Block block = Block().Text(0, "edge-1");
  ExpectCommand([] { return VDRZAX_FlushBridgeCluster("edge-1", 1); }, 103, block);
  ExpectCommand([] { return VDRZAX_FlushBridgeCluster("edge-1", 0x80); }, 103, block);
  ExpectCommand([] { return VDRZAX_FlushBridgeCluster("edge-1", 0); }, 104, block);
}

TEST(BridgeClusters, FlushWithoutANameSends968ZeroBytes) {
  ExpectCommand([] { return VDRZAX_FlushBridgeCluster(nullptr, 1); }, 103, Block());
  ExpectCommand([] { return VDRZAX_FlushBridgeCluster(nullptr, 0); }, 104, Block());
}

TEST(BridgeClusters, TheDebugLevelIsOneByteAt256) {
  ExpectCommand([] { return VDRZAX_SetBridgeClusterDebug("edge-1", 0xFE); }, 107,
                Block().Text(0, "edge-1").U8(256, 0xFE));
}

TEST(BridgeClusters, TheDebugLevelWithoutANameLeavesTheNameZero) {
  ExpectCommand([] { return VDRZAX_SetBridgeClusterDebug(nullptr, 0xFE); }, 107,
                Block().U8(256, 0xFE));
}

TEST(BridgeClusters, TheBfdProfileIsOneByteAndTwoNumbers) {
  ExpectCommand(
      [] { return VDRZAX_BridgeClusterBfdHAProfileSet("edge-1", 0xFE, 0x11223344, 0x55667788); },
      106, Block().Text(0, "edge-1").U8(256, 0xFE).U32(260, 0x11223344).U32(264, 0x55667788));
}

TEST(BridgeClusters, ANameOf64CharactersIsCutTo63) {
  const std::string name(64, 'n');
  const Block cut = Block().Text(0, std::string(63, 'n'));
  ExpectCommand([&] { return VDRZAX_BridgeClusterSet(name.c_str(), 1); }, 90, cut);
  ExpectCommand([&] { return VDRZAX_FlushBridgeCluster(name.c_str(), 0); }, 104, cut);
  ExpectCommand([&] { return VDRZAX_SetBridgeClusterDebug(name.c_str(), 0); }, 107, cut);
  ExpectCommand([&] { return VDRZAX_BridgeClusterBfdHAProfileSet(name.c_str(), 0, 0, 0); }, 106,
                cut);
  contract::ListGetter getter = ClustersGetter();
  getter.call = [&](RecordList** out) { return VDRZAX_GetBridgeClusters(name.c_str(), out); };
  getter.fetch = [&](RecordList* list) { return VDRZAXGetBridgeClusters(name.c_str(), list); };
  getter.block = cut;
  contract::ExpectListGetter(getter);
}

TEST(BridgeClustersDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_GetBridgeClusters("e", nullptr), "");
  EXPECT_DEATH(VDRZAXGetBridgeClusters("e", nullptr), "");
  EXPECT_DEATH(VDRZAX_BridgeClusterSet(nullptr, 1), "");
  EXPECT_DEATH(VDRZAX_BridgeClusterSet(nullptr, 0), "");
  EXPECT_DEATH(VDRZAX_BridgeClusterBfdHAProfileSet(nullptr, 1, 2, 3), "");
}

TEST(BridgeClusterNodes, AreListedByTheContractOfAListGetter) {
  contract::ExpectListGetter(NodesGetter());
}

TEST(BridgeClusterNodes, EveryRecordIsCopiedFieldByField) {
  bridge::ExpectRecords(NodesGetter(), DecodedNode);
}

TEST(BridgeClusterNodes, ANameAreaIsCopiedAsBytesBeyondAZeroAndWithoutTerminator) {
  fake::Bytes source = wire::Pattern(71);
  source[3] = 0;
  const auto records = contract::DecodeAll(NodesGetter(), source);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_BYTES(records[0], source);
}

TEST(BridgeClusterNodes, EachFieldStandsWhereItsNameSays) {
  fake::Bytes reply =
      Block().Text(0, "node").U32(64, 0x01020304).U16(68, 0x0506).U8(70, 0x07).bytes();
  reply.resize(71);
  fake::Device device;
  device.AnswerWith({.bytes = reply});
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetBridgeClusterNodes("edge-1", &list), 0);
  const BridgeClusterNodeRecord record = *static_cast<BridgeClusterNodeRecord*>(list->entries);
  VDRZAX_ReleaseBridgeClusterNodes(list);
  EXPECT_STREQ(reinterpret_cast<const char*>(record.nameArea), "node");
  EXPECT_EQ(uint32_t{record.word64}, 0x01020304u);
  EXPECT_EQ(uint16_t{record.half68}, 0x0506u);
  EXPECT_EQ(record.byte70, 0x07);
}

TEST(BridgeClusterNodes, WithoutANameTheListSendsABlockThatIsZeroThroughout) {
  contract::ListGetter getter = NodesGetter();
  getter.call = [](RecordList** out) { return VDRZAX_GetBridgeClusterNodes(nullptr, out); };
  getter.fetch = [](RecordList* list) { return VDRZAXGetBridgeClusterNodes(nullptr, list); };
  getter.block = Block();
  contract::ExpectListGetter(getter);
}

TEST(BridgeClusterNodes, AddingSendsTheMacBehindBothNames) {
  const Block block =
      Block().Text(0, "edge-1").Text(256, "node-2").Raw(320, {2, 0x13, 0x24, 0x35, 0x46, 0x57});
  ExpectCommand([] { return VDRZAX_BridgeClusterNodeSet("edge-1", "node-2", &kMac, 1); }, 93,
                block);
  ExpectCommand([] { return VDRZAX_BridgeClusterNodeSet("edge-1", "node-2", &kMac, 0x80); }, 93,
                block);
}

TEST(BridgeClusterNodes, RemovingNeitherSendsNorReadsTheMac) {
  const Block block = Block().Text(0, "edge-1").Text(256, "node-2");
  ExpectCommand([] { return VDRZAX_BridgeClusterNodeSet("edge-1", "node-2", &kMac, 0); }, 94,
                block);
  ExpectCommand([] { return VDRZAX_BridgeClusterNodeSet("edge-1", "node-2", nullptr, 0); }, 94,
                block);
}

TEST(BridgeClusterNodes, NamesOf64CharactersAreCutTo63) {
  const std::string name(64, 'n');
  const std::string node(64, 'o');
  const Block cut = Block().Text(0, std::string(63, 'n')).Text(256, std::string(63, 'o'));
  ExpectCommand([&] { return VDRZAX_BridgeClusterNodeSet(name.c_str(), node.c_str(), nullptr, 0); },
                94, cut);
  contract::ListGetter getter = NodesGetter();
  getter.call = [&](RecordList** out) { return VDRZAX_GetBridgeClusterNodes(name.c_str(), out); };
  getter.fetch = [&](RecordList* list) { return VDRZAXGetBridgeClusterNodes(name.c_str(), list); };
  getter.block = Block().Text(0, std::string(63, 'n'));
  contract::ExpectListGetter(getter);
}

TEST(BridgeClusterNodesDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_GetBridgeClusterNodes("e", nullptr), "");
  EXPECT_DEATH(VDRZAXGetBridgeClusterNodes("e", nullptr), "");
  EXPECT_DEATH(VDRZAX_BridgeClusterNodeSet(nullptr, "n", &kMac, 1), "");
  EXPECT_DEATH(VDRZAX_BridgeClusterNodeSet("e", nullptr, &kMac, 1), "");
  EXPECT_DEATH(VDRZAX_BridgeClusterNodeSet("e", "n", nullptr, 1), "");
}

}  // namespace
