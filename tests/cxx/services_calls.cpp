#include "cxx/calls.h"

namespace cxx {

namespace {

constexpr std::array<std::uint8_t, 3> kQueues{7, 8, 9};
constexpr SoftRssIndTable kTable{{7, 8, 9}, 3};
constexpr SoftRssTunables kTunables{0x1122334455667788, 0};

}  // namespace

Rows ServicesCalls() {
  return {
      {"VDRZAX_PerformFullSyncSave",
       [] {
         std::uint32_t number = 0;
         return VDRZAX_PerformFullSyncSave(0x11, &number);
       },
       FACE(perform_full_sync_save, 0x11), 4},
      {"VDRZAX_GetFullSyncSaveStatus",
       [] {
         std::uint32_t number = 0;
         return VDRZAX_GetFullSyncSaveStatus(&number);
       },
       FACE(full_sync_save_status), 4},
      {"VDRZAX_SoftRSSGetStats",
       [] {
         SoftRssStats* out = nullptr;
         return Done(VDRZAX_SoftRSSGetStats("text-1", &out), out, std::free);
       },
       FACE(soft_rss_stats, "text-1"), sizeof(SoftRssStats)},
      {"VDRZAX_SoftRSSGetStats",
       [] {
         SoftRssStats* out = nullptr;
         return Done(VDRZAX_SoftRSSGetStats("text-1", &out), out, std::free);
       },
       FACE(find_soft_rss_stats, "text-1"), sizeof(SoftRssStats)},
      {"VDRZAX_SoftRSSStatsReset", [] { return VDRZAX_SoftRSSStatsReset("text-1"); },
       FACE(reset_soft_rss_stats, "text-1"), 0},
      {"VDRZAX_SoftRSSGetTunables",
       [] {
         return VDRZAX_SoftRSSGetTunables("text-1", reinterpret_cast<SoftRssTunables*>(Scratch()));
       },
       FACE(soft_rss_tunables, "text-1"), 0},
      {"VDRZAX_SoftRSSSetTunables", [] { return VDRZAX_SoftRSSSetTunables("text-1", &kTunables); },
       FACE(set_soft_rss_tunables, "text-1", 0x1122334455667788), 0},
      {"VDRZAX_SoftRSSGetIndTable", [] { return VDRZAX_SoftRSSGetIndTable("text-1", Scratch()); },
       FACE(soft_rss_ind_table, "text-1"), 0},
      {"VDRZAX_SoftRSSTableSet", [] { return VDRZAX_SoftRSSTableSet("text-1", &kTable); },
       FACE(set_soft_rss_ind_table, "text-1", kQueues), 0},
      {"VDRZAX_AddVMPublicIP",
       [] { return VDRZAX_AddVMPublicIP(0x11223340U, 0x21223340U, &kMac, 0x41223340U); },
       FACE(add_vm_public_ip, 0x11223340U, 0x21223340U, kMacBytes, 0x41223340U), 0},
      {"VDRZAX_DelVMPublicIP", [] { return VDRZAX_DelVMPublicIP(0x11223340U, 0x21223340U); },
       FACE(delete_vm_public_ip, 0x11223340U, 0x21223340U), 0},
      {"VDRZAX_DelVMPublicIPEntry", [] { return VDRZAX_DelVMPublicIPEntry(0x11223340U); },
       FACE(delete_vm_public_ip_entry, 0x11223340U), 0},
      {"VDRZAX_DelAllVMPublicIPEntries", [] { return VDRZAX_DelAllVMPublicIPEntries(); },
       FACE(delete_all_vm_public_ip_entries), 0},
      {"VDRZAX_GetVMPublicIPEntry",
       [] {
         VMPublicIPEntry* out = nullptr;
         return Done(VDRZAX_GetVMPublicIPEntry(0x11223340U, &out), out,
                     VDRZAX_ReleaseVMPublicIPEntry);
       },
       FACE(vm_public_ip_entry, 0x11223340U), sizeof(VMPublicIPEntry)},
      {"VDRZAX_GetVMPublicIPEntry",
       [] {
         VMPublicIPEntry* out = nullptr;
         return Done(VDRZAX_GetVMPublicIPEntry(0x11223340U, &out), out,
                     VDRZAX_ReleaseVMPublicIPEntry);
       },
       FACE(find_vm_public_ip_entry, 0x11223340U), sizeof(VMPublicIPEntry)},
      {"VDRZAX_GetVMPublicIPTable",
       [] {
         VMPublicIPTable* out = nullptr;
         return Done(VDRZAX_GetVMPublicIPTable(&out), out, VDRZAX_ReleaseVMPublicIPTable);
       },
       FACE(vm_public_ip_table), 4},

  };
}

}  // namespace cxx
