#!/bin/sh
# standard_output.sh VDRCTL, in a simulated datapath: a result that could not be written is an error.
vdrctl=$1
. "$(dirname "$0")/expect.sh"

to_full_device() { "$vdrctl" "$@" >/dev/full; }
full='vdrctl: standard output: No space left on device (ENOSPC)'
expect 1 '' "$full" to_full_device instance list
expect 1 '' '{"status":1,"error":{"command":"standard output","message":"No space left on device","errno":"ENOSPC"}}' \
  to_full_device --json instance list
expect 1 '' "$full" to_full_device log-level get
expect 1 '' "$full" to_full_device command 9 --capacity 4
expect 1 '' "$full" to_full_device command 9 --capacity 4 --output -

# A result beyond the buffer of a stream fails before its end.
for number in 1 2 3 4 5 6 7 8; do
  expect 0 '' '' "$vdrctl" instance set "edge-$number"
done
expect 1 '' '{"status":1,"error":{"command":"standard output","message":"No space left on device","errno":"ENOSPC"}}' \
  to_full_device --json instance list

# A command that prints nothing has nothing to lose.
expect 0 '' '' to_full_device log-level set 3
expect 0 3 '' "$vdrctl" log-level get

finish
