#!/bin/sh
# The record tables of the protocol page are those that the layouts give, and no layout is missing.
# usage: record_tables_test.sh RECORD_TABLES SOURCE_DIRECTORY [--write]
# With --write the page is brought up to date instead.
set -eu
record_tables=$1 source=$2 mode=${3:-}
page=$source/docs/protocol.md
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

begin='<!-- record tables: begin -->'
end='<!-- record tables: end -->'
for marker in "$begin" "$end"; do
  [ "$(grep -cxF "$marker" "$page")" = 1 ] || { echo "no single line \"$marker\""; exit 1; }
done
"$record_tables" >"$scratch/wanted"

if [ "$mode" = --write ]; then
  awk -v begin="$begin" -v end="$end" -v tables="$scratch/wanted" '
    $0 == end { while ((getline line < tables) > 0) print line; print ""; inside = 0 }
    !inside { print }
    $0 == begin { inside = 1 }' "$page" >"$scratch/page"
  cat "$scratch/page" >"$page"
  exit 0
fi

awk -v begin="$begin" -v end="$end" '
  $0 == end { inside = 0 }
  inside { print }
  $0 == begin { inside = 1 }' "$page" >"$scratch/found"
echo >>"$scratch/wanted"
if ! diff "$scratch/found" "$scratch/wanted"; then
  echo "< in docs/protocol.md, > as the layouts say"
  echo "tests/docs/record_tables_test.sh BUILD/tests/docs/record_tables . --write updates it"
  failed=1
fi

# Layouts that the program does not print would escape the comparison.
layouts=$(sed -n 's/.*constexpr RecordLayout \(k[A-Za-z0-9]*\).*/\1/p' "$source"/library/*/*_record.h)
[ -n "$layouts" ] || { echo "no layouts found"; exit 1; }
for layout in $layouts; do
  if ! grep -qw "vdrzax::$layout" "$source/tests/docs/record_tables.cpp"; then
    echo "tests/docs/record_tables.cpp does not print $layout"
    failed=1
  fi
done
exit $failed
