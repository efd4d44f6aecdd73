#include <vdrzax/mcast.h>

#include "channel/request.h"

namespace {

using namespace vdrzax;

int GetAddress(CommandCode code, const char* instanceName, uint32_t key, uint32_t* outIp) {
  return Request{}
      .Text(kInstanceName, instanceName)
      .Put<256>(key)
      .SendInto(code, outIp, sizeof *outIp);
}

}  // namespace

int VDRZAX_GetMRoutingReplicationIP(const char* instanceName, uint32_t key, uint32_t* outIp) {
  return GetAddress(CommandCode::GetMRoutingReplicationIP, instanceName, key, outIp);
}

int VDRZAX_AddMRoutingMRouter(const char* instanceName, uint32_t ip) {
  return Request{}
      .Text(kInstanceName, instanceName)
      .Put<256>(ip)
      .Send(CommandCode::AddMRoutingMRouter);
}

int VDRZAX_DelMRoutingMRouter(const char* instanceName) {
  return Request{}.Text(kInstanceName, instanceName).Send(CommandCode::DelMRoutingMRouter);
}

int VDRZAX_GetMRoutingMRouterIP(const char* instanceName, uint32_t key, uint32_t* outIp) {
  return GetAddress(CommandCode::GetMRoutingMRouterIP, instanceName, key, outIp);
}
