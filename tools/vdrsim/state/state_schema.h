#pragma once

#include <string>

namespace vdrsim {

// What a document can hold, as a JSON Schema (draft 2020-12), from the tables of members.
std::string StateSchema();

}  // namespace vdrsim
