#include "bridge/bridge_bfd_session_record.h"
#include "channel/getters.h"

namespace {

using namespace vdrzax;

// A hundred sessions for each of the 28672 endpoints of a host.
constexpr ListKind<BridgeBfdSessionRecord, kBridgeBfdSessionRecord> kBridgeBfdSessions{
    .cap = 2867200, .release = VDRZAX_ReleaseBridgeBFDSessions};

constexpr TextSlot<256> kPortName;
constexpr TextSlot<320, 16> kSecondName;

}  // namespace

int VDRZAX_GetBridgeBFDSessions(const char* name, RecordList** out) {
  return GetList(out, [&](RecordList* list) { return VDRZAXGetBridgeBFDSessions(name, list); });
}

int VDRZAXGetBridgeBFDSessions(const char* name, RecordList* list) {
  return FetchList<kBridgeBfdSessions>(
      CommandCode::GetBridgeBFDSessions, list,
      [&](Request& request) { request.OptionalText(kInstanceName, name); });
}

int VDRZAX_PlumbBFDPortConnection(const char* portName, const char* name2, const MacValue* mac) {
  return Request{}
      .Text(kPortName, portName)
      .Text(kSecondName, name2)
      .OptionalMac<336>(mac)
      .Send(CommandCode::PlumbBFDPortConnection);
}

int VDRZAX_UnPlumbBFDPortConnection(const char* portName) {
  return Request{}.Text(kPortName, portName).Send(CommandCode::UnPlumbBFDPortConnection);
}

int VDRZAX_GetBFDPortConnections(void* buffer) {
  return Request{}.SendInto(CommandCode::GetBFDPortConnections, buffer, 131072);
}

void VDRZAX_ReleaseBridgeBFDSessions(RecordList* list) { ReleaseList(list); }
