#!/bin/sh
# What the shared object needs at run time, and how it is hardened.
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
segments=$(readelf -lW "$library")
expect "needed libraries" libc.so.6 \
  "$(printf '%s\n' "$dynamic" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')"
expect "soname" libvdrzax.so.1 \
  "$(printf '%s\n' "$dynamic" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')"
expect "immediate binding" 1 "$(printf '%s\n' "$dynamic" | grep -c 'FLAGS_1.*NOW')"
expect "read-only relocations" 1 "$(printf '%s\n' "$segments" | grep -c GNU_RELRO)"
expect "flags of the stack" RW "$(printf '%s\n' "$segments" | awk '$1 == "GNU_STACK" {print $7}')"
expect "stack protector" 1 "$(nm -D --undefined-only "$library" | grep -c __stack_chk_fail)"
expect "text relocations" 0 "$(printf '%s\n' "$dynamic" | grep -c TEXTREL || true)"
# One entry is the C run-time's own; a static constructor would add another.
expect "bytes of constructors" 000008 \
  "$(readelf -SW "$library" | sed 's/\[ *//' | awk '$2 == ".init_array" {print $6}')"
exit $failed
