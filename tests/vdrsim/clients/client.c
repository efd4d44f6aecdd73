#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "device.h"

static int fail(int error) {
  printf("%s\n", strerrorname_np(error));
  return 1;
}

static int print_instances(int device, uint32_t code, const char* name) {
  uint32_t length = 577577;
  unsigned char* records = malloc(length);
  const int error = command_on_name(device, code, name, records, &length);
  if (error) return fail(error);
  for (uint32_t at = 0; at < length; at += 577) {
    uint32_t second;
    memcpy(&second, records + at + 64, 4);
    printf("%s %u\n", (const char*)records + at, second);
  }
  free(records);
  return 0;
}

static int print_log_level(int device) {
  uint32_t level = 0;
  const int error = get_word(device, 9, &level);
  if (error) return fail(error);
  printf("%u\n", level);
  return 0;
}

static int run_check(const char* name) {
  static const struct {
    const char* name;
    int (*check)(void);
  } checks[] = {{"open-forms", check_open_forms},
                {"open-flags", check_open_flags},
                {"shared-descriptors", check_shared_descriptors},
                {"other-files", check_other_files},
                {"malformed", check_malformed},
                {"too-large", check_too_large},
                {"threads", check_threads},
                {"beside-threads", check_beside_threads},
                {"storm", check_storm},
                {"spellings", check_spellings},
                {"held-up", check_held_up},
                {"every-open", check_every_open},
                {"plain-file-requests", check_plain_file_requests},
                {"permissions", check_permissions},
                {"hidden", check_hidden},
                {"beside", check_beside}};
  for (size_t i = 0; i < sizeof checks / sizeof *checks; ++i) {
    if (strcmp(name, checks[i].name) == 0) return checks[i].check();
  }
  (void)fprintf(stderr, "unknown check %s\n", name);
  return 2;
}

// set NAME SECOND | delete NAME | get NAME | list | level [VALUE] | level-on DESCRIPTOR | check
// NAME | count SIGNAL | value SIGNAL
int main(int argc, char** argv) {
  const char* verb = argc > 1 ? argv[1] : "";
  if (argc == 3 && strcmp(verb, "check") == 0) return run_check(argv[2]);
  if (argc == 3 && strcmp(verb, "count") == 0) return count_signals(atoi(argv[2]));
  if (argc == 3 && strcmp(verb, "value") == 0) return print_value(atoi(argv[2]));
  if (argc == 3 && strcmp(verb, "level-on") == 0) return print_log_level(atoi(argv[2]));

  const char* node = getenv("USE_UPGRADE_DEV") ? UPGRADE_NODE : NORMAL_NODE;
  const int device = open(node, O_RDWR);
  if (device < 0) return fail(errno);
  int error = 0;
  if (argc == 4 && strcmp(verb, "set") == 0) {
    error = set_instance(argv[2], (uint32_t)atoi(argv[3]));
  } else if (argc == 3 && strcmp(verb, "delete") == 0) {
    error = delete_instance(argv[2]);
  } else if (argc == 3 && strcmp(verb, "get") == 0) {
    return print_instances(device, 1, argv[2]);
  } else if (argc == 2 && strcmp(verb, "list") == 0) {
    return print_instances(device, 0, "");
  } else if (argc == 3 && strcmp(verb, "level") == 0) {
    error = set_word(device, 10, (uint32_t)atoi(argv[2]));
  } else if (argc == 2 && strcmp(verb, "level") == 0) {
    return print_log_level(device);
  } else {
    return 2;
  }
  return error ? fail(error) : 0;
}
