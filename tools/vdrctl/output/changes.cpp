#include "output/changes.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "output/forms.h"
#include "output/value.h"

namespace vdrctl {

namespace {

using vdrzax::Field;

// The type of a record is a number, but counts nothing.
bool Counts(const Member& member) {
  return member.field.kind == Field::Kind::Number && member.field.ElementWidth() == 8;
}

uint64_t ElementAt(const Field& field, uint32_t index, const uint8_t* record) {
  const uint32_t width = field.ElementWidth();
  return NumberAt(record + field.offset + std::size_t{index} * width, width);
}

uint64_t Difference(const Field& field, uint32_t index, const uint8_t* before, const uint8_t* now) {
  const uint64_t first = ElementAt(field, index, before);
  const uint64_t last = ElementAt(field, index, now);
  return last - std::min(first, last);
}

double Rate(uint64_t difference, double seconds) {
  return seconds > 0 ? static_cast<double>(difference) / seconds : 0;
}

template <typename Put>
void PutCounters(JsonForm& form, const char* name, const std::vector<const Member*>& members,
                 Put put) {
  form.Name(name);
  form.OpenRecord();
  for (const Member* member : members) {
    if (!Counts(*member)) continue;
    form.Name(member->name);
    const bool isArray = member->field.elements > 1;
    if (isArray) form.Open();
    for (uint32_t index = 0; index < member->field.elements; ++index) {
      if (isArray) form.Next();
      put(member->field, index);
    }
    if (isArray) form.Close();
  }
  form.CloseRecord();
}

}  // namespace

void PutChanges(Writer& out, const std::vector<const Member*>& members, const uint8_t* before,
                const uint8_t* now, double seconds) {
  out.Put(fmt::format("{:<24}  {:>20}  {:>20}  {:>14}\n", "counter", "value", "difference",
                      "per second"));
  for (const Member* member : members) {
    if (!Counts(*member)) continue;
    const Field& field = member->field;
    for (uint32_t index = 0; index < field.elements; ++index) {
      const std::string name = field.elements > 1 ? ElementName(field, index) : member->name;
      const uint64_t difference = Difference(field, index, before, now);
      out.Put(fmt::format("{:<24}  {:>20}  {:>20}  {:>14.1f}\n", name, ElementAt(field, index, now),
                          difference, Rate(difference, seconds)));
    }
  }
}

void PutJsonChanges(Writer& out, const std::vector<const Member*>& members, const uint8_t* before,
                    const uint8_t* now, double seconds) {
  JsonForm form(out);
  form.OpenRecord();
  form.Name("seconds");
  form.Real(seconds);
  form.Name("record");
  form.OpenRecord();
  for (const Member* member : members) {
    form.Name(member->name);
    PutValue(form, *member, now);
  }
  form.CloseRecord();
  PutCounters(form, "differences", members, [&](const Field& field, uint32_t index) {
    form.Number(Difference(field, index, before, now));
  });
  PutCounters(form, "rates", members, [&](const Field& field, uint32_t index) {
    form.Real(Rate(Difference(field, index, before, now), seconds));
  });
  form.CloseRecord();
  out.Put('\n');
}

}  // namespace vdrctl
