/* Keeps a router instance, its uplink and its default route as they should be, and reports what it finds. */
#include <arpa/inet.h>
#include <errno.h>
#include <inttypes.h>
#include <stdio.h>
#include <string.h>
#include <vdrzax.h>

static const char* const kInstance = "edge-1";
static const char* const kUplink = "uplink";

/* -1 when a command failed for another reason than that the object is not there; else whether it is. */
static int Found(int result) {
  if (result == 0) return 1;
  return errno == ENOENT ? 0 : -1;
}

static int EnsureInstance(void) {
  InstanceRecord* record = NULL;
  const int found = Found(VDRZAX_GetInstance(kInstance, &record));
  if (found == 1) VDRZAX_ReleaseInstance(record);
  if (found != 0) return found < 0 ? -1 : 0;
  printf("making %s\n", kInstance);
  return VDRZAX_SetVdrInstance(kInstance, 10, NULL, 0, 1);
}

static int EnsureUplink(void) {
  static const MacValue kMac = {{0x02, 0, 0, 0, 0, 0x01}};
  LifRecord* record = NULL;
  const int found = Found(VDRZAX_GetLif(kInstance, kUplink, &record));
  if (found == 1) VDRZAX_ReleaseLif(record);
  if (found != 0) return found < 0 ? -1 : 0;
  printf("making %s\n", kUplink);
  if (VDRZAX_SetLif(kUplink, "", 100, 0, 0, 0, 0, 0, kInstance, &kMac) != 0) return -1;
  return VDRZAX_EnableLif(kInstance, kUplink);
}

/* Routes are set again without harm, so nobody needs to look first. */
static int SetDefaultRoute(void) {
  return VDRZAX_SetRoute(0, 0, inet_addr("192.0.2.254"), kUplink, kInstance, 0, NULL);
}

static int ReportRoutes(void) {
  RecordList* list = NULL;
  if (VDRZAX_GetRoutes(kInstance, &list) != 0) return -1;
  const RouteRecord* routes = (const RouteRecord*)list->entries;
  for (int32_t index = 0; index < list->count; ++index) {
    printf("route of %u next hops\n", routes[index].nextHopCount);
  }
  VDRZAX_ReleaseRoutes(list);
  return 0;
}

/* The one list that is 0 also when it can't be used: errno tells, and has to be cleared before. */
static int ReportLifs(void) {
  RecordList* list = NULL;
  errno = 0;
  if (VDRZAX_GetLifs(kInstance, &list) != 0 || errno == EBADMSG || errno == ENOMEM) return -1;
  const LifRecord* lifs = (const LifRecord*)list->entries;
  for (int32_t index = 0; index < list->count; ++index) {
    const uint32_t word = lifs[index].word128; /* copied: it may lie unaligned */
    printf("LIF %s %" PRIu32 "\n", lifs[index].name, word);
  }
  VDRZAX_ReleaseLifs(list);
  return 0;
}

int main(void) {
  static const struct {
    const char* what;
    int (*act)(void);
  } kSteps[] = {{"instance", EnsureInstance},
                {"uplink", EnsureUplink},
                {"default route", SetDefaultRoute},
                {"LIFs", ReportLifs},
                {"routes", ReportRoutes}};
  uint32_t level = 0;
  if (VDRZAX_GetLogLevel(&level) != 0) { /* is there a datapath at all? */
    perror("agent: datapath");
    return 3;
  }
  for (size_t step = 0; step < sizeof kSteps / sizeof kSteps[0]; ++step) {
    if (kSteps[step].act() != 0) {
      fprintf(stderr, "agent: %s: %s\n", kSteps[step].what, strerror(errno));
      return 1;
    }
  }
  return 0;
}
