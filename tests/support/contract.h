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
#include "support/getters/table.h"
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

using getters::ListGetter;
using getters::RawGetter;
using getters::RecordGetter;

// A getter whose reply is not decoded.
void ExpectRawGetter(const RawGetter& getter);

// A getter of one decoded record.
void ExpectRecordGetter(const RecordGetter& getter);

// A getter of a list, its release, and its fetch where it has one. The fetch leaves the header to the
// caller where the getter loses its own.
void ExpectListGetter(const ListGetter& getter);

// The part of ExpectListGetter in which little is decoded, for a list whose replies are too large
// to be made of patterns.
void ExpectListFailures(const ListGetter& getter);

// Patterns in which the count of each record is that of its seed, as far as there is room.
wire::RecordPattern PatternOf(const getters::Count& count);

// One record as the getter returns it for `source`.
fake::Bytes DecodeOne(const RecordGetter& getter, const fake::Bytes& source);

// The first records of the list as the getter returns it for `source`.
std::vector<fake::Bytes> DecodeAll(const ListGetter& getter, const fake::Bytes& source);

}  // namespace contract
