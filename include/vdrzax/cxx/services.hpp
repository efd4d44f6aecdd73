#pragma once

#include <vdrzax/services.h>

#include <vdrzax/cxx/call.hpp>

// Services of the host: full synchronisation, software RSS, the VM public IP table.
namespace vdrzax {
inline namespace v1 {

// The counters of a software RSS object, one a queue in each range.
class SoftRssCounters : public View<SoftRssStats> {
 public:
  using View::View;

  std::uint32_t queue_count() const noexcept { return raw().queueCount; }
  Range<std::uint32_t> words8() const noexcept { return {at(offsetof(Record, words8)), queues()}; }
  Range<std::uint64_t> qwords76() const noexcept {
    return {at(offsetof(Record, qwords76)), queues()};
  }
  Range<std::uint64_t> qwords204() const noexcept {
    return {at(offsetof(Record, qwords204)), queues()};
  }
  Range<std::uint64_t> qwords332() const noexcept {
    return {at(offsetof(Record, qwords332)), queues()};
  }

  static void release(SoftRssStats* record) noexcept { std::free(record); }

 private:
  // At most the sixteen that there is room for.
  std::size_t queues() const noexcept { return std::min<std::size_t>(queue_count(), 16); }
};

// The tunables of a software RSS object. `word8` is read and never sent.
struct SoftRssTunableValues {
  std::uint64_t qword0 = 0;
  std::uint32_t word8 = 0;
};

// An entry of the VM public IP table, of 18 + 4 x item_count() bytes.
class VmPublicIpEntry {
 public:
  using Record = VMPublicIPEntry;

  explicit VmPublicIpEntry(const void* entry) noexcept
      : entry_(static_cast<const std::uint8_t*>(entry)) {}

  Bytes<14> entry_header() const noexcept {
    Bytes<14> header;
    std::memcpy(header.data(), entry_ + offsetof(Record, entryHeader), header.size());
    return header;
  }
  std::uint32_t item_count() const noexcept {
    std::uint32_t count;
    std::memcpy(&count, entry_ + offsetof(Record, itemCount), sizeof count);
    return count;
  }
  Range<std::uint32_t> items() const noexcept {
    return {entry_ + offsetof(Record, items), item_count()};
  }
  std::span<const std::uint8_t> bytes() const noexcept {
    return {entry_, offsetof(Record, items) + std::size_t{item_count()} * sizeof(std::uint32_t)};
  }

  static void release(VMPublicIPEntry* record) noexcept { VDRZAX_ReleaseVMPublicIPEntry(record); }

 private:
  const std::uint8_t* entry_;
};

// The whole table. It moves, gives its memory back when it ends, and is empty once moved from.
class VmPublicIpTable {
 public:
  class iterator {
   public:
    using value_type = VmPublicIpEntry;
    using difference_type = std::ptrdiff_t;
    using iterator_category = std::input_iterator_tag;
    using iterator_concept = std::forward_iterator_tag;

    iterator() noexcept = default;
    iterator(const std::uint8_t* place, std::size_t left) noexcept : place_(place), left_(left) {}

    VmPublicIpEntry operator*() const noexcept { return VmPublicIpEntry(place_); }
    detail::Arrow<VmPublicIpEntry> operator->() const noexcept { return {**this}; }
    iterator& operator++() noexcept {
      place_ += (**this).bytes().size();
      --left_;
      return *this;
    }
    iterator operator++(int) noexcept {
      iterator before = *this;
      ++*this;
      return before;
    }
    friend bool operator==(const iterator& one, const iterator& other) noexcept {
      return one.left_ == other.left_;
    }

   private:
    const std::uint8_t* place_ = nullptr;
    std::size_t left_ = 0;
  };
  using const_iterator = iterator;
  using value_type = VmPublicIpEntry;

  VmPublicIpTable() noexcept = default;
  // Takes over a table that the C function stored.
  explicit VmPublicIpTable(VMPublicIPTable* table) noexcept : table_(table) {}

  std::size_t size() const noexcept { return table_ ? table_->entryCount : 0; }
  bool empty() const noexcept { return size() == 0; }
  iterator begin() const noexcept { return {table_ ? table_->entries : nullptr, size()}; }
  iterator end() const noexcept { return {}; }

  static void release(VMPublicIPTable* table) noexcept { VDRZAX_ReleaseVMPublicIPTable(table); }

 private:
  std::unique_ptr<VMPublicIPTable, detail::Releaser<VmPublicIpTable>> table_;
};

namespace detail {

// An indirection table as the library takes it: at most 128 queues.
class IndirectionTable {
 public:
  explicit IndirectionTable(std::span<const std::uint8_t> queues) noexcept : size_(queues.size()) {
    if (refusal() != Refusal::None) return;
    std::copy(queues.begin(), queues.end(), table_.entries);
    table_.entryCount = static_cast<std::int32_t>(size_);
  }
  Refusal refusal() const noexcept {
    return size_ > sizeof table_.entries ? Refusal::TooLong : Refusal::None;
  }
  const SoftRssIndTable* passed() const noexcept { return &table_; }

 private:
  std::size_t size_;
  SoftRssIndTable table_{};
};

}  // namespace detail

class ServicesCalls {
 public:
  // Gives the status.
  result<std::uint32_t> try_perform_full_sync_save(std::uint8_t flag) const noexcept {
    return detail::Number("VDRZAX_PerformFullSyncSave", VDRZAX_PerformFullSyncSave, flag);
  }
  result<std::uint32_t> try_full_sync_save_status() const noexcept {
    return detail::Number("VDRZAX_GetFullSyncSaveStatus", VDRZAX_GetFullSyncSaveStatus);
  }
  result<Owned<SoftRssCounters>> try_soft_rss_stats(Text name) const noexcept {
    return detail::Record<SoftRssCounters>("VDRZAX_SoftRSSGetStats", VDRZAX_SoftRSSGetStats,
                                           detail::Name(name));
  }
  result<Owned<SoftRssCounters>> try_find_soft_rss_stats(Text name) const noexcept {
    return detail::Found(try_soft_rss_stats(name));
  }
  result<void> try_reset_soft_rss_stats(Text name) const noexcept {
    return detail::Command("VDRZAX_SoftRSSStatsReset", VDRZAX_SoftRSSStatsReset,
                           detail::Name(name));
  }
  result<SoftRssTunableValues> try_soft_rss_tunables(Text name) const noexcept {
    SoftRssTunables tunables{};
    const Failure failure = detail::Call("VDRZAX_SoftRSSGetTunables", VDRZAX_SoftRSSGetTunables,
                                         detail::Name(name), &tunables);
    if (failure.code != 0) return failure;
    return SoftRssTunableValues{tunables.qword0, tunables.word8};
  }
  result<void> try_set_soft_rss_tunables(Text name, std::uint64_t qword0) const noexcept {
    const SoftRssTunables tunables{qword0, 0};
    return detail::Command("VDRZAX_SoftRSSSetTunables", VDRZAX_SoftRSSSetTunables,
                           detail::Name(name), &tunables);
  }
  result<Bytes<128>> try_soft_rss_ind_table(Text name) const noexcept {
    return detail::Array<128>("VDRZAX_SoftRSSGetIndTable", VDRZAX_SoftRSSGetIndTable,
                              detail::Name(name));
  }
  // Sends at most 128 entries; more are refused.
  result<void> try_set_soft_rss_ind_table(Text name,
                                          std::span<const std::uint8_t> queues) const noexcept {
    return detail::Command("VDRZAX_SoftRSSTableSet", VDRZAX_SoftRSSTableSet, detail::Name(name),
                           detail::IndirectionTable(queues));
  }
  result<void> try_add_vm_public_ip(std::uint32_t a, std::uint32_t b, const Mac& c,
                                    std::uint32_t d) const noexcept {
    return detail::Command("VDRZAX_AddVMPublicIP", VDRZAX_AddVMPublicIP, a, b, detail::Address(c),
                           d);
  }
  result<void> try_delete_vm_public_ip(std::uint32_t a, std::uint32_t b) const noexcept {
    return detail::Command("VDRZAX_DelVMPublicIP", VDRZAX_DelVMPublicIP, a, b);
  }
  result<void> try_delete_vm_public_ip_entry(std::uint32_t key) const noexcept {
    return detail::Command("VDRZAX_DelVMPublicIPEntry", VDRZAX_DelVMPublicIPEntry, key);
  }
  result<void> try_delete_all_vm_public_ip_entries() const noexcept {
    return detail::Command("VDRZAX_DelAllVMPublicIPEntries", VDRZAX_DelAllVMPublicIPEntries);
  }
  result<Owned<VmPublicIpEntry>> try_vm_public_ip_entry(std::uint32_t key) const noexcept {
    return detail::Record<VmPublicIpEntry>("VDRZAX_GetVMPublicIPEntry", VDRZAX_GetVMPublicIPEntry,
                                           key);
  }
  result<Owned<VmPublicIpEntry>> try_find_vm_public_ip_entry(std::uint32_t key) const noexcept {
    return detail::Found(try_vm_public_ip_entry(key));
  }
  result<VmPublicIpTable> try_vm_public_ip_table() const noexcept {
    return detail::Adopt<VmPublicIpTable, VMPublicIPTable>("VDRZAX_GetVMPublicIPTable",
                                                           VDRZAX_GetVMPublicIPTable);
  }

#ifdef __cpp_exceptions
  std::uint32_t perform_full_sync_save(std::uint8_t flag) const {
    return try_perform_full_sync_save(flag).value();
  }
  std::uint32_t full_sync_save_status() const { return try_full_sync_save_status().value(); }
  Owned<SoftRssCounters> soft_rss_stats(Text name) const {
    return try_soft_rss_stats(name).value();
  }
  Owned<SoftRssCounters> find_soft_rss_stats(Text name) const {
    return try_find_soft_rss_stats(name).value();
  }
  void reset_soft_rss_stats(Text name) const { return try_reset_soft_rss_stats(name).value(); }
  SoftRssTunableValues soft_rss_tunables(Text name) const {
    return try_soft_rss_tunables(name).value();
  }
  void set_soft_rss_tunables(Text name, std::uint64_t qword0) const {
    return try_set_soft_rss_tunables(name, qword0).value();
  }
  Bytes<128> soft_rss_ind_table(Text name) const { return try_soft_rss_ind_table(name).value(); }
  void set_soft_rss_ind_table(Text name, std::span<const std::uint8_t> queues) const {
    return try_set_soft_rss_ind_table(name, queues).value();
  }
  void add_vm_public_ip(std::uint32_t a, std::uint32_t b, const Mac& c, std::uint32_t d) const {
    return try_add_vm_public_ip(a, b, c, d).value();
  }
  void delete_vm_public_ip(std::uint32_t a, std::uint32_t b) const {
    return try_delete_vm_public_ip(a, b).value();
  }
  void delete_vm_public_ip_entry(std::uint32_t key) const {
    return try_delete_vm_public_ip_entry(key).value();
  }
  void delete_all_vm_public_ip_entries() const {
    return try_delete_all_vm_public_ip_entries().value();
  }
  Owned<VmPublicIpEntry> vm_public_ip_entry(std::uint32_t key) const {
    return try_vm_public_ip_entry(key).value();
  }
  Owned<VmPublicIpEntry> find_vm_public_ip_entry(std::uint32_t key) const {
    return try_find_vm_public_ip_entry(key).value();
  }
  VmPublicIpTable vm_public_ip_table() const { return try_vm_public_ip_table().value(); }
#endif
};

}  // namespace v1
}  // namespace vdrzax
