#include <gtest/gtest.h>
#include <vdrzax/lif.h>

#include <string>

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

}  // namespace
