#include <gtest/gtest.h>
#include <vdrzax/instance.h>

#include <cstdlib>
#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using contract::ExpectRefused;
using wire::Block;

const contract::RecordGetter& SyncStateGetter() {
  return getters::Record("VDRZAX_GetVdrInstanceCPSyncState");
}

TEST(ControlPlane, TheSyncStateIsReadByTheContractOfARecordGetterAndFreedPlainly) {
  contract::ExpectRecordGetter(SyncStateGetter());
}

TEST(ControlPlane, ASyncStateIsCopiedEntryByEntry) {
  const fake::Bytes source = wire::Pattern(1420);
  EXPECT_BYTES(contract::DecodeOne(SyncStateGetter(), source),
               wire::Decoded(source, {{0, 92},
                                      {100, 184},
                                      {284, 92},
                                      {384, 184},
                                      {568, 92},
                                      {668, 184},
                                      {852, 92},
                                      {952, 184},
                                      {1136, 92},
                                      {1236, 184}}));
}

TEST(ControlPlane, TheEightBytesAt92OfEachEntryStayZero) {
  const fake::Bytes record = contract::DecodeOne(SyncStateGetter(), fake::Bytes(1420, 0xFF));
  for (const std::size_t entry : {0u, 284u, 568u, 852u, 1136u}) {
    EXPECT_EQ(record[entry + 91], 0xFF);
    for (std::size_t offset = 92; offset < 100; ++offset) EXPECT_EQ(record[entry + offset], 0);
    EXPECT_EQ(record[entry + 100], 0xFF);
    EXPECT_EQ(record[entry + 283], 0xFF);
  }
}

TEST(ControlPlane, SettingTheSyncStateSendsNameAndState) {
  ExpectCommand([] { return VDRZAX_SetVdrInstanceCPSyncState("edge-1", 0x11223344); }, 88,
                Block().Text(0, "edge-1").U32(256, 0x11223344));
}

TEST(ControlPlane, ActivationSendsFourBytesAndNoBlock) {
  ExpectCommand([] { return VDRZAX_CPActivate(0x12345678); }, 7,
                fake::Bytes{0x78, 0x56, 0x34, 0x12});
  ExpectCommand([] { return VDRZAX_CPActivate(0); }, 7, fake::Bytes{0, 0, 0, 0});
}

TEST(ControlPlane, TheAddressIsSentInTheByteOrderGiven) {
  ExpectCommand([] { return VDRZAX_SetCPIp("edge-1", 0x0A000001); }, 8,
                Block().Text(0, "edge-1").Raw(328, {0x01, 0x00, 0x00, 0x0A}));
}

TEST(ControlPlane, ANameOf64CharactersIsCutTo63AndTerminated) {
  const std::string name(64, 'n');
  const Block cut = Block().Text(0, std::string(63, 'n'));
  ExpectCommand([&] { return VDRZAX_SetVdrInstanceCPSyncState(name.c_str(), 0); }, 88, cut);
  ExpectCommand([&] { return VDRZAX_SetCPIp(name.c_str(), 0); }, 8, cut);
  contract::RecordGetter getter = SyncStateGetter();
  getter.call = [&](void** out) {
    return VDRZAX_GetVdrInstanceCPSyncState(name.c_str(),
                                            reinterpret_cast<CPSyncStateRecord**>(out));
  };
  getter.block = cut;
  contract::ExpectRecordGetter(getter);
}

TEST(ControlPlane, AMissingNameIsRefused) {
  auto* out = reinterpret_cast<CPSyncStateRecord*>(1);
  ExpectRefused([&] { return VDRZAX_GetVdrInstanceCPSyncState(nullptr, &out); });
  EXPECT_EQ(out, reinterpret_cast<CPSyncStateRecord*>(1));
  ExpectRefused([] { return VDRZAX_GetVdrInstanceCPSyncState(nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_SetVdrInstanceCPSyncState(nullptr, 1); });
  ExpectRefused([] { return VDRZAX_SetCPIp(nullptr, 1); });
}

TEST(ControlPlaneDeathTest, AMissingResultPointerFaults) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_GetVdrInstanceCPSyncState("edge-1", nullptr), "");
}

}  // namespace
