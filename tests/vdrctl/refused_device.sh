#!/bin/sh
# refused_device.sh VDRCTL REFUSE: a node that can't be opened for reading and writing, whatever else
# can. REFUSE has the kernel refuse the call.
vdrctl=$1
refuse=$2
. "$(dirname "$0")/expect.sh"

# refused NUMBER ERROR [HINT]    With a hint there is no device, which has an exit status of its own.
refused() {
  line="vdrctl: instance list: $2"
  [ $# -lt 3 ] || line="$line
hint: /qorv/devices/char/zaxdriver/ryn_vdr cannot be opened: $3"
  expect $(($# < 3 ? 1 : 3)) '' "$line" "$refuse" openat "$1" 2 0x3 2 -- "$vdrctl" instance list
}
rights='reading and writing it needs rights that you lack; are you root?'
refused 13 'Permission denied (EACCES)' "$rights"
refused 1 'Operation not permitted (EPERM)' "$rights"
module='is the kernel module loaded? Without it, try vdrsim run -- vdrctl ...'
refused 6 'No such device or address (ENXIO)' "$module"
refused 19 'No such device (ENODEV)' "$module"
# There is nothing to advise.
refused 24 'Too many open files (EMFILE)'
# A kernel may know errors that the C library does not.
refused 4000 'Unknown error 4000 (4000)'

finish
