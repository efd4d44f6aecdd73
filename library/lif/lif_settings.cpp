#include <vdrzax/lif.h>

#include "channel/failure.h"
#include "channel/request.h"

namespace {

using namespace vdrzax;

constexpr TextSlot<256> kSecondName;
constexpr TextSlot<276> kSecondLifName;

int SendNames(CommandCode code, const char* instanceName, const char* lifName);
int SendOneIp(CommandCode code, const char* instanceName, const char* lifName, uint32_t ip);
int SendIp(CommandCode code, const char* instanceName, const char* lifName, uint32_t ip,
           uint32_t mask);
int SendIpv6(CommandCode code, const char* instanceName, const char* lifName, uint64_t addrHigh,
             uint64_t addrLow, uint32_t prefixLength);

}  // namespace

int VDRZAX_SetLifDIIp(const char* instanceName, const char* lifName, uint32_t ip) {
  return SendOneIp(CommandCode::SetLifDIIp, instanceName, lifName, ip);
}

int VDRZAX_SetLifIp(const char* instanceName, const char* lifName, uint32_t ip, uint32_t mask) {
  return SendIp(CommandCode::SetLifIp, instanceName, lifName, ip, mask);
}

int VDRZAX_DelLifIp(const char* instanceName, const char* lifName, uint32_t ip, uint32_t mask) {
  return SendIp(CommandCode::DelLifIp, instanceName, lifName, ip, mask);
}

int VDRZAX_SetLifVxlanCP(const char* instanceName, const char* lifName) {
  return SendNames(CommandCode::SetLifVxlanCP, instanceName, lifName);
}

int VDRZAX_DelLifVxlanCP(const char* instanceName, const char* lifName) {
  return SendNames(CommandCode::DelLifVxlanCP, instanceName, lifName);
}

int VDRZAX_EnableLif(const char* instanceName, const char* lifName) {
  return SendNames(CommandCode::EnableLif, instanceName, lifName);
}

int VDRZAX_DisableLif(const char* instanceName, const char* lifName) {
  return SendNames(CommandCode::DisableLif, instanceName, lifName);
}

int VDRZAX_SetLifVxlanMulticastIp(const char* instanceName, const char* lifName, uint32_t ip) {
  return SendOneIp(CommandCode::SetLifVxlanMulticastIp, instanceName, lifName, ip);
}

int VDRZAX_RAMTUSetv6(const char* instanceName, const char* lifName, uint32_t mtu) {
  return Request{}
      .Text(kInstanceName, instanceName)
      .Text(kLifName, lifName)
      .Put<256>(mtu)
      .Send(CommandCode::RAMTUSetv6);
}

int VDRZAX_SetLifMcastRouting(const char* instanceName, const char* lifName, uint8_t enable) {
  return SendNames(
      enable != 0 ? CommandCode::EnableLifMcastRouting : CommandCode::DisableLifMcastRouting,
      instanceName, lifName);
}

int VDRZAX_SetLifIpv6(const char* instanceName, const char* lifName, uint64_t addrHigh,
                      uint64_t addrLow, uint32_t prefixLength) {
  return SendIpv6(CommandCode::SetLifIpv6, instanceName, lifName, addrHigh, addrLow, prefixLength);
}

int VDRZAX_DelLifIpv6(const char* instanceName, const char* lifName, uint64_t addrHigh,
                      uint64_t addrLow, uint32_t prefixLength) {
  return SendIpv6(CommandCode::DelLifIpv6, instanceName, lifName, addrHigh, addrLow, prefixLength);
}

int VDRZAX_SetMcastRouting(const char* instanceName, const char* name2, uint32_t value1,
                           uint32_t value2, uint16_t value3, uint8_t flag) {
  if (!instanceName) return InvalidArgument();
  return Request{}
      .Text(kInstanceName, instanceName)
      .Text(kSecondName, name2)
      .Put<320>(value1)
      .Put<324>(value2)
      .Put<328>(value3)
      .Put<330>(flag)
      .Send(CommandCode::SetMcastRouting);
}

namespace {

int SendNames(CommandCode code, const char* instanceName, const char* lifName) {
  if (!instanceName || !lifName) return InvalidArgument();
  return Request{}.Text(kInstanceName, instanceName).Text(kLifName, lifName).Send(code);
}

int SendOneIp(CommandCode code, const char* instanceName, const char* lifName, uint32_t ip) {
  if (!instanceName || !lifName) return InvalidArgument();
  return Request{}
      .Text(kInstanceName, instanceName)
      .Text(kLifName, lifName)
      .Put<520>(ip)
      .Send(code);
}

int SendIp(CommandCode code, const char* instanceName, const char* lifName, uint32_t ip,
           uint32_t mask) {
  if (!instanceName || !lifName) return InvalidArgument();
  return Request{}
      .Text(kInstanceName, instanceName)
      .Text(kLifName, lifName)
      .Put<512>(ip)
      .Put<516>(mask)
      .Send(code);
}

// The kernel reads the names of these two commands as widths, and the name of the LIF in two
// places.
int SendIpv6(CommandCode code, const char* instanceName, const char* lifName, uint64_t addrHigh,
             uint64_t addrLow, uint32_t prefixLength) {
  if (!instanceName || !lifName) return InvalidArgument();
  return Request{}
      .PlainText(kInstanceName, instanceName)
      .PlainText(kSecondLifName, lifName)
      .PlainText(kLifName, lifName)
      .Put<256>(addrHigh)
      .Put<264>(addrLow)
      .Put<340>(static_cast<uint8_t>(prefixLength))
      .Send(code);
}

}  // namespace
