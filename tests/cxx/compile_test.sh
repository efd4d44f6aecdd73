#!/bin/sh
# Each header of the C++ face stands alone in C++20 and later without a warning, with exceptions and
# without; programs of several sources link; and what must not compile does not.
# usage: compile_test.sh INCLUDE_DIRECTORY LIBRARY CXX_COMPILER
set -eu
include=$1 library=$2 cxx=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

compile() { # compile STANDARD OPTION... SOURCE
  standard=$1
  shift
  "$cxx" -std="$standard" -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -I"$include" "$@"
}

# Each family, and the umbrella in all ways.
for family in $(cd "$include" && ls vdrzax/*.h); do
  header=vdrzax/cxx/$(basename "$family" .h).hpp
  printf '#include <%s>\n' "$header" | compile c++20 -fsyntax-only -x c++ - ||
    { echo "$header does not stand alone"; failed=1; }
done
for options in 'c++20' 'c++2b' 'c++20 -fno-exceptions -fno-rtti'; do
  # shellcheck disable=SC2086
  printf '#include <vdrzax.hpp>\n#include <vdrzax.hpp>\n' | compile $options -fsyntax-only -x c++ - ||
    { echo "vdrzax.hpp does not stand alone: $options"; failed=1; }
done

# Two sources of one program, one of them without exceptions.
cat >"$scratch/one.cpp" <<'END'
#include <vdrzax.hpp>
int Other();
int main() {
  try {
    return static_cast<int>(vdrzax::Client().instances().size()) + Other();
  } catch (const vdrzax::error&) {
    return 3;
  }
}
END
cat >"$scratch/other.cpp" <<'END'
#include <vdrzax.hpp>
int Other() {
  const auto instances = vdrzax::Client().try_instances();
  return instances ? static_cast<int>(instances->size()) : 0;
}
END
"$cxx" -std=c++20 -I"$include" -c -o "$scratch/one.o" "$scratch/one.cpp"
"$cxx" -std=c++20 -fno-exceptions -I"$include" -c -o "$scratch/other.o" "$scratch/other.cpp"
"$cxx" -o "$scratch/program" "$scratch/one.o" "$scratch/other.o" "$library"

# Without exceptions a program needs no run-time for them from the face.
nm -u "$scratch/other.o" | grep -q __cxa_throw && { echo "it throws without exceptions"; failed=1; }

# The rest is compiled with the header made ready once.
printf '#include <vdrzax.hpp>\n' >"$scratch/face.hpp"
compile c++20 -x c++-header -o "$scratch/face.hpp.gch" "$scratch/face.hpp"
body() { # body STATEMENTS: compiles them
  printf 'void f(vdrzax::Client vdr, vdrzax::Instance i) { (void)vdr; (void)i; %s }\n' "$1" |
    compile c++20 -fsyntax-only -include "$scratch/face.hpp" -x c++ -
}
refuses() { # refuses WHY STATEMENTS GOOD: the last compile, so that it is not something else
  if body "$2" 2>/dev/null; then
    echo "it compiles: $1"
    failed=1
  fi
  body "$3" || { echo "it does not compile: $3"; failed=1; }
}
refuses "a reference to a field" \
  'auto& word = i.word64(); ++word;' \
  'auto word = i.word64(); ++word;'
refuses "the packed record of a view" \
  'static_cast<void>(i.raw());' \
  'static_cast<void>(i.bytes());'
refuses "a copy of a list" \
  'auto all = vdr.instances(); auto same = all; static_cast<void>(same);' \
  'auto all = vdr.instances(); auto same = std::move(all); static_cast<void>(same);'
refuses "a number that its field cuts" \
  'vdr.set_lif_ipv6("edge-1", "uplink", {.prefix_length = 300});' \
  'vdr.set_lif_ipv6("edge-1", "uplink", {.prefix_length = 30});'
refuses "a result that nobody looks at" \
  'vdr.try_delete_instance("edge-1");' \
  'static_cast<void>(vdr.try_delete_instance("edge-1"));'
exit $failed
