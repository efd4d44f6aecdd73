#!/bin/sh
# usage: agent_test.sh AGENT VDRSIM VDRCTL
set -eu
agent=$1 vdrsim=$2 vdrctl=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

expect() { # expect EXPECTED COMMAND...: what the command prints, errors too, and its exit status
  expected=$1
  shift
  printed=$("$@" 2>&1) && status=0 || status=$?
  if [ "$printed ($status)" != "$expected" ]; then
    printf 'expected: %s\nprinted: %s (%s)\n' "$expected" "$printed" "$status"
    exit 1
  fi
}

cat >"$scratch/run" <<'END_OF_RUN'
agent=$1 vdrctl=$2
echo first; "$agent" && echo second && "$agent"
"$vdrctl" --json lif show edge-1 uplink | grep -oE '"word128": *[0-9]+'
"$vdrctl" lif delete edge-1 uplink && echo third && "$agent"
END_OF_RUN
there='LIF uplink 100
route of 1 next hops'
expect "first
making edge-1
making uplink
$there
second
$there
\"word128\":100
third
making uplink
$there (0)" "$vdrsim" run -- sh "$scratch/run" "$agent" "$vdrctl"

if [ ! -e /qorv/devices/char/zaxdriver/ryn_vdr ]; then
  expect 'agent: datapath: No such file or directory (3)' "$agent"
fi
