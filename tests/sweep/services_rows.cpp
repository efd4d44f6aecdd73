#include "sweep/sweep.h"

namespace sweep {

namespace {

constexpr MacValue kMac{{2, 0, 0, 0, 0, 1}};
constexpr SoftRssTunables kTunables{1, 2};
constexpr SoftRssIndTable kIndTable{{1, 2, 3}, 128};

// The kernel writes into a buffer of the library's, which is copied to the caller's whatever the
// length.
Row Copied(Row row) {
  row.allocations = 1;
  return row;
}

}  // namespace

// In the table of public addresses a reply is refused without an errno, and a failed command keeps
// its buffer.
Rows ServicesRows() {
  return {
      Allocated<SoftRssStats>(
          "VDRZAX_SoftRSSGetStats",
          [](SoftRssStats** out) { return VDRZAX_SoftRSSGetStats("rss-1", out); },
          [](SoftRssStats* stats) { std::free(stats); }, 852, 2)
          .Holding(4, 4, 16)
          .Filled(),
      Command("VDRZAX_SoftRSSStatsReset", [] { return VDRZAX_SoftRSSStatsReset("rss-1"); }),
      Copied(Raw(getters::Other("VDRZAX_SoftRSSGetTunables"),
                 [](void* out) {
                   return VDRZAX_SoftRSSGetTunables("rss-1", static_cast<SoftRssTunables*>(out));
                 })),
      Command("VDRZAX_SoftRSSSetTunables",
              [] { return VDRZAX_SoftRSSSetTunables("rss-1", &kTunables); }),
      Copied(Raw(getters::Other("VDRZAX_SoftRSSGetIndTable"),
                 [](void* table) {
                   return VDRZAX_SoftRSSGetIndTable("rss-1", static_cast<uint8_t*>(table));
                 })),
      Command("VDRZAX_SoftRSSTableSet", [] { return VDRZAX_SoftRSSTableSet("rss-1", &kIndTable); }),

      Command("VDRZAX_AddVMPublicIP", [] { return VDRZAX_AddVMPublicIP(1, 2, &kMac, 4); }),
      Quiet(
          "VDRZAX_AddVMPublicIP", [] { return VDRZAX_AddVMPublicIP(1, 2, nullptr, 4); },
          contract::kUntouched),
      Command("VDRZAX_DelVMPublicIP", [] { return VDRZAX_DelVMPublicIP(1, 2); }),
      Command("VDRZAX_DelVMPublicIPEntry", [] { return VDRZAX_DelVMPublicIPEntry(1); }),
      Command("VDRZAX_DelAllVMPublicIPEntries", VDRZAX_DelAllVMPublicIPEntries),
      // An entry of two items.
      Allocated<VMPublicIPEntry>(
          "VDRZAX_GetVMPublicIPEntry",
          [](VMPublicIPEntry** out) { return VDRZAX_GetVMPublicIPEntry(1, out); },
          VDRZAX_ReleaseVMPublicIPEntry, 26, 1)
          .Holding(14, 4, 2)
          .Refusing(ShorterThan(26, contract::kUntouched))
          .KeepingOnFailedCommand(getters::Other("VDRZAX_GetVMPublicIPEntry").Capacity()),
      Release("VDRZAX_ReleaseVMPublicIPEntry", VDRZAX_ReleaseVMPublicIPEntry, 1042),
      // A table of one such entry.
      Allocated<VMPublicIPTable>("VDRZAX_GetVMPublicIPTable", VDRZAX_GetVMPublicIPTable,
                                 VDRZAX_ReleaseVMPublicIPTable, 30, 1)
          .Holding(0, 4, 1)
          .Holding(18, 4, 2)
          .Refusing(ShorterThan(30, contract::kUntouched))
          .KeepingOnFailedCommand(getters::Other("VDRZAX_GetVMPublicIPTable").Capacity()),
      Release("VDRZAX_ReleaseVMPublicIPTable", VDRZAX_ReleaseVMPublicIPTable, 8536068),
  };
}

}  // namespace sweep
