#include <vdrzax/instance.h>

#include "channel/getters.h"

using namespace vdrzax;

int VDRZAX_GetLogLevel(uint32_t* level) {
  if (!level) return InvalidArgument();
  return GetScalar(CommandCode::GetLogLevel, level);
}

int VDRZAX_SetLogLevel(uint32_t level) { return SendScalar(CommandCode::SetLogLevel, level); }

int VDRZAX_GetExtendedLogLevel(uint32_t* level) {
  if (!level) return InvalidArgument();
  return GetScalar(CommandCode::GetExtendedLogLevel, level);
}

int VDRZAX_SetExtendedLogLevel(uint32_t level) {
  return SendScalar(CommandCode::SetExtendedLogLevel, level);
}

int VDRZAX_GetStatsLevel(uint32_t* level) {
  if (!level) return InvalidArgument();
  return GetScalar(CommandCode::GetStatsLevel, level);
}

int VDRZAX_SetStatsLevel(uint32_t level) { return SendScalar(CommandCode::SetStatsLevel, level); }

int VDRZAX_GetTxDispQueueSize(uint32_t* size) {
  if (!size) return InvalidArgument();
  return GetScalar(CommandCode::GetTxDispQueueSize, size);
}

int VDRZAX_SetTxDispQueueSize(uint32_t size) {
  return SendScalar(CommandCode::SetTxDispQueueSize, size);
}

int VDRZAX_PreUnload() { return SendNothing(CommandCode::PreUnload); }
