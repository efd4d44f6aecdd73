#include "subjects.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "memory.h"
#include "require.h"

namespace {

// A line for each function in the order of their numbers: name, shape, size of a record, and
// offset, width and highest value of the count in it.
void List() {
  for (const Subject& subject : Subjects()) {
    std::printf("%s %s %zu %zu %zu %u\n", subject.name.c_str(), subject.shape.c_str(), subject.size,
                subject.count.offset, subject.count.width, subject.count.most);
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(const int* count, char*** arguments) {
  if (*count == 2 && std::strcmp((*arguments)[1], "--subjects") == 0) {
    List();
    std::exit(0);
  }
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, std::size_t size) {
  const Case one({input, size});
  const auto& subjects = Subjects();
  subjects[one.function % subjects.size()].run(one);
  Require(memory::Live().empty(), "all memory is given back");
  memory::Unwatch();
  return 0;
}
