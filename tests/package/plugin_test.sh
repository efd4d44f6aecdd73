#!/bin/sh
# A plugin that links the archive exports what is its own and nothing of the library, even when it
# takes all of it.
# usage: plugin_test.sh ARCHIVE INCLUDE_DIRECTORY
set -eu
archive=$1 include=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

cat >"$scratch/plugin.c" <<'END'
#include <vdrzax.h>
int plugin_start(void) { return VDRZAX_PreUnload(); }
END
expect_own_export() { # expect_own_export PLUGIN
  exported=$(nm -D --defined-only "$1" | awk '{print $3}')
  if [ "$exported" != plugin_start ]; then
    echo "a plugin exports: $exported"
    exit 1
  fi
}
cc -shared -fPIC -I"$include" -o "$scratch/plugin.so" "$scratch/plugin.c" "$archive" -Wl,-z,defs
expect_own_export "$scratch/plugin.so"
nm "$scratch/plugin.so" | grep ' VDRZAX_PreUnload$' >/dev/null || { echo "nothing was linked"; exit 1; }
cc -shared -fPIC -I"$include" -o "$scratch/all.so" "$scratch/plugin.c" -Wl,--whole-archive "$archive" \
  -Wl,--no-whole-archive -Wl,-z,defs
expect_own_export "$scratch/all.so"
