/* Makes a router instance with an uplink. A busy datapath is tried again; of anything else that fails
 * nothing is left behind. */
#include <errno.h>
#include <stdbool.h>
#include <stdio.h>
#include <string.h>
#include <time.h>
#include <vdrzax.h>

enum { kMostAttempts = 4 };

static const char* const kInstance = "edge-1";
static const char* const kUplink = "uplink";

static bool MayPass(int error) {
  return error == EAGAIN || error == EBUSY || error == EINTR || error == ENOMEM;
}

static int Retried(int (*command)(void)) {
  struct timespec pause = {0, 1000000};
  for (int attempt = 1;; ++attempt) {
    if (command() == 0) return 0;
    if (attempt == kMostAttempts || !MayPass(errno)) return -1;
    nanosleep(&pause, NULL);
    pause.tv_nsec *= 2;
  }
}

static int SetInstance(void) { return VDRZAX_SetVdrInstance(kInstance, 10, NULL, 0, 1); }

static int SetUplink(void) {
  static const MacValue kMac = {{0x02, 0, 0, 0, 0, 0x01}};
  return VDRZAX_SetLif(kUplink, "", 100, 0, 0, 0, 0, 0, kInstance, &kMac);
}

static int DeleteInstance(void) { return VDRZAX_DelVdrInstance(kInstance); }

static int GiveUp(const char* what) {
  (void)fprintf(stderr, "agent: %s: %s\n", what, strerror(errno));
  return 1;
}

int main(void) {
  if (Retried(SetInstance) != 0) return GiveUp(kInstance);
  if (Retried(SetUplink) == 0) return 0;
  const int status = GiveUp(kUplink);
  if (Retried(DeleteInstance) != 0) GiveUp("deleting the instance");
  return status;
}
