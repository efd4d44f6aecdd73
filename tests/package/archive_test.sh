#!/bin/sh
# What the archive needs of the program that it is linked into, and that no member of it weakens this
# program's hardening.
# usage: archive_test.sh ARCHIVE
set -eu
export LC_ALL=C
archive=$(realpath "$1")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

expect_none() { # expect_none WHAT, with what was found in $scratch/found
  if [ -s "$scratch/found" ]; then
    echo "$1:"
    sed 's/^/  /' "$scratch/found"
    failed=1
  fi
}

ar t "$archive" | sort >"$scratch/members"
[ -s "$scratch/members" ] || { echo "the archive is empty"; exit 1; }
uniq -d "$scratch/members" >"$scratch/found"
expect_none "members of the same name"

# Without the note the linker takes the stack to be one that runs code.
readelf -SW "$archive" | awk '
  /^File: / { member = $0; sub(/.*\(/, "", member); sub(/\)$/, "", member) }
  / \.note\.GNU-stack / && !/ X / { print member }' | sort >"$scratch/marked"
comm -23 "$scratch/members" "$scratch/marked" >"$scratch/found"
expect_none "members that do not say that their stack runs no code"

if readelf -hW "$archive" | grep -q X86-64; then
  readelf -nW "$archive" | awk '
    /^File: / { member = $0; sub(/.*\(/, "", member); sub(/\)$/, "", member) }
    /x86 feature:.*IBT.*SHSTK/ { print member }' | sort >"$scratch/marked"
  comm -23 "$scratch/members" "$scratch/marked" >"$scratch/found"
  expect_none "members without the marks of indirect branch tracking and shadow stack"
fi

nm --defined-only "$archive" 2>/dev/null | awk 'NF == 3 {print $3}' | sort -u >"$scratch/defined"
nm -D --defined-only "$(cc -print-file-name=libc.so.6)" | awk '{print $3}' | sed 's/@.*//' |
  sort -u >"$scratch/libc"
nm --undefined-only "$archive" | awk '$1 == "U" || $1 == "w" {print $2}' | sort -u |
  comm -23 - "$scratch/defined" >"$scratch/needed"
[ -s "$scratch/needed" ] || { echo "the archive needs nothing, not even malloc"; exit 1; }
# The linker makes the table of offsets.
grep -vx _GLOBAL_OFFSET_TABLE_ "$scratch/needed" | comm -23 - "$scratch/libc" >"$scratch/found"
expect_none "needed, but not in the C library"

echo "$(wc -l <"$scratch/members") members need $(wc -l <"$scratch/needed") symbols"
exit $failed
