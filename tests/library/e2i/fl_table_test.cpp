#include <gtest/gtest.h>
#include <vdrzax/e2i.h>

#include "support/contract.h"

namespace {

TEST(FLTable, TheKernelFillsTheCallers426080Bytes) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_DumpFLTable"));
}

TEST(FLTable, TheSelectorTakesTwoBytesAndNoMore) {
  contract::RawGetter getter = getters::Raw("VDRZAX_DumpFLTable");
  getter.call = [](void* buffer) { return VDRZAX_DumpFLTable(0xFFFF, buffer); };
  getter.block = wire::Block().U8(256, 0xFF).U8(257, 0xFF);
  contract::ExpectRawGetter(getter);
}

}  // namespace
