#include "bridge/bridge_names.h"
#include "bridge/bridge_port_record.h"
#include "channel/getters.h"

namespace {

using namespace vdrzax;

constexpr ListKind<BridgePortRecord, kBridgePortRecord> kBridgePorts{
    .cap = 32768, .release = VDRZAX_ReleaseBridgePorts, .onFailedCommand = HeaderOnFailure::Drop};

}  // namespace

int VDRZAX_GetBridgePorts(const char* name1, const char* name2, uint16_t network, uint32_t value,
                          RecordList** out) {
  return GetList(out, [&](RecordList* list) {
    return VDRZAXGetBridgePorts(name1, name2, network, value, list);
  });
}

int VDRZAXGetBridgePorts(const char* name1, const char* name2, uint16_t network, uint32_t value,
                         RecordList* list) {
  return FetchList<kBridgePorts>(CommandCode::GetBridgePorts, list, [&](Request& request) {
    PutBothNames(request, name1, name2)
        .Put<260>(uint32_t{network})
        .Put<264>(value)
        .Put<268>(uint32_t{1});
  });
}

void VDRZAX_ReleaseBridgePorts(RecordList* list) { ReleaseList(list); }
