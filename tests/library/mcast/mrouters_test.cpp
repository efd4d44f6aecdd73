#include <gtest/gtest.h>
#include <vdrzax/mcast.h>

#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using wire::Block;

struct Getter {
  const char* name;
  int (*call)(const char*, uint32_t, uint32_t*);
};

constexpr Getter kGetters[] = {{"VDRZAX_GetMRoutingReplicationIP", VDRZAX_GetMRoutingReplicationIP},
                               {"VDRZAX_GetMRoutingMRouterIP", VDRZAX_GetMRoutingMRouterIP}};

TEST(MRouters, TheKernelWritesAnAddressStraightIntoTheCallersVariable) {
  for (const Getter& getter : kGetters) contract::ExpectRawGetter(getters::Raw(getter.name));
}

TEST(MRouters, AddSendsNameAndAddress) {
  ExpectCommand([] { return VDRZAX_AddMRoutingMRouter("edge-1", 0x0A000001); }, 137,
                Block().Text(0, "edge-1").U32(256, 0x0A000001));
}

TEST(MRouters, DeleteSendsTheNameAlone) {
  ExpectCommand([] { return VDRZAX_DelMRoutingMRouter("edge-1"); }, 138, Block().Text(0, "edge-1"));
}

TEST(MRouters, ANameOf64CharactersIsCutTo63AndTerminated) {
  const std::string name(64, 'n');
  const Block cut = Block().Text(0, std::string(63, 'n'));
  ExpectCommand([&] { return VDRZAX_AddMRoutingMRouter(name.c_str(), 0); }, 137, cut);
  ExpectCommand([&] { return VDRZAX_DelMRoutingMRouter(name.c_str()); }, 138, cut);
  for (const Getter& getter : kGetters) {
    contract::RawGetter raw = getters::Raw(getter.name);
    raw.call = [&](void* ip) { return getter.call(name.c_str(), 0, static_cast<uint32_t*>(ip)); };
    raw.block = cut;
    contract::ExpectRawGetter(raw);
  }
}

TEST(MRoutersDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  uint32_t ip = 0;
  for (const Getter& getter : kGetters) EXPECT_DEATH(getter.call(nullptr, 1, &ip), "");
  EXPECT_DEATH(VDRZAX_AddMRoutingMRouter(nullptr, 1), "");
  EXPECT_DEATH(VDRZAX_DelMRoutingMRouter(nullptr), "");
}

}  // namespace
