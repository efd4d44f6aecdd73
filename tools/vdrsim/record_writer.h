#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "channel/record_layout.h"

namespace vdrsim {

// Appends one record of zeros to a reply and sets fields of it by their names in the layout. A name
// that the layout does not have, or that is a field of another kind, does not compile.
template <const vdrzax::RecordLayout& Layout>
class RecordWriter {
 public:
  template <vdrzax::Field::Kind Kind>
  struct Row {
    consteval Row(const char* name) : field(Find(name)) {}
    const vdrzax::Field* field;

   private:
    static consteval const vdrzax::Field* Find(std::string_view name) {
      for (const vdrzax::Field& row : Layout.rows) {
        if (name == row.name && row.kind == Kind) return &row;
      }
      throw "the layout has no field of this name and kind";
    }
  };
  using NumberRow = Row<vdrzax::Field::Kind::Number>;
  using TextRow = Row<vdrzax::Field::Kind::Text>;

  explicit RecordWriter(std::vector<std::byte>& reply) : reply_(reply), start_(reply.size()) {
    reply_.resize(start_ + Layout.size);
  }

  RecordWriter& Number(NumberRow row, uint64_t value) {
    std::memcpy(At(*row.field), &value, row.field->ElementWidth());
    return *this;
  }

  // A text that does not fit loses its end; the terminator always stays.
  RecordWriter& Text(TextRow row, std::string_view text) {
    std::memcpy(At(*row.field), text.data(), std::min<size_t>(text.size(), row.field->width - 1));
    return *this;
  }

 private:
  std::byte* At(const vdrzax::Field& field) { return reply_.data() + start_ + field.offset; }

  std::vector<std::byte>& reply_;
  size_t start_;
};

}  // namespace vdrsim
