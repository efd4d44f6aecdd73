#!/bin/sh
# settings.sh VDRCTL, in a simulated datapath.
vdrctl=$1
. "$(dirname "$0")/expect.sh"

# Each setting has a value of its own, so that none is read or written in another's place.
value=100
for setting in log-level extended-log-level stats-level tx-dispatch-queue-size; do
  value=$((value + 1))
  expect 0 '' '' "$vdrctl" $setting set $value
done
expect 0 101 '' "$vdrctl" log-level get
expect 0 102 '' "$vdrctl" extended-log-level get
expect 0 103 '' "$vdrctl" stats-level get
expect 0 104 '' "$vdrctl" tx-dispatch-queue-size get
expect 0 '{"level":101}' '' "$vdrctl" --json log-level get
expect 0 '{"level":102}' '' "$vdrctl" extended-log-level --json get
expect 0 '{"level":103}' '' "$vdrctl" stats-level get --json
expect 0 '{"size":104}' '' "$vdrctl" --json tx-dispatch-queue-size get

for setting in log-level extended-log-level stats-level tx-dispatch-queue-size; do
  expect 0 '' '' "$vdrctl" $setting set 4294967295
  expect 0 4294967295 '' "$vdrctl" $setting get
  expect 0 '' '' "$vdrctl" --json $setting set 0x1F
  expect 0 31 '' "$vdrctl" $setting get
  expect 0 '' '' "$vdrctl" $setting set 0X2e
  expect 0 46 '' "$vdrctl" $setting get
  expect 0 '' '' "$vdrctl" $setting set 010
  expect 0 10 '' "$vdrctl" $setting get
  expect 2 '' "vdrctl: VALUE: '4294967296' is not a number from 0 to 4294967295
Try 'vdrctl $setting set --help'" "$vdrctl" $setting set 4294967296
  expect 0 10 '' "$vdrctl" $setting get
done

expect 0 '' '' "$vdrctl" pre-unload
expect 0 '' '' "$vdrctl" --json pre-unload

finish
