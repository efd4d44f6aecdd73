#pragma once

#include <functional>

#include "support/contract.h"

namespace contract {

// A command that changes something and takes 88 optional bytes for the kernel's answer.
using ResultCall = std::function<int(void* result)>;

inline void ExpectResultCommand(const ResultCall& call, unsigned long code,
                                const wire::Block& block) {
  {
    SCOPED_TRACE("no result is asked for");
    ExpectCommand([&] { return call(nullptr); }, code, block);
  }
  fake::Bytes result(89, 0xEE);
  fake::Bytes cleared(89, 0);
  cleared[88] = 0xEE;
  const Call withResult = [&] {
    result.assign(89, 0xEE);
    return call(result.data());
  };
  {
    SCOPED_TRACE("a result is asked for");
    ExpectRawGetter(withResult, code, block, result.data(), 88);
  }
  {
    SCOPED_TRACE("the node is missing");
    fake::Device device;
    device.openError = ENOENT;
    EXPECT_EQ(withResult(), -1);
    EXPECT_BYTES(result, cleared);
  }
  {
    SCOPED_TRACE("the result is clear when the kernel sees it");
    fake::Device device;
    device.answer = [&](const fake::Command&) {
      EXPECT_BYTES(result, cleared);
      return fake::Reply{.bytes = {1, 2, 3, 4}};
    };
    EXPECT_EQ(withResult(), 0);
    fake::Bytes partly = cleared;
    for (const std::size_t index : {0u, 1u, 2u, 3u})
      partly[index] = static_cast<uint8_t>(index + 1);
    EXPECT_BYTES(result, partly);
  }
}

// NULL in a tested argument: EINVAL, nothing is sent, and the result stays as it was.
inline void ExpectResultCommandRefused(const ResultCall& call) {
  ExpectRefused([&] { return call(nullptr); });
  fake::Bytes result(88, 0xEE);
  ExpectRefused([&] { return call(result.data()); });
  EXPECT_BYTES(result, fake::Bytes(88, 0xEE));
}

}  // namespace contract
