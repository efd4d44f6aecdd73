#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>
#include <vdrzax.hpp>
#include <vector>

#include "support/fake_device.h"
#include "support/wire.h"

namespace {

using vdrzax::Client;

using Sizes = std::vector<std::size_t>;

template <typename Owner>
constexpr bool kMovesAlone =
    std::is_nothrow_move_constructible_v<Owner>&& std::is_nothrow_move_assignable_v<Owner> &&
    !std::is_copy_constructible_v<Owner> && !std::is_copy_assignable_v<Owner>;
static_assert(kMovesAlone<vdrzax::List<vdrzax::Instance>>);
static_assert(kMovesAlone<vdrzax::List<vdrzax::E2iEntry, E2ITable>>);
static_assert(kMovesAlone<vdrzax::Owned<vdrzax::Instance>>);
static_assert(kMovesAlone<vdrzax::VmPublicIpTable>);
static_assert(kMovesAlone<vdrzax::RoutesV6>);
static_assert(kMovesAlone<vdrzax::Buffer>);
static_assert(std::is_empty_v<Client>);

fake::Bytes Instances(std::size_t count) { return wire::Patterns(count, 577); }

TEST(CxxOwnership, AListGoesBackWholeAndOnce) {
  fake::Device device;
  device.AnswerWith({.bytes = Instances(3)});
  {
    const auto instances = Client().instances();
    EXPECT_EQ(instances.size(), 3U);
    EXPECT_EQ(device.Live().size(), 2U);
  }
  EXPECT_EQ(device.Live(), Sizes());
}

// The Release of instances clears six bytes of each, which free() would not.
TEST(CxxOwnership, AListGoesBackByItsOwnRelease) {
  fake::Device device;
  device.keepFreedContent = true;
  device.AnswerWith({.bytes = Instances(1)});
  static_cast<void>(Client().instances());
  const auto entries =
      std::find_if(device.freed.begin(), device.freed.end(), [](const auto& freed) {
        return freed.size == 1001 * 577 && freed.content.at(0) == Instances(1).at(0) &&
               freed.content.at(393) == 0;
      });
  EXPECT_NE(entries, device.freed.end());
}

TEST(CxxOwnership, MovedFromAListIsEmpty) {
  fake::Device device;
  device.AnswerWith({.bytes = Instances(3)});
  auto first = Client().instances();
  auto second = std::move(first);
  EXPECT_TRUE(first.empty());  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(first.begin(), first.end());
  EXPECT_EQ(second.size(), 3U);
  second = Client().instances();
  EXPECT_EQ(device.Live().size(), 2U);
  first = std::move(second);
  EXPECT_EQ(first.size(), 3U);
}

TEST(CxxOwnership, ARecordGoesBackWholeAndOnce) {
  fake::Device device;
  device.AnswerWith({.bytes = Instances(1)});
  {
    auto instance = Client().instance("edge-1");
    ASSERT_TRUE(instance);
    auto other = std::move(instance);
    EXPECT_FALSE(instance);  // NOLINT(bugprone-use-after-move)
    EXPECT_EQ((*other).bytes()[0], Instances(1)[0]);
    EXPECT_EQ(other->bytes()[1], Instances(1)[1]);
    EXPECT_EQ(device.Live(), Sizes{577});
  }
  EXPECT_EQ(device.Live(), Sizes());
}

TEST(CxxOwnership, WhatIsHandedOutIsTheCallers) {
  fake::Device device;
  device.AnswerWith({.bytes = Instances(1)});
  InstanceRecord* record = Client().instance("edge-1").release();
  RecordList* list = Client().instances().release();
  EXPECT_EQ(device.Live().size(), 3U);
  VDRZAX_ReleaseInstance(vdrzax::Owned<vdrzax::Instance>(record).release());
  vdrzax::List<vdrzax::Instance> owner(list);
  EXPECT_EQ(owner.size(), 1U);
}

TEST(CxxOwnership, ANetworkOfTheCallersGoesBackByItsRelease) {
  fake::Device device;
  auto* record = static_cast<BridgeNetworkRecord*>(std::calloc(1, sizeof(BridgeNetworkRecord)));
  device.Remember(record, sizeof(BridgeNetworkRecord));
  { const vdrzax::Owned<vdrzax::BridgeNetwork> network(record); }
  EXPECT_EQ(device.Live(), Sizes());
}

TEST(CxxOwnership, TablesWithHeadersOfTheirOwnGoBack) {
  fake::Device device;
  fake::Bytes reply = wire::Pattern(4 + 2 * 68);
  std::memcpy(reply.data(), "\2\0\0", 4);
  device.AnswerWith({.bytes = reply});
  {
    const auto receivers = Client().mrouting_remote_rcvrs("edge-1", 1);
    ASSERT_EQ(receivers.size(), 2U);
    EXPECT_EQ(receivers[1].bytes()[0], reply[4 + 68]);
  }
  reply.resize(4 + 2 * 26);
  device.AnswerWith({.bytes = reply});
  {
    const auto entries = Client().e2i_table();
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[1].bytes()[25], reply.back());
  }
  EXPECT_EQ(device.Live(), Sizes());
}

