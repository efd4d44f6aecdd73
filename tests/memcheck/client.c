// What memcheck finds in a program, by its argument: in all that it looks at something of the datapath.
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <vdrzax.h>

static int failures = 0;

static void lose(int result) { failures += result != 0; }

// Each loses its header on purpose when its command fails.
static void lose_on_purpose(void) {
  RecordList* list = NULL;
  uint32_t count = 0;
  VMPublicIPEntry* entry = NULL;
  VMPublicIPTable* table = NULL;
  lose(VDRZAX_GetBridgeLifs("e", &list));
  lose(VDRZAX_GetBridgeInstances(&list));
  lose(VDRZAX_GetBridgeNetworks("e", "b", &list));
  lose(VDRZAX_GetBridgePorts("e", "b", 1, 1, &list));
  lose(VDRZAX_GetBridgeFdbEntries("e", 1, 1, &list));
  lose(VDRZAX_GetMRoutingLocalRcvrs("e", 1, &list));
  lose(VDRZAX_GetMRoutingAllMcastGroups("e", &list));
  lose(VDRZAX_GetPolicyCount(1, &count));
  lose(VDRZAX_GetVMPublicIPEntry(1, &entry));
  lose(VDRZAX_GetVMPublicIPTable(&table));
}

static int read_instance(int forgets) {
  InstanceRecord* record = NULL;
  if (VDRZAX_SetVdrInstance("e", 7, NULL, 0, 1) != 0) return 1;
  if (VDRZAX_GetInstance("e", &record) != 0) return 1;
  // Every byte decides something, so that one that nobody wrote is seen.
  const unsigned char* bytes = (const unsigned char*)record;
  for (size_t i = 0; i < sizeof *record; ++i) {
    if (bytes[i] == 7) (void)printf("7 at %zu\n", i);
  }
  if (!forgets) VDRZAX_ReleaseInstance(record);
  return 0;
}

int main(int argc, char** argv) {
  const char* what = argc > 1 ? argv[1] : "";
  if (strcmp(what, "lose") == 0) lose_on_purpose();
  if (strcmp(what, "lose") == 0) return failures == 10 ? 0 : 1;
  return read_instance(strcmp(what, "forget") == 0);
}
