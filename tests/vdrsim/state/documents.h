#pragma once

#include <string>
#include <string_view>

#include "datapath/state.h"

// Documents in process.
namespace documents {

// The whole document of a state, and the state of one.
std::string Save(const vdrsim::State& state);
vdrsim::State Load(std::string_view document);

// A document with these members behind the version.
std::string With(std::string_view members);

// Why a document is refused, without its name; empty when it is not.
std::string Complaint(std::string_view document);

}  // namespace documents
