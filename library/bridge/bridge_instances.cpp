#include "bridge/bridge_instance_record.h"
#include "channel/getters.h"

namespace {

using namespace vdrzax;

constexpr ListKind<BridgeInstanceRecord, kBridgeInstanceRecord> kBridgeInstances{
    .cap = 4096,
    .release = VDRZAX_ReleaseBridgeInstances,
    .onFailedCommand = HeaderOnFailure::Drop};

}  // namespace

int VDRZAX_GetBridgeInstance(const char* instanceName, BridgeInstanceRecord** out) {
  if (!instanceName) return InvalidArgument();
  return GetRecord<DecodeRecord<kBridgeInstanceRecord>, VDRZAX_ReleaseBridgeInstance>(
      CommandCode::GetBridgeInstance, out, NamedInstance(instanceName));
}

int VDRZAX_GetBridgeInstances(RecordList** out) { return GetList(out, VDRZAXGetBridgeInstances); }

int VDRZAXGetBridgeInstances(RecordList* list) {
  return FetchList<kBridgeInstances>(CommandCode::GetBridgeInstances, list,
                                     [](Request& /*request*/) {});
}

void VDRZAX_ReleaseBridgeInstance(BridgeInstanceRecord* record) { std::free(record); }

void VDRZAX_ReleaseBridgeInstances(RecordList* list) { ReleaseList(list); }
