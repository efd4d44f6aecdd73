#include <gtest/gtest.h>
#include <vdrzax/services.h>

#include "support/contract.h"

namespace {

using wire::Block;

TEST(FullSync, SaveSendsItsFlagAsOneByteAndTheKernelWritesTheStatus) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_PerformFullSyncSave"));
}

TEST(FullSync, SaveWithFlag0Sends968ZeroBytes) {
  contract::RawGetter getter = getters::Raw("VDRZAX_PerformFullSyncSave");
  getter.call = [](void* status) {
    return VDRZAX_PerformFullSyncSave(0, static_cast<uint32_t*>(status));
  };
  getter.block = Block();
  contract::ExpectRawGetter(getter);
}

TEST(FullSync, StatusSends968ZeroBytesAndTheKernelWritesTheStatus) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_GetFullSyncSaveStatus"));
}

}  // namespace
