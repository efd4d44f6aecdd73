#pragma once

#include "state/shape.h"

namespace vdrsim {

// The version of the documents that are read and written.
inline constexpr uint32_t kStateVersion = 1;

// What a document begins with.
struct StateHeader {
  uint32_t version = 0;
};

// The members of a whole document: those of StateHeader, and those of State.
const shape::Struct& HeaderTable();
const shape::Struct& StateTable();

}  // namespace vdrsim
