#!/bin/sh
# missing_device.sh VDRCTL, on a machine without the kernel module.
vdrctl=$1
. "$(dirname "$0")/expect.sh"

if [ -e /qorv/devices/char/zaxdriver/ryn_vdr ]; then
  echo 'This machine has the device.'
  exit 77
fi

missing() {
  words=$*
  node=/qorv/devices/char/zaxdriver/ryn_vdr${USE_UPGRADE_DEV+_ugrade}
  expect 1 '' "vdrctl: $words: No such file or directory (ENOENT)
hint: $node cannot be opened: is the kernel module loaded? Without it, try vdrsim run -- vdrctl ..." \
    "$vdrctl" "$@"
}
missing instance list
missing instance list edge-1
missing instance show edge-1
missing instance set edge-1
missing instance delete edge-1
missing instance tune edge-1 mtu 5
missing instance show list
for setting in log-level extended-log-level stats-level tx-dispatch-queue-size; do
  missing $setting get
  missing $setting set 3
done
missing pre-unload
missing command 9
export USE_UPGRADE_DEV=
missing instance list

finish
