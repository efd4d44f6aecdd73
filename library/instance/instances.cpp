#include <vdrzax/instance.h>

#include <cstring>

#include "channel/getters.h"
#include "instance/instance_record.h"

namespace {

using namespace vdrzax;

constexpr ListKind<InstanceRecord, kInstanceRecord> kInstances{.cap = 1001,
                                                               .release = VDRZAX_ReleaseInstances};

constexpr TextSlot<260> kTunables;
constexpr TextSlot<332, 18> kInstanceText;

}  // namespace

int VDRZAX_GetInstance(const char* name, InstanceRecord** out) {
  if (!name) return InvalidArgument();
  return GetRecord<DecodeRecord<kInstanceRecord>, VDRZAX_ReleaseInstance>(CommandCode::GetInstance,
                                                                          out, NamedInstance(name));
}

int VDRZAX_GetInstances(const char* name, uint8_t filter, RecordList** out) {
  return GetList<kInstances>(CommandCode::GetInstances, out, [&](Request& request) {
    request.Put<368>(filter);
    if (filter != 0) request.Text(kInstanceName, name);
  });
}

int VDRZAX_SetVdrInstance(const char* name, uint32_t second, const char* text, uint32_t fourth,
                          uint8_t flag) {
  if (!name) return InvalidArgument();
  return Request{}
      .Put<256>(second)
      .Text(kInstanceName, name)
      .OptionalPlainText(kInstanceText, text)
      .Put<352>(fourth)
      .Put<368>(flag)
      .Send(CommandCode::SetVdrInstance);
}

int VDRZAX_DelVdrInstance(const char* name) {
  if (!name) return InvalidArgument();
  return Request{}.Text(kInstanceName, name).Send(CommandCode::DelVdrInstance);
}

int VDRZAX_SetVdrInstanceTunables(const char* name, const char* tunables, uint32_t value) {
  if (!name) return InvalidArgument();
  return Request{}
      .Text(kInstanceName, name)
      .Text(kTunables, tunables)
      .Put<324>(value)
      .Send(CommandCode::SetVdrInstanceTunables);
}

void VDRZAX_ReleaseInstance(InstanceRecord* record) { std::free(record); }

void VDRZAX_ReleaseInstances(RecordList* list) {
  if (!list) return;
  if (list->entries) {
    auto* records = static_cast<InstanceRecord*>(list->entries);
    for (int32_t index = 0; index < list->count; ++index) {
      std::memset(records[index].address393, 0, sizeof records[index].address393);
    }
  }
  ReleaseList(list);
}
