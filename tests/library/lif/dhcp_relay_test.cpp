#include <gtest/gtest.h>
#include <sys/socket.h>
#include <vdrzax/lif.h>

#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using contract::ExpectRefused;
using wire::Block;

// Expects a refused list, and the bytes of the caller's text afterwards.
void ExpectListRefused(std::string servers, const std::string& afterwards) {
  SCOPED_TRACE(servers);
  ExpectRefused([&] { return VDRZAX_ConfigureLifDhcpRelay("edge-1", "uplink", servers.data()); });
  EXPECT_EQ(servers, afterwards);
}

TEST(DhcpRelay, WithoutServersTheCommandIsSentWithCount0AndNoSlots) {
  ExpectCommand([] { return VDRZAX_ConfigureLifDhcpRelay("edge-1", "uplink", nullptr); }, 33,
                Block().Text(0, "edge-1").Text(384, "uplink"));
}

TEST(DhcpRelay, AListIsRefusedAfterItsFirstCommaWasOverwritten) {
  using namespace std::string_literals;
  ExpectListRefused("10.0.0.1,10.0.0.2", "10.0.0.1\00010.0.0.2"s);
  ExpectListRefused("10.0.0.1,10.0.0.2,10.0.0.3", "10.0.0.1\00010.0.0.2,10.0.0.3"s);
  ExpectListRefused("2001:db8::1,2001:db8::2", "2001:db8::1\0002001:db8::2"s);
  ExpectListRefused(",10.0.0.1", "\00010.0.0.1"s);
}

TEST(DhcpRelay, OneServerIsRefusedAndItsTextStays) {
  for (const char* server :
       {"10.0.0.1", "2001:db8::1", "::ffff:10.0.0.1", "::10.0.0.1", "::", "0", "edge", " "}) {
    ExpectListRefused(server, server);
  }
}

TEST(DhcpRelay, AnEmptyListIsRefused) { ExpectListRefused("", ""); }

TEST(DhcpRelay, NamesOf64CharactersAreCutTo63AndTerminated) {
  const std::string instance(64, 'i');
  const std::string lif(64, 'l');
  ExpectCommand(
      [&] { return VDRZAX_ConfigureLifDhcpRelay(instance.c_str(), lif.c_str(), nullptr); }, 33,
      Block().Text(0, std::string(63, 'i')).Text(384, std::string(63, 'l')));
}

TEST(DhcpRelay, EitherMissingNameIsRefusedAndTheListIsNotTouched) {
  std::string servers = "10.0.0.1,10.0.0.2";
  ExpectRefused([&] { return VDRZAX_ConfigureLifDhcpRelay(nullptr, "uplink", servers.data()); });
  ExpectRefused([&] { return VDRZAX_ConfigureLifDhcpRelay("edge-1", nullptr, servers.data()); });
  ExpectRefused([] { return VDRZAX_ConfigureLifDhcpRelay(nullptr, nullptr, nullptr); });
  EXPECT_EQ(servers, "10.0.0.1,10.0.0.2");
}

// No text is an address of both families to the C library. This one says so of every text, as often
// as it is asked for the first time: after that a text that begins with 4 or 6 is of that family.
std::function<int(int family, const char* text, void* address)> BothFamilies() {
  return [asked = std::map<std::pair<std::string, int>, int>()](int family, const char* text,
                                                                void* address) mutable {
    if (++asked[{text, family}] == 1) return 1;
    const bool isIpv4 = family == AF_INET;
    if (text[0] != (isIpv4 ? '4' : '6')) return 0;
    std::memset(address, text[1], isIpv4 ? 4 : 16);
    return 1;
  };
}

TEST(DhcpRelay, ServersThatWereAcceptedWouldBeSentWithTheirFamilies) {
  fake::Device device;
  device.convertAddress = BothFamilies();
  std::string servers = "4a,6b,neither,4c";
  const contract::Outcome outcome = contract::Run(
      [&] { return VDRZAX_ConfigureLifDhcpRelay("edge-1", "uplink", servers.data()); });
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, contract::kUntouched);
  contract::ExpectSent(device, 33,
                       Block()
                           .Text(0, "edge-1")
                           .Text(384, "uplink")
                           .U32(556, 4)
                           .U32(560, 0x61616161)
                           .U32(576, 1)
                           .U64(580, 0x6262626262626262)
                           .U64(588, 0x6262626262626262)
                           .U32(596, 3)
                           .U32(620, 0x63636363)
                           .U32(636, 1)
                           .bytes(),
                       0);
  EXPECT_EQ(servers, std::string("4a\0006b\0neither\0004c", 16));
}

TEST(DhcpRelay, EightServersWouldBeSentAndNineRefused) {
  fake::Device device;
  device.convertAddress = BothFamilies();
  std::string servers = "4a,4b,4c,4d,4e,4f,4g,4h";
  EXPECT_EQ(VDRZAX_ConfigureLifDhcpRelay("edge-1", "uplink", servers.data()), 0);
  ASSERT_EQ(device.commands.size(), 1u);
  EXPECT_EQ(device.commands[0].input[556], 8);
  EXPECT_EQ(device.commands[0].input[700], 'h');
  EXPECT_EQ(device.commands[0].input[716], 1);

  servers = "4i,4j,4k,4l,4m,4n,4o,4p,4q";
  errno = 0;
  EXPECT_EQ(VDRZAX_ConfigureLifDhcpRelay("edge-1", "uplink", servers.data()), -1);
  EXPECT_EQ(errno, EINVAL);
  EXPECT_EQ(device.commands.size(), 1u);
}

TEST(DhcpRelay, EachFamilyIsAskedInTurnUntilOneRefuses) {
  for (const bool acceptsIpv4 : {false, true}) {
    fake::Device device;
    std::vector<int> asked;
    device.convertAddress = [&](int family, const char* /*text*/, void* /*address*/) {
      asked.push_back(family);
      return family == AF_INET && acceptsIpv4 ? 1 : 0;
    };
    std::string servers = "any";
    EXPECT_EQ(VDRZAX_ConfigureLifDhcpRelay("edge-1", "uplink", servers.data()), -1);
    // AF_INET and AF_INET6.
    EXPECT_EQ(asked, acceptsIpv4 ? (std::vector<int>{2, 10}) : (std::vector<int>{2}));
  }
}

}  // namespace
