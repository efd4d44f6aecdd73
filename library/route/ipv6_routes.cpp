#include <vdrzax/route.h>

#include <cstdlib>

#include "channel/failure.h"
#include "channel/request.h"

namespace {

using namespace vdrzax;

constexpr TextSlot<309> kRouteInterface;

constexpr uint32_t kRouteSize = 776;
constexpr int32_t kFewRoutes = 20000;
constexpr int32_t kMostRoutes = 30000;

int SendRoute(CommandCode code, uint64_t destPart1, uint64_t destPart2, uint8_t prefixLength,
              uint64_t gatewayPart1, uint64_t gatewayPart2, const char* ifName,
              const char* instanceName);

}  // namespace

int VDRZAX_SetRoutev6(uint64_t destPart1, uint64_t destPart2, uint8_t prefixLength,
                      uint64_t gatewayPart1, uint64_t gatewayPart2, const char* ifName,
                      const char* instanceName) {
  return SendRoute(CommandCode::SetRoutev6, destPart1, destPart2, prefixLength, gatewayPart1,
                   gatewayPart2, ifName, instanceName);
}

int VDRZAX_DelRoutev6(uint64_t destPart1, uint64_t destPart2, uint8_t prefixLength,
                      uint64_t gatewayPart1, uint64_t gatewayPart2, const char* ifName,
                      const char* instanceName) {
  return SendRoute(CommandCode::DelRoutev6, destPart1, destPart2, prefixLength, gatewayPart1,
                   gatewayPart2, ifName, instanceName);
}

int VDRZAX_GetRoutesv6(const char* instanceName, void** table, uint32_t* count) {
  int32_t routes;
  const int counted = Request{}
                          .PlainText(kInstanceName, instanceName)
                          .SendInto(CommandCode::GetRouteCountv6, &routes, sizeof routes);
  // To the caller a table of unknown size is one that cannot be allocated, whatever the reason.
  if (counted != 0 || routes >= kMostRoutes) return OutOfMemory();

  uint32_t length =
      static_cast<uint32_t>(routes < kFewRoutes ? kFewRoutes : kMostRoutes) * kRouteSize;
  void* buffer = std::malloc(length);
  *table = buffer;
  if (!buffer) return OutOfMemory();

  // The count is written and the address stays stored after a failure too, as agents have always
  // found them.
  const int result = Request{}
                         .PlainText(kInstanceName, instanceName)
                         .Receive(CommandCode::GetRoutesv6, buffer, length);
  if (result != 0) std::free(buffer);
  *count = length / kRouteSize;
  return result;
}

namespace {

int SendRoute(CommandCode code, uint64_t destPart1, uint64_t destPart2, uint8_t prefixLength,
              uint64_t gatewayPart1, uint64_t gatewayPart2, const char* ifName,
              const char* instanceName) {
  if (!instanceName) return InvalidArgument();
  return Request{}
      .PlainText(kInstanceName, instanceName)
      .Put<260>(destPart1)
      .Put<268>(destPart2)
      .Put<276>(prefixLength)
      .Put<293>(gatewayPart1)
      .Put<301>(gatewayPart2)
      .OptionalPlainText(kRouteInterface, ifName)
      .Send(code);
}

}  // namespace
