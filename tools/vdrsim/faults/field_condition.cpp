#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <set>

#include "common/suggestion.h"
#include "common/values.h"
#include "faults/rule_text.h"

namespace vdrsim {

namespace {

using requests::Field;
using requests::kInstanceRequests;
using requests::kRequests;
using requests::Request;

using Bytes = std::vector<std::byte>;

template <typename Value>
Bytes BytesOf(const Value& value, size_t size = sizeof(Value)) {
  const auto bytes = std::as_bytes(std::span(&value, 1)).first(size);
  return {bytes.begin(), bytes.end()};
}

template <typename Value>
std::optional<Bytes> BytesOf(const std::optional<Value>& value) {
  return value ? std::optional(BytesOf(*value)) : std::nullopt;
}

std::optional<Bytes> NumberBytes(std::string_view text, size_t width) {
  const auto number = tools::ParseNumber(text);
  if (!number) return width == 4 ? BytesOf(tools::ParseIpv4(text)) : std::nullopt;
  if (width < sizeof *number && *number >> (8 * width) != 0) return std::nullopt;
  return BytesOf(*number, width);
}

std::optional<Bytes> SignedBytes(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  const uint64_t size = tools::ParseNumber(text.substr(isNegative ? 1 : 0)).value_or(UINT64_MAX);
  if (size > (isNegative ? 0x80000000 : 0x7fffffff)) return std::nullopt;
  return BytesOf(static_cast<uint32_t>(isNegative ? -size : size));
}

// With the terminator, where the field has room for it.
std::optional<Bytes> TextBytes(std::string_view text, size_t width) {
  if (text.size() > width || text.find('\0') != std::string_view::npos) return std::nullopt;
  Bytes bytes(std::min(text.size() + 1, width));
  std::memcpy(bytes.data(), text.data(), text.size());
  return bytes;
}

std::optional<Bytes> PlainBytes(std::string_view text, size_t width) {
  const std::vector<uint8_t> bytes = tools::ParseHexBytes(text);
  if (bytes.size() != width) return std::nullopt;
  const auto plain = std::as_bytes(std::span(bytes));
  return Bytes(plain.begin(), plain.end());
}

std::optional<Bytes> ValueOf(const Field& field, std::string_view text) {
  switch (field.kind) {
    case Field::Kind::Number:
      return NumberBytes(text, field.width);
    case Field::Kind::Signed:
      return SignedBytes(text);
    case Field::Kind::Text:
    case Field::Kind::OpenText:
      return TextBytes(text, field.width);
    case Field::Kind::Mac:
      return BytesOf(tools::ParseMac(text));
    case Field::Kind::Bytes:
      return PlainBytes(text, field.width);
  }
  return std::nullopt;
}

std::string FormOf(const Field& field) {
  switch (field.kind) {
    case Field::Kind::Number:
      return fmt::format("a number of {} bits{}", 8 * field.width,
                         field.width == 4 ? " or an IPv4 address" : "");
    case Field::Kind::Signed:
      return "a number of 32 bits with a sign";
    case Field::Kind::Text:
    case Field::Kind::OpenText:
      return fmt::format("a text of at most {} characters", field.width);
    case Field::Kind::Mac:
      return "a MAC address, as 02:00:5e:10:00:01";
    case Field::Kind::Bytes:
      return fmt::format("the {} bytes of it in hexadecimal digits", field.width);
  }
  return {};
}

// The two halves of an IPv6 address are one field to people. It begins where the first one does.
std::optional<std::string_view> AddressName(const Field& field) {
  for (const std::string_view first : {"Part1", "High"}) {
    if (field.name.ends_with(first)) return field.name.substr(0, field.name.size() - first.size());
  }
  return std::nullopt;
}

bool IsOfInstances(const Request& request) {
  return &request >= std::begin(kInstanceRequests) && &request < std::end(kInstanceRequests);
}

// What people write for a field: its name, without `Name` at its end, or what is meant by it.
bool IsCalled(const Request& request, const Field& field, std::string_view name) {
  if (field.name == name) return true;
  if (field.name.size() == name.size() + 4 && field.name.starts_with(name) &&
      field.name.ends_with("Name")) {
    return true;
  }
  return name == "instance" && field.name == "name" && IsOfInstances(request);
}

// A condition that is being read.
struct Reading {
  std::string_view name;
  std::string_view value;
  FieldCondition condition{};
  std::string form{};                  // of the values of the field, where there is one
  std::set<std::string_view> known{};  // names that could have been written instead

  void Expect(size_t index, uint16_t offset, std::optional<Bytes> bytes, std::string takes) {
    form = std::move(takes);
    if (bytes)
      condition.byRequest.emplace(index, FieldCondition::Expected{offset, std::move(*bytes)});
  }

  void Look(size_t index) {
    const Request& request = *kRequests[index];
    for (const Field& field : request.fields()) {
      known.insert(field.name);
      if (IsCalled(request, field, name))
        Expect(index, field.offset, ValueOf(field, value), FormOf(field));
      const auto address = AddressName(field);
      if (address) known.insert(*address);
      if (address == name) {
        Expect(index, field.offset, BytesOf(tools::ParseIpv6(value)), "an IPv6 address");
      }
    }
  }
};

}  // namespace

FieldCondition ReadFieldCondition(const RulePart& part, const Selection& selection) {
  const size_t sign = part.text.find_first_of("!=");
  if (sign == 0 || sign == std::string_view::npos || part.text.substr(sign + 1, 1) != "=") {
    part.Refuse("it takes FIELD==VALUE or FIELD!=VALUE, as instance==edge-1");
  }
  Reading reading{.name = part.text.substr(0, sign), .value = part.text.substr(sign + 2)};
  reading.condition.isEqual = part.text[sign] == '=';
  for (size_t index = 0; index < kRequests.size(); ++index) {
    if (selection.requests[index]) reading.Look(index);
  }
  if (reading.form.empty()) {
    const std::vector<std::string_view> known(reading.known.begin(), reading.known.end());
    const bool isFew = known.size() <= Request::kMostFields;
    part.At(reading.name)
        .Refuse(fmt::format("no command of this rule has a field '{}'{}{}{}", reading.name,
                            tools::Suggestion(reading.name, known),
                            isFew && !known.empty() ? "; there are " : "",
                            fmt::join(isFew ? known : std::vector<std::string_view>{}, ", ")));
  }
  if (reading.condition.byRequest.empty()) {
    part.At(reading.value).Refuse(fmt::format("the field {} takes {}", reading.name, reading.form));
  }
  return std::move(reading.condition);
}

}  // namespace vdrsim
