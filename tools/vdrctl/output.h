#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "channel/record_layout.h"

namespace vdrctl {

// Picks rows of a layout, by name, as the columns of its table. A name that the layout does not
// have ends the compilation.
template <std::size_t kCount>
consteval std::array<vdrzax::Field, kCount> Columns(const vdrzax::RecordLayout& layout,
                                                    const char* const (&names)[kCount]) {
  std::array<vdrzax::Field, kCount> columns{};
  for (std::size_t index = 0; index < kCount; ++index) {
    for (const vdrzax::Field& row : layout.rows) {
      if (std::string_view(row.name) == names[index]) columns[index] = row;
    }
    if (!columns[index].name) throw std::logic_error("the layout has no row of this name");
  }
  return columns;
}

// Collects what a command prints on standard output, as tables for people or as one JSON document.
// Nothing is written before the command has succeeded.
class Output {
 public:
  enum class Form : uint8_t { Tables, Json };

  explicit Output(Form form) : form_(form) {}

  // Prints `count` records that follow one another: a table of `columns`, or a JSON array with all
  // that the layout knows of each record.
  void List(const vdrzax::RecordLayout& layout, std::span<const vdrzax::Field> columns,
            const void* records, std::size_t count);

  // Prints one record: a line a field, or a JSON object.
  void Record(const vdrzax::RecordLayout& layout, const void* record);

  // Prints a number alone, or a JSON object with that one member.
  void Number(std::string_view name, uint64_t value);

  // Prints a reply whose layout is the kernel's alone. `length` is the kernel's own count, which
  // may differ from the bytes that are there.
  void Reply(uint32_t length, std::span<const uint8_t> bytes);

  // Puts out bytes as they stand, in either form.
  void Raw(std::span<const uint8_t> bytes);

  const std::string& text() const { return text_; }

 private:
  Form form_;
  std::string text_;
};

// Writes every byte that is not printable ASCII as \xNN, and the backslash twice: an operator's
// terminal must not be driven by text from the kernel.
std::string Escaped(std::string_view text);

// Lines of sixteen bytes each, in hexadecimal and as characters.
std::string HexDump(std::span<const uint8_t> bytes);

}  // namespace vdrctl
