#include <vdrzax/services.h>

#include "channel/request.h"

using namespace vdrzax;

int VDRZAX_PerformFullSyncSave(uint8_t flag, uint32_t* status) {
  return Request{}.Put<256>(flag).SendInto(CommandCode::PerformFullSyncSave, status,
                                           sizeof *status);
}

int VDRZAX_GetFullSyncSaveStatus(uint32_t* status) {
  return Request{}.SendInto(CommandCode::GetFullSyncSaveStatus, status, sizeof *status);
}
