#!/bin/sh
# Every public header stands alone, in C11 and in C++17, without a warning.
# usage: header_test.sh INCLUDE_DIRECTORY C_COMPILER CXX_COMPILER
set -eu
include=$1 cc=$2 cxx=$3
failed=0
for header in vdrzax.h $(cd "$include" && ls vdrzax/*.h); do
  for language in c c++; do
    case $language in
      c) set -- "$cc" -std=c11 ;;
      c++) set -- "$cxx" -std=c++17 ;;
    esac
    if ! printf '#include <%s>\n' "$header" |
      "$@" -x "$language" -Wall -Wextra -pedantic -Werror -fsyntax-only -I"$include" -; then
      echo "$header does not stand alone: $*"
      failed=1
    fi
  done
done
exit $failed
