#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string>

#include "datapath/datapath.h"
#include "documents.h"
#include "full_state.h"
#include "in_process.h"
#include "state/state_reader.h"
#include "state/state_writer.h"

namespace {

using documents::Load;
using documents::Save;
using documents::With;
using in_process::Block;
using in_process::Execute;

TEST(StateDocument, HoldsEveryMemberOfEveryStructure) {
  const vdrsim::State full = MakeFullState();
  const std::string document = Save(full);
  const vdrsim::State loaded = Load(document);
  EXPECT_TRUE(loaded == full);
  // Counts take no part in the comparison of states.
  EXPECT_EQ(Save(loaded), document);
}

// What a test of equality could miss: a count that came to another's place.
TEST(StateDocument, KeepsCountsApart) {
  const vdrsim::State loaded = Load(
      With(R"("counters": {"sets": 1, "deletes": 2, "lookups": 3, "failures": 18446744073709551615},
          "instances": {"edge-1": {"counters": {"lookups": 7}}})"));
  const vdrsim::Counts& counts = loaded.counters.counts();
  EXPECT_EQ(counts.sets, 1U);
  EXPECT_EQ(counts.deletes, 2U);
  EXPECT_EQ(counts.lookups, 3U);
  EXPECT_EQ(counts.failures, 18446744073709551615U);
  EXPECT_EQ(loaded.instances.Find("edge-1")->counters.counts().lookups, 7U);
}

TEST(StateDocument, OfAnEmptyStateIsTheVersionAlone) {
  EXPECT_EQ(Save({}), "{\n  \"format_version\": 1\n}\n");
  EXPECT_TRUE(Load(With("")) == vdrsim::State{});
}

TEST(StateDocument, HoldsWhatIsThereThoughItIsEmpty) {
  for (const char* members :
       {R"("transportNode": {})", R"("instances": {"a": {}})", R"("softRss": {"r": {}})",
        R"("instances": {"a": {"multicast": {"router": "0.0.0.0"}}})",
        R"("instances": {"a": {"lifs": {"l": {"policyTableRef": {}}}}})",
        R"("instances": {"a": {"multicast": {"groups": [{"group": "0.0.0.0",
           "localReceivers": {"": {}}}]}}})"}) {
    const vdrsim::State loaded = Load(With(members));
    EXPECT_FALSE(loaded == vdrsim::State{}) << members;
    EXPECT_TRUE(Load(Save(loaded)) == loaded) << members;
  }
}

TEST(StateDocument, HoldsNamesOfAnyBytes) {
  std::string every;
  for (int byte = 1; byte < 256; ++byte) every += static_cast<char>(byte);
  vdrsim::State state;
  for (const std::string& name :
       {every.substr(0, 63), every.substr(63, 63), every.substr(126, 63), every.substr(189, 63),
        std::string("\\xff"), std::string("\xff"), std::string("\xc3\xa9/~"),
        std::string("\"a b\""), std::string("\\\\"), std::string("\\"), std::string("\""),
        std::string("\xf0\x9f\x98\x80")}) {
    ASSERT_EQ(state.instances.Set(name, 100, [](vdrsim::Instance&) { return 0; }), 0);
  }
  const std::string document = Save(state);
  EXPECT_TRUE(Load(document) == state);
  for (const char character : document)
    EXPECT_TRUE(character == '\n' || (character >= ' ' && character <= '~'));
}

TEST(StateDocument, TakesTextsAsPeopleWriteThem) {
  const vdrsim::State state =
      Load(With("\"instances\": {\"caf\xc3\xa9\": {\"text\": \"\\\\xff\\\\\\\\\"}}"));
  EXPECT_EQ(state.instances.Find("caf\xc3\xa9")->text, "\xff\\");
}

// An IPv4 server of a caller without the library can have bytes behind its address.
TEST(StateDocument, HoldsAllBytesOfARelayServer) {
  vdrsim::State state;
  std::array<std::byte, 16> bytes{};
  bytes.fill(std::byte{0xab});
  state.instances.Set("a", 1, [&](vdrsim::Instance& instance) {
    return instance.lifs.Set("l", 1, [&](vdrsim::Lif& lif) {
      lif.relayServers = {{.address = bytes, .family = 1},
                          {.address = bytes, .family = 3},
                          {.address = {std::byte{10}}, .family = 1},
                          {.address = {std::byte{10}}, .family = 3}};
      return 0;
    });
  });
  EXPECT_TRUE(Load(Save(state)) == state);
}

