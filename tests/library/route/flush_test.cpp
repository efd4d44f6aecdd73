#include <gtest/gtest.h>
#include <vdrzax/route.h>

#include <string>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using wire::Block;

TEST(Flush, EveryArgumentIsSentToItsPlaceAndNoInstanceName) {
  ExpectCommand(
      [] { return VDRZAX_GenericFlush(0x11223344, 0x55, 0x66, 0x77, "table", 0x8899AABB); }, 80,
      Block()
          .U32(256, 0x11223344)
          .U8(260, 0x77)
          .U8(261, 0x55)
          .U8(262, 0x66)
          .Text(263, "table")
          .U32(328, 0x8899AABB));
}

TEST(Flush, TheThirdSelectorIsSentBeforeTheFirstAndTheSecond) {
  ExpectCommand([] { return VDRZAX_GenericFlush(0, 1, 0, 0, nullptr, 0); }, 80, Block().U8(261, 1));
  ExpectCommand([] { return VDRZAX_GenericFlush(0, 0, 1, 0, nullptr, 0); }, 80, Block().U8(262, 1));
  ExpectCommand([] { return VDRZAX_GenericFlush(0, 0, 0, 1, nullptr, 0); }, 80, Block().U8(260, 1));
}

TEST(Flush, WithoutANameBytes263To326StayZero) {
  ExpectCommand([] { return VDRZAX_GenericFlush(1, 2, 3, 4, nullptr, 5); }, 80,
                Block().U32(256, 1).U8(260, 4).U8(261, 2).U8(262, 3).U32(328, 5));
}

TEST(Flush, ANameOf64CharactersIsCutTo63AndTerminated) {
  const std::string name(64, 'n');
  ExpectCommand([&] { return VDRZAX_GenericFlush(0, 0, 0, 0, name.c_str(), 0); }, 80,
                Block().Text(263, std::string(63, 'n')));
}

TEST(Flush, NothingIsTestedSoThatZeroesSend968ZeroBytes) {
  ExpectCommand([] { return VDRZAX_GenericFlush(0, 0, 0, 0, nullptr, 0); }, 80, Block());
}

}  // namespace
