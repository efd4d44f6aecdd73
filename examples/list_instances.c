/* Lists the router instances of this host, as a management agent would. */
#include <inttypes.h>
#include <stdio.h>
#include <vdrzax.h>

int main(void) {
  RecordList* list = NULL;
  if (VDRZAX_GetInstances(NULL, 0, &list) != 0) {
    perror("list router instances");
    return 1;
  }
  const InstanceRecord* instances = (const InstanceRecord*)list->entries;
  for (int32_t index = 0; index < list->count; ++index) {
    printf("%s %" PRIu32 "\n", instances[index].name, instances[index].word64);
  }
  VDRZAX_ReleaseInstances(list);
  return 0;
}
