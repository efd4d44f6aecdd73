#include <vdrzax/instance.h>

#include "channel/getters.h"
#include "instance/control_plane_record.h"

namespace {

using namespace vdrzax;

int32_t DecodeCPSyncState(const uint8_t* source, int32_t remaining, uint8_t* destination);

}  // namespace

int VDRZAX_GetVdrInstanceCPSyncState(const char* name, CPSyncStateRecord** out) {
  if (!name) return InvalidArgument();
  return GetRecord<DecodeCPSyncState, std::free>(CommandCode::GetVdrInstanceCPSyncState, out,
                                                 Request{}.Text(kInstanceName, name));
}

int VDRZAX_SetVdrInstanceCPSyncState(const char* name, uint32_t state) {
  if (!name) return InvalidArgument();
  return Request{}
      .Text(kInstanceName, name)
      .Put<256>(state)
      .Send(CommandCode::SetVdrInstanceCPSyncState);
}

int VDRZAX_CPActivate(uint32_t value) { return SendScalar(CommandCode::CPActivate, value); }

int VDRZAX_SetCPIp(const char* name, uint32_t address) {
  if (!name) return InvalidArgument();
  return Request{}.Text(kInstanceName, name).Put<328>(address).Send(CommandCode::SetCPIp);
}

namespace {

// All or nothing: the five entries come as one record, not as a list that may end early.
int32_t DecodeCPSyncState(const uint8_t* source, int32_t remaining, uint8_t* destination) {
  constexpr std::size_t kSize = sizeof(CPSyncStateRecord);
  constexpr std::size_t kEntrySize = sizeof(CPSyncStateEntry);
  if (remaining < static_cast<int32_t>(kSize)) return ShortReply();
  for (std::size_t offset = 0; offset < kSize; offset += kEntrySize) {
    DecodeRecord<kCPSyncStateEntry>(source + offset, kEntrySize, destination + offset);
  }
  return kSize;
}

}  // namespace
