#include "sweep/sweep.h"

namespace sweep {

namespace {

constexpr MacValue kMac{{2, 0, 0, 0, 0, 1}};

// The count is believed, and only a reply that claims more than its buffer is refused.
Row E2iTable(uint32_t count) {
  static const getters::OtherGetter& table = getters::Other("VDRZAX_GetE2ITable");
  return Allocated<E2ITable>(table.name, VDRZAX_GetE2ITable, VDRZAX_ReleaseE2ITable,
                             table.prefix + count * table.size, 3)
      .Refusing([](uint32_t length) { return length > table.Capacity() ? EBADMSG : 0; })
      .Holding(0, 4, count)
      .Filled();
}

}  // namespace

Rows E2iRows() {
  return {
      Command("VDRZAX_AddE2I", [] { return VDRZAX_AddE2I(1, 2, &kMac, 4, 5); }),
      Command("VDRZAX_DelE2I", [] { return VDRZAX_DelE2I(1); }),
      Command("VDRZAX_DelAllE2I", VDRZAX_DelAllE2I),
      Allocated<E2IEntry>(
          "VDRZAX_GetE2IEntry", [](E2IEntry** out) { return VDRZAX_GetE2IEntry(1, out); },
          [](E2IEntry* entry) { std::free(entry); }, 26, 2)
          .Refusing([](uint32_t length) { return length == 26 ? 0 : EBADMSG; }),
      E2iTable(8192),
      // The entries of an empty table are not given back.
      E2iTable(0).KeepingOnRelease(0),
      Release("VDRZAX_ReleaseE2ITable", VDRZAX_ReleaseE2ITable, 12),
      Command("VDRZAX_AddPmac", [] { return VDRZAX_AddPmac(1, &kMac); }),
      Command("VDRZAX_DelPmac", [] { return VDRZAX_DelPmac(&kMac); }),
  };
}

}  // namespace sweep
