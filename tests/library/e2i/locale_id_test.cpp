#include <gtest/gtest.h>
#include <vdrzax/e2i.h>

#include "support/contract.h"

namespace {

TEST(LocaleId, TheKernelFillsTheCallers16Bytes) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_GetLocaleId"));
}

}  // namespace
