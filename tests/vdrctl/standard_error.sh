#!/bin/sh
# standard_error.sh VDRCTL, in a simulated datapath without instances: the exit status does not depend
# on whether the message arrives.
vdrctl=$1
. "$(dirname "$0")/expect.sh"

to_closed_error() { "$vdrctl" "$@" 2>&-; }
to_full_error() { "$vdrctl" "$@" 2>/dev/full; }
to_closed_streams() { "$vdrctl" "$@" >&- 2>&-; }
to_full_streams() { "$vdrctl" "$@" >/dev/full 2>/dev/full; }

# unheard STATUS ARGUMENTS...
unheard() {
  status_of_error=$1
  shift
  for stream in to_closed_error to_full_error to_closed_streams to_full_streams; do
    expect "$status_of_error" '' '' $stream "$@"
  done
}
unheard 2 frob
unheard 2 instance show
unheard 2 log-level set x
unheard 1 instance show edge-1
unheard 1 command 10 --input "$room/none"
unheard 1 command 10 --input /dev/zero
unheard 1 command 9 --capacity 4 --output /dev/full
unheard 1 command 2147483647

# A result that could not be written is an error, whoever hears of it.
for stream in to_closed_streams to_full_streams; do
  expect 1 '' '' $stream instance list
  expect 1 '' '' $stream --help
  expect 1 '' '' $stream --version
done

# What succeeds needs no standard error.
expect 0 0 '' to_closed_error log-level get
expect 0 0 '' to_full_error log-level get

finish
