#!/bin/sh
# What vdrzax-memcheck says of a program on the simulated datapath: nothing of what the library does on
# purpose, and all that the program does wrong.
# usage: memcheck_test.sh SOURCE_DIRECTORY VDRSIM CLIENT
set -eu
source=$1 vdrsim=$2 client=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# As it is installed: the program, and what it needs in a place of its own.
mkdir "$work/bin" "$work/files"
sed 's,@memcheck_files@,../files,' "$source/tools/memcheck/vdrzax-memcheck.in" >"$work/bin/vdrzax-memcheck"
chmod +x "$work/bin/vdrzax-memcheck"
cp "$source/tools/memcheck/device.c" "$source/tools/memcheck/memcheck.supp" "$work/files"

expect() { # expect STATUS WHAT [OPTION OF VDRSIM]...
  status=0
  expected=$1 what=$2
  shift 2
  "$vdrsim" run "$@" -- "$work/bin/vdrzax-memcheck" "$client" "$what" >"$work/log" 2>&1 || status=$?
  [ "$status" -eq "$expected" ] || { echo "$what: status $status"; cat "$work/log"; exit 1; }
}

expect 0 read
grep -q '^7 at 64$' "$work/log"
expect 99 forget
grep -q '577 bytes in 1 blocks are definitely lost' "$work/log"
# The count of policies is lost when its reply is short, all others when the command fails.
failing='--fault GetPolicyCount:short=0 --fault %bridge:error=EIO --fault %lif:error=EIO'
failing="$failing --fault %mcast:error=EIO --fault %services:error=EIO"
# shellcheck disable=SC2086
expect 0 lose $failing

# Each entry is needed: without it something is reported.
grep -o '^  fun:VDRZAX_.*' "$source/tools/memcheck/memcheck.supp" | while read -r entry; do
  awk -v entry="$entry" 'BEGIN { RS = ""; ORS = "\n\n" } index($0, entry "\n") == 0' \
    "$source/tools/memcheck/memcheck.supp" >"$work/files/memcheck.supp"
  # shellcheck disable=SC2086
  expect 99 lose $failing
done
"$work/bin/vdrzax-memcheck" --help | grep -q '^usage: '
