#!/bin/sh
# The shared object keeps the binary interface of the last release: each function with its types down to
# the fields of records. Functions may be added.
# usage: abidiff_test.sh SHARED_OBJECT BASELINE
#        abidiff_test.sh --print SHARED_OBJECT    prints what a baseline holds
#
# A release records its interface:
#   tests/package/abidiff_test.sh --print build/release/libvdrzax.so > library/abi/libvdrzax.abi
set -eu
if [ "$1" = --print ]; then
  exec abidw --no-comp-dir-path --no-corpus-path --no-show-locs --type-id-style hash "$2"
fi

library=$1 baseline=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
readelf -SW "$library" | grep -q ' \.debug_info ' || { echo "skipped: no debug information"; exit 77; }

differences() { # differences BASELINE: what a program that was built with it would not find again
  abidiff --no-added-syms "$1" "$library" >"$scratch/said" 2>&1
}

if ! differences "$baseline"; then
  cat "$scratch/said"
  echo "Programs that were built with the last release would read other bytes. Bring the types back, or"
  echo "raise the soname and begin a new baseline."
  exit 1
fi

# A record of another size, a field at another place and a function that went are found.
for change in "s/name='InstanceRecord' size-in-bits='4616'/name='InstanceRecord' size-in-bits='4624'/" \
  "s/layout-offset-in-bits='4608'/layout-offset-in-bits='4600'/" \
  "s/'VDRZAX_PreUnload'/'VDRZAX_PreUnloaded'/"; do
  sed "$change" "$baseline" >"$scratch/changed"
  if cmp -s "$baseline" "$scratch/changed"; then
    echo "the baseline has nothing for $change"
    exit 1
  fi
  if differences "$scratch/changed"; then
    echo "unnoticed: $change"
    exit 1
  fi
done
