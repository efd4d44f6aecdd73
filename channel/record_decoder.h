#pragma once

#include <array>
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

// One copy of the decoder: a text, or neighbouring plain rows merged.
struct Step {
  uint32_t offset;
  uint32_t width;
  bool text;
};

constexpr bool IsPlain(const Field& row) {
  return row.kind == Field::Kind::Number || row.kind == Field::Kind::Bytes ||
         row.kind == Field::Kind::Mac;
}

template <typename Take>
constexpr void ForEachStep(const RecordLayout& layout, Take take) {
  Step plain{0, 0, false};
  for (const Field& row : layout.rows) {
    if (IsPlain(row)) {
      if (plain.width == 0) plain.offset = row.offset;
      plain.width += row.width;
      continue;
    }
    if (plain.width != 0) take(plain);
    plain.width = 0;
    if (row.kind == Field::Kind::Text) take(Step{row.offset, row.width, true});
  }
  if (plain.width != 0) take(plain);
}

template <const RecordLayout& kLayout>
constexpr auto MakeSteps() {
  constexpr std::size_t kCount = [] {
    std::size_t count = 0;
    ForEachStep(kLayout, [&](Step /*step*/) { ++count; });
    return count;
  }();
  std::array<Step, kCount> steps{};
  std::size_t next = 0;
  ForEachStep(kLayout, [&](Step step) { steps[next++] = step; });
  return steps;
}

template <const RecordLayout& kLayout, std::size_t kIndex>
void CopyStep(const uint8_t* source, uint8_t* destination) {
  constexpr Step kStep = MakeSteps<kLayout>()[kIndex];
  if constexpr (kStep.text) {
    CopyBoundedString(destination + kStep.offset,
                      reinterpret_cast<const char*>(source + kStep.offset), kStep.width);
  } else {
    std::memcpy(destination + kStep.offset, source + kStep.offset, kStep.width);
  }
}

template <const RecordLayout& kLayout>
void CopyFlatRows(const uint8_t* source, uint8_t* destination) {
  [&]<std::size_t... kIndex>(std::index_sequence<kIndex...>) {
    (CopyStep<kLayout, kIndex>(source, destination), ...);
  }
  (std::make_index_sequence<MakeSteps<kLayout>().size()>{});
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

}  // namespace decoder

// The decoder of a record with the given layout. Entries are copied after all other rows, so that
// entries beyond their array overwrite what was decoded there with the bytes of the reply.
template <const RecordLayout& kLayout>
int32_t DecodeRecord(const uint8_t* source, int32_t remaining, uint8_t* destination) {
  if (remaining < static_cast<int32_t>(kLayout.size)) return ShortReply();
  decoder::CopyFlatRows<kLayout>(source, destination);
  [&]<std::size_t... kRow>(std::index_sequence<kRow...>) {
    (decoder::CopyEntries<kLayout, kRow>(source, destination), ...);
  }
  (std::make_index_sequence<kLayout.rows.size()>{});
  return static_cast<int32_t>(kLayout.size);
}

}  // namespace vdrzax
