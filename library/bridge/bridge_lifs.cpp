#include <vdrzax/bridge.h>

#include "channel/request.h"

namespace {

using namespace vdrzax;

constexpr TextSlot<256> kSecondName;
constexpr TextSlot<320> kEndpointName;
constexpr TextSlot<448> kFourthName;
constexpr TextSlot<722> kFifthName;

}  // namespace

int VDRZAX_SetBridgeLif(const char* lifName, const char* secondName, uint32_t value1,
                        uint32_t value2, uint32_t value3, const char* instanceName, int set) {
  return Request{}
      .Text(kLifName, lifName)
      .Text(kSecondName, secondName)
      .Text(kInstanceName, instanceName)
      .Put<544>(value1)
      .Put<548>(value2)
      .Put<520>(value3)
      .Send(set != 0 ? CommandCode::SetBridgeLif : CommandCode::ClearBridgeLif);
}

int VDRZAX_AddBridgeEndpoint(const char* lifName, const char* secondName, const char* endpointName,
                             uint32_t value1, uint32_t value2, const char* fourthName, uint16_t tag,
                             uint8_t flag1, const char* fifthName, uint8_t flag2) {
  return Request{}
      .Text(kLifName, lifName)
      .Text(kSecondName, secondName)
      .Text(kEndpointName, endpointName)
      .Text(kFourthName, fourthName)
      .Text(kFifthName, fifthName)
      .Put<544>(value1)
      .Put<548>(value2)
      .Put<720>(tag)
      .Put<786>(flag1)
      .Put<787>(flag2)
      .Send(CommandCode::AddBridgeEndpoint);
}

int VDRZAX_DelBridgeEndpoint(const char* lifName, const char* endpointName) {
  return Request{}
      .Text(kLifName, lifName)
      .Text(kEndpointName, endpointName)
      .Send(CommandCode::DelBridgeEndpoint);
}

int VDRZAX_FlushBridgeEndpoint(uint8_t all) {
  return Request{}.Send(all != 0 ? CommandCode::FlushAllBridgeEndpoints
                                 : CommandCode::FlushBridgeEndpoints);
}

int VDRZAX_SetBridgeRepMode(const char* instanceName, uint32_t mode) {
  return Request{}
      .Text(kInstanceName, instanceName)
      .Put<300>(mode)
      .Send(CommandCode::SetBridgeRepMode);
}
