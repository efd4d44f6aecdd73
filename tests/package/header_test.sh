#!/bin/sh
# Every public header stands alone, in C11 and all later standards of C and in C++11 and all later
# ones of C++, without a warning.
# usage: header_test.sh INCLUDE_DIRECTORY C_COMPILER CXX_COMPILER
set -eu
include=$1 cc=$2 cxx=$3
failed=0
for header in vdrzax.h $(cd "$include" && ls vdrzax/*.h); do
  for standard in c11 c17 c2x c++11 c++14 c++17 c++20 c++2b; do
    case $standard in
      c++*) set -- "$cxx" -x c++ ;;
      *) set -- "$cc" -x c ;;
    esac
    if ! printf '#include <%s>\n' "$header" |
      "$@" -std=$standard -Wall -Wextra -pedantic -Werror -fsyntax-only -I"$include" -; then
      echo "$header does not stand alone: $* -std=$standard"
      failed=1
    fi
  done
done
exit $failed
