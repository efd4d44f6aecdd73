#include "replay/difference.h"

#include <fmt/format.h>

#include <algorithm>

#include "journal/put.h"
#include "journal/trace_form.h"
#include "requests/field_view.h"

namespace vdrsim {

namespace {

using requests::FieldView;
using Bytes = std::span<const std::byte>;

std::string Shown(uint32_t code, Bytes input) {
  std::string text;
  PutRequestForPeople(code, input, text);
  return text;
}

std::string Shown(const FieldView& view) {
  std::string text;
  PutValueForPeople(view, text);
  return text;
}

std::string_view Name(Node node) { return node == Node::Normal ? "normal" : "upgrade"; }

template <typename Value>
void Compare(std::string& out, std::string_view what, const Value& recorded, const Value& asked) {
  if (recorded == asked) return;
  out += fmt::format("    {}: {} recorded, {} asked\n", what, recorded, asked);
}

// Bytes that belong to no field, or lie behind the terminator of a text.
void CompareRest(std::string& out, Bytes recorded, Bytes asked) {
  const auto [one, other] = std::ranges::mismatch(recorded, asked);
  if (one == recorded.end()) return;
  out +=
      fmt::format("    byte {} of the input: {:02x} recorded, {:02x} asked\n",
                  one - recorded.begin(), std::to_integer<int>(*one), std::to_integer<int>(*other));
}

void CompareInputs(std::string& out, const requests::Request* request, Bytes recorded,
                   Bytes asked) {
  const size_t before = out.size();
  if (request) {
    requests::ForEachField(*request, recorded, [&](const FieldView& view) {
      const FieldView other{view.field, asked.subspan(view.field.offset, view.field.width)};
      Compare(out, view.field.name, Shown(view), Shown(other));
    });
  }
  if (out.size() == before) CompareRest(out, recorded, asked);
}

}  // namespace

std::string Difference(const Recorded& recorded, Bytes input, const Call& asked) {
  std::string out = fmt::format("  recorded: {}\n  asked:    {}\n", Shown(recorded.code, input),
                                Shown(asked.code, asked.input));
  const requests::Request* request = requests::Find(recorded.code, input);
  const bool isSameCommand = recorded.code == asked.code &&
                             request == requests::Find(asked.code, asked.input) &&
                             input.size() == asked.input.size();
  if (isSameCommand) CompareInputs(out, request, input, asked.input);
  Compare(out, "node", Name(recorded.node), Name(asked.node));
  Compare(out, "capacity", recorded.capacity, asked.capacity);
  return out;
}

}  // namespace vdrsim
