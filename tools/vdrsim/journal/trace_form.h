#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "journal/form.h"
#include "requests/field_view.h"

namespace vdrsim {

// A line for people an entry: the request with its arguments, and what became of it.
class TraceForm final : public Form {
 public:
  void PutBeginning(std::string&) const override {}
  void Put(const Entry& entry, std::string& out) const override;
};

// Adds a command with its arguments: `GetInstance(name="edge-1")`.
void PutRequestForPeople(uint32_t code, std::span<const std::byte> input, std::string& out);

// Adds what a field holds.
void PutValueForPeople(const requests::FieldView& view, std::string& out);

}  // namespace vdrsim
