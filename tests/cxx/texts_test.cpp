#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vdrzax.hpp>
#include <vector>

#include "support/fake_device.h"
#include "support/getters/block.h"
#include "support/wire.h"

namespace {

using namespace std::string_literals;
using vdrzax::Client;
using vdrzax::Refusal;
using wire::Block;

std::string Long(std::size_t length) { return std::string(length, 'n'); }

// What a call sent, as one block.
template <typename Call>
fake::Bytes Sent(Call call) {
  fake::Device device;
  call(Client());
  EXPECT_EQ(device.commands.size(), 1U);
  return device.commands.empty() ? fake::Bytes() : device.commands.front().input;
}

template <typename Call>
void ExpectRefused(Refusal refusal, int code, Call call) {
  fake::Device device;
  const vdrzax::Failure failure = call(Client()).failure();
  EXPECT_EQ(failure.refusal, refusal);
  EXPECT_EQ(failure.code, code);
  EXPECT_EQ(device.steps, std::vector<std::string>());
}

template <typename Call>
void ExpectTooLong(Call call) {
  ExpectRefused(Refusal::TooLong, ENAMETOOLONG, call);
}

template <typename Call>
void ExpectSentWhole(Call call) {
  fake::Device device;
  EXPECT_EQ(call(Client()).failure().code, 0);
  EXPECT_EQ(device.commands.size(), 1U);
}

// A text of its room is sent, and one of a character more is refused.
template <typename Call>
void ExpectRoom(std::size_t room, Call call) {
  SCOPED_TRACE(room);
  ExpectSentWhole([&](const Client& vdr) { return call(vdr, Long(room)); });
  ExpectTooLong([&](const Client& vdr) { return call(vdr, Long(room + 1)); });
}

TEST(CxxTexts, AreTakenAsProgramsHaveThem) {
  const Block expected = Block().Text(0, "edge-1");
  const std::string joined = "edge-1 and more";
  EXPECT_BYTES(Sent([](const Client& vdr) { vdr.delete_instance("edge-1"); }), expected.bytes());
  EXPECT_BYTES(Sent([](const Client& vdr) { vdr.delete_instance("edge-1"s); }), expected.bytes());
  EXPECT_BYTES(
      Sent([&](const Client& vdr) { vdr.delete_instance(std::string_view(joined).substr(0, 6)); }),
      expected.bytes());
  EXPECT_BYTES(Sent([](const Client& vdr) { vdr.delete_instance(std::string_view()); }),
               Block().bytes());
}

TEST(CxxTexts, AViewOfALongerTextIsSentAsFarAsItGoes) {
  const std::string text = Long(80);
  EXPECT_BYTES(
      Sent([&](const Client& vdr) { vdr.delete_instance(std::string_view(text).substr(0, 63)); }),
      Block().Text(0, Long(63)).bytes());
}

TEST(CxxTexts, ANameTooLongThrowsBeforeAnythingIsSent) {
  fake::Device device;
  EXPECT_THROW(Client().delete_instance(Long(64)), std::length_error);
  EXPECT_THROW(Client().instances(Long(64)), std::length_error);
  EXPECT_THROW(Client().fetch_bridge_endpoints(Long(64)), std::length_error);
  EXPECT_EQ(device.steps, std::vector<std::string>());
}

TEST(CxxTexts, ANulInsideThrowsBeforeAnythingIsSent) {
  fake::Device device;
  EXPECT_THROW(Client().delete_instance("ed\0ge"s), std::invalid_argument);
  EXPECT_THROW(Client().instances("edge\0"s), std::invalid_argument);
  EXPECT_EQ(device.steps, std::vector<std::string>());
  ExpectRefused(Refusal::NulInside, EINVAL,
                [](const Client& vdr) { return vdr.try_delete_instance("ed\0ge"s); });
}

TEST(CxxTexts, ARequiredOneMustBeThere) {
  fake::Device device;
  EXPECT_THROW(Client().delete_instance(nullptr), std::invalid_argument);
  EXPECT_THROW(Client().delete_instance({}), std::invalid_argument);
  const char* none = nullptr;
  ExpectRefused(Refusal::Missing, EINVAL,
                [&](const Client& vdr) { return vdr.try_delete_instance(none); });
  EXPECT_EQ(device.steps, std::vector<std::string>());
}

TEST(CxxTexts, EachHasTheRoomOfItsField) {
  ExpectRoom(63, [](const Client& vdr, const std::string& text) {
    return vdr.try_set_lif("edge-1", text);
  });
  ExpectRoom(18, [](const Client& vdr, const std::string& text) {
    return vdr.try_set_instance("edge-1", {.text = text});
  });
  ExpectRoom(15, [](const Client& vdr, const std::string& text) {
    return vdr.try_plumb_connection("c", {.second = text});
  });
  ExpectRoom(17, [](const Client& vdr, const std::string& text) {
    return vdr.try_plumb_connection("c", {.fourth = text});
  });
  ExpectRoom(31, [](const Client& vdr, const std::string& text) {
    return vdr.try_plumb_connection("c", {.fifth = text});
  });
  ExpectRoom(255, [](const Client& vdr, const std::string& text) {
    return vdr.try_plumb_connection("c", {.sixth = text});
  });
  ExpectRoom(17, [](const Client& vdr, const std::string& text) {
    return vdr.try_set_arp("edge-1", "uplink", 1, text);
  });
  ExpectRoom(18, [](const Client& vdr, const std::string& text) {
    return vdr.try_set_arp_v6("edge-1", "uplink", 1, 2, text);
  });
  ExpectRoom(17, [](const Client& vdr, const std::string& text) {
    return vdr.try_set_bridge_fdb_entry("edge-1", {.mac_text = text});
  });
  ExpectRoom(15, [](const Client& vdr, const std::string& text) {
    return vdr.try_set_local_transport_node({.name3 = text});
  });
  ExpectRoom(15, [](const Client& vdr, const std::string& text) {
    return vdr.try_plumb_bfd_port_connection("port", text);
  });
}

// The fields of these hold 64, but nothing can have such a name.
TEST(CxxTexts, NamesInIpv6CommandsHave63CharactersToo) {
  ExpectRoom(63, [](const Client& vdr, const std::string& text) {
    return vdr.try_set_lif_ipv6(text, "uplink", {.addr_high = 1});
  });
  ExpectRoom(63, [](const Client& vdr, const std::string& text) {
    return vdr.try_set_route_v6("edge-1", {.if_name = text});
  });
  ExpectRoom(63,
             [](const Client& vdr, const std::string& text) { return vdr.try_clear_arp_v6(text); });
}

TEST(CxxArguments, ArraysThatAreTooLongAreRefused) {
  const std::array<vdrzax::PolicyTableUseSettings, 21> uses{};
  ExpectSentWhole([&](const Client& vdr) {
    return vdr.try_set_lif_policy_table_ref("edge-1", "uplink", std::span(uses).first(20));
  });
  ExpectTooLong([&](const Client& vdr) {
    return vdr.try_set_lif_policy_table_ref("edge-1", "uplink", uses);
  });
  const std::array<std::uint8_t, 129> queues{};
  ExpectSentWhole([&](const Client& vdr) {
    return vdr.try_set_soft_rss_ind_table("rss", std::span(queues).first(128));
  });
  ExpectTooLong([&](const Client& vdr) { return vdr.try_set_soft_rss_ind_table("rss", queues); });
  ExpectTooLong([](const Client& vdr) { return vdr.try_be_all(0xFFFFFFFF); });
  EXPECT_THROW(Client().set_soft_rss_ind_table("rss", queues), std::length_error);
}

TEST(CxxArguments, AClusterNodeIsNotAddedWithoutAnAddress) {
  ExpectRefused(Refusal::Missing, EINVAL, [](const Client& vdr) {
    return vdr.try_set_bridge_cluster_node("cluster", "node", {});
  });
}

TEST(CxxArguments, AnAnswerIsWhatTheKernelWrote) {
  fake::Device device;
  device.AnswerWith({.bytes = wire::Pattern(88), .result = -1, .error = EXDEV});
  vdrzax::Answer answer{};
  EXPECT_FALSE(Client().try_set_policy(1, {}, &answer));
  EXPECT_BYTES(fake::Bytes(answer.begin(), answer.end()), wire::Pattern(88));
}

TEST(CxxTexts, ANameIsPaddedAsRequestsHoldIt) {
  const vdrzax::Bytes<64> name = Client().uuid_or_name("edge-1");
  fake::Bytes expected{'e', 'd', 'g', 'e', '-', '1'};
  expected.resize(64);
  EXPECT_BYTES(fake::Bytes(name.begin(), name.end()), expected);
  EXPECT_THROW(Client().uuid_or_name(Long(64)), std::length_error);
  EXPECT_STREQ(Client().try_uuid_or_name(Long(64)).function(), "VDRZAXGetUuidOrName");
}

}  // namespace
