#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <string_view>

#include "simulated.h"
#include "support/any_memory.h"

namespace {

using in_process::Block;
using in_process::Bytes;
using in_process::Difference;
using in_process::Execute;
using in_process::Result;
using in_process::Wire;
using vdrsim::Datapath;

constexpr std::string_view kMac = "\x02\x12\x22\x32\x42\x52";

Wire NodeBlock(std::string_view cluster, std::string_view node) {
  return Block(cluster).Text(256, node);
}

class SimulatedClusters : public in_process::Simulated {
 protected:
  SimulatedClusters() { EXPECT_EQ(Do(90, Block("owner")), 0); }

  Result Clusters(std::string_view name = "") {
    return Execute(datapath_, 89, Block(name), 10 * 183);
  }
  Result Nodes(std::string_view name = "") { return Execute(datapath_, 92, Block(name), 100 * 71); }
  Result Sessions(std::string_view name = "") {
    return Execute(datapath_, 96, Block(name), 2867200 * 39);
  }
};

TEST_F(SimulatedClusters, WhatIsSetOfOneShows) {
  const Wire empty = Wire(183).Text(0, "owner");
  EXPECT_EQ(Difference(Clusters(), empty), "");
  ASSERT_EQ(Do(106, Block("owner").U8(256, 0x81).U32(260, 0x01020304).U32(264, 0x05060708)), 0);
  ASSERT_EQ(Do(107, Block("owner").U8(256, 0x91)), 0);
  ASSERT_EQ(Do(93, NodeBlock("owner", "node-1")), 0);
  ASSERT_EQ(Do(93, NodeBlock("owner", "node-2")), 0);
  ASSERT_EQ(Do(90, Block("owner")), 0) << "setting again leaves what other commands said";
  EXPECT_EQ(Difference(Clusters("owner"), Wire(183)
                                              .Text(0, "owner")
                                              .U32(72, 0x01020304)
                                              .U8(76, 0x91)
                                              .U16(172, 2)
                                              .U8(178, 0x81)
                                              .U32(179, 0x05060708)),
            "");
  ASSERT_EQ(Do(91, Block("owner")), 0);
  ASSERT_EQ(Do(90, Block("owner")), 0);
  EXPECT_EQ(Difference(Clusters(), empty), "");
}

TEST_F(SimulatedClusters, TheDebugLevelWithoutANameIsThatOfAll) {
  ASSERT_EQ(Do(90, Block("another")), 0);
  ASSERT_EQ(Do(107, Block().U8(256, 5)), 0);
  EXPECT_EQ(Difference(Clusters("owner"), Wire(183).Text(0, "owner").U8(76, 5)), "");
  EXPECT_EQ(Difference(Clusters("another"), Wire(183).Text(0, "another").U8(76, 5)), "");
  ASSERT_EQ(Do(107, Block("owner").U8(256, 6)), 0);
  EXPECT_EQ(Difference(Clusters("another"), Wire(183).Text(0, "another").U8(76, 5)), "");
}

TEST_F(SimulatedClusters, ANodeIsReadBackAsItWasSet) {
  ASSERT_EQ(Do(90, Block("another")), 0);
  ASSERT_EQ(Do(93, NodeBlock("owner", "a").Text(320, kMac)), 0);
  ASSERT_EQ(Do(93, NodeBlock("another", "b")), 0);
  ASSERT_EQ(Do(93, NodeBlock("another", "a")), 0);
  const Wire record = Wire(71).Text(0, "a").Text(64, kMac);
  EXPECT_EQ(Difference(Nodes("owner"), record), "");
  const Result all = Nodes();
  ASSERT_EQ(all.reply.size(), 3U * 71);
  EXPECT_EQ(all.TextAt(0), "a");
  EXPECT_EQ(all.WordAt(64), 0U);
  EXPECT_EQ(all.TextAt(71), "b");
  EXPECT_EQ(all.WordAt(2 * 71 + 64), 0x32221202U);
  ASSERT_EQ(Do(93, NodeBlock("owner", "a").Text(320, "\x03")), 0);
  EXPECT_EQ(Difference(Nodes("owner"), Wire(71).Text(0, "a").U8(64, 3)), "");
  ASSERT_EQ(Do(94, NodeBlock("owner", "a")), 0);
  EXPECT_EQ(Do(94, NodeBlock("owner", "a")), ENOENT);
  EXPECT_EQ(Difference(Nodes("owner"), Wire(0)), "");
}

TEST_F(SimulatedClusters, AFlushTakesOneOrAll) {
  for (const char* name : {"second", "third"}) ASSERT_EQ(Do(90, Block(name)), 0);
  ASSERT_EQ(Do(93, NodeBlock("second", "node")), 0);
  ASSERT_EQ(Do(104, Block("second")), 0);
  EXPECT_EQ(Do(104, Block("second")), ENOENT);
  EXPECT_EQ(Clusters().reply.size(), 2U * 183);
  EXPECT_EQ(Difference(Nodes(), Wire(0)), "");
  ASSERT_EQ(Do(103, Block("whoever")), 0);
  EXPECT_EQ(Difference(Clusters(), Wire(0)), "");
  EXPECT_EQ(Do(103, Block()), 0) << "nothing is left";
}

TEST_F(SimulatedClusters, WhatIsNotNamedOrNotThereIsRefused) {
  const std::string unterminated(64, 'n');
  const vdrsim::State before = datapath_.state();
  for (const uint32_t code : {91U, 93U, 94U, 104U, 106U}) {
    SCOPED_TRACE(code);
    EXPECT_EQ(Do(code, NodeBlock("", "node")), EINVAL);
    EXPECT_EQ(Do(code, NodeBlock(unterminated, "node")), EINVAL);
    EXPECT_EQ(Do(code, NodeBlock("nobody", "node")), ENOENT);
  }
  for (const uint32_t code : {89U, 92U, 107U}) {
    SCOPED_TRACE(code);
    EXPECT_EQ(Execute(datapath_, code, Block(unterminated), 9999).error, EINVAL);
    EXPECT_EQ(Execute(datapath_, code, Block("nobody"), 9999).error, ENOENT);
  }
  for (const uint32_t code : {93U, 94U}) {
    EXPECT_EQ(Do(code, NodeBlock("owner", "")), EINVAL);
    EXPECT_EQ(Do(code, NodeBlock("owner", unterminated)), EINVAL);
  }
  EXPECT_EQ(Do(90, Block()), EINVAL);
  EXPECT_EQ(Do(90, Block(unterminated)), EINVAL);
  EXPECT_EQ(datapath_.state(), before);
}

TEST_F(SimulatedClusters, ThereIsRoomForTenAndAHundredNodes) {
  for (int number = 1; number < 10; ++number) {
    ASSERT_EQ(Do(90, Block("owner-" + std::to_string(number))), 0);
  }
  EXPECT_EQ(Do(90, Block("one-too-many")), ENOSPC);
  EXPECT_EQ(Do(90, Block("owner")), 0) << "an update needs no room";
  for (int number = 0; number < 100; ++number) {
    const char* cluster = number % 2 == 0 ? "owner" : "owner-1";
    ASSERT_EQ(Do(93, NodeBlock(cluster, "node-" + std::to_string(number))), 0);
  }
  EXPECT_EQ(Do(93, NodeBlock("owner", "one-too-many")), ENOSPC);
  EXPECT_EQ(Do(93, NodeBlock("owner-1", "one-too-many")), ENOSPC);
  EXPECT_EQ(Do(93, NodeBlock("owner", "node-0")), 0) << "an update needs no room";
  EXPECT_EQ(Nodes().reply.size(), 7100U);
  EXPECT_EQ(Clusters().reply.size(), 1830U);
}

class SimulatedSessions : public SimulatedClusters {
 protected:
  SimulatedSessions() {
    for (const char* instance : {"edge-1", "edge-2"}) {
      EXPECT_EQ(Do(2, Block(instance)), 0);
      EXPECT_EQ(Do(57, Block(instance).Text(384, instance)), 0);
    }
  }

