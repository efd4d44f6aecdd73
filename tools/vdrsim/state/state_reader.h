#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

#include "datapath/state.h"

namespace vdrsim {

// Why a document is no state, in one line: the name of the document, the place of the value, and
// what is wrong with it.
class StateFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The state that a document describes. `name` is what messages call it. Nothing of the document is
// kept while it is read, but the state itself. Throws StateFailure, also when the stream can't be
// read to its end.
State ReadState(std::FILE* stream, std::string_view name);
State ReadState(std::string_view document, std::string_view name);

}  // namespace vdrsim
