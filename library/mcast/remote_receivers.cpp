#include <vdrzax/mcast.h>

#include <cstdlib>
#include <cstring>

#include "channel/failure.h"
#include "channel/request.h"

namespace {

using namespace vdrzax;

constexpr uint32_t kCountSize = 4;
constexpr uint32_t kEntrySize = sizeof(VtepEntry);
constexpr uint32_t kReplySize = kCountSize + 2048 * kEntrySize;

int CopyTable(const uint8_t* reply, int32_t length, VTEPTable** out);
int CopyEntries(const uint8_t* reply, int32_t length, VTEPTable* table);

}  // namespace

int VDRZAX_GetMRoutingRemoteRcvrs(const char* instanceName, uint32_t key, VTEPTable** out) {
  auto* reply = static_cast<uint8_t*>(std::malloc(kReplySize));
  if (!reply) return OutOfMemory();
  uint32_t length = kReplySize;
  int result = Request{}
                   .Text(kInstanceName, instanceName)
                   .Put<256>(key)
                   .Receive(CommandCode::GetMRoutingRemoteRcvrs, reply, length);
  if (result == 0) result = CopyTable(reply, static_cast<int32_t>(length), out);
  std::free(reply);
  return result;
}

void VDRZAX_ReleaseVTEPTable(VTEPTable* table) {
  if (!table) return;
  if (table->count != 0) std::free(table->entries);
  std::free(table);
}

int VDRZAX_AddMRoutingRemoteRcvrs(const char* instanceName, uint32_t a, uint32_t b,
                                  const MacValue* c, uint32_t d, uint32_t e) {
  return Request{}
      .Text(kInstanceName, instanceName)
      .Put<256>(a)
      .Put<272>(d)
      .Put<276>(b)
      .Mac<280>(c)
      .Put<288>(e)
      .Send(CommandCode::AddMRoutingRemoteRcvrs);
}

// The kernel looks at these three fields alone.
int VDRZAX_DelMRoutingRemoteRcvrs(const char* instanceName, uint32_t a, uint32_t b) {
  return Request{Uncleared{}}
      .Text(kInstanceName, instanceName)
      .Put<256>(a)
      .Put<276>(b)
      .Send(CommandCode::DelMRoutingRemoteRcvrs);
}

namespace {

int CopyTable(const uint8_t* reply, int32_t length, VTEPTable** out) {
  auto* table = static_cast<VTEPTable*>(std::calloc(1, sizeof(VTEPTable)));
  *out = table;
  if (!table) return OutOfMemory();
  if (CopyEntries(reply, length, table) != 0) {
    VDRZAX_ReleaseVTEPTable(table);
    *out = nullptr;
    return -1;
  }
  return 0;
}

// The needed size is a signed 32-bit sum, as the kernel reckons it. It wraps for counts that no
// reply can hold, and what is copied never exceeds it; a sum below that of no entries has wrapped.
int CopyEntries(const uint8_t* reply, int32_t length, VTEPTable* table) {
  uint32_t count;
  std::memcpy(&count, reply, kCountSize);
  const uint32_t size = count * kEntrySize;
  const auto needed = static_cast<int32_t>(kCountSize + size);
  if (needed < static_cast<int32_t>(kCountSize) || length < needed) return ShortReply();
  table->count = static_cast<int32_t>(count);
  // No allocator can serve a negative count; some end the program when they are asked.
  if (table->count >= 0) {
    table->entries = static_cast<VtepEntry*>(std::calloc(count, kEntrySize));
  }
  if (!table->entries) return OutOfMemory();
  std::memcpy(table->entries, reply + kCountSize, size);
  return 0;
}

}  // namespace
