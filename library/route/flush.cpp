#include <vdrzax/route.h>

#include "channel/request.h"

using namespace vdrzax;

int VDRZAX_GenericFlush(uint32_t flushTarget, uint8_t flushSelector1, uint8_t flushSelector2,
                        uint8_t flushSelector3, const char* flushName, uint32_t flushValue) {
  constexpr TextSlot<263> kFlushName;
  return Request{}
      .Put<256>(flushTarget)
      .Put<260>(flushSelector3)
      .Put<261>(flushSelector1)
      .Put<262>(flushSelector2)
      .OptionalText(kFlushName, flushName)
      .Put<328>(flushValue)
      .Send(CommandCode::GenericFlush);
}
