#pragma once

#include <vdrzax/channel.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "expected_record.h"
#include "subjects.h"

// What a fuzzer adds to a getter of the table that decodes records: the layout, and how far the
// count in a record is trusted where the kernel may send more than there is room for.
struct Decoding {
  const char* name;
  ExpectedRecord expected;
  uint32_t mostTrusted = 0;
};
using Decodings = std::vector<Decoding>;

// All getters of a family, those of a shape of their own, and lists that are called once more with
// other arguments.
std::vector<Subject> SubjectsOf(const getters::Family& family, const Decodings& decodings,
                                std::vector<Subject> others = {},
                                const std::vector<getters::ListGetter>& variants = {});

// The rest is for functions with a shape of their own.

// Where a caller's pointer points before a call.
void* Untouched();

// One command was sent, with this code and this room for its reply, if the device could be opened;
// or none was.
void RequireSent(const Case& input, unsigned long code, std::size_t capacity);
void RequireSent(const Case& input, const getters::OtherGetter& getter);
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

// Trusts the count in each record of `size` bytes to be at most `most`.
void TrustCounts(device::Reply& reply, std::size_t size, const getters::Count& count,
                 uint32_t most);
