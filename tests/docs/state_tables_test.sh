#!/bin/sh
# The tables of the page of states are those that the tables of members give.
# usage: state_tables_test.sh STATE_TABLES SOURCE_DIRECTORY [--write]
# With --write the page is brought up to date instead.
set -eu
state_tables=$1 page=$2/docs/vdrsim-state.md mode=${3:-}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

marker='## All members'
[ "$(grep -cxF "$marker" "$page")" = 1 ] || { echo "no single line \"$marker\""; exit 1; }
sed "/^$marker\$/q" "$page" >"$scratch/wanted"
"$state_tables" >>"$scratch/wanted"
if [ "$mode" = --write ]; then
  cat "$scratch/wanted" >"$page"
  exit 0
fi
if ! diff "$page" "$scratch/wanted"; then
  echo "< in docs/vdrsim-state.md, > as the tables of members say"
  echo "tests/docs/state_tables_test.sh BUILD/tests/docs/state_tables . --write updates it"
  exit 1
fi
