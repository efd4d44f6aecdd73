#include <vdrzax/mcast.h>

#include "channel/getters.h"
#include "mcast/mrouting_domain_record.h"

using namespace vdrzax;

int VDRZAX_GetMRoutingDomain(const char* instanceName, MRoutingDomain** out) {
  return GetRecord<DecodeRecord<kMRoutingDomain>, VDRZAX_ReleaseMRoutingDomainData>(
      CommandCode::GetMRoutingDomain, out, NamedInstance(instanceName));
}

void VDRZAX_ReleaseMRoutingDomainData(MRoutingDomain* rec) { std::free(rec); }
