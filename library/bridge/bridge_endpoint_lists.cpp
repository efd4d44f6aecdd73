#include "bridge/bridge_endpoint_record.h"
#include "channel/getters.h"

namespace {

using namespace vdrzax;

constexpr ListKind<BridgeEndpointRecord, kBridgeEndpointRecord> kBridgeEndpoints{
    .cap = 28672, .release = VDRZAX_ReleaseBridgeEndpoints};

}  // namespace

int VDRZAX_GetBeStats(const char* lifName, void* buffer) {
  return Request{}.Text(kLifName, lifName).SendInto(CommandCode::GetBeStats, buffer, 146);
}

int VDRZAX_GetBeStatus(const char* lifName, void* buffer) {
  return Request{}.Text(kLifName, lifName).SendInto(CommandCode::GetBeStatus, buffer, 229);
}

int VDRZAX_GetBeAll(void* buffer, uint32_t capacity, uint32_t* count) {
  uint32_t length = capacity;
  if (Request{}.Receive(CommandCode::GetBeAll, buffer, length) != 0) return -1;
  *count = length / uint32_t{sizeof(BridgeEndpointRecord)};
  return 0;
}

int VDRZAX_GetBridgeEndpoints(const char* name, RecordList** out) {
  return GetList(out, [&](RecordList* list) { return VDRZAXGetBridgeEndpoints(name, list); });
}

int VDRZAXGetBridgeEndpoints(const char* name, RecordList* list) {
  return FetchList<kBridgeEndpoints>(CommandCode::GetBridgeEndpoints, list, [&](Request& request) {
    request.OptionalText(kInstanceName, name);
  });
}

void VDRZAX_ReleaseBridgeEndpoints(RecordList* list) { ReleaseList(list); }
