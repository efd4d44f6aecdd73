#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "output/record_view.h"

namespace vdrctl {

// What a field, or one element of an array, is called on this host, and how it is shown.
struct FieldName {
  std::string name;
  Dress dress = Dress::Plain;
  std::vector<Flag> flags = {};
};

// The operator's names for fields: the records of the datapath name many of theirs by place alone.
class FieldNames {
 public:
  // `field` is the name of a row of a record's layout, or of an element: "slots[3]".
  void Add(std::string_view record, std::string_view field, FieldName name);

  // NULL when there is none.
  const FieldName* Find(std::string_view record, std::string_view field) const;

 private:
  std::map<std::string, std::map<std::string, FieldName, std::less<>>, std::less<>> records_;
};

}  // namespace vdrctl
