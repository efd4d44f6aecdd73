#include "cxx/calls.h"

namespace cxx {

Rows E2iCalls() {
  return {
      {"VDRZAX_AddE2I",
       [] { return VDRZAX_AddE2I(0x11223340U, 0x21223340U, &kMac, 0x41223340U, 0x51223340U); },
       FACE(
           add_e2i, 0x11223340U,
           {.value2 = 0x21223340U, .mac = kMacBytes, .value4 = 0x41223340U, .value5 = 0x51223340U}),
       0},
      {"VDRZAX_DelE2I", [] { return VDRZAX_DelE2I(0x11223340U); }, FACE(delete_e2i, 0x11223340U),
       0},
      {"VDRZAX_DelAllE2I", [] { return VDRZAX_DelAllE2I(); }, FACE(delete_all_e2i), 0},
      {"VDRZAX_GetE2IEntry",
       [] {
         E2IEntry* out = nullptr;
         return Done(VDRZAX_GetE2IEntry(0x11223340U, &out), out, std::free);
       },
       FACE(e2i_entry, 0x11223340U), sizeof(E2IEntry)},
      {"VDRZAX_GetE2IEntry",
       [] {
         E2IEntry* out = nullptr;
         return Done(VDRZAX_GetE2IEntry(0x11223340U, &out), out, std::free);
       },
       FACE(find_e2i_entry, 0x11223340U), sizeof(E2IEntry)},
      {"VDRZAX_GetE2ITable",
       [] {
         E2ITable* out = nullptr;
         return Done(VDRZAX_GetE2ITable(&out), out, VDRZAX_ReleaseE2ITable);
       },
       FACE(e2i_table), 4},
      {"VDRZAX_AddPmac", [] { return VDRZAX_AddPmac(0x11223340U, &kMac); },
       FACE(add_pmac, 0x11223340U, kMacBytes), 0},
      {"VDRZAX_DelPmac", [] { return VDRZAX_DelPmac(&kMac); }, FACE(delete_pmac, kMacBytes), 0},
      {"VDRZAX_GetPmac", [] { return VDRZAX_GetPmac(Scratch()); }, FACE(pmac), 0},
      {"VDRZAX_GetLocaleId", [] { return VDRZAX_GetLocaleId(Scratch()); }, FACE(locale_id), 0},
      {"VDRZAX_DumpFLTable", [] { return VDRZAX_DumpFLTable(0x1122, Scratch()); },
       FACE(fl_table, 0x1122), 0},
      {"VDRZAX_AddPmac", [] { return VDRZAX_AddPmac(1, nullptr); }, FACE(add_pmac, 1, {}), 0},
      {"VDRZAX_DelPmac", [] { return VDRZAX_DelPmac(nullptr); }, FACE(delete_pmac, {}), 0},
  };
}

}  // namespace cxx
