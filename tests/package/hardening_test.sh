#!/bin/sh
# How a linked file is hardened: where code and data lie, when symbols are bound, what guards the
# stack.
# usage: hardening_test.sh library|tool|fortified-tool FILE
set -eu
export LC_ALL=C
kind=$1 file=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

expect() { # expect WHAT EXPECTED ACTUAL
  if [ "$2" != "$3" ]; then
    printf '%s: expected "%s", got "%s"\n' "$1" "$2" "$3"
    failed=1
  fi
}
expect_none() { # expect_none WHAT, with what was found in $scratch/found
  if [ -s "$scratch/found" ]; then
    echo "$1:"
    sed 's/^/  /' "$scratch/found"
    failed=1
  fi
}

readelf -dW "$file" >"$scratch/dynamic"
readelf -lW "$file" >"$scratch/segments"
readelf -SW "$file" >"$scratch/sections"
nm -D --undefined-only "$file" | awk '{print $NF}' | sed 's/@.*//' >"$scratch/imports"

expect "kind of file" DYN "$(readelf -hW "$file" | awk '$1 == "Type:" {print $2}')"
case $kind in
  library) pie=0 ;;
  *) pie=1 ;;
esac
expect "position-independent executable" $pie "$(grep -c 'FLAGS_1.*PIE' "$scratch/dynamic" || true)"
expect "immediate binding" 1 "$(grep -c 'FLAGS_1.*NOW' "$scratch/dynamic" || true)"
expect "segments that turn read-only" 1 "$(grep -c GNU_RELRO "$scratch/segments" || true)"
# What turns read-only holds every table that the dynamic linker fills.
awk '
  /^  [A-Z]/ && $1 != "Type" { type[segments++] = $1 }
  /^   [0-9]/ && type[$1 + 0] == "GNU_RELRO" { for (field = 2; field <= NF; ++field) print $field }
  ' "$scratch/segments" | sort >"$scratch/read_only"
grep -oE ' \.(got|got\.plt|dynamic|init_array|fini_array|data\.rel\.ro)(\.local)? ' "$scratch/sections" |
  tr -d ' ' | sort | comm -23 - "$scratch/read_only" >"$scratch/found"
expect_none "tables that stay writable"
expect "flags of the stack" RW "$(awk '$1 == "GNU_STACK" {print $7}' "$scratch/segments")"
expect "text relocations" 0 "$(grep -c TEXTREL "$scratch/dynamic" || true)"
awk '$1 == "LOAD" && $7 ~ /WE/' "$scratch/segments" >"$scratch/found"
expect_none "segments that can be written and run"
expect "stack protector" 1 "$(grep -cx __stack_chk_fail "$scratch/imports" || true)"
if [ "$kind" = fortified-tool ] && ! grep -qE '^__[a-z]+_chk$' "$scratch/imports"; then
  echo "no fortified function is called"
  failed=1
fi

if [ "$kind" = library ] && readelf -hW "$file" | grep -q X86-64; then
  # One line a function: name, largest step of the stack pointer, calls of the guard, landing pad.
  objdump -d --no-show-raw-insn "$file" | awk '
    function flush() { if (name != "") print name, step, guard, pad }
    /^[0-9a-f]+ <.*>:$/ {
      next_name = $2
      gsub(/[<>:]|\.cold/, "", next_name)
      if (next_name != name) { flush(); name = next_name; step = "0"; guard = 0; pad = 0; lines = 0 }
      next
    }
    NF { ++lines }
    lines == 1 && /endbr64/ { pad = 1 }
    /sub +\$0x[0-9a-f]+,%rsp/ {
      match($0, /\$0x[0-9a-f]+/)
      size = substr($0, RSTART + 3, RLENGTH - 3)
      if (length(size) > length(step) || (length(size) == length(step) && size > step)) step = size
    }
    /__stack_chk_fail/ { guard = 1 }
    END { flush() }' >"$scratch/functions"

  # A parameter block has 968 bytes, 3c8 in hexadecimal.
  awk 'length($2) > 3 || (length($2) == 3 && $2 >= "3c8")' "$scratch/functions" >"$scratch/blocks"
  if [ "$(wc -l <"$scratch/blocks")" -lt 50 ]; then
    echo "only $(wc -l <"$scratch/blocks") functions with a block on the stack were found"
    failed=1
  fi
  awk '$3 == 0 {print $1}' "$scratch/blocks" >"$scratch/found"
  expect_none "functions with a block on an unguarded stack"

  nm -D --defined-only "$file" | awk '$2 == "T" {print $3}' | sed 's/@.*//' | sort >"$scratch/exports"
  [ -s "$scratch/exports" ] || { echo "no function is exported"; exit 1; }
  awk '$4 == 1 {print $1}' "$scratch/functions" | sort | comm -23 "$scratch/exports" - >"$scratch/found"
  expect_none "functions that are no target of indirect calls where the processor tracks these"
  echo "$(wc -l <"$scratch/blocks") functions with a block on the stack, $(wc -l <"$scratch/exports") exported"
fi
exit $failed
