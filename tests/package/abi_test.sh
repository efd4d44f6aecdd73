#!/bin/sh
# The shared object exports what the baseline of its binary interface lists, each name under its
# version, and nothing else.
# usage: abi_test.sh SHARED_OBJECT BASELINE
#        abi_test.sh --print SHARED_OBJECT    prints what a baseline of this object holds
#
# A new function is recorded on purpose:
#   tests/package/abi_test.sh --print build/libvdrzax.so > library/abi/libvdrzax.symbols
# Names that were released never leave the baseline while the soname stays.
set -eu
export LC_ALL=C

exported() {
  nm -D --defined-only "$1" | awk '$2 != "A" {print $3}' | sort
}

if [ "$1" = --print ]; then
  exported "$2"
  exit
fi

library=$1 baseline=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
exported "$library" >"$scratch/exported"

[ -s "$baseline" ] || { echo "the baseline $baseline is missing or empty"; exit 1; }
sort -uc "$baseline" || { echo "the baseline is not sorted, or names something twice"; exit 1; }
comm -23 "$baseline" "$scratch/exported" >"$scratch/gone"
comm -13 "$baseline" "$scratch/exported" >"$scratch/added"

failed=0
if [ -s "$scratch/gone" ]; then
  failed=1
  echo "No longer exported, or under another version:"
  sed 's/^/  /' "$scratch/gone"
  echo "Programs that were linked with an earlier release would not start. Bring these names back, or"
  echo "raise the soname and begin a new baseline."
fi
if [ -s "$scratch/added" ]; then
  failed=1
  echo "Exported, but not in the baseline:"
  sed 's/^/  /' "$scratch/added"
  echo "Once released they must stay. If that is meant, record them with"
  echo "  tests/package/abi_test.sh --print LIBRARY > library/abi/libvdrzax.symbols"
fi
[ $failed -ne 0 ] || echo "$(wc -l <"$baseline") names, each under its version"
exit $failed
