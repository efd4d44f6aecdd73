#!/bin/sh
# The exported set of the shared object equals what the public header declares, both ways.
# usage: exports_test.sh SHARED_OBJECT INCLUDE_DIRECTORY
set -eu
library=$1 include=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Names that stand before an argument list, in the header as the compiler sees it.
printf '#include <vdrzax.h>\n' | cc -E -P -I"$include" -xc - | grep -oE '\bVDRZAX_?[A-Za-z0-9]+ *\(' |
  tr -d ' (' | sort -u >"$scratch/declared"
nm -D --defined-only "$library" | awk '$2 != "A" {print $3}' | sed 's/@.*//' | sort -u >"$scratch/exported"

[ -s "$scratch/declared" ] || { echo "the header declares nothing"; exit 1; }
if ! diff "$scratch/declared" "$scratch/exported"; then
  echo "< declared but not exported, > exported but not declared"
  exit 1
fi
echo "$(wc -l <"$scratch/exported") functions, declared and exported"
