#include <gtest/gtest.h>
#include <vdrzax/e2i.h>

#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using wire::Block;

constexpr MacValue kMac{{0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};
const fake::Bytes kMacBytes{0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};

TEST(PhysicalMac, AddSendsTheValueAndTheAddress) {
  ExpectCommand([] { return VDRZAX_AddPmac(0x11223344, &kMac); }, 74,
                Block().U32(256, 0x11223344).Raw(260, kMacBytes));
}

TEST(PhysicalMac, AddWithoutAddressSendsTheValueAndZerosAt260To265) {
  ExpectCommand([] { return VDRZAX_AddPmac(7, nullptr); }, 74, Block().U32(256, 7));
}

TEST(PhysicalMac, DeleteSendsTheAddressAndNoValueAt256) {
  ExpectCommand([] { return VDRZAX_DelPmac(&kMac); }, 75, Block().Raw(260, kMacBytes));
}

TEST(PhysicalMac, DeleteWithoutAddressSends968ZeroBytes) {
  ExpectCommand([] { return VDRZAX_DelPmac(nullptr); }, 75, Block());
}

TEST(PhysicalMac, TheKernelFillsTheCallers131072Bytes) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_GetPmac"));
}

}  // namespace
