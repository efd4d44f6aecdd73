#include <vdrzax/services.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "channel/failure.h"
#include "channel/request.h"

namespace {

using namespace vdrzax;

// An entry of no items.
constexpr int64_t kSmallestEntry = offsetof(VMPublicIPEntry, items);

int64_t EntrySize(const void* entry);
bool IsWholeTable(const uint8_t* table, int32_t length);

// A malformed reply leaves errno as it was: in this table errno tells of the device and of memory.
int Refuse(void* reply) {
  std::free(reply);
  return -1;
}

}  // namespace

int VDRZAX_AddVMPublicIP(uint32_t a, uint32_t b, const MacValue* c, uint32_t d) {
  if (!c) return -1;
  return Request{}.Put<256>(a).Mac<260>(c).Put<268>(d).Put<272>(b).Send(CommandCode::AddVMPublicIP);
}

int VDRZAX_DelVMPublicIP(uint32_t a, uint32_t b) {
  return Request{}.Put<256>(a).Put<272>(b).Send(CommandCode::DelVMPublicIP);
}

int VDRZAX_DelVMPublicIPEntry(uint32_t key) {
  return Request{}.Put<256>(key).Send(CommandCode::DelVMPublicIPEntry);
}

int VDRZAX_DelAllVMPublicIPEntries() { return SendNothing(CommandCode::DelAllVMPublicIPEntries); }

int VDRZAX_GetVMPublicIPEntry(uint32_t key, VMPublicIPEntry** out) {
  auto* entry = static_cast<VMPublicIPEntry*>(std::calloc(1, sizeof(VMPublicIPEntry)));
  if (!entry) return OutOfMemory();
  uint32_t length = sizeof *entry;
  // The entry stays with the kernel when the command fails: it may still be writing to it.
  // NOLINTNEXTLINE(clang-analyzer-unix.Malloc)
  if (Request{}.Put<256>(key).Receive(CommandCode::GetVMPublicIPEntry, entry, length) != 0) {
    return -1;
  }
  if (static_cast<int32_t>(length) < EntrySize(entry)) return Refuse(entry);
  *out = entry;
  return 0;
}

void VDRZAX_ReleaseVMPublicIPEntry(VMPublicIPEntry* e) { std::free(e); }

int VDRZAX_GetVMPublicIPTable(VMPublicIPTable** out) {
  auto* table = static_cast<VMPublicIPTable*>(std::calloc(1, sizeof(VMPublicIPTable)));
  if (!table) return OutOfMemory();
  uint32_t length = sizeof *table;
  // As with a single entry.
  // NOLINTNEXTLINE(clang-analyzer-unix.Malloc)
  if (Exchange(CommandCode::GetVMPublicIPTable, nullptr, 0, table, length) != 0) return -1;
  if (!IsWholeTable(reinterpret_cast<const uint8_t*>(table), static_cast<int32_t>(length))) {
    return Refuse(table);
  }
  *out = table;
  return 0;
}

void VDRZAX_ReleaseVMPublicIPTable(VMPublicIPTable* t) { std::free(t); }

namespace {

int64_t EntrySize(const void* entry) {
  uint32_t items;
  std::memcpy(&items, static_cast<const uint8_t*>(entry) + offsetof(VMPublicIPEntry, itemCount),
              sizeof items);
  return kSmallestEntry + int64_t{4} * items;
}

// The length is signed, and a negative one still serves a table of no entries.
bool IsWholeTable(const uint8_t* table, int32_t length) {
  uint32_t entryCount;
  if (length >= 0 && length < static_cast<int32_t>(sizeof entryCount)) return false;
  std::memcpy(&entryCount, table, sizeof entryCount);
  int64_t end = sizeof entryCount;
  for (uint32_t index = 0; index < entryCount; ++index) {
    // No entry ends before its first item, so a cut one is refused without reading behind the
    // reply.
    if (length - end < kSmallestEntry) return false;
    end += EntrySize(table + end);
    if (end > length) return false;
  }
  return true;
}

}  // namespace
