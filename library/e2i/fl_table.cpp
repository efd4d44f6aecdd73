#include <vdrzax/e2i.h>

#include "channel/request.h"

using namespace vdrzax;

int VDRZAX_DumpFLTable(uint16_t selector, void* buffer) {
  return Request{}.Put<256>(selector).SendInto(CommandCode::DumpFLTable, buffer, 426080);
}
