#!/bin/sh
# A statically linked program and the tools see one and the same simulated datapath.
# usage: static_client_test.sh ARCHIVE INCLUDE_DIRECTORY EXAMPLES_DIRECTORY VDRSIM VDRCTL
set -eu
archive=$1 include=$2 examples=$3 vdrsim=$4 vdrctl=$5
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

cc -static -I"$include" -o "$scratch/list_instances" "$examples/list_instances.c" "$archive"

# shellcheck disable=SC2016
listed=$("$vdrsim" run -- sh -c '
  "$1" instance set a --second 7 && "$1" instance set b && "$2" && "$1" --json log-level get
' sh "$vdrctl" "$scratch/list_instances")
expected='a 7
b 0
{"level":0}'
if [ "$listed" != "$expected" ]; then
  printf 'expected\n%s\ngot\n%s\n' "$expected" "$listed"
  exit 1
fi