  static Wire EndpointBlock(std::string_view lif, std::string_view name) {
    return Wire(968).Text(320, name).Text(384, lif);
  }
};

TEST_F(SimulatedSessions, EachNodeWatchesEachEndpoint) {
  ASSERT_EQ(Do(45, EndpointBlock("edge-1", "x")), 0);
  EXPECT_EQ(Difference(Sessions(), Wire(0)), "") << "there is no node";
  ASSERT_EQ(
      Do(45,
         EndpointBlock("edge-2", "y").U32(544, 0x01020304).U32(548, 0x05060708).U16(720, 0x090a)),
      0);
  ASSERT_EQ(Do(93, NodeBlock("owner", "node-1")), 0);
  ASSERT_EQ(Do(93, NodeBlock("owner", "node-2").Text(320, kMac)), 0);
  ASSERT_EQ(Do(106, Block("owner").U8(256, 0x81).U32(260, 0x0b0c0d0e).U32(264, 0xf1f2f3f4)), 0);
  const auto session = [](uint16_t node, uint64_t endpoint) {
    Wire record = Wire(39)
                      .U16(6, node)
                      .U8(18, 0x81)
                      .U32(19, 0x0b0c0d0e)
                      .U64(23, endpoint)
                      .U64(31, 0xf1f2f3f4);
    if (node == 1) record.Text(8, kMac);
    return record;
  };
  const auto second = [&](uint16_t node, uint64_t endpoint) {
    return session(node, endpoint).U16(0, 0x090a).U32(2, 0x01020304).U32(14, 0x05060708);
  };
  const auto differences = [](const Result& result, const std::vector<Wire>& expected) {
    std::string all = result.reply.size() == expected.size() * 39 ? "" : "length ";
    for (size_t index = 0; index < expected.size() && all.empty(); ++index) {
      const auto at = result.reply.begin() + static_cast<ptrdiff_t>(index * 39);
      all += wire::Difference(Bytes(at, at + 39), expected[index].bytes());
    }
    return all;
  };
  EXPECT_EQ(differences(Sessions(), {session(0, 0), session(1, 0), second(0, 1), second(1, 1)}),
            "");
  EXPECT_EQ(differences(Sessions("edge-2"), {second(0, 0), second(1, 0)}), "");
}

// The sessions are taken from a datapath whose endpoints are all deleted by other commands meanwhile.
TEST_F(SimulatedSessions, AtTheirCapTheyAreMadePieceByPieceWhileOtherCommandsGoOn) {
  for (int number = 0; number < 28672; ++number) {
    ASSERT_EQ(Do(45, EndpointBlock("edge-1", std::to_string(number))), 0);
  }
  for (uint8_t number = 0; number < 100; ++number) {
    const std::string name = "node-" + std::to_string(100 + number);
    ASSERT_EQ(Do(93, NodeBlock("owner", name).U8(320, number)), 0);
  }
  AnyMemory memory;
  vdrsim::Answer answer = datapath_.Execute({.process = 1,
                                             .thread = 1,
                                             .node = vdrsim::Node::Normal,
                                             .code = 96,
                                             .input = Block("edge-1"),
                                             .capacity = 2867200 * 39,
                                             .destination = memory});
  ASSERT_EQ(answer.error, 0);
  ASSERT_EQ(answer.reply.size(), 111820800U);
  const std::byte* place = nullptr;
  uint64_t session = 0;
  for (auto piece = answer.reply.Next(); !piece.empty(); piece = answer.reply.Next()) {
    ASSERT_LE(piece.size(), 131072U);
    EXPECT_TRUE(place == nullptr || place == piece.data()) << "one buffer is enough";
    place = piece.data();
    for (size_t at = 0; at < piece.size(); at += 39, ++session) {
      uint64_t endpoint = 0;
      std::memcpy(&endpoint, &piece[at + 23], 8);
      ASSERT_EQ(endpoint, session / 100);
      ASSERT_EQ(std::to_integer<uint64_t>(piece[at + 8]), session % 100);
    }
    ASSERT_EQ(Do(47, Block()), 0);
    ASSERT_EQ(Do(103, Block()), 0);
  }
  EXPECT_EQ(session, 2867200U);
  EXPECT_EQ(Difference(Sessions(), Wire(0)), "");
}

TEST(SimulatedPortConnections, OneIsReadBackAsItWasSet) {
  Datapath datapath;
  const auto port = [](std::string_view name) { return Wire(968).Text(256, name); };
  const auto list = [&] { return Execute(datapath, 99, Block(), 131072); };
  ASSERT_EQ(Execute(datapath, 97, port("port-2").Text(320, "second").Text(336, kMac)).error, 0);
  ASSERT_EQ(Execute(datapath, 97, port("port-1")).error, 0);
  EXPECT_EQ(Difference(
                list(),
                Wire(172).Text(0, "port-1").Text(86, "port-2").Text(150, "second").Text(166, kMac)),
            "");
  ASSERT_EQ(Execute(datapath, 97, port("port-2").Text(320, "third")).error, 0);
  ASSERT_EQ(Execute(datapath, 98, port("port-1")).error, 0);
  EXPECT_EQ(Difference(list(), Wire(86).Text(0, "port-2").Text(64, "third")), "");
  EXPECT_EQ(Execute(datapath, 98, port("port-1")).error, ENOENT);
  for (const uint32_t code : {97U, 98U}) {
    EXPECT_EQ(Execute(datapath, code, port("")).error, EINVAL);
    EXPECT_EQ(Execute(datapath, code, port(std::string(64, 'n'))).error, EINVAL);
  }
}

TEST(SimulatedPortConnections, ThereIsRoomForAsManyAsTheReplyHolds) {
  Datapath datapath;
  const auto plumb = [&](int number) {
    const Wire block = Wire(968).Text(256, "port-" + std::to_string(number));
    return Execute(datapath, 97, block).error;
  };
  for (int number = 0; number < 1524; ++number) ASSERT_EQ(plumb(number), 0);
  EXPECT_EQ(plumb(1524), ENOSPC);
  EXPECT_EQ(plumb(7), 0) << "an update needs no room";
  EXPECT_EQ(Execute(datapath, 99, Block(), 131072).reply.size(), 1524U * 86);
}

class SimulatedTransportNode : public in_process::Simulated {
 protected:
  Result Get(uint32_t selector = 0) {
    return Execute(datapath_, 102, Wire(968).U32(468, selector), 2048);
  }
};

TEST_F(SimulatedTransportNode, ItIsReadBackAsItWasSet) {
  EXPECT_EQ(Get().error, ENOENT);
  const std::string bytes = std::string("\0\1", 2) + std::string(62, '\xfe');
  ASSERT_EQ(Do(100, Wire(968)
                        .Text(256, "first")
                        .Text(320, "second")
                        .Text(384, "third")
                        .U32(400, 0x01020304)
                        .Text(404, bytes)),
            0);
  EXPECT_EQ(Difference(Get(0x05060708), Wire(216)
                                            .Text(0, "first")
                                            .Text(64, "second")
                                            .Text(128, "third")
                                            .U32(144, 0x01020304)
                                            .Text(148, bytes)
                                            .U32(212, 0x05060708)),
            "");
  ASSERT_EQ(Do(100, Wire(968).Text(256, "another")), 0) << "there is one a host";
  EXPECT_EQ(Difference(Get(), Wire(216).Text(0, "another")), "");
}

TEST_F(SimulatedTransportNode, TheOneThatIsSetCanBeCleared) {
  EXPECT_EQ(Do(101, Wire(968).Text(256, "first")), ENOENT);
  ASSERT_EQ(Do(100, Wire(968).Text(256, "first")), 0);
  EXPECT_EQ(Do(101, Wire(968).Text(256, "another")), ENOENT);
  for (const uint32_t code : {100U, 101U}) {
    EXPECT_EQ(Do(code, Wire(968)), EINVAL);
    EXPECT_EQ(Do(code, Wire(968).Text(256, std::string(64, 'n'))), EINVAL);
  }
  EXPECT_EQ(Get().TextAt(0), "first");
  ASSERT_EQ(Do(101, Wire(968).Text(256, "first")), 0);
  EXPECT_EQ(Get().error, ENOENT);
}

}  // namespace
