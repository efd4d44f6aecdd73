#include "expected_record.h"

#include <algorithm>

namespace {

using vdrzax::Field;
using vdrzax::RecordLayout;

uint32_t CountOf(const Field& row, const uint8_t* source) {
  uint32_t count = 0;
  for (uint32_t index = row.countWidth; index-- > 0;) {
    count = count << 8 | source[row.countOffset + index];
  }
  return count;
}

void ExpectRow(const Field& row, const uint8_t* source, uint8_t* record) {
  const uint8_t* first = source + row.offset;
  const uint8_t* last = first + row.width;
  switch (row.kind) {
    case Field::Kind::Number:
    case Field::Kind::Bytes:
    case Field::Kind::Mac:
      std::copy(first, last, record + row.offset);
      break;
    case Field::Kind::Text:
      // The record is zero, so the terminator and all behind it are there.
      std::copy(first, std::find(first, last - 1, 0), record + row.offset);
      break;
    case Field::Kind::Entries:
    case Field::Kind::Skipped:
      break;
  }
}

}  // namespace

void ExpectRows(const RecordLayout& layout, const uint8_t* source, uint8_t* record) {
  for (const Field& row : layout.rows) ExpectRow(row, source, record);
  // Entries come last: those beyond their array lie over the fields behind it.
  for (const Field& row : layout.rows) {
    if (row.kind != Field::Kind::Entries) continue;
    const uint32_t count = CountOf(row, source);
    for (uint32_t index = 0; index < count; ++index) {
      const uint32_t offset = row.offset + index * row.entry->size;
      ExpectRows(*row.entry, source + offset, record + offset);
    }
  }
}
