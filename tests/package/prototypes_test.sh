#!/bin/sh
# The public header declares each function with the types that are on record.
# usage: prototypes_test.sh INCLUDE_DIRECTORY BASELINE
#        prototypes_test.sh --print INCLUDE_DIRECTORY    prints what a baseline of this header holds
#
# A new function is recorded on purpose:
#   tests/package/prototypes_test.sh --print include > library/abi/libvdrzax.prototypes
# Prototypes that were released never change while the soname stays.
set -eu
export LC_ALL=C

declared() { # declared INCLUDE_DIRECTORY: one line a function, by name
  printf '#include <vdrzax.h>\n' | cc -E -P '-D__attribute__(x)=' -I"$1" -xc - |
    tr '\n' ' ' | tr ';' '\n' |
    sed -n 's/^ *//; s/  */ /g; s/ *$//
      s/^.*\b\(VDRZAX_*[A-Za-z0-9]*\)(.*/\1 &;/p' | sort | cut -d' ' -f2-
}

if [ "$1" = --print ]; then
  declared "$2"
  exit
fi

include=$1 baseline=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

[ -s "$baseline" ] || { echo "the baseline $baseline is missing or empty"; exit 1; }
# A function that is declared twice must have the same type twice.
if ! cc -std=c11 -Werror -fsyntax-only -I"$include" -include vdrzax.h -xc "$baseline"; then
  echo "Programs that were compiled with an earlier header would pass other arguments. Bring the"
  echo "types back, or raise the soname and begin a new baseline."
  failed=1
fi

names='s/.*\b\(VDRZAX_*[A-Za-z0-9]*\)(.*/\1/p'
declared "$include" | sed -n "$names" >"$scratch/declared"
sed -n "$names" "$baseline" >"$scratch/recorded"
if ! diff "$scratch/recorded" "$scratch/declared"; then
  echo "< on record, > declared. New functions are recorded with"
  echo "  tests/package/prototypes_test.sh --print include > library/abi/libvdrzax.prototypes"
  failed=1
fi
[ $failed -ne 0 ] || echo "$(wc -l <"$scratch/recorded") functions, each with its types"
exit $failed
