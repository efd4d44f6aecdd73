/* What the host of the example calls in its plugins. */
#ifndef PLUGIN_H
#define PLUGIN_H

#include <stdint.h>

typedef void (*emit_function)(void* context, const char* name, uint64_t value);

/* Hands each number that it has to `emit`. Returns 0, or -1 with errno. */
int collect(emit_function emit, void* context);

#endif
