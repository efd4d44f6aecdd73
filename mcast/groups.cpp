#include <vdrzax/mcast.h>

#include "channel/getters.h"
#include "mcast/mrouting_mcast_group_record.h"

namespace {

using namespace vdrzax;

// Takes a whole group whatever remains, because the kernel may cut the last one. The reply buffer
// has room for whole groups alone, so what is read beyond the reply still lies inside the buffer.
int32_t DecodeGroup(const uint8_t* source, int32_t /*remaining*/, uint8_t* destination) {
  return DecodeRecord<kMRoutingMcastGroup>(source, sizeof(MRoutingMcastGroup), destination);
}

constexpr ListKind<MRoutingMcastGroup> kGroups{.cap = 4096,
                                               .decode = DecodeGroup,
                                               .release = VDRZAX_ReleaseMRoutingMcastGroups,
                                               .onFailedCommand = HeaderOnFailure::Drop};

}  // namespace

int VDRZAX_GetMRoutingAllMcastGroups(const char* instanceName, RecordList** out) {
  return GetList<kGroups>(CommandCode::GetMRoutingAllMcastGroups, out, NamedInstance(instanceName));
}

void VDRZAX_ReleaseMRoutingMcastGroups(RecordList* list) { ReleaseList(list); }
