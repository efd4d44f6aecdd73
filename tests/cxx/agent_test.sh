#!/bin/sh
# The example agent makes what is missing on its first run, shows it on both, and says when there is no
# device.
# usage: agent_test.sh VDRSIM AGENT
set -eu
vdrsim=$1 agent=$2

expected='made edge-1
made uplink
edge-1 10
  lif uplink
  route 10 uplink
edge-1 10
  lif uplink
  route 10 uplink'
# shellcheck disable=SC2016
printed=$("$vdrsim" run -- sh -c '"$1" && "$1"' sh "$agent")
[ "$printed" = "$expected" ] || { printf 'it prints:\n%s\n' "$printed"; exit 1; }
