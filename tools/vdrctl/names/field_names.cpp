#include "names/field_names.h"

#include <utility>

namespace vdrctl {

void FieldNames::Add(std::string_view record, std::string_view field, FieldName name) {
  records_[std::string(record)].emplace(field, std::move(name));
}

const FieldName* FieldNames::Find(std::string_view record, std::string_view field) const {
  const auto fields = records_.find(record);
  if (fields == records_.end()) return nullptr;
  const auto name = fields->second.find(field);
  return name == fields->second.end() ? nullptr : &name->second;
}

}  // namespace vdrctl
