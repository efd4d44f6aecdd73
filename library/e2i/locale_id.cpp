#include <vdrzax/e2i.h>

#include "channel/request.h"

using namespace vdrzax;

int VDRZAX_GetLocaleId(void* buffer) {
  return Request{}.SendInto(CommandCode::GetLocaleId, buffer, 16);
}
