#include <gtest/gtest.h>
#include <vdrzax/instance.h>

#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using contract::ExpectRawGetter;
using wire::Block;

TEST(Connections, PlumbingSendsEveryArgumentToItsPlace) {
  ExpectCommand(
      [] {
        return VDRZAX_PlumbVdrConnection("conn-1", "second", 0x1122334455667788, "fourth", "fifth",
                                         "sixth", 0x99AABBCC);
      },
      15,
      Block()
          .Text(256, "conn-1")
          .Text(320, "second")
          .Text(336, "fourth")
          .Text(354, "fifth")
          .Text(386, "sixth")
          .U32(644, 0x99AABBCC));
}

TEST(Connections, PlumbingWithoutTheOptionalTextsLeaves336To641Zero) {
  ExpectCommand(
      [] { return VDRZAX_PlumbVdrConnection("conn-1", "second", 0, nullptr, nullptr, nullptr, 7); },
      15, Block().Text(256, "conn-1").Text(320, "second").U32(644, 7));
}

TEST(Connections, EachOptionalTextMayBeMissingByItself) {
  const Block block = Block().Text(256, "c").Text(320, "2");
  ExpectCommand([] { return VDRZAX_PlumbVdrConnection("c", "2", 0, nullptr, "5", "6", 0); }, 15,
                Block(block).Text(354, "5").Text(386, "6"));
  ExpectCommand([] { return VDRZAX_PlumbVdrConnection("c", "2", 0, "4", nullptr, "6", 0); }, 15,
                Block(block).Text(336, "4").Text(386, "6"));
  ExpectCommand([] { return VDRZAX_PlumbVdrConnection("c", "2", 0, "4", "5", nullptr, 0); }, 15,
                Block(block).Text(336, "4").Text(354, "5"));
}

TEST(Connections, PlumbingIgnoresItsThirdArgument) {
  for (const uint64_t third : {uint64_t{0}, uint64_t{1}, UINT64_MAX}) {
    ExpectCommand([=] { return VDRZAX_PlumbVdrConnection("conn-1", "2", third, "4", "5", "6", 7); },
                  15,
                  Block()
                      .Text(256, "conn-1")
                      .Text(320, "2")
                      .Text(336, "4")
                      .Text(354, "5")
                      .Text(386, "6")
                      .U32(644, 7));
  }
}

TEST(Connections, AFourthTextOf20CharactersIsCutTo17AndTerminated) {
  ExpectCommand(
      [] {
        return VDRZAX_PlumbVdrConnection("c", "2", 0, "ABCDEFGHIJKLMNOPQRST", nullptr, nullptr, 0);
      },
      15, Block().Text(256, "c").Text(320, "2").Text(336, "ABCDEFGHIJKLMNOPQ"));
}

TEST(Connections, EveryTextThatFillsItsFieldIsCutAndTerminated) {
  const std::string name(64, 'n');
  const std::string second(16, 's');
  const std::string fourth(18, 'o');
  const std::string fifth(32, 'i');
  const std::string sixth(256, 'x');
  ExpectCommand(
      [&] {
        return VDRZAX_PlumbVdrConnection(name.c_str(), second.c_str(), 0, fourth.c_str(),
                                         fifth.c_str(), sixth.c_str(), 0);
      },
      15,
      Block()
          .Text(256, std::string(63, 'n'))
          .Text(320, std::string(15, 's'))
          .Text(336, std::string(17, 'o'))
          .Text(354, std::string(31, 'i'))
          .Text(386, std::string(255, 'x')));
}

TEST(Connections, UnplumbingSendsTheNameAt256) {
  ExpectCommand([] { return VDRZAX_UnPlumbVdrConnection("conn-1"); }, 16,
                Block().Text(256, "conn-1"));
}

TEST(Connections, ANameOf64CharactersIsCutTo63AndTerminated) {
  const std::string name(64, 'n');
  const Block cut = Block().Text(256, std::string(63, 'n'));
  ExpectCommand([&] { return VDRZAX_UnPlumbVdrConnection(name.c_str()); }, 16, cut);
  contract::RawGetter getter = getters::Raw("VDRZAX_GetConnection");
  getter.call = [&](void* buffer) { return VDRZAX_GetConnection(name.c_str(), buffer); };
  getter.block = cut;
  ExpectRawGetter(getter);
  getter = getters::Raw("VDRZAX_GetVMAC");
  getter.call = [&](void* buffer) { return VDRZAX_GetVMAC(name.c_str(), buffer); };
  getter.block = cut;
  ExpectRawGetter(getter);
}

TEST(Connections, AllAreReadIntoABufferOf131072BytesWithAnEmptyBlock) {
  ExpectRawGetter(getters::Raw("VDRZAX_GetConnections"));
}

TEST(Connections, OneIsReadWithItsNameAt256AndNoInstanceName) {
  ExpectRawGetter(getters::Raw("VDRZAX_GetConnection"));
}

TEST(Connections, TheVirtualMacIsReadAsSixBytes) {
  ExpectRawGetter(getters::Raw("VDRZAX_GetVMAC"));
}

TEST(Connections, PendingDeletionIsReadAsFourBytesWithoutInput) {
  ExpectRawGetter(getters::Raw("VDRZAX_VDRDevCheckConnDeletion"));
}

TEST(Connections, PendingDeletionIsAskedForAlsoWithoutAPointerToTheResult) {
  fake::Device device;
  device.openError = ENOENT;
  contract::ExpectFailure(device, [] { return VDRZAX_VDRDevCheckConnDeletion(nullptr); }, ENOENT,
                          {"open64"});
}

TEST(ConnectionsDeathTest, AMissingPointerToTheResultFaultsOnceTheCommandHasSucceeded) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_VDRDevCheckConnDeletion(nullptr), "");
}

TEST(ConnectionsDeathTest, AMissingRequiredTextFaults) {
  fake::Device device;
  fake::Bytes buffer(152);
  EXPECT_DEATH(VDRZAX_PlumbVdrConnection(nullptr, "2", 0, nullptr, nullptr, nullptr, 0), "");
  EXPECT_DEATH(VDRZAX_PlumbVdrConnection("c", nullptr, 0, nullptr, nullptr, nullptr, 0), "");
  EXPECT_DEATH(VDRZAX_UnPlumbVdrConnection(nullptr), "");
  EXPECT_DEATH(VDRZAX_GetConnection(nullptr, buffer.data()), "");
  EXPECT_DEATH(VDRZAX_GetVMAC(nullptr, buffer.data()), "");
}

}  // namespace
