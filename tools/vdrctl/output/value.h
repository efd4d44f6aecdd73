#pragma once

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "output/record_view.h"

// The one reading of a record: a walk over its view that hands each value to a form of output. No
// form reads a record by itself, so no two can differ.
//
// A form has: Number(n), Word(ascii), Text(bytes), Hex(bytes, separator), Boolean(b); Open(), Next()
// and Close() around the elements of an array; OpenRecord(), Name(name) and CloseRecord() around
// the members of a record.

namespace vdrctl {

// Records are little-endian, whatever the width of their numbers.
inline uint64_t NumberAt(const uint8_t* bytes, uint32_t width) {
  uint64_t value = 0;
  std::memcpy(&value, bytes, width);
  return value;
}
static_assert(std::endian::native == std::endian::little);

// The count is the kernel's and may exceed the array.
inline uint64_t CountOf(const vdrzax::Field& row, const uint8_t* record) {
  return std::min<uint64_t>(NumberAt(record + row.countOffset, row.countWidth), row.elements);
}

template <typename Form>
void WalkRecord(Form& form, const RecordView& view, const uint8_t* record);

template <typename Form>
void PutAddress(Form& form, int family, const uint8_t* bytes) {
  std::array<char, INET6_ADDRSTRLEN> text{};
  inet_ntop(family, bytes, text.data(), text.size());
  form.Word(text.data());
}

template <typename Form>
void PutFlags(Form& form, const Member& member, uint64_t number) {
  form.Open();
  for (const Flag& flag : member.flags) {
    if ((number & flag.bits) != flag.bits) continue;
    form.Next();
    form.Word(flag.name);
    number &= ~flag.bits;
  }
  if (number != 0) {
    form.Next();
    form.HexNumber(number);
  }
  form.Close();
}

template <typename Form>
void PutNumber(Form& form, const Member& member, const uint8_t* bytes, uint32_t width) {
  switch (member.dress) {
    case Dress::Ipv4:
      return PutAddress(form, AF_INET, bytes);
    case Dress::Boolean:
      return form.Boolean(NumberAt(bytes, width) != 0);
    case Dress::Flags:
      return PutFlags(form, member, NumberAt(bytes, width));
    case Dress::Hex:
      return form.NumberInHex(NumberAt(bytes, width));
    default:
      return form.Number(NumberAt(bytes, width));
  }
}

template <typename Form>
void PutNumbers(Form& form, const Member& member, const uint8_t* bytes) {
  const uint32_t width = member.field.ElementWidth();
  form.Open();
  for (uint32_t index = 0; index < member.field.elements; ++index) {
    form.Next();
    PutNumber(form, member, bytes + std::size_t{index} * width, width);
  }
  form.Close();
}

template <typename Form>
void PutEntries(Form& form, const Member& member, const uint8_t* record) {
  const uint64_t count = CountOf(member.field, record);
  const uint8_t* entry = record + member.field.offset;
  form.Open();
  for (uint64_t index = 0; index < count; ++index, entry += member.entry->size) {
    form.Next();
    WalkRecord(form, *member.entry, entry);
  }
  form.Close();
}

template <typename Form>
void PutBytes(Form& form, const Member& member, const uint8_t* bytes) {
  const uint32_t width = member.field.width;
  const auto* text = reinterpret_cast<const char*>(bytes);
  switch (member.dress) {
    case Dress::Ipv4:
      return PutAddress(form, AF_INET, bytes);
    case Dress::Ipv6:
      return PutAddress(form, AF_INET6, bytes);
    case Dress::Mac:
      return form.Hex({bytes, width}, ":");
    case Dress::Text:
      return form.Text({text, strnlen(text, width)});
    default:
      return form.Hex({bytes, width}, "");
  }
}

template <typename Form>
void PutValue(Form& form, const Member& member, const uint8_t* record) {
  using Kind = vdrzax::Field::Kind;
  const uint8_t* bytes = record + member.field.offset;
  switch (member.field.kind) {
    case Kind::Number:
      if (member.dress == Dress::Ipv6) return PutAddress(form, AF_INET6, bytes);
      if (member.field.elements > 1) return PutNumbers(form, member, bytes);
      return PutNumber(form, member, bytes, member.field.width);
    case Kind::Text: {
      const auto* text = reinterpret_cast<const char*>(bytes);
      return form.Text({text, strnlen(text, member.field.width)});
    }
    case Kind::Bytes:
      return PutBytes(form, member, bytes);
    case Kind::Mac:
      return form.Hex({bytes, member.field.width}, ":");
    case Kind::Entries:
      return PutEntries(form, member, record);
    case Kind::Skipped:
      return;
  }
}

template <typename Form>
void WalkRecord(Form& form, const RecordView& view, const uint8_t* record) {
  form.OpenRecord();
  for (const Member& member : view.members) {
    form.Name(member.name);
    PutValue(form, member, record);
  }
  form.CloseRecord();
}

}  // namespace vdrctl
