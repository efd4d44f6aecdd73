#include <vdrzax/services.h>

#include <cstring>
#include <vector>

#include "commands.h"
#include "commands/reading.h"
#include "services/soft_rss_stats_record.h"
#include "services/soft_rss_tunables_record.h"
#include "services/vm_public_ip_record.h"

namespace vdrctl {

namespace {

using vdrzax::kSoftRssStats;
using vdrzax::kSoftRssTunables;
using vdrzax::kVMPublicIPEntry;

constexpr Object kObjects[] = {
    {"full-sync", "Saving the state of the datapath for a full synchronisation"},
    {"soft-rss", "Software receive-side scaling (RSS)"},
    {"soft-rss stats", "Statistics of a software RSS object"},
    {"soft-rss tunables", "Tunables of a software RSS object"},
    {"soft-rss table", "Indirection table of a software RSS object"},
    {"public-ip", "Public addresses of virtual machines"},
};

constexpr Parameter kRss = Name("NAME", "Name of the software RSS object");
constexpr Parameter kPublic = Ipv4Address("ADDRESS", "Address that the entry is known by");
constexpr Parameter kItem = Ipv4Address("ITEM", "Address that the entry holds");

constexpr std::size_t kMostQueues = 128;

bool IsQueueList(std::string_view text) {
  const auto queues = ParseNumbers(text, ',', UINT8_MAX);
  return !queues.empty() && queues.size() <= kMostQueues;
}

constexpr Parameter kQueues =
    FormedText("QUEUES", 1024, "Up to 128 indexes of queues: 0,1,2,3",
               "a list of up to 128 numbers from 0 to 255, as 0,1,2,3", IsQueueList);

int ShowTunables(Output& out, const char* name) {
  SoftRssTunables tunables{};
  if (VDRZAX_SoftRSSGetTunables(name, &tunables) != 0) return -1;
  out.Record(kSoftRssTunables, &tunables);
  return 0;
}

int SetTunables(const char* name, uint64_t value) {
  const SoftRssTunables tunables{value, 0};
  return VDRZAX_SoftRSSSetTunables(name, &tunables);
}

int SetTable(const char* name, const char* text) {
  SoftRssIndTable table{};
  for (const uint64_t queue : ParseNumbers(text, ',', UINT8_MAX)) {
    table.entries[table.entryCount++] = static_cast<uint8_t>(queue);
  }
  return VDRZAX_SoftRSSTableSet(name, &table);
}

// Each entry ends behind the last of its items.
int ListPublicAddresses(Output& out) {
  VMPublicIPTable* table = nullptr;
  if (VDRZAX_GetVMPublicIPTable(&table) != 0) return -1;
  const Owned<VMPublicIPTable, VDRZAX_ReleaseVMPublicIPTable> owned(table);
  constexpr std::size_t kHead = offsetof(VMPublicIPEntry, items);
  std::vector<const uint8_t*> addresses;
  const uint8_t* entry = table->entries;
  for (uint32_t index = 0; index < table->entryCount; ++index) {
    uint32_t items = 0;
    std::memcpy(&items, entry + offsetof(VMPublicIPEntry, itemCount), sizeof items);
    addresses.push_back(entry);
    entry += kHead + items * sizeof(uint32_t);
  }
  out.List(Records(std::move(addresses)));
  return 0;
}

constexpr Command kCommands[] = {
    {"full-sync",
     "save",
     "Save the complete state of the datapath, and show the status",
     {"VDRZAX_PerformFullSyncSave"},
     {123},
     {Optional(U8("FLAG", "Byte with a meaning of the kernel's, 0 when not given"))},
     ShowsNumber<VDRZAX_PerformFullSyncSave>,
     NumberReply("status")},
    {"full-sync",
     "status",
     "Show how the last save stands",
     {"VDRZAX_GetFullSyncSaveStatus"},
     {124},
     {},
     ShowsNumber<VDRZAX_GetFullSyncSaveStatus>,
     NumberReply("status")},
    {"soft-rss stats",
     "show",
     "Show the statistics of a software RSS object",
     {"VDRZAX_SoftRSSGetStats"},
     {153},
     {kRss},
     Shows<SoftRssStats, VDRZAX_SoftRSSGetStats, std::free, kSoftRssStats>,
     RecordReply<kSoftRssStats>()},
    {"soft-rss stats",
     "reset",
     "Reset the statistics of a software RSS object",
     {"VDRZAX_SoftRSSStatsReset"},
     {154},
     {kRss},
     Run<VDRZAX_SoftRSSStatsReset>},
    {"soft-rss tunables",
     "show",
     "Show the tunables of a software RSS object",
     {"VDRZAX_SoftRSSGetTunables"},
     {155},
     {kRss},
     Run<ShowTunables>,
     RecordReply<kSoftRssTunables>()},
    {"soft-rss tunables",
     "set",
     "Set the tunables of a software RSS object",
     {"VDRZAX_SoftRSSSetTunables"},
     {156},
     {kRss, U64("VALUE", "Number of 64 bits with a meaning of the kernel's")},
     Run<SetTunables>},
    {"soft-rss table",
     "show",
     "Show the indirection table of a software RSS object: the index of a queue in each byte",
     {"VDRZAX_SoftRSSGetIndTable"},
     {157},
     {kRss, kOutput},
     Run<[](Output& out, const char* name, const char* file) {
       ReplyFile output(file);
       std::array<uint8_t, kMostQueues> table{};
       if (VDRZAX_SoftRSSGetIndTable(name, table.data()) != 0) return -1;
       output.Put(out, table.size(), table);
       return 0;
     }>,
     BytesReply()},
    {"soft-rss table",
     "set",
     "Set the indirection table of a software RSS object",
     {"VDRZAX_SoftRSSTableSet"},
     {158},
     {kRss, kQueues},
     Run<SetTable>},
    {"public-ip",
     "list",
     "List the public addresses of virtual machines",
     {"VDRZAX_GetVMPublicIPTable"},
     {171},
     {},
     Run<ListPublicAddresses>,
     ListReply<kVMPublicIPEntry>()},
    {"public-ip",
     "show",
     "Show the entry of a public address",
     {"VDRZAX_GetVMPublicIPEntry"},
     {170},
     {kPublic},
     Shows<VMPublicIPEntry, VDRZAX_GetVMPublicIPEntry, VDRZAX_ReleaseVMPublicIPEntry,
           kVMPublicIPEntry>,
     RecordReply<kVMPublicIPEntry>()},
    {"public-ip",
     "add",
     "Add an item to the entry of a public address",
     {"VDRZAX_AddVMPublicIP"},
     {166},
     {kPublic, kItem, Mac("MAC", "Hardware address"),
      U32("--d N", "Word with a meaning of the kernel's")},
     Run<VDRZAX_AddVMPublicIP>},
    {"public-ip",
     "remove",
     "Remove an item from the entry of a public address",
     {"VDRZAX_DelVMPublicIP"},
     {167},
     {kPublic, kItem},
     Run<VDRZAX_DelVMPublicIP>},
    {"public-ip",
     "delete",
     "Delete the entry of a public address",
     {"VDRZAX_DelVMPublicIPEntry"},
     {168},
     {kPublic},
     Run<VDRZAX_DelVMPublicIPEntry>},
    {"public-ip",
     "clear",
     "Delete the entries of all public addresses",
     {"VDRZAX_DelAllVMPublicIPEntries"},
     {169},
     {},
     Run<VDRZAX_DelAllVMPublicIPEntries>},
};

}  // namespace

constinit const Family kServicesFamily{kObjects, kCommands};

}  // namespace vdrctl
