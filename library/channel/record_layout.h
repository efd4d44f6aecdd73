#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace vdrzax {

struct RecordLayout;

// One row of a record's layout. The decoder copies by offset, width and kind; the tools print and
// fill records by name, element width and kind.
struct Field {
  enum class Kind : uint8_t {
    Number,   // one little-endian number, or an array of them
    Text,     // characters, terminator forced at the last byte
    Bytes,    // copied byte for byte, shown as hexadecimal
    Mac,      // a six-byte hardware address
    Entries,  // an array of sub-records of which only the first `count` are copied
    Skipped,  // never copied: zero in every record handed to a caller
  };

  const char* name;
  Kind kind;
  uint32_t offset;
  uint32_t width;                       // of the whole row
  uint32_t elements = 1;                // numbers of an array, sub-records of a row of entries
  const RecordLayout* entry = nullptr;  // layout of one sub-record
  uint32_t countOffset = 0;             // where in the record the number of valid entries stands
  uint32_t countWidth = 0;

  constexpr uint32_t ElementWidth() const { return width / elements; }
};

// A record written down once: its rows tile it from the first byte to the last.
struct RecordLayout {
  const char* name;
  uint32_t size;
  std::span<const Field> rows;
};

constexpr Field Numbers(const char* name, uint32_t offset, uint32_t width, uint32_t elements) {
  return {name, Field::Kind::Number, offset, width * elements, elements};
}
constexpr Field U8(const char* name, uint32_t offset) { return Numbers(name, offset, 1, 1); }
constexpr Field U16(const char* name, uint32_t offset) { return Numbers(name, offset, 2, 1); }
constexpr Field U24(const char* name, uint32_t offset) { return Numbers(name, offset, 3, 1); }
constexpr Field U32(const char* name, uint32_t offset) { return Numbers(name, offset, 4, 1); }
constexpr Field U64(const char* name, uint32_t offset) { return Numbers(name, offset, 8, 1); }

constexpr Field Text(const char* name, uint32_t offset, uint32_t width) {
  return {name, Field::Kind::Text, offset, width};
}
constexpr Field Bytes(const char* name, uint32_t offset, uint32_t width) {
  return {name, Field::Kind::Bytes, offset, width};
}
constexpr Field Mac(const char* name, uint32_t offset) {
  return {name, Field::Kind::Mac, offset, 6};
}
constexpr Field Skipped(const char* name, uint32_t offset, uint32_t width) {
  return {name, Field::Kind::Skipped, offset, width};
}

// Entries counted by the number that stands at `countOffset` of the same record. The count is the
// kernel's and is trusted as it stands.
constexpr Field Entries(const char* name, uint32_t offset, uint32_t elements,
                        const RecordLayout& entry, uint32_t countOffset, uint32_t countWidth) {
  return {name,   Field::Kind::Entries, offset,    entry.size * elements, elements,
          &entry, countOffset,          countWidth};
}

// True when the rows cover the record in order, without gap or overlap.
constexpr bool Tiles(const RecordLayout& layout) {
  uint32_t end = 0;
  for (const Field& row : layout.rows) {
    if (row.offset != end || row.width == 0) return false;
    end += row.width;
  }
  return end == layout.size;
}

}  // namespace vdrzax
