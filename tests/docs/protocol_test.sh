#!/bin/sh
# The command tables of the protocol page name every code and every function, and no other. A row
# is one function:  | `NAME` | CODE or CODES | ...
# usage: protocol_test.sh SOURCE_DIRECTORY
set -eu
source=$1
page=$source/docs/protocol.md
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

expect_same() { # expect_same WHAT: one and two in the scratch directory, what stands in both is fine
  if [ ! -s "$scratch/one" ] || [ ! -s "$scratch/two" ]; then
    echo "$1: nothing to compare"
    exit 1
  fi
  if ! diff "$scratch/one" "$scratch/two"; then
    echo "$1"
    failed=1
  fi
}

# One line a function and code: NAME CODE.
# shellcheck disable=SC2016
sed -n 's/^| `\(VDRZAX_*[A-Za-z0-9]*\)` | \([0-9, ]*\) |.*/\1 \2/p' "$page" | tr -d , |
  awk '{for (field = 2; field <= NF; ++field) print $1, $field}' >"$scratch/rows"
# The same of the library: NAME CODE, by the names of the codes.
sed -n 's/^ *\([A-Za-z0-9]*\) = \([0-9]*\),$/\1 \2/p' "$source/library/channel/command_code.h" \
  >"$scratch/codes"

awk '{print $2}' "$scratch/rows" | sort -un >"$scratch/one"
awk '{print $2}' "$scratch/codes" | sort -un >"$scratch/two"
expect_same "codes: < in docs/protocol.md, > in library/channel/command_code.h"

# shellcheck disable=SC2016
sed -n 's/^| `\(VDRZAX_*[A-Za-z0-9]*\)` |.*/\1/p' "$page" | sort >"$scratch/one"
sed -n 's/^VDRZAX_API [^(]*\b\(VDRZAX_*[A-Za-z0-9]*\)(.*/\1/p' "$source"/include/vdrzax/*.h |
  grep -v '^VDRZAX_Release' | sort >"$scratch/two"
expect_same "functions: < rows of docs/protocol.md, > functions of the headers but for Releases"

# Where a code is named after a function, the row of that function has this code.
awk '
  NR == FNR { code[$1] = $2; next }
  { name = $1; sub(/^VDRZAX_?/, "", name) }
  name in code { rows[name] = rows[name] " " $2 " " }
  END {
    for (name in rows) {
      ++named
      if (index(rows[name], " " code[name] " ")) continue
      print name ": docs/protocol.md says" rows[name] "and library/channel/command_code.h " code[name]
      failed = 1
    }
    if (named < 100) { print "only " named + 0 " codes bear the name of a function"; failed = 1 }
    exit failed
  }' "$scratch/codes" "$scratch/rows" || failed=1

echo "$(wc -l <"$scratch/two") functions, $(wc -l <"$scratch/codes") codes"
exit $failed
