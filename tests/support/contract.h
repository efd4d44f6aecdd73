#pragma once

#include <gtest/gtest.h>
#include <vdrzax/channel.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "support/fake_device.h"
#include "support/wire.h"

// What every function of one shape must do, on every path. A family's test names the function, its
// code and its block; the paths are walked here.
namespace contract {

using Steps = std::vector<std::string>;
using Call = std::function<int()>;

inline constexpr const char* kNormalNode = "/qorv/devices/char/zaxdriver/ryn_vdr";

// errno before a call: no function sets it, so it shows who touched errno.
inline constexpr int kUntouched = 4095;

// Calls with a known errno before. The result is in errno_after as well, since expectations clobber
// it.
struct Outcome {
  int result;
  int error;
};
Outcome Run(const Call& call);

// The call fails with `error` and has done exactly `steps`.
void ExpectFailure(fake::Device& device, const Call& call, int error, const Steps& steps);

// NULL in a tested argument: EINVAL, and nothing was allocated or sent.
void ExpectRefused(const Call& call);

// One command, on the normal node, with code, input and capacity as given.
void ExpectSent(const fake::Device& device, unsigned long code, const fake::Bytes& input,
                uint32_t capacity);

// A command without output: what it sends, device failure, ioctl failure.
void ExpectCommand(const Call& call, unsigned long code, const fake::Bytes& input);
void ExpectCommand(const Call& call, unsigned long code, const wire::Block& block);

// A getter whose reply the kernel writes straight into `buffer` of the caller.
void ExpectRawGetter(const Call& call, unsigned long code, const wire::Block& block, void* buffer,
                     uint32_t capacity);

// A getter of one decoded record of `size` bytes. `release` is NULL where plain free() is due.
struct RecordGetter {
  std::function<int(void** out)> call;
  std::function<void(void* record)> release;
  unsigned long code;
  wire::Block block;
  std::size_t size;
  wire::RecordPattern pattern = wire::Pattern;
};
void ExpectRecordGetter(const RecordGetter& getter);

// A getter of a list. `dropsHeader`: the header is lost when the command itself fails.
// `hidesDecodeFailure`: a reply that cannot be decoded is answered with 0 and the address of the
// released header.
struct ListGetter {
  std::function<int(RecordList** out)> call;
  std::function<void(RecordList* list)> release;
  unsigned long code;
  wire::Block block;
  std::size_t size;
  std::size_t cap;
  bool dropsHeader = false;
  bool hidesDecodeFailure = false;
  wire::RecordPattern pattern = wire::Pattern;
  bool takesCutRecord = false;  // a reply that ends inside a record gives that record too
};
void ExpectListGetter(const ListGetter& getter);

// The part of ExpectListGetter in which nothing is decoded, for a list whose replies are too large
// to be made of patterns.
void ExpectListFailures(const ListGetter& getter);

// The Release of a list: NULL is ignored, a header without entries is freed alone, entries are freed
// before their header.
void ExpectListRelease(const std::function<void(RecordList* list)>& release);

// One record as the getter returns it for `source`.
fake::Bytes DecodeOne(const RecordGetter& getter, const fake::Bytes& source);

// The first records of the list as the getter returns it for `source`.
std::vector<fake::Bytes> DecodeAll(const ListGetter& getter, const fake::Bytes& source);

}  // namespace contract
