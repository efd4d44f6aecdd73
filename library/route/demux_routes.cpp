#include <vdrzax/route.h>

#include "channel/getters.h"
#include "route/demux_route_record.h"

namespace {

using namespace vdrzax;

constexpr ListKind<DemuxRouteRecord, kDemuxRouteRecord> kDemuxRoutes{
    .cap = 30000, .release = VDRZAX_ReleaseDemuxRoutes};

}  // namespace

int VDRZAX_GetDemuxRoutes(RecordList** out) {
  return GetList<kDemuxRoutes>(CommandCode::GetDemuxRoutes, out, [](Request& /*empty*/) {});
}

void VDRZAX_ReleaseDemuxRoutes(RecordList* list) { ReleaseList(list); }
