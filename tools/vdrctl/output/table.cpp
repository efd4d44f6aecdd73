#include "output/table.h"

#include <algorithm>

#include "output/forms.h"
#include "output/text.h"
#include "output/value.h"

namespace vdrctl {

namespace {

using Kind = vdrzax::Field::Kind;

// Of columns whose cells are all as wide, so that none need be made to know it; 0 for the others.
std::size_t FixedWidth(const Member& member) {
  const std::size_t bytes = member.field.width;
  if (member.field.kind == Kind::Mac) return 3 * bytes - 1;
  return member.field.kind == Kind::Bytes && member.dress == Dress::Plain ? 2 * bytes : 0;
}

}  // namespace

bool IsOneNumber(const Member& member) {
  return member.field.kind == Kind::Number && member.field.elements == 1 &&
         (member.dress == Dress::Plain || member.dress == Dress::Hex ||
          member.dress == Dress::Counter);
}

void Table::MeasureHeader() {
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    widths_[column] = std::max(widths_[column], columns_[column]->name.size());
  }
}

void Table::Measure(const uint8_t* record) {
  CellForm form(cell_);
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    const Member& member = *columns_[column];
    if (IsOneNumber(member)) {
      // No number is wider than a larger one.
      const uint64_t number = NumberAt(record + member.field.offset, member.field.width);
      if (number <= largest_[column] && widths_[column] > 0) continue;
      largest_[column] = number;
    }
    std::size_t width = FixedWidth(member);
    if (width == 0) {
      cell_.Clear();
      PutValue(form, member, record);
      width = DisplayWidth(cell_.text());
    }
    widths_[column] = std::max(widths_[column], width);
  }
}

void Table::PutHeader() {
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    PutCell(column, 0, [&](Writer& out) { out.Put(columns_[column]->name); });
  }
  out_.Put('\n');
}

void Table::PutLine(const uint8_t* record) {
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    PutCell(column, FixedWidth(*columns_[column]), [&](Writer& out) {
      CellForm form(out);
      PutValue(form, *columns_[column], record);
    });
  }
  out_.Put('\n');
}

template <typename Put>
void Table::PutCell(std::size_t column, std::size_t fixedWidth, Put put) {
  if (column > 0) out_.Fill(2);
  if (IsOneNumber(*columns_[column])) {
    cell_.Clear();
    put(cell_);
    out_.Fill(widths_[column] - cell_.text().size());
    return out_.Put(cell_.text());
  }
  const std::size_t start = out_.text().size();
  put(out_);
  // No line ends with spaces.
  if (column + 1 == columns_.size()) return;
  const std::string_view cell = std::string_view(out_.text()).substr(start);
  out_.Fill(widths_[column] - (fixedWidth > 0 ? fixedWidth : DisplayWidth(cell)));
}

}  // namespace vdrctl
