#pragma once

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <vdrzax/channel.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "support/contract.h"

// What every list of the bridges must do beyond the contract of its getter.
namespace bridge {

// A header of a caller's own, with an old content that a fetch may overwrite but never free.
inline RecordList* ForeignHeader(fake::Device& device) {
  static uint8_t anything;
  auto* list = static_cast<RecordList*>(std::calloc(1, 16));
  list->count = 77;
  list->entries = &anything;
  device.Remember(list, 16);
  return list;
}

// The fetch fails with `error`, has done `steps`, and the header is gone, but where it survives.
inline void ExpectFetchFailure(const std::function<int(RecordList* list)>& fetch,
                               const std::function<void(fake::Device&)>& script, int error,
                               const contract::Steps& steps, bool survives) {
  fake::Device device;
  script(device);
  RecordList* list = ForeignHeader(device);
  const void* entries = list->entries;
  contract::ExpectFailure(
      device, [&] { return fetch(list); }, error, steps);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>(survives ? 1 : 0, 16));
  if (!survives) return;
  EXPECT_EQ(list->count, 77);
  EXPECT_EQ(list->entries, entries);
  std::free(list);
}

// The exported fetch of a list, called with a header of the caller's. It sends what its getter
// sends, and leaves the header to the caller where the getter loses its own.
inline void ExpectFetch(const contract::ListGetter& getter) {
  const auto& fetch = getter.fetch;
  const std::size_t size = getter.size;
  const std::size_t total = getter.cap * size;
  const std::string reply = fmt::format("malloc({})", total);
  const std::string entries = fmt::format("calloc({}, {})", getter.cap, size);
  const std::string freed = fmt::format("free({})", total);
  {
    SCOPED_TRACE("the fetch succeeds");
    fake::Device device;
    device.AnswerWith({.bytes = wire::Patterns(2, size)});
    RecordList* list = ForeignHeader(device);
    const contract::Outcome outcome = contract::Run([&] { return fetch(list); });
    ASSERT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.error, contract::kUntouched);
    EXPECT_EQ(device.steps, (contract::Steps{reply, "open64", "ioctl", "close", entries, freed}));
    contract::ExpectSent(device, getter.code, getter.block.bytes(), static_cast<uint32_t>(total));
    EXPECT_EQ(list->count, 2);
    getter.release(list);
    EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
  }
  {
    SCOPED_TRACE("the reply buffer cannot be allocated");
    ExpectFetchFailure(
        fetch, [](auto& device) { device.failingAllocation = 1; }, ENOMEM, {reply, "free(16)"},
        false);
  }
  {
    SCOPED_TRACE("the entries cannot be allocated");
    ExpectFetchFailure(
        fetch, [](auto& device) { device.failingAllocation = 2; }, ENOMEM,
        {reply, "open64", "ioctl", "close", entries, "free(16)", freed}, false);
  }
  {
    SCOPED_TRACE("the reply ends inside a record");
    ExpectFetchFailure(
        fetch, [&](auto& device) { device.AnswerWith({.bytes = wire::Pattern(size + 1)}); },
        EBADMSG, {reply, "open64", "ioctl", "close", entries, freed, "free(16)", freed}, false);
  }
  {
    SCOPED_TRACE("the node is missing");
    contract::Steps steps{reply, "open64"};
    if (!getter.dropsHeader) steps.emplace_back("free(16)");
    steps.push_back(freed);
    ExpectFetchFailure(
        fetch, [](auto& device) { device.openError = ENOENT; }, ENOENT, steps, getter.dropsHeader);
  }
  {
    SCOPED_TRACE("the ioctl fails");
    contract::Steps steps{reply, "open64", "ioctl", "close"};
    if (!getter.dropsHeader) steps.emplace_back("free(16)");
    steps.push_back(freed);
    ExpectFetchFailure(
        fetch, [](auto& device) { device.AnswerWith(fake::Failure(EXDEV)); }, EXDEV, steps,
        getter.dropsHeader);
  }
}

// A list at its cap, in which `decoded` makes the expected record of each record of the reply.
inline void ExpectRecords(const contract::ListGetter& getter,
                          const std::function<fake::Bytes(const fake::Bytes&)>& decoded) {
  const auto records = contract::DecodeAll(getter, wire::Patterns(getter.cap, getter.size));
  ASSERT_EQ(records.size(), getter.cap);
  for (std::size_t index = 0; index < getter.cap; ++index) {
    SCOPED_TRACE(index);
    const fake::Bytes source = wire::Pattern(getter.size, static_cast<unsigned>(index));
    ASSERT_BYTES(records[index], decoded(source));
  }
}

}  // namespace bridge
