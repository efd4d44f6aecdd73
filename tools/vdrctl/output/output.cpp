#include "output/output.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <numeric>

#include "output/changes.h"
#include "output/forms.h"
#include "output/history.h"
#include "output/table.h"
#include "output/text.h"
#include "output/value.h"

namespace vdrctl {

namespace {

// Orders two values of one field as a reader would: numbers by value, the rest byte by byte.
bool IsBefore(const Member& member, const uint8_t* left, const uint8_t* right) {
  const vdrzax::Field& field = member.field;
  left += field.offset;
  right += field.offset;
  if (IsOneNumber(member)) return NumberAt(left, field.width) < NumberAt(right, field.width);
  return std::memcmp(left, right, field.width) < 0;
}

void PutMembers(JsonForm& form, const std::vector<const Member*>& members, const uint8_t* record) {
  form.OpenRecord();
  for (const Member* member : members) {
    form.Name(member->name);
    PutValue(form, *member, record);
  }
  form.CloseRecord();
}

std::string JoinedNames(const RecordView& view) {
  std::string names;
  for (const Member& member : view.members) names += (names.empty() ? "" : ", ") + member.name;
  return names;
}

// Where a reply has one of several layouts, a column of any will do.
void RequireColumn(const std::vector<RecordView>& views, const std::string& name) {
  if (std::ranges::any_of(views, [&](const RecordView& view) { return view.Find(name); })) return;
  throw NoSuchColumn(
      fmt::format("no column '{}'; there are {}", Escaped(name), JoinedNames(views.front())));
}

}  // namespace

Output::Output(const Presentation& presentation, const Reply& reply, Writer& writer)
    : presentation_(presentation), reply_(reply), writer_(writer) {
  const bool wantsColumns = !presentation.columns.empty() || !presentation.sort.empty();
  if (reply.layouts.empty() && wantsColumns) {
    throw NoSuchColumn("this command prints no records, so there are no columns to choose");
  }
  if (reply.form != Reply::Form::List && !presentation.sort.empty()) {
    throw NoSuchColumn("this command prints no list, so there is nothing to sort");
  }
  for (std::size_t index = 0; index < reply.layouts.size(); ++index) {
    views_.push_back(MakeView(*reply.layouts[index], TitleOf(reply, index), presentation.names));
  }
  for (auto name = presentation.columns.begin(); name != presentation.columns.end(); ++name) {
    RequireColumn(views_, *name);
    // Two members of a JSON object can't have one name.
    if (std::find(presentation.columns.begin(), name, *name) != name) {
      throw NoSuchColumn(fmt::format("column '{}' is given twice", *name));
    }
  }
  if (!presentation.sort.empty()) RequireColumn(views_, presentation.sort);
}

void Output::List(const Records& records) {
  const RecordView& view = views_.front();
  if (IsJson()) {
    JsonArray(records, Chosen(view, {}));
  } else {
    PutTable(records, Chosen(view, reply_.columns));
  }
}

void Output::Record(const vdrzax::RecordLayout& layout, const void* record) {
  const auto* bytes = static_cast<const uint8_t*>(record);
  std::size_t index = 0;
  while (reply_.layouts[index] != &layout) ++index;
  const auto members = Chosen(views_[index], {});
  if (presentation_.history && !reply_.titles.empty()) return Changes(members, bytes);
  if (IsJson()) {
    JsonForm form(writer_);
    PutMembers(form, members, bytes);
    return writer_.Put('\n');
  }
  std::size_t width = 0;
  for (const Member* member : members) width = std::max(width, member->name.size());
  CellForm form(writer_);
  for (const Member* member : members) {
    writer_.Put(member->name);
    writer_.Fill(width - member->name.size() + 2);
    PutValue(form, *member, bytes);
    writer_.Put('\n');
  }
}

// Counters of this turn and the one before. A counter that was reset has no difference, and neither
// has the first turn: they are 0.
void Output::Changes(const std::vector<const Member*>& members, const uint8_t* record) {
  History& history = *presentation_.history;
  const auto now = std::chrono::steady_clock::now();
  const std::size_t size = views_.front().size;
  const bool isFirst = history.record.size() != size ||
                       std::memcmp(history.record.data(), record, sizeof(uint32_t)) != 0;
  const double seconds = isFirst ? 0 : std::chrono::duration<double>(now - history.time).count();
  const uint8_t* before = isFirst ? record : history.record.data();
  if (IsJson()) {
    PutJsonChanges(writer_, members, before, record, seconds);
  } else {
    PutChanges(writer_, members, before, record, seconds);
  }
  history.record.assign(record, record + size);
  history.time = now;
}

void Output::Number(uint64_t value) {
  if (!IsJson()) return writer_.Put(fmt::format("{}\n", value));
  writer_.Put(fmt::format("{{\"{}\":{}}}\n", reply_.member, value));
}

void Output::Address(uint32_t value) {
  std::array<uint8_t, sizeof value> bytes{};
  std::memcpy(bytes.data(), &value, sizeof value);
  const std::string text = fmt::format("{}", fmt::join(bytes, "."));
  writer_.Put(IsJson() ? fmt::format("{{\"{}\":\"{}\"}}\n", reply_.member, text) : text + "\n");
}

void Output::Mac(std::span<const uint8_t> bytes) {
  const std::string text = fmt::format("{:02x}", fmt::join(bytes, ":"));
  writer_.Put(IsJson() ? fmt::format("{{\"{}\":\"{}\"}}\n", reply_.member, text) : text + "\n");
}

void Output::Bytes(uint64_t length, std::span<const uint8_t> bytes) {
  if (!IsJson()) return PutHexDump(writer_, bytes);
  writer_.Put(fmt::format("{{\"length\":{},\"bytes\":\"", length));
  writer_.Hex(bytes);
  writer_.Put("\"}\n");
}

// The members that the operator asked for, or the usual ones, or all.
std::vector<const Member*> Output::Chosen(const RecordView& view,
                                          std::span<const char* const> usual) const {
  std::vector<const Member*> members;
  for (const std::string& name : presentation_.columns) {
    if (const Member* member = view.Find(name)) members.push_back(member);
  }
  if (!presentation_.columns.empty()) return members;
  for (const std::string_view name : usual) {
    for (const Member& member : view.members) {
      if (member.field.name == name) members.push_back(&member);
    }
  }
  for (const Member& member : view.members) {
    if (usual.empty()) members.push_back(&member);
  }
  return members;
}

std::vector<std::size_t> Output::Order(const Records& records) const {
  if (presentation_.sort.empty()) return {};
  const Member& member = *views_.front().Find(presentation_.sort);
  std::vector<std::size_t> order(records.count());
  std::iota(order.begin(), order.end(), 0);
  std::ranges::stable_sort(order, [&](std::size_t left, std::size_t right) {
    return IsBefore(member, records[left], records[right]);
  });
  return order;
}

void Output::PutTable(const Records& records, const std::vector<const Member*>& columns) {
  Table table(writer_, columns);
  if (presentation_.header) table.MeasureHeader();
  for (std::size_t index = 0; index < records.count(); ++index) table.Measure(records[index]);
  if (presentation_.header) table.PutHeader();
  const std::vector<std::size_t> order = Order(records);
  for (std::size_t line = 0; line < records.count(); ++line) {
    table.PutLine(records[order.empty() ? line : order[line]]);
    writer_.Part();
  }
}

void Output::JsonArray(const Records& records, const std::vector<const Member*>& members) {
  JsonForm form(writer_);
  const std::vector<std::size_t> order = Order(records);
  form.Open();
  for (std::size_t line = 0; line < records.count(); ++line) {
    form.Next();
    PutMembers(form, members, records[order.empty() ? line : order[line]]);
    writer_.Part();
  }
  form.Close();
  writer_.Put('\n');
}

}  // namespace vdrctl
