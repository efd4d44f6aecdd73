#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "channel/record_layout.h"

namespace vdrctl {

// What a reading command prints, as a part of its row: headings, schemas and names of fields are
// known from it before anything is read.
struct Reply {
  enum class Form : uint8_t {
    None,
    Number,   // one number
    Address,  // one IPv4 address
    Mac,      // one hardware address
    Record,   // a record, of one of several layouts when it says itself of which
    List,     // records of one layout
    Bytes,    // a reply whose layout is the kernel's alone
    Table,    // text of the tool's own
  };

  Form form = Form::None;
  const char* member = nullptr;  // of the JSON object of a number or an address
  std::span<const vdrzax::RecordLayout* const> layouts = {};
  std::span<const char* const> columns = {};  // of the table of a list; all fields when empty
  std::span<const char* const> titles = {};   // of the layouts, where one name stands for several
};

// What a layout is called in the documentation.
constexpr const char* TitleOf(const Reply& reply, std::size_t layout) {
  return reply.titles.empty() ? reply.layouts[layout]->name : reply.titles[layout];
}

constexpr Reply NumberReply(const char* member) { return {Reply::Form::Number, member}; }
constexpr Reply AddressReply(const char* member) { return {Reply::Form::Address, member}; }
constexpr Reply MacReply(const char* member) { return {Reply::Form::Mac, member}; }
constexpr Reply BytesReply() { return {Reply::Form::Bytes}; }
constexpr Reply TextReply() { return {Reply::Form::Table}; }

template <const vdrzax::RecordLayout&... kLayouts>
inline constexpr const vdrzax::RecordLayout* kLayoutSet[] = {&kLayouts...};

template <const vdrzax::RecordLayout&... kLayouts>
constexpr Reply RecordReply() {
  return {Reply::Form::Record, nullptr, kLayoutSet<kLayouts...>};
}

template <const vdrzax::RecordLayout& kLayout>
constexpr Reply ListReply(std::span<const char* const> columns = {}) {
  return {Reply::Form::List, nullptr, kLayoutSet<kLayout>, columns};
}

// True when the layout has a row of each of these names.
constexpr bool HasRows(const vdrzax::RecordLayout& layout, std::span<const char* const> names) {
  for (const std::string_view name : names) {
    bool found = false;
    for (const vdrzax::Field& row : layout.rows) found = found || name == row.name;
    if (!found) return false;
  }
  return true;
}

}  // namespace vdrctl
