#include "subjects.h"

#include "memory.h"
#include "require.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, std::size_t size) {
  const Case one({input, size});
  const auto subjects = Subjects();
  subjects[one.function % subjects.size()](one);
  Require(memory::Live().empty(), "all memory is given back");
  memory::Unwatch();
  return 0;
}
