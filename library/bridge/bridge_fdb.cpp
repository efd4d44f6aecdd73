#include "bridge/bridge_fdb_record.h"
#include "channel/getters.h"

namespace {

using namespace vdrzax;

constexpr ListKind<BridgeFdbRecord, kBridgeFdbRecord> kBridgeFdbEntries{
    .cap = 10240,
    .release = VDRZAX_ReleaseBridgeFdbEntries,
    .onFailedCommand = HeaderOnFailure::Drop};

constexpr TextSlot<276, 18> kMacText;

// What selects a table of the forwarding database; the kernel expects the 1 with every selection.
Request& SelectFdb(Request& request, const char* instanceName, uint32_t segment, uint32_t selector);

}  // namespace

int VDRZAX_GetBridgeFdbEntries(const char* instanceName, uint16_t segment, uint32_t selector,
                               RecordList** out) {
  return GetList(out, [&](RecordList* list) {
    return VDRZAXGetBridgeFdbEntries(instanceName, segment, selector, list);
  });
}

int VDRZAXGetBridgeFdbEntries(const char* instanceName, uint16_t segment, uint32_t selector,
                              RecordList* list) {
  return FetchList<kBridgeFdbEntries>(
      CommandCode::GetBridgeFdbEntries, list,
      [&](Request& request) { SelectFdb(request, instanceName, segment, selector); });
}

int VDRZAX_BridgeSetFdbEntry(const char* instanceName, const char* macText, uint32_t segment,
                             uint32_t selector, uint32_t value, uint8_t flag) {
  Request request;
  return SelectFdb(request, instanceName, segment, selector)
      .OptionalText(kMacText, macText)
      .Put<272>(value)
      .Put<294>(flag)
      .Put<296>(uint32_t{1})
      .Send(CommandCode::BridgeSetFdbEntry);
}

int VDRZAX_BridgeClearFdbTable(const char* instanceName, uint32_t segment, uint32_t selector) {
  Request request;
  return SelectFdb(request, instanceName, segment, selector).Send(CommandCode::BridgeClearFdbTable);
}

void VDRZAX_ReleaseBridgeFdbEntries(RecordList* list) { ReleaseList(list); }

namespace {

Request& SelectFdb(Request& request, const char* instanceName, uint32_t segment,
                   uint32_t selector) {
  return request.Text(kInstanceName, instanceName)
      .Put<260>(segment)
      .Put<264>(selector)
      .Put<268>(uint32_t{1});
}

}  // namespace
