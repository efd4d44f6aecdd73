#include <cstdlib>

#include "subject.h"

namespace library {

namespace {

// In the order of their numbers.
MacValue Mac(int number) {
  return {{2, static_cast<uint8_t>(number >> 8), static_cast<uint8_t>(number), 0x32, 0x42, 0x52}};
}

std::string_view Characters(const MacValue& mac) {
  return {reinterpret_cast<const char*>(mac.bytes), sizeof mac.bytes};
}

Read ListE2i() {
  E2ITable* table = nullptr;
  if (VDRZAX_GetE2ITable(&table) != 0) return {.error = errno, .bytes = {}};
  wire::Bytes bytes(static_cast<size_t>(table->count) * 26);
  if (!bytes.empty()) std::memcpy(bytes.data(), table->entries, bytes.size());
  VDRZAX_ReleaseE2ITable(table);
  return {.error = 0, .bytes = std::move(bytes)};
}

Read ListPhysicalMacs() {
  wire::Bytes buffer(131072);
  const int result = VDRZAX_GetPmac(buffer.data());
  return ReadEntries(result, buffer, 16);
}

Subject E2i() {
  return {
      .name = "E2i",
      .cap = 8192,
      .set =
          [](int number, uint32_t version) {
            const MacValue mac = Mac(number);
            return ErrorOf(VDRZAX_AddE2I(static_cast<uint32_t>(number), 0x02000000 + version, &mac,
                                         0x04000000 + version, 0x05000000 + version));
          },
      .remove = [](int number) { return ErrorOf(VDRZAX_DelE2I(static_cast<uint32_t>(number))); },
      .get =
          [](int number) {
            E2IEntry* entry = nullptr;
            const int result = VDRZAX_GetE2IEntry(static_cast<uint32_t>(number), &entry);
            const auto release = [](E2IEntry* read) { std::free(read); };
            return ReadRecord<E2IEntry>(result, entry, release);
          },
      .list = ListE2i,
      .record =
          [](int number, uint32_t version) {
            return wire::Wire(26)
                .U32(0, static_cast<uint32_t>(number))
                .U32(4, 0x02000000 + version)
                .Text(8, Characters(Mac(number)))
                .U32(14, 0x04000000 + version)
                .U32(18, 0x05000000 + version);
          },
  };
}

Subject PhysicalMacs() {
  return {
      .name = "PhysicalMac",
      .cap = 8192,
      .set =
          [](int number, uint32_t version) {
            const MacValue mac = Mac(number);
            return ErrorOf(VDRZAX_AddPmac(0x01000000 + version, &mac));
          },
      .remove =
          [](int number) {
            const MacValue mac = Mac(number);
            return ErrorOf(VDRZAX_DelPmac(&mac));
          },
      .get =
          [](int number) {
            return FindIn(ListPhysicalMacs(), 16, wire::Wire(6).Text(0, Characters(Mac(number))));
          },
      .list = ListPhysicalMacs,
      .record =
          [](int number, uint32_t version) {
            return wire::Wire(16).Text(0, Characters(Mac(number))).U32(8, 0x01000000 + version);
          },
  };
}

}  // namespace

std::vector<Subject> E2iSubjects() { return {E2i(), PhysicalMacs()}; }

}  // namespace library
