#pragma once

#include <vdrzax/e2i.h>

#include <vdrzax/cxx/call.hpp>

// Tables of the host: edge-to-infrastructure mapping, physical MACs, locale, FL tables.
namespace vdrzax {
inline namespace v1 {

// An entry of the E2I table.
class E2iEntry : public View<E2IEntry> {
 public:
  using View::View;

  static void release(E2IEntry* record) noexcept { std::free(record); }
  static void release(E2ITable* table) noexcept { VDRZAX_ReleaseE2ITable(table); }
};

// What an entry of the E2I table is added with.
struct E2iSettings {
  std::uint32_t value2 = 0;
  Mac mac = {};
  std::uint32_t value4 = 0;
  std::uint32_t value5 = 0;
};

class E2iCalls {
 public:
  result<void> try_add_e2i(std::uint32_t key, const E2iSettings& settings) const noexcept {
    return detail::Command("VDRZAX_AddE2I", VDRZAX_AddE2I, key, settings.value2,
                           detail::Address(settings.mac), settings.value4, settings.value5);
  }
  result<void> try_delete_e2i(std::uint32_t key) const noexcept {
    return detail::Command("VDRZAX_DelE2I", VDRZAX_DelE2I, key);
  }
  result<void> try_delete_all_e2i() const noexcept {
    return detail::Command("VDRZAX_DelAllE2I", VDRZAX_DelAllE2I);
  }
  result<Owned<E2iEntry>> try_e2i_entry(std::uint32_t key) const noexcept {
    return detail::Record<E2iEntry>("VDRZAX_GetE2IEntry", VDRZAX_GetE2IEntry, key);
  }
  result<Owned<E2iEntry>> try_find_e2i_entry(std::uint32_t key) const noexcept {
    return detail::Found(try_e2i_entry(key));
  }
  result<List<E2iEntry, E2ITable>> try_e2i_table() const noexcept {
    return detail::ReadList<E2iEntry, E2ITable>("VDRZAX_GetE2ITable", VDRZAX_GetE2ITable);
  }
  result<void> try_add_pmac(std::uint32_t value, const std::optional<Mac>& mac) const noexcept {
    return detail::Command("VDRZAX_AddPmac", VDRZAX_AddPmac, value, detail::OptionalAddress(mac));
  }
  result<void> try_delete_pmac(const std::optional<Mac>& mac) const noexcept {
    return detail::Command("VDRZAX_DelPmac", VDRZAX_DelPmac, detail::OptionalAddress(mac));
  }
  result<Buffer> try_pmac() const noexcept {
    return detail::Raw<131072>("VDRZAX_GetPmac", VDRZAX_GetPmac);
  }
  result<Bytes<16>> try_locale_id() const noexcept {
    return detail::Array<16>("VDRZAX_GetLocaleId", VDRZAX_GetLocaleId);
  }
  result<Buffer> try_fl_table(std::uint16_t selector) const noexcept {
    return detail::Raw<426080>("VDRZAX_DumpFLTable", VDRZAX_DumpFLTable, selector);
  }

#ifdef __cpp_exceptions
  void add_e2i(std::uint32_t key, const E2iSettings& settings) const {
    return try_add_e2i(key, settings).value();
  }
  void delete_e2i(std::uint32_t key) const { return try_delete_e2i(key).value(); }
  void delete_all_e2i() const { return try_delete_all_e2i().value(); }
  Owned<E2iEntry> e2i_entry(std::uint32_t key) const { return try_e2i_entry(key).value(); }
  Owned<E2iEntry> find_e2i_entry(std::uint32_t key) const {
    return try_find_e2i_entry(key).value();
  }
  List<E2iEntry, E2ITable> e2i_table() const { return try_e2i_table().value(); }
  void add_pmac(std::uint32_t value, const std::optional<Mac>& mac) const {
    return try_add_pmac(value, mac).value();
  }
  void delete_pmac(const std::optional<Mac>& mac) const { return try_delete_pmac(mac).value(); }
  Buffer pmac() const { return try_pmac().value(); }
  Bytes<16> locale_id() const { return try_locale_id().value(); }
  Buffer fl_table(std::uint16_t selector) const { return try_fl_table(selector).value(); }
#endif
};

}  // namespace v1
}  // namespace vdrzax
