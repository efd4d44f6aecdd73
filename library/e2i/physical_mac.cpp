#include <vdrzax/e2i.h>

#include "channel/request.h"

using namespace vdrzax;

int VDRZAX_AddPmac(uint32_t value, const MacValue* mac) {
  return Request{}.Put<256>(value).OptionalMac<260>(mac).Send(CommandCode::AddPmac);
}

int VDRZAX_DelPmac(const MacValue* mac) {
  return Request{}.OptionalMac<260>(mac).Send(CommandCode::DelPmac);
}

int VDRZAX_GetPmac(void* buffer) {
  return Request{}.SendInto(CommandCode::GetPmac, buffer, 131072);
}
