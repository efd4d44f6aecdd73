#!/bin/sh
# What the shared object needs and does when it is loaded.
# usage: shared_object_test.sh SHARED_OBJECT
set -eu
library=$1
failed=0

expect() { # expect WHAT EXPECTED ACTUAL
  if [ "$2" != "$3" ]; then
    printf '%s: expected "%s", got "%s"\n' "$1" "$2" "$3"
    failed=1
  fi
}

dynamic=$(readelf -dW "$library")
expect "needed libraries" libc.so.6 \
  "$(printf '%s\n' "$dynamic" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')"
expect "soname" libvdrzax.so.1 \
  "$(printf '%s\n' "$dynamic" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')"
expect "paths to look for libraries" 0 "$(printf '%s\n' "$dynamic" | grep -cE 'RPATH|RUNPATH' || true)"
# One entry is the C run-time's own; a static constructor would add another.
expect "bytes of constructors" 000008 \
  "$(readelf -SW "$library" | sed 's/\[ *//' | awk '$2 == ".init_array" {print $6}')"
exit $failed
