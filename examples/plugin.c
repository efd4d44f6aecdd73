/*
 * A plugin: a shared object that carries the library within itself, so that its host needs none. Built
 * against the archive it exports collect() and nothing of the library; two plugins with two versions of
 * the library can live in one process.
 *
 *   cc -shared -fPIC plugin.c libvdrzax.a -o plugin.so
 */
#include "plugin.h"

#include <vdrzax.h>

int collect(emit_function emit, void* context) {
  RecordList* list = NULL;
  if (VDRZAX_GetInstances(NULL, 0, &list) != 0) return -1;
  emit(context, "vdr_instances", (uint64_t)list->count);
  VDRZAX_ReleaseInstances(list);

  uint32_t level = 0;
  if (VDRZAX_GetStatsLevel(&level) != 0) return -1;
  emit(context, "vdr_stats_level", level);
  return 0;
}
