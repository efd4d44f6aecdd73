#pragma once

#include <vdrzax/route.h>

#include "support/contract.h"

namespace route {

inline fake::Bytes RoutePattern(std::size_t size, unsigned seed) {
  return contract::PatternOf(getters::List("VDRZAX_GetRoutes").count)(size, seed);
}

inline const contract::ListGetter& RoutesGetter() { return getters::List("VDRZAX_GetRoutes"); }

inline const contract::RecordGetter& ResolveGetter() {
  return getters::Record("VDRZAX_GetResolveRoute");
}

}  // namespace route
