#pragma once

#include <vdrzax/route.h>

#include "support/contract.h"

namespace route {

// A route whose count of next hops, at 17, is one of 0 to 8.
inline fake::Bytes RoutePattern(std::size_t size, unsigned seed) {
  fake::Bytes record = wire::Pattern(size, seed);
  record[17] = static_cast<uint8_t>(seed % 9);
  return record;
}

inline contract::ListGetter RoutesGetter() {
  return {.call = [](RecordList** out) { return VDRZAX_GetRoutes("edge-1", out); },
          .release = VDRZAX_ReleaseRoutes,
          .code = 36,
          .block = wire::Block().Text(0, "edge-1"),
          .size = 668,
          .cap = 20000,
          .pattern = RoutePattern};
}

inline contract::RecordGetter ResolveGetter() {
  return {.call =
              [](void** out) {
                return VDRZAX_GetResolveRoute("edge-1", 0x11223344, 0x55667788, 0x99AABBCC,
                                              reinterpret_cast<RouteRecord**>(out));
              },
          .release = [](void* record) { VDRZAX_ReleaseRoute(static_cast<RouteRecord*>(record)); },
          .code = 37,
          .block = wire::Block()
                       .Text(0, "edge-1")
                       .U32(256, 0x11223344)
                       .U32(260, 0x55667788)
                       .U32(264, 0x99AABBCC),
          .size = 668,
          .pattern = RoutePattern};
}

}  // namespace route
