#include <vdrzax/route.h>

#include "channel/failure.h"
#include "channel/request.h"

namespace {

using namespace vdrzax;

constexpr TextSlot<524, 18> kMacText;
constexpr TextSlot<256> kLifNamev6;
constexpr TextSlot<336, 18> kMacTextv6;

// A proxy command has the code of the plain one; the kernel tells them apart by this byte alone.
constexpr std::size_t kProxyMarker = 917;
constexpr uint8_t kProxy = 1;

// What the kernel may write at most into a caller's buffer.
constexpr uint32_t kTableSize = 7667712;

Request Neighbour(uint32_t ip, const char* ifName, const char* instanceName);
Request Table(const char* instanceName, const char* ifName);

// The kernel takes texts with and without terminator; the IPv6 commands give it the whole field.
Request Neighbourv6(uint64_t ipPart1, uint64_t ipPart2, const char* ifName,
                    const char* instanceName);
Request Tablev6(const char* instanceName, const char* ifName);

}  // namespace

int VDRZAX_SetArp(uint32_t ip, const char* macText, const char* ifName, const char* instanceName) {
  if (!instanceName) return InvalidArgument();
  return Neighbour(ip, ifName, instanceName).Text(kMacText, macText).Send(CommandCode::SetArp);
}

int VDRZAX_DelArp(uint32_t ip, const char* ifName, const char* instanceName) {
  if (!instanceName) return InvalidArgument();
  return Neighbour(ip, ifName, instanceName).Send(CommandCode::DelArp);
}

int VDRZAX_GetArps(const char* instanceName, const char* ifName, void* buffer) {
  return Table(instanceName, ifName).SendInto(CommandCode::GetArps, buffer, kTableSize);
}

int VDRZAX_ClearArp(const char* instanceName, const char* ifName) {
  return Table(instanceName, ifName).Send(CommandCode::ClearArp);
}

int VDRZAX_SetProxyArp(uint32_t ip, const char* ifName, const char* instanceName) {
  if (!instanceName) return InvalidArgument();
  return Neighbour(ip, ifName, instanceName).Put<kProxyMarker>(kProxy).Send(CommandCode::SetArp);
}

int VDRZAX_DelProxyArp(uint32_t ip, const char* ifName, const char* instanceName) {
  if (!instanceName) return InvalidArgument();
  return Neighbour(ip, ifName, instanceName).Put<kProxyMarker>(kProxy).Send(CommandCode::DelArp);
}

int VDRZAX_GetProxyArps(const char* instanceName, const char* ifName, void* buffer) {
  return Table(instanceName, ifName)
      .Put<kProxyMarker>(kProxy)
      .SendInto(CommandCode::GetArps, buffer, kTableSize);
}

int VDRZAX_SetArpv6(uint64_t ipPart1, uint64_t ipPart2, const char* macText, const char* ifName,
                    const char* instanceName) {
  if (!instanceName) return InvalidArgument();
  return Neighbourv6(ipPart1, ipPart2, ifName, instanceName)
      .PlainText(kMacTextv6, macText)
      .Send(CommandCode::SetArpv6);
}

int VDRZAX_DelArpv6(uint64_t ipPart1, uint64_t ipPart2, const char* ifName,
                    const char* instanceName) {
  if (!instanceName) return InvalidArgument();
  return Neighbourv6(ipPart1, ipPart2, ifName, instanceName).Send(CommandCode::DelArpv6);
}

int VDRZAX_GetArpsv6(const char* instanceName, const char* ifName, void* buffer) {
  return Tablev6(instanceName, ifName).SendInto(CommandCode::GetArpsv6, buffer, kTableSize);
}

int VDRZAX_ClearArpv6(const char* instanceName, const char* ifName) {
  return Tablev6(instanceName, ifName).Send(CommandCode::ClearArpv6);
}

int VDRZAX_SetProxyArpv6(uint64_t ipPart1, uint64_t ipPart2, const char* ifName,
                         const char* instanceName) {
  if (!instanceName) return InvalidArgument();
  return Neighbourv6(ipPart1, ipPart2, ifName, instanceName)
      .Put<kProxyMarker>(kProxy)
      .Send(CommandCode::SetArpv6);
}

int VDRZAX_DelProxyArpv6(uint64_t ipPart1, uint64_t ipPart2, const char* ifName,
                         const char* instanceName) {
  if (!instanceName) return InvalidArgument();
  return Neighbourv6(ipPart1, ipPart2, ifName, instanceName)
      .Put<kProxyMarker>(kProxy)
      .Send(CommandCode::DelArpv6);
}

int VDRZAX_PMTUTableCearv6() { return SendNothing(CommandCode::PMTUTableClearv6); }

namespace {

Request Neighbour(uint32_t ip, const char* ifName, const char* instanceName) {
  Request request;
  request.Text(kInstanceName, instanceName).Put<256>(ip).Text(kLifName, ifName);
  return request;
}

Request Neighbourv6(uint64_t ipPart1, uint64_t ipPart2, const char* ifName,
                    const char* instanceName) {
  Request request;
  request.PlainText(kInstanceName, instanceName)
      .PlainText(kLifNamev6, ifName)
      .Put<320>(ipPart1)
      .Put<328>(ipPart2);
  return request;
}

Request Table(const char* instanceName, const char* ifName) {
  Request request;
  request.Text(kInstanceName, instanceName).OptionalText(kLifName, ifName);
  return request;
}

Request Tablev6(const char* instanceName, const char* ifName) {
  Request request;
  request.PlainText(kInstanceName, instanceName).OptionalPlainText(kLifName, ifName);
  return request;
}

}  // namespace
