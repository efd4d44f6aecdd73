// Carries out the commands of the table one by one, for valgrind to count their instructions.
//
// usage: instructions                          prints "FUNCTION RECORDS" of each case
//        instructions FUNCTION RECORDS         carries that command out a hundred times

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "commands.h"
#include "lists.h"

namespace {

constexpr int kCalls = 100;

std::vector<Case> Cases() {
  std::vector<Case> cases = CommandCases();
  for (Case& subject : ListCases()) {
    if (subject.device == "program") cases.push_back(std::move(subject));
  }
  return cases;
}

}  // namespace

int main(int count, char** arguments) {
  // Else calloc would clear whole tables that were released before.
  if (mallopt(M_MMAP_THRESHOLD, 131072) != 1) return 1;
  bool found = count == 1;
  for (const Case& subject : Cases()) {
    if (count == 1) std::printf("%s %u\n", subject.name.c_str(), subject.records);
    if (count != 3 || subject.name != arguments[1]) continue;
    if (subject.records != std::strtoul(arguments[2], nullptr, 10)) continue;
    found = true;
    subject.prepare();
    for (int call = 0; call < kCalls; ++call) subject.library();
  }
  return found ? 0 : 2;
}
