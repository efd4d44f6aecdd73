#pragma once

#include <functional>

#include "support/contract.h"

namespace contract {

// A command that changes something and takes 88 optional bytes for the kernel's answer.
using ResultCall = std::function<int(void* result)>;

// NULL in a tested argument: EINVAL, nothing is sent, and the result stays as it was.
inline void ExpectResultCommandRefused(const ResultCall& call) {
  ExpectRefused([&] { return call(nullptr); });
  fake::Bytes result(88, 0xEE);
  ExpectRefused([&] { return call(result.data()); });
  EXPECT_BYTES(result, fake::Bytes(88, 0xEE));
}

}  // namespace contract