TEST(StateDocument, WritesAddressesAsPeopleDo) {
  const std::string document = With(R"("instances": {"i": {"lifs": {"l": {
      "addresses": [{"address": "1.1.1.1"}, {"address": "101:101::"}, {"address": "1::"},
                    {"address": "0:0:1::"}, {"address": "0:0:0:0:1::"}, {"address": "::1"},
                    {"address": "1.1.1.2"}],
      "relayServers": [{"address": "10.0.0.1"}, {"address": "2001:0DB8::0001"},
                       {"address": "0A000001000000000000000000000001"},
                       {"address": "0a000001000000000000000000000000"},
                       {"address": "2001:0db8:0000:0000:000:000:00:1"}]}}}})");
  EXPECT_EQ(Save(Load(document)), R"({
  "format_version": 1,
  "instances": {
    "i": {
      "lifs": {
        "l": {
          "addresses": [
            {"address": "1.1.1.1"},
            {"address": "101:101::"},
            {"address": "1::"},
            {"address": "0:0:1::"},
            {"address": "::1:0:0:0"},
            {"address": "::1"},
            {"address": "1.1.1.2"}
          ],
          "relayServers": [
            {"address": "10.0.0.1"},
            {"address": "2001:db8::1"},
            {"address": "0a000001000000000000000000000001"},
            {"address": "10.0.0.1"},
            {"address": "2001:db8::1"}
          ]
        }
      }
    }
  }
}
)");
}

TEST(StateDocument, HoldsTheLeastAndTheMostOfEachNumber) {
  for (
      const char* members :
      {R"("instances": {"i": {"second": 4294967295, "flag": 255, "mcastRouting": {"value3": 65535}}})",
       R"("instances": {"i": {"policies": [{"type": -2147483648}, {"type": 2147483647}]}})",
       R"("softRss": {"r": {"qword0": 18446744073709551615, "entryCount": 128}})"}) {
    const std::string document = Save(Load(With(members)));
    for (const char* number : {"4294967295", "255", "65535", "-2147483648", "2147483647",
                               "18446744073709551615", "128"}) {
      const bool isThere = std::string_view(members).find(number) != std::string_view::npos;
      EXPECT_EQ(document.find(number) != std::string::npos, isThere) << number;
    }
  }
}

// A stream that gives a text, and then an error.
std::string ComplaintOfStream(std::string text) {
  const auto read = [](void* cookie, char* bytes, size_t size) -> ssize_t {
    auto& left = *static_cast<std::string*>(cookie);
    if (left.empty()) {
      errno = EIO;
      return -1;
    }
    const size_t count = left.copy(bytes, size);
    left.erase(0, count);
    return static_cast<ssize_t>(count);
  };
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(
      fopencookie(&text, "r", {.read = read, .write = nullptr, .seek = nullptr, .close = nullptr}),
      std::fclose);
  try {
    vdrsim::ReadState(stream.get(), "host\n.json");
    return "";
  } catch (const vdrsim::StateFailure& failure) {
    return failure.what();
  }
}

TEST(StateDocument, OfAStreamThatFailsIsRefusedWhereverItFails) {
  for (const std::string text : {"", "{", "{\"format_version\": 1}", "{\"format_version\": 1} "}) {
    EXPECT_EQ(ComplaintOfStream(text), "host\\x0a.json: Input/output error") << text;
  }
}

// A caller without the library can leave out terminators.
TEST(StateDocument, HoldsTextsThatFillTheirFields) {
  vdrsim::Datapath datapath;
  const std::string text(256, 'x');
  ASSERT_EQ(Execute(datapath, 2, Block("edge-1")).error, 0);
  ASSERT_EQ(
      Execute(datapath, 19, Block("edge-1").Text(256, text.substr(0, 64)).Text(384, "lif-1")).error,
      0);
  ASSERT_EQ(Execute(datapath, 15,
                    wire::Wire(968).Text(256, "c").Text(320, text.substr(0, 16)).Text(386, text))
                .error,
            0);
  const vdrsim::State state = datapath.state();
  EXPECT_EQ(state.instances.Find("edge-1")->lifs.Find("lif-1")->auxName.size(), 64U);
  EXPECT_EQ(state.connections.Find("c")->sixth.size(), 256U);
  EXPECT_TRUE(Load(Save(state)) == state);
}

TEST(StateDocument, CompletesWhatFollowsFromTheRest) {
  const vdrsim::State state =
      Load(With(R"("publicAddresses": [{"address": "1.2.3.4", "items": ["9.9.9.9", "8.8.8.8"]},
                                       {"address": "1.2.3.5", "items": ["0.0.0.0"]}],
                   "instances": {"a": {"lifs": {"l": {"arps": [
                     {"address": "10.0.0.1", "mac": "02-00-5e-10-AB-FF"}]}}}})"));
  EXPECT_EQ(state.publicAddresses.itemCount, 3U);
  const vdrsim::Neighbour& neighbour =
      state.instances.Find("a")->lifs.Find("l")->arps.begin()->second;
  EXPECT_EQ(neighbour.macText, "02-00-5e-10-AB-FF");
  EXPECT_EQ(neighbour.mac[5], std::byte{0xff});
}

TEST(StateDocument, IsWrittenInPiecesWhileTheDatapathGoesOn) {
  vdrsim::Datapath datapath;
  datapath.Replace(MakeFullState());
  const std::string before = Save(datapath.state());
  vdrsim::StateWriter writer(datapath.state());
  datapath.Replace({});
  std::string written;
  for (auto piece = writer.Next(); !piece.empty(); piece = writer.Next()) written += piece;
  EXPECT_EQ(written, before);
  EXPECT_EQ(writer.Next(), "");
}

}  // namespace