TEST(CxxOwnership, APublicIpTableIsWalkedByTheSizeOfItsEntries) {
  fake::Bytes reply(4 + 18 + 8 + 18 + 4);
  reply[0] = 2;
  reply[4] = 0xAA;
  reply[4 + 14] = 2;
  reply[4 + 18] = 0x11;
  reply[4 + 22] = 0x22;
  reply[30] = 0xBB;
  reply[30 + 14] = 1;
  reply[30 + 18] = 0x33;
  fake::Device device;
  device.AnswerWith({.bytes = reply});
  {
    auto table = Client().vm_public_ip_table();
    std::vector<unsigned> seen;
    for (const auto& entry : table) {
      seen.push_back(entry.entry_header()[0]);
      for (const std::uint32_t item : entry.items()) seen.push_back(item);
    }
    EXPECT_EQ(seen, (std::vector<unsigned>{0xAA, 0x11, 0x22, 0xBB, 0x33}));
    EXPECT_EQ(table.begin()->bytes().size(), 26U);
    const auto moved = std::move(table);
    EXPECT_TRUE(table.empty());  // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(moved.size(), 2U);
  }
  EXPECT_EQ(device.Live(), Sizes());
}

TEST(CxxOwnership, RoutesOfIpv6AreRecordsOfTheKernels) {
  fake::Device device;
  device.answer = [](const fake::Command& command) {
    return fake::Reply{.bytes = command.request == 115 ? fake::Bytes{2, 0, 0, 0}
                                                       : wire::Patterns(2, 776)};
  };
  {
    auto routes = Client().routes_v6("edge-1");
    ASSERT_EQ(routes.size(), 2U);
    const auto second = routes[1].bytes();
    EXPECT_BYTES(fake::Bytes(second.begin(), second.end()), wire::Pattern(776, 1));
    const auto moved = std::move(routes);
    EXPECT_TRUE(routes.empty());  // NOLINT(bugprone-use-after-move)
  }
  EXPECT_EQ(device.Live(), Sizes());
}

TEST(CxxOwnership, RawBridgeEndpointsAreAsManyAsFit) {
  fake::Device device;
  device.AnswerWith({.bytes = wire::Patterns(2, 235), .length = 5 * 235});
  EXPECT_EQ(Client().be_all(2).size(), 2U);
  device.AnswerWith({.bytes = wire::Patterns(2, 235)});
  EXPECT_EQ(Client().be_all(7).size(), 2U);
  EXPECT_EQ(device.commands.back().outLength, 7U * 235U);
  device.AnswerWith({});
  EXPECT_TRUE(Client().be_all(0).empty());
}

TEST(CxxOwnership, ABufferIsZeroWhereTheKernelWroteNothing) {
  fake::Device device;
  device.AnswerWith({.bytes = {1, 2, 3}});
  auto arps = Client().arps("edge-1");
  ASSERT_EQ(arps.size(), 7667712U);
  EXPECT_EQ(arps[2], 3);
  EXPECT_TRUE(std::all_of(arps.begin() + 3, arps.end(), [](auto byte) { return byte == 0; }));
  const auto moved = std::move(arps);
  EXPECT_TRUE(arps.empty());  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(moved.size(), 7667712U);
}

// The library frees the header of a fetch when an allocation fails; the face must not again.
TEST(CxxOwnership, TheHeaderOfAFetchIsFreedOnceOnEachPath) {
  for (const int failing : {0, 1, 2}) {
    fake::Device device;
    device.failingAllocation = failing;
    const auto failed = Client().try_fetch_bridge_instances();
    EXPECT_EQ(failed.failure().code, failing ? ENOMEM : 0);
  }
  fake::Device device;
  device.AnswerWith({.bytes = {1}});
  EXPECT_EQ(Client().try_fetch_bridge_instances().failure().code, EBADMSG);
  EXPECT_EQ(Client().try_fetch_bridge_clusters().failure().code, EBADMSG);
  device.AnswerWith(fake::Failure(EXDEV));
  EXPECT_EQ(Client().try_fetch_bridge_instances().failure().code, EXDEV);
  EXPECT_EQ(Client().try_fetch_bridge_clusters().failure().code, EXDEV);
}

}  // namespace
