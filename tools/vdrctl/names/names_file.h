#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include "names/field_names.h"

namespace vdrctl {

// A file of names can't be used: what is wrong, with the file and the place in it.
class NamesFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Reads a file of names. Throws NamesFailure, and FileFailure when it can't be read.
FieldNames ReadNames(const std::string& file);

// The file that holds when none is given: that of the user, else that of the host, if there is one.
std::optional<std::string> UsualNamesFile();

}  // namespace vdrctl
