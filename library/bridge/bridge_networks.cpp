#include "bridge/bridge_names.h"
#include "bridge/bridge_network_record.h"
#include "channel/getters.h"

namespace {

using namespace vdrzax;

constexpr ListKind<BridgeNetworkRecord, kBridgeNetworkRecord> kBridgeNetworks{
    .cap = 32768,
    .release = VDRZAX_ReleaseBridgeNetworks,
    .onFailedCommand = HeaderOnFailure::Drop};

}  // namespace

int VDRZAX_GetBridgeNetworks(const char* name1, const char* name2, RecordList** out) {
  return GetList(out,
                 [&](RecordList* list) { return VDRZAXGetBridgeNetworks(name1, name2, list); });
}

int VDRZAXGetBridgeNetworks(const char* name1, const char* name2, RecordList* list) {
  return FetchList<kBridgeNetworks>(CommandCode::GetBridgeNetworks, list,
                                    [&](Request& request) { PutBothNames(request, name1, name2); });
}

void VDRZAX_ReleaseBridgeNetwork(BridgeNetworkRecord* record) { std::free(record); }

void VDRZAX_ReleaseBridgeNetworks(RecordList* list) { ReleaseList(list); }
