#include <vdrzax/bridge.h>

#include "channel/request.h"

namespace {

using namespace vdrzax;

constexpr TextSlot<256> kFirstName;
constexpr TextSlot<320> kSecondName;
constexpr TextSlot<384, 16> kThirdName;

}  // namespace

int VDRZAX_BridgeLocalTransportNodeSet(const char* name1, const char* name2, const char* name3,
                                       uint32_t value, const void* bytes, uint8_t set) {
  return Request{}
      .Text(kFirstName, name1)
      .Text(kSecondName, name2)
      .Text(kThirdName, name3)
      .Put<400>(value)
      .Bytes<404, 64>(bytes)
      .Send(set != 0 ? CommandCode::SetLocalTransportNode : CommandCode::ClearLocalTransportNode);
}

int VDRZAX_BridgeGetLocalTransportNode(void* buffer, uint32_t selector) {
  return Request{}.Put<468>(selector).SendInto(CommandCode::GetLocalTransportNode, buffer, 2048);
}
