#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "output/record_view.h"
#include "output/writer.h"

namespace vdrctl {

// One number in a cell: its column is right-aligned, and sorted by value.
bool IsOneNumber(const Member& member);

// A table whose columns are as wide as what stands in them. It keeps no cell: each is made twice,
// first to be measured, so a list of any length needs no memory of its own.
class Table {
 public:
  // Both outlive the table.
  Table(Writer& out, const std::vector<const Member*>& columns)
      : out_(out), columns_(columns), widths_(columns.size()), largest_(columns.size()) {}

  // Of everything that will be put.
  void MeasureHeader();
  void Measure(const uint8_t* record);

  void PutHeader();
  void PutLine(const uint8_t* record);

 private:
  // `put` puts what stands in the cell, which is right of all that its line has so far. `fixedWidth` is
  // that of each cell of the column, 0 where they differ.
  template <typename Put>
  void PutCell(std::size_t column, std::size_t fixedWidth, Put put);

  Writer& out_;
  const std::vector<const Member*>& columns_;
  std::vector<std::size_t> widths_;
  std::vector<uint64_t> largest_;  // number measured so far, in columns of numbers
  Writer cell_{};
};

}  // namespace vdrctl
