#pragma once

#include <vdrzax/channel.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <vector>

#include "expected_record.h"
#include "subjects.h"

// The shapes that getters come in. A family's table names the functions, and writes codes, sizes
// and caps as numbers.

// Keeps a reply within what the kernel is trusted for.
using Trust = void (*)(device::Reply& reply);

struct RecordShape {
  uint32_t code = 0;
  uint32_t size = 0;
  ExpectedRecord expected = nullptr;
  Trust trust = nullptr;
};

struct ListShape {
  uint32_t code = 0;
  uint32_t size = 0;
  uint32_t cap = 0;
  ExpectedRecord expected = nullptr;
  Trust trust = nullptr;
  bool dropsHeader = false;         // when the command fails
  bool hidesDecodeFailure = false;  // behind the result 0
  bool takesCutRecord = false;
};

// A getter of one decoded record.
Subject AnyRecordGetter(RecordShape shape, const std::function<int(void** out)>& get,
                        const std::function<void(void* record)>& release);
template <typename Record>
Subject RecordGetter(RecordShape shape, int (*get)(Record** out), void (*release)(Record* record)) {
  return AnyRecordGetter(
      shape,
      [get](void** out) {
        auto* record = static_cast<Record*>(*out);
        const int result = get(&record);
        *out = record;
        return result;
      },
      [release](void* record) { release(static_cast<Record*>(record)); });
}

// A getter of a list, and a fetch into a header of the caller's.
using ReleaseList = void (*)(RecordList* list);
Subject ListGetter(ListShape shape, int (*get)(RecordList** out), ReleaseList release);
Subject ListFetch(ListShape shape, int (*fetch)(RecordList* list), ReleaseList release);

// A getter whose reply the kernel writes straight into a buffer of the caller's. A cleared one is
// zero before the command is sent.
Subject RawGetter(uint32_t code, uint32_t capacity, int (*get)(void* buffer), bool cleared = false);

// A getter of one u32 that passes through a variable of the library's.
Subject ScalarGetter(uint32_t code, int (*get)(uint32_t* out));

// The rest is for functions with a shape of their own.

// Where a caller's pointer points before a call.
void* Untouched();

// One command was sent, with this code and this room for its reply, if the device could be opened;
// or none was.
void RequireSent(const Case& input, uint32_t code, uint32_t capacity);
void RequireNothingSent();

// The library holds allocations of these sizes, in this order, and nothing else.
void RequireLive(const std::vector<std::size_t>& sizes);

// The same where the library loses them on purpose. Frees them.
void RequireLost(const std::vector<std::size_t>& sizes);

// Memory of `size` bytes begins with what the device wrote.
void RequireWritten(const void* memory, std::size_t size, const device::Reply& reply);

// The library reads the length of a reply as a signed number.
inline int32_t SignedLength(const device::Reply& reply) {
  return static_cast<int32_t>(reply.length);
}

// A number in a reply; its bytes are zero where the device wrote nothing.
template <typename Number>
Number NumberAt(const device::Reply& reply, std::size_t offset) {
  Number number = 0;
  const std::size_t written = reply.bytes.size() - std::min(offset, reply.bytes.size());
  if (written != 0) {
    std::memcpy(&number, reply.bytes.data() + offset, std::min(written, sizeof number));
  }
  return number;
}

template <typename Number>
void PutNumber(device::Reply& reply, std::size_t offset, Number number) {
  std::memcpy(reply.bytes.data() + offset, &number, sizeof number);
}

// Trusts the count that stands at `kOffset` of each record to be at most `kMost`.
template <std::size_t kRecordSize, std::size_t kOffset, typename Count, Count kMost>
void TrustCounts(device::Reply& reply) {
  for (std::size_t at = kOffset; at + sizeof(Count) <= reply.bytes.size(); at += kRecordSize) {
    const auto count = NumberAt<Count>(reply, at);
    if (count > kMost) PutNumber(reply, at, static_cast<Count>(count % (kMost + 1)));
  }
}
