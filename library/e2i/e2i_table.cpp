#include <vdrzax/e2i.h>

#include <cstdlib>
#include <cstring>

#include "channel/failure.h"
#include "channel/request.h"

namespace {

using namespace vdrzax;

constexpr uint32_t kTableReplySize = 4 + 8192 * sizeof(E2IEntry);

int CopyEntry(const void* reply, E2IEntry** out);
int CopyTable(const uint8_t* reply, E2ITable** out);

}  // namespace

int VDRZAX_AddE2I(uint32_t key, uint32_t value2, const MacValue* mac, uint32_t value4,
                  uint32_t value5) {
  return Request{}
      .Put<256>(key)
      .Put<260>(value2)
      .Mac<264>(mac)
      .Put<272>(value4)
      .Put<276>(value5)
      .Send(CommandCode::AddE2I);
}

int VDRZAX_DelE2I(uint32_t key) { return Request{}.Put<256>(key).Send(CommandCode::DelE2I); }

int VDRZAX_DelAllE2I() { return Request{}.Send(CommandCode::DelAllE2I); }

int VDRZAX_GetE2IEntry(uint32_t key, E2IEntry** out) {
  void* reply = std::malloc(sizeof(E2IEntry));
  if (!reply) return OutOfMemory();
  uint32_t length = sizeof(E2IEntry);
  int result = Request{}.Put<256>(key).Receive(CommandCode::GetE2IEntry, reply, length);
  if (result == 0) result = length == sizeof(E2IEntry) ? CopyEntry(reply, out) : ShortReply();
  std::free(reply);
  return result;
}

int VDRZAX_GetE2ITable(E2ITable** out) {
  auto* reply = static_cast<uint8_t*>(std::malloc(kTableReplySize));
  if (!reply) return OutOfMemory();
  uint32_t length = kTableReplySize;
  int result = Request{}.Receive(CommandCode::GetE2ITable, reply, length);
  if (result == 0) result = length <= kTableReplySize ? CopyTable(reply, out) : ShortReply();
  std::free(reply);
  return result;
}

void VDRZAX_ReleaseE2ITable(E2ITable* table) {
  if (!table) return;
  if (table->count > 0 && table->entries) std::free(table->entries);
  std::free(table);
}

namespace {

int CopyEntry(const void* reply, E2IEntry** out) {
  auto* entry = static_cast<E2IEntry*>(std::calloc(1, sizeof(E2IEntry)));
  *out = entry;
  if (!entry) return OutOfMemory();
  std::memcpy(entry, reply, sizeof(E2IEntry));
  return 0;
}

// The count is the kernel's and is trusted as it stands, whatever the length of the reply.
int CopyTable(const uint8_t* reply, E2ITable** out) {
  auto* table = static_cast<E2ITable*>(std::calloc(1, sizeof(E2ITable)));
  *out = table;
  if (!table) return OutOfMemory();
  int32_t count;
  std::memcpy(&count, reply, sizeof count);
  table->count = count;
  // No allocator can serve a negative count; some end the program when they are asked.
  const auto entries = static_cast<std::size_t>(count);
  table->entries =
      count < 0 ? nullptr : static_cast<E2IEntry*>(std::calloc(entries, sizeof(E2IEntry)));
  if (!table->entries) {
    VDRZAX_ReleaseE2ITable(table);
    *out = nullptr;
    return OutOfMemory();
  }
  std::memcpy(table->entries, reply + sizeof count, entries * sizeof(E2IEntry));
  return 0;
}

}  // namespace
