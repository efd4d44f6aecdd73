#include <vdrzax/e2i.h>

#include "commands.h"
#include "commands/reading.h"
#include "e2i/e2i_entry_record.h"

namespace vdrctl {

namespace {

using vdrzax::kE2IEntry;

constexpr Object kObjects[] = {
    {"e2i", "Edge-to-infrastructure mapping"},
    {"physical-mac", "Physical MACs of the host"},
    {"locale", "Locale identifier of the host"},
    {"fl-table", "FL tables of the datapath"},
};

constexpr Parameter kKey = U32("KEY", "Number that the entry is known by");

int ListEntries(Output& out) {
  E2ITable* table = nullptr;
  if (VDRZAX_GetE2ITable(&table) != 0) return -1;
  const Owned<E2ITable, VDRZAX_ReleaseE2ITable> owned(table);
  out.List(table->entries, static_cast<std::size_t>(table->count));
  return 0;
}

constexpr Command kCommands[] = {
    {"e2i",
     "list",
     "List the entries of the mapping",
     {"VDRZAX_GetE2ITable"},
     {164},
     {},
     Run<ListEntries>,
     ListReply<kE2IEntry>()},
    {"e2i",
     "show",
     "Show an entry of the mapping",
     {"VDRZAX_GetE2IEntry"},
     {165},
     {kKey},
     Shows<E2IEntry, VDRZAX_GetE2IEntry, std::free, kE2IEntry>,
     RecordReply<kE2IEntry>()},
    {"e2i",
     "add",
     "Add an entry to the mapping, or replace all of it: what is not given becomes 0",
     {"VDRZAX_AddE2I"},
     {161},
     {kKey, Mac("MAC", "Hardware address"),
      U32("--value2 N", "Word with a meaning of the kernel's"),
      U32("--value4 N", "Word with a meaning of the kernel's"),
      U32("--value5 N", "Word with a meaning of the kernel's")},
     Run<[](uint32_t key, const MacValue* mac, uint32_t value2, uint32_t value4, uint32_t value5) {
       return VDRZAX_AddE2I(key, value2, mac, value4, value5);
     }>},
    {"e2i",
     "delete",
     "Delete an entry of the mapping",
     {"VDRZAX_DelE2I"},
     {162},
     {kKey},
     Run<VDRZAX_DelE2I>},
    {"e2i",
     "clear",
     "Delete all entries of the mapping",
     {"VDRZAX_DelAllE2I"},
     {163},
     {},
     Run<VDRZAX_DelAllE2I>},
    {"physical-mac",
     "list",
     "Show the physical MACs, in the kernel's own layout",
     {"VDRZAX_GetPmac"},
     {73},
     {kOutput},
     ShowsBytes<VDRZAX_GetPmac, 131072>,
     BytesReply()},
    {"physical-mac",
     "add",
     "Add a physical MAC",
     {"VDRZAX_AddPmac"},
     {74},
     {Mac("MAC", "Hardware address"), U32("--value N", "Word with a meaning of the kernel's")},
     Run<[](const MacValue* mac, uint32_t value) { return VDRZAX_AddPmac(value, mac); }>},
    {"physical-mac",
     "delete",
     "Delete a physical MAC",
     {"VDRZAX_DelPmac"},
     {75},
     {Mac("MAC", "Hardware address")},
     Run<VDRZAX_DelPmac>},
    {"locale",
     "show",
     "Show the locale identifier, in the kernel's own layout",
     {"VDRZAX_GetLocaleId"},
     {86},
     {kOutput},
     ShowsBytes<VDRZAX_GetLocaleId, 16>,
     BytesReply()},
    {"fl-table",
     "show",
     "Show an FL table, in the kernel's own layout",
     {"VDRZAX_DumpFLTable"},
     {72},
     {U16("SELECTOR", "Number that chooses the table"), kOutput},
     ShowsBytes<VDRZAX_DumpFLTable, 426080>,
     BytesReply()},
};

}  // namespace

constinit const Family kMappingFamily{kObjects, kCommands};

}  // namespace vdrctl
