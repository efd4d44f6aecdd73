#include "subject.h"

namespace library {

namespace {

constexpr MacValue kMac{{2, 0x12, 0x22, 0x32, 0x42, 0x52}};
constexpr uint32_t kAddress = 0xc0000201;

uint32_t Item(int number) { return static_cast<uint32_t>(number); }

// The items of the first entry of the table, or none without entries.
Read ListItems() {
  VMPublicIPTable* table = nullptr;
  if (VDRZAX_GetVMPublicIPTable(&table) != 0) return {.error = errno, .bytes = {}};
  uint32_t count = 0;
  if (table->entryCount != 0) std::memcpy(&count, table->entries + 14, sizeof count);
  wire::Bytes bytes(count * size_t{4});
  if (!bytes.empty()) std::memcpy(bytes.data(), table->entries + 18, bytes.size());
  VDRZAX_ReleaseVMPublicIPTable(table);
  return {.error = 0, .bytes = std::move(bytes)};
}

}  // namespace

std::vector<Subject> ServicesSubjects() {
  return {{
      .name = "ItemOfAPublicAddress",
      .cap = 256,
      .set =
          [](int number, uint32_t version) {
            return ErrorOf(VDRZAX_AddVMPublicIP(kAddress, Item(number), &kMac, version));
          },
      .remove = [](int number) { return ErrorOf(VDRZAX_DelVMPublicIP(kAddress, Item(number))); },
      .get = [](int number) { return FindIn(ListItems(), 4, wire::Wire(4).U32(0, Item(number))); },
      .list = ListItems,
      .record = [](int number, uint32_t) { return wire::Wire(4).U32(0, Item(number)); },
  }};
}

}  // namespace library
