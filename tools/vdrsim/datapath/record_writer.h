#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "channel/record_layout.h"
#include "requests/input.h"

namespace vdrsim {

// What up to eight bytes are as a number.
inline uint64_t NumberOf(std::span<const std::byte> bytes) {
  uint64_t number = 0;
  std::memcpy(&number, bytes.data(), bytes.size());
  return number;
}

// Sets fields of one record of zeros by their names in the layout. A name that the layout does not
// have, or that is a field of another kind, does not compile. Most fields are inlined, so that their
// widths are constants.
template <const vdrzax::RecordLayout& Layout>
class RecordWriter {
 public:
  using Kind = vdrzax::Field::Kind;

  static constexpr const vdrzax::Field& Find(std::string_view name, Kind kind) {
    for (const vdrzax::Field& field : Layout.rows) {
      if (name == field.name && field.kind == kind) return field;
    }
    throw "the layout has no field of this name and kind";
  }

  template <Kind FieldKind>
  struct Row {
    consteval Row(const char* name) : field(&Find(name, FieldKind)) {}
    const vdrzax::Field* field;
  };
  struct NumberRow : Row<Kind::Number> {
    consteval NumberRow(const char* name) : Row<Kind::Number>(name) {
      if (this->field->elements != 1) throw "say which of the numbers is meant";
    }
  };

  // `record` is as long as the layout, or ends behind the last of its entries.
  explicit RecordWriter(std::span<std::byte> record) : record_(record) {}

  [[gnu::always_inline]] const RecordWriter& Number(NumberRow row, uint64_t value) const {
    std::memcpy(At(*row.field), &value, row.field->width);
    return *this;
  }

  // One of an array of numbers.
  const RecordWriter& Number(Row<Kind::Number> row, size_t index, uint64_t value) const {
    const size_t width = row.field->ElementWidth();
    std::memcpy(At(*row.field) + index * width, &value, width);
    return *this;
  }

  // A text that does not fit loses its end; the terminator always stays.
  [[gnu::always_inline]] const RecordWriter& Text(Row<Kind::Text> row,
                                                  std::string_view text) const {
    std::memcpy(At(*row.field), text.data(), std::min<size_t>(text.size(), row.field->width - 1));
    return *this;
  }

  const RecordWriter& Mac(Row<Kind::Mac> row, const MacAddress& address) const {
    std::ranges::copy(address, At(*row.field));
    return *this;
  }

  // Bytes that don't fit are left out.
  const RecordWriter& Bytes(Row<Kind::Bytes> row, std::span<const std::byte> bytes,
                            size_t offset = 0) const {
    const size_t room = row.field->width - std::min<size_t>(offset, row.field->width);
    std::ranges::copy(bytes.first(std::min(bytes.size(), room)), At(*row.field) + offset);
    return *this;
  }

  // The next of the entries of this name, which the record counts. There must be room for it.
  template <requests::Name Entries>
  auto Append() const {
    static constexpr const vdrzax::Field& kField = Find(Entries.view(), Kind::Entries);
    uint64_t count = 0;
    std::byte* counted = record_.data() + kField.countOffset;
    std::memcpy(&count, counted, kField.countWidth);
    const auto entry =
        record_.subspan(kField.offset + count * kField.entry->size, kField.entry->size);
    ++count;
    std::memcpy(counted, &count, kField.countWidth);
    return RecordWriter<*kField.entry>(entry);
  }

 private:
  std::byte* At(const vdrzax::Field& field) const { return record_.data() + field.offset; }

  std::span<std::byte> record_;
};

// A hardware address where a record has no place for one, but a number of four bytes and after it
// one of two.
template <const vdrzax::RecordLayout& Layout>
void ShowMac(RecordWriter<Layout> record, typename RecordWriter<Layout>::NumberRow first,
             typename RecordWriter<Layout>::NumberRow second, const MacAddress& mac) {
  const std::span<const std::byte> bytes(mac);
  record.Number(first, NumberOf(bytes.first(4))).Number(second, NumberOf(bytes.subspan(4)));
}

}  // namespace vdrsim
