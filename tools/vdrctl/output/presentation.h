#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vdrctl {

class FieldNames;
struct History;

// How the operator wants to see what a command prints.
struct Presentation {
  enum class Form : uint8_t { Tables, Json };

  Form form = Form::Tables;
  std::vector<std::string> columns = {};  // those of the row of the command when empty
  bool header = true;
  std::string sort = {};  // the column to sort by; the order of the datapath when empty
  const FieldNames* names = nullptr;
  History* history = nullptr;  // of a command that is watched
};

}  // namespace vdrctl
