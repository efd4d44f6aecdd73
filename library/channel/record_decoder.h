#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "channel/failure.h"
#include "channel/record_layout.h"
#include "channel/text.h"

namespace vdrzax {

// Copies one record from `source`, of which `remaining` bytes are left, into the zero-filled
// `destination`. Returns the bytes consumed, or -1 (EBADMSG) when the reply ends inside the record.
// `remaining` is signed because the kernel's length is read as a signed number: one of 2^31 and
// more is a short reply.
using Decoder = int32_t (*)(const uint8_t* source, int32_t remaining, uint8_t* destination);

namespace decoder {

// True when the row and its copy are the same byte for byte.
constexpr bool IsPlain(const Field& row) {
  return row.kind != Field::Kind::Entries && row.kind != Field::Kind::Skipped &&
         row.kind != Field::Kind::Text;
}

// How many bytes one copy takes over from this row on, none when the copy of a row before did.
constexpr uint32_t SpanFrom(const RecordLayout& layout, std::size_t row) {
  if (row > 0 && IsPlain(layout.rows[row - 1])) return 0;
  uint32_t width = 0;
  for (; row < layout.rows.size() && IsPlain(layout.rows[row]); ++row) {
    width += layout.rows[row].width;
  }
  return width;
}

template <const RecordLayout& kLayout, std::size_t kRow>
void CopySpan(const uint8_t* source, uint8_t* destination) {
  constexpr uint32_t kOffset = kLayout.rows[kRow].offset;
  constexpr uint32_t kWidth = SpanFrom(kLayout, kRow);
  if constexpr (kWidth != 0) std::memcpy(destination + kOffset, source + kOffset, kWidth);
}

template <const RecordLayout& kLayout, std::size_t kRow>
[[gnu::always_inline]] inline void CopyText(const uint8_t* source, uint8_t* destination) {
  constexpr const Field& kField = kLayout.rows[kRow];
  if constexpr (kField.kind == Field::Kind::Text) {
    CopyTextField<kField.width>(destination + kField.offset, source + kField.offset);
  }
}

template <const RecordLayout& kLayout>
void CopyFlatRows(const uint8_t* source, uint8_t* destination) {
  [&]<std::size_t... kRow>(std::index_sequence<kRow...>) {
    (CopySpan<kLayout, kRow>(source, destination), ...);
    (CopyText<kLayout, kRow>(source, destination), ...);
  }
  (std::make_index_sequence<kLayout.rows.size()>{});
}

// Only the first entries are copied, as many as the record says. The count is not compared with the
// room of the array: the kernel owns the format, and a silent limit would hide a malformed reply.
template <const RecordLayout& kLayout, std::size_t kRow>
void CopyEntries(const uint8_t* source, uint8_t* destination) {
  constexpr const Field& kField = kLayout.rows[kRow];
  if constexpr (kField.kind == Field::Kind::Entries) {
    constexpr const RecordLayout& kEntry = *kField.entry;
    uint32_t count = 0;
    std::memcpy(&count, source + kField.countOffset, kField.countWidth);
    for (std::size_t index = 0; index < count; ++index) {
      const std::size_t offset = kField.offset + index * kEntry.size;
      CopyFlatRows<kEntry>(source + offset, destination + offset);
    }
  }
}

// Entries are copied after all other rows, so that entries beyond their array overwrite what was
// decoded there with the bytes of the reply.
template <const RecordLayout& kLayout>
void CopyRecord(const uint8_t* source, uint8_t* destination) {
  CopyFlatRows<kLayout>(source, destination);
  [&]<std::size_t... kRow>(std::index_sequence<kRow...>) {
    (CopyEntries<kLayout, kRow>(source, destination), ...);
  }
  (std::make_index_sequence<kLayout.rows.size()>{});
}

// Asks for the lines to which records further on go. The entries were cleared a moment ago and lie
// where a store would wait for each line.
template <const RecordLayout& kLayout>
void FetchAhead(const uint8_t* destination) {
  constexpr std::size_t kLine = 64;
  constexpr std::size_t kAhead = 8 * kLine;
#pragma GCC unroll 16
  for (std::size_t first = 0; first < kLayout.size; first += kLine) {
    __builtin_prefetch(destination + kAhead + first, 1);
  }
}

// True when a record and its copy are the same byte for byte.
template <const RecordLayout& kLayout>
constexpr bool IsPlain() {
  for (const Field& row : kLayout.rows) {
    if (!IsPlain(row)) return false;
  }
  return true;
}

}  // namespace decoder

// The decoder of a record with the given layout.
template <const RecordLayout& kLayout>
int32_t DecodeRecord(const uint8_t* source, int32_t remaining, uint8_t* destination) {
  if (remaining < static_cast<int32_t>(kLayout.size)) return ShortReply();
  decoder::CopyRecord<kLayout>(source, destination);
  return static_cast<int32_t>(kLayout.size);
}

// Copies records that stand one after the other.
template <const RecordLayout& kLayout>
void CopyRecords(const uint8_t* source, uint8_t* destination, std::size_t count) {
  if constexpr (decoder::IsPlain<kLayout>()) {
    std::memcpy(destination, source, count * kLayout.size);
  } else {
    for (; count > 0; --count) {
      decoder::FetchAhead<kLayout>(destination);
      decoder::CopyRecord<kLayout>(source, destination);
      source += kLayout.size;
      destination += kLayout.size;
    }
  }
}

}  // namespace vdrzax
