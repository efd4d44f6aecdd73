#include <vdrzax/bridge.h>

#include "channel/request.h"

namespace {

using namespace vdrzax;

// The number is sent as wide as its type: the kernel reads one byte for some commands, four for
// others.
template <typename Number>
int SendAdmin(CommandCode code, const char* instanceName, Number value);

}  // namespace

int VDRZAX_BridgeSetConfig(const char* instanceName, uint32_t commandCode, uint32_t value) {
  return Request{}
      .Text(kInstanceName, instanceName)
      .Put<296>(value)
      .Send(static_cast<CommandCode>(commandCode));
}

int VDRZAX_BridgeAdd(const char* instanceName, uint32_t value) {
  return SendAdmin(CommandCode::BridgeAdd, instanceName, value);
}

int VDRZAX_BridgeDel(const char* instanceName, uint32_t value) {
  return SendAdmin(CommandCode::BridgeDel, instanceName, value);
}

int VDRZAX_BridgeEnable(const char* instanceName, uint8_t value) {
  return SendAdmin(CommandCode::BridgeEnable, instanceName, value);
}

int VDRZAX_BridgeDisable(const char* instanceName, uint8_t value) {
  return SendAdmin(CommandCode::BridgeDisable, instanceName, value);
}

int VDRZAX_BridgeSetHAAdminState(const char* instanceName, uint32_t state) {
  return SendAdmin(CommandCode::BridgeSetHAAdminState, instanceName, state);
}

namespace {

template <typename Number>
int SendAdmin(CommandCode code, const char* instanceName, Number value) {
  return Request{}.Text(kInstanceName, instanceName).Put<256>(value).Send(code);
}

}  // namespace
