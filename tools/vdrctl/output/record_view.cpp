#include "output/record_view.h"

#include <utility>

#include "names/field_names.h"

namespace vdrctl {

namespace {

using vdrzax::Field;

bool NamesAnElement(const FieldNames& names, std::string_view record, const Field& row) {
  for (uint32_t index = 0; index < row.elements; ++index) {
    if (names.Find(record, ElementName(row, index))) return true;
  }
  return false;
}

void AddMember(RecordView& view, const std::string& usual, const Field& field,
               const FieldNames* names) {
  const FieldName* own = names ? names->Find(view.name, usual) : nullptr;
  Member member{own ? own->name : usual, field};
  if (own) {
    member.dress = own->dress;
    member.flags = own->flags;
  }
  if (field.entry)
    member.entry = std::make_shared<RecordView>(MakeView(*field.entry, field.entry->name, names));
  view.members.push_back(std::move(member));
}

// Where one element of an array has a name, each stands apart.
void AddRow(RecordView& view, const Field& row, const FieldNames* names) {
  if (row.kind == Field::Kind::Skipped) return;
  const bool apart =
      names && row.kind == Field::Kind::Number && NamesAnElement(*names, view.name, row);
  if (!apart) return AddMember(view, row.name, row, names);
  for (uint32_t index = 0; index < row.elements; ++index) {
    AddMember(view, ElementName(row, index), ElementOf(row, index), names);
  }
}

}  // namespace

const Member* RecordView::Find(std::string_view member) const {
  for (const Member& one : members) {
    if (one.name == member) return &one;
  }
  return nullptr;
}

RecordView MakeView(const vdrzax::RecordLayout& layout, std::string_view title,
                    const FieldNames* names) {
  RecordView view{title, layout.size, {}};
  for (const Field& row : layout.rows) AddRow(view, row, names);
  return view;
}

// Rows of counters bear the number of their first one: the third of "slots84" is "slots[86]".
std::string ElementName(const Field& row, uint32_t element) {
  std::string_view name = row.name;
  const std::size_t digits = name.find_last_not_of("0123456789") + 1;
  if (!name.starts_with("slots")) return std::string(name) + "[" + std::to_string(element) + "]";
  const uint32_t first = static_cast<uint32_t>(std::stoul(std::string(name.substr(digits))));
  return std::string(name.substr(0, digits)) + "[" + std::to_string(first + element) + "]";
}

Field ElementOf(const Field& row, uint32_t element) {
  Field field = row;
  field.offset += element * row.ElementWidth();
  field.width = row.ElementWidth();
  field.elements = 1;
  return field;
}

}  // namespace vdrctl
