#include <vdrzax/mcast.h>

#include "channel/getters.h"
#include "mcast/mrouting_local_rcvr_record.h"

namespace {

using namespace vdrzax;

constexpr ListKind<MRoutingLocalRcvr, kMRoutingLocalRcvr> kLocalRcvrs{
    .cap = 512,
    .release = VDRZAX_ReleaseMRoutingLocalRcvrs,
    .onFailedCommand = HeaderOnFailure::Drop};

constexpr TextSlot<272> kRcvrName;

int ChangeLocalRcvrs(CommandCode code, const char* instanceName, uint32_t key,
                     const char* rcvrName) {
  return Request{}
      .Text(kInstanceName, instanceName)
      .Put<256>(key)
      .OptionalText(kRcvrName, rcvrName)
      .Send(code);
}

}  // namespace

int VDRZAX_GetMRoutingLocalRcvrs(const char* instanceName, uint32_t key, RecordList** out) {
  return GetList<kLocalRcvrs>(CommandCode::GetMRoutingLocalRcvrs, out, [&](Request& request) {
    request.Text(kInstanceName, instanceName).Put<256>(key);
  });
}

int VDRZAX_AddMRoutingLocalRcvrs(const char* instanceName, uint32_t key, const char* rcvrName) {
  return ChangeLocalRcvrs(CommandCode::AddMRoutingLocalRcvrs, instanceName, key, rcvrName);
}

int VDRZAX_DelMRoutingLocalRcvrs(const char* instanceName, uint32_t key, const char* rcvrName) {
  return ChangeLocalRcvrs(CommandCode::DelMRoutingLocalRcvrs, instanceName, key, rcvrName);
}

void VDRZAX_ReleaseMRoutingLocalRcvrs(RecordList* list) { ReleaseList(list); }
