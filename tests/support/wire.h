#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <ostream>
#include <string>

#include "support/fake_device.h"
#include "support/getters/block.h"

// Expected bytes, written by literal offsets. Nothing here knows the library's own layouts.
namespace wire {

// `size` bytes without a zero among them, each different from its neighbours.
fake::Bytes Pattern(std::size_t size, unsigned seed = 1);

// Makes one record. Records that hold a trusted count need a pattern of their own, in which the
// count stays inside the record.
using RecordPattern = std::function<fake::Bytes(std::size_t size, unsigned seed)>;

// `count` patterns of `size` bytes, each with a seed of its own, one after another.
fake::Bytes Patterns(std::size_t count, std::size_t size, const RecordPattern& pattern = Pattern);

// A piece of a record that a decoder copies.
struct Piece {
  std::size_t offset;
  std::size_t width;
  char how = 'c';  // 'c' as it stands, 't' text with a forced terminator
};

// The record that a decoder makes of `source`: the pieces, and zero everywhere else.
fake::Bytes Decoded(const fake::Bytes& source, std::initializer_list<Piece> pieces);

// The bytes of an object of the library.
fake::Bytes BytesOf(const void* object, std::size_t size);

// Names the first byte that differs, which a dump of two blocks does not show.
std::string Difference(const fake::Bytes& actual, const fake::Bytes& expected);

}  // namespace wire

#define EXPECT_BYTES(actual, expected) EXPECT_EQ(::wire::Difference((actual), (expected)), "")
#define ASSERT_BYTES(actual, expected) ASSERT_EQ(::wire::Difference((actual), (expected)), "")
