#include <vdrzax/instance.h>

#include "commands.h"
#include "instance/instance_record.h"
#include "reading.h"

namespace vdrctl {

namespace {

using vdrzax::kInstanceRecord;

int List(Output& out, const char* name);
int Show(Output& out, const char* name);

constexpr Object kObjects[] = {{"instance", "Router instances"}};

constexpr Command kCommands[] = {
    {"instance",
     "list",
     "List all router instances, or the one that is named",
     {Optional(kInstanceName)},
     Run<List>},
    {"instance", "show", "Show all fields of a router instance", {kInstanceName}, Run<Show>},
    {"instance",
     "set",
     "Create a router instance, or update it when it exists",
     {kInstanceName, U32("--second N", "Word with a meaning of the kernel's, 0 when not given"),
      Text("--text TEXT", 18, "Text of at most 18 bytes, none when not given"),
      U32("--fourth N", "Word with a meaning of the kernel's, 0 when not given"),
      U8("--flag N", "Byte with a meaning of the kernel's, 0 when not given")},
     Run<VDRZAX_SetVdrInstance>},
    {"instance", "delete", "Delete a router instance", {kInstanceName}, Run<VDRZAX_DelVdrInstance>},
    {"instance",
     "tune",
     "Set the tunables of a router instance",
     {kInstanceName, Text("TUNABLES", 63, "Text of at most 63 bytes"),
      U32("VALUE", "Word with a meaning of the kernel's")},
     Run<VDRZAX_SetVdrInstanceTunables>},
};

constexpr auto kColumns = Columns(kInstanceRecord, {"name", "word64", "word68", "byte72", "text73",
                                                    "text329", "word399", "word568"});

int List(Output& out, const char* name) {
  return PrintList<VDRZAX_ReleaseInstances>(out, kInstanceRecord, kColumns, [&](RecordList** list) {
    return VDRZAX_GetInstances(name, name ? 1 : 0, list);
  });
}

int Show(Output& out, const char* name) {
  return PrintRecord<VDRZAX_ReleaseInstance, InstanceRecord>(
      out, kInstanceRecord,
      [&](InstanceRecord** record) { return VDRZAX_GetInstance(name, record); });
}

}  // namespace

constinit const Family kInstanceFamily{kObjects, kCommands};

}  // namespace vdrctl
