#pragma once

#include <vdrzax/channel.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "output.h"

// The three ways in which a command reads: a number, a record, a list. Each takes a getter of the
// library and prints what it returned.

namespace vdrctl {

template <auto kRelease>
struct Releaser {
  template <typename Record>
  void operator()(Record* record) const {
    kRelease(record);
  }
};

// What a getter returned, until it is given back through its Release function.
template <typename Record, auto kRelease>
using Owned = std::unique_ptr<Record, Releaser<kRelease>>;

// `get` takes the address of the record's pointer. What stands there after a failure is not read.
template <auto kRelease, typename Record, typename Get>
int PrintRecord(Output& out, const vdrzax::RecordLayout& layout, Get get) {
  Record* record = nullptr;
  if (get(&record) != 0) return -1;
  const Owned<Record, kRelease> owned(record);
  out.Record(layout, record);
  return 0;
}

template <auto kRelease, typename Get>
int PrintList(Output& out, const vdrzax::RecordLayout& layout,
              std::span<const vdrzax::Field> columns, Get get) {
  RecordList* list = nullptr;
  if (get(&list) != 0) return -1;
  const Owned<RecordList, kRelease> owned(list);
  out.List(layout, columns, list->entries, static_cast<std::size_t>(list->count));
  return 0;
}

// `kName` names the member of the JSON object.
template <auto kGet, const char* kName>
int PrintNumber(Output& out) {
  uint32_t value = 0;
  if (kGet(&value) != 0) return -1;
  out.Number(kName, value);
  return 0;
}

}  // namespace vdrctl
