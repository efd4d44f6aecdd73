// A trusted count may take a copy past the array that it begins in; a fortified one would abort.
#undef _FORTIFY_SOURCE

#include <vdrzax/route.h>

#include "channel/getters.h"
#include "route/route_record.h"

namespace {

using namespace vdrzax;

constexpr TextSlot<276> kRouteInterface;

// The fields that adding and deleting a route share.
Request RouteRequest(uint32_t routeArg1, uint32_t routeArg2, uint32_t routeArg3, const char* ifName,
                     const char* instanceName);

}  // namespace

int VDRZAX_SetRoute(uint32_t routeArg1, uint32_t routeArg2, uint32_t routeArg3, const char* ifName,
                    const char* instanceName, uint32_t routeFlags, void* result) {
  if (!instanceName) return InvalidArgument();
  ClearResult(result);
  return RouteRequest(routeArg1, routeArg2, routeArg3, ifName, instanceName)
      .Put<272>(routeFlags)
      .SendForResult(CommandCode::SetRoute, result);
}

int VDRZAX_DelRoute(uint32_t routeArg1, uint32_t routeArg2, uint32_t routeArg3, const char* ifName,
                    const char* instanceName, void* result) {
  if (!instanceName) return InvalidArgument();
  ClearResult(result);
  return RouteRequest(routeArg1, routeArg2, routeArg3, ifName, instanceName)
      .SendForResult(CommandCode::DelRoute, result);
}

int VDRZAX_GetRoutes(const char* instanceName, RecordList** out) {
  return GetList<kRoutes>(CommandCode::GetRoutes, out, NamedInstance(instanceName));
}

int VDRZAX_GetLifSelectionRoutes(const char* instanceName, RecordList** out) {
  return GetList<kRoutes>(CommandCode::GetLifSelectionRoutes, out, NamedInstance(instanceName));
}

int VDRZAX_GetResolveRoute(const char* instanceName, uint32_t resolveArg1, uint32_t resolveArg2,
                           uint32_t resolveArg3, RouteRecord** out) {
  if (!instanceName) return InvalidArgument();
  return GetRecord<DecodeRecord<kRouteRecord>, VDRZAX_ReleaseRoute>(
      CommandCode::GetResolveRoute, out, [&](Request& request) {
        request.Text(kInstanceName, instanceName)
            .Put<256>(resolveArg1)
            .Put<260>(resolveArg2)
            .Put<264>(resolveArg3);
      });
}

void VDRZAX_ReleaseRoute(RouteRecord* record) { std::free(record); }

void VDRZAX_ReleaseRoutes(RecordList* list) { ReleaseList(list); }

namespace {

Request RouteRequest(uint32_t routeArg1, uint32_t routeArg2, uint32_t routeArg3, const char* ifName,
                     const char* instanceName) {
  Request request;
  request.Text(kInstanceName, instanceName)
      .Put<256>(routeArg1)
      .Put<260>(routeArg2)
      .Put<268>(routeArg3)
      .OptionalText(kRouteInterface, ifName);
  return request;
}

}  // namespace
