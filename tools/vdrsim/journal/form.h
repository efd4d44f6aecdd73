#pragma once

#include <string>

#include "journal/entry.h"

namespace vdrsim {

// How a log looks.
class Form {
 public:
  virtual ~Form() = default;

  // What stands before the first entry.
  virtual void PutBeginning(std::string& out) const = 0;

  // Adds whole lines.
  virtual void Put(const Entry& entry, std::string& out) const = 0;
};

}  // namespace vdrsim
