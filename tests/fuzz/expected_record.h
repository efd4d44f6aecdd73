#pragma once

#include <cstdint>

#include "channel/record_layout.h"

// Writes what a caller must find in a record of zeros after the library has decoded `source`. A
// reading of the layout of its own, byte by byte.
using ExpectedRecord = void (*)(const uint8_t* source, uint8_t* record);

void ExpectRows(const vdrzax::RecordLayout& layout, const uint8_t* source, uint8_t* record);

template <const vdrzax::RecordLayout& kLayout>
void Expected(const uint8_t* source, uint8_t* record) {
  ExpectRows(kLayout, source, record);
}
