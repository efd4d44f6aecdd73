#include <vdrzax/channel.h>

#include <algorithm>
#include <memory>
#include <span>

#include "device.h"
#include "memory.h"
#include "require.h"

// Any text without a zero, in memory that ends with its terminator.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, std::size_t size) {
  const std::size_t length = static_cast<std::size_t>(std::find(input, input + size, 0) - input);
  const std::unique_ptr<char[]> text(new char[length + 1]());
  std::copy_n(input, length, text.get());
  const std::unique_ptr<char[]> out(new char[64]);
  std::fill_n(out.get(), 64, '\x5C');

  device::Plug(0, {});
  memory::Watch(0);
  VDRZAXGetUuidOrName(text.get(), out.get());
  Require(memory::Live().empty(), "all memory is given back");
  memory::Unwatch();

  for (std::size_t index = 0; index < 64; ++index) {
    const char expected = index < std::min<std::size_t>(length, 63) ? text[index] : '\0';
    Require(out[index] == expected, "the text, a terminator, zeros");
  }
  return 0;
}
