#include <vdrzax/mcast.h>

#include "channel/getters.h"
#include "mcast/mrouting_mcast_group_record.h"

namespace {

using namespace vdrzax;

// The kernel may cut the last group, which is taken whole all the same. The reply buffer has room
// for whole groups alone, so what is read beyond the reply still lies inside the buffer.
constexpr ListKind<MRoutingMcastGroup, kMRoutingMcastGroup> kGroups{
    .cap = 4096,
    .release = VDRZAX_ReleaseMRoutingMcastGroups,
    .onFailedCommand = HeaderOnFailure::Drop,
    .onCutRecord = CutRecord::Take};

}  // namespace

int VDRZAX_GetMRoutingAllMcastGroups(const char* instanceName, RecordList** out) {
  return GetList<kGroups>(CommandCode::GetMRoutingAllMcastGroups, out, NamedInstance(instanceName));
}

void VDRZAX_ReleaseMRoutingMcastGroups(RecordList* list) { ReleaseList(list); }
