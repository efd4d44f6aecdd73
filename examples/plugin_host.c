/* The host of plugins: loads each that is named, and prints the numbers that they collect. */
#include <dlfcn.h>
#include <inttypes.h>
#include <stdio.h>
#include <string.h>

#include "plugin.h"

static void Print(void* context, const char* name, uint64_t value) {
  (void)context;
  printf("%s %" PRIu64 "\n", name, value);
}

static int Run(const char* path) {
  void* plugin = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  int (*collector)(emit_function, void*) = NULL;
  if (plugin != NULL) {
    void* found = dlsym(plugin, "collect");
    memcpy(&collector, &found, sizeof collector); /* C has no conversion from one to the other */
  }
  if (collector == NULL) {
    fprintf(stderr, "plugin_host: %s\n", dlerror());
    return 1;
  }
  const int result = collector(Print, NULL);
  if (result != 0) perror(path);
  dlclose(plugin);
  return result == 0 ? 0 : 1;
}

int main(int argc, char** argv) {
  int failed = 0;
  for (int index = 1; index < argc; ++index) failed |= Run(argv[index]);
  return failed;
}
