#!/bin/sh
# missing_device.sh VDRCTL: what vdrctl says where there is no device. A machine that has one loses it
# from sight; where that is not allowed, nothing is sent to it.
folder=/qorv/devices
if [ -e $folder/char ]; then
  # shellcheck disable=SC2016
  hide='mount -t tmpfs none "$0" && exec "$@"'
  for privilege in '' --map-root-user; do
    # shellcheck disable=SC2086
    if unshare $privilege --mount sh -c "$hide" $folder true 2>/dev/null; then
      exec unshare $privilege --mount sh -c "$hide" $folder sh "$0" "$@"
    fi
  done
  echo "This machine has $folder, and no mount namespace may be made to hide it."
  exit 77
fi

vdrctl=$1
. "$(dirname "$0")/expect.sh"

missing() {
  words=$*
  node=/qorv/devices/char/zaxdriver/ryn_vdr${USE_UPGRADE_DEV+_ugrade}
  expect 3 '' "vdrctl: $words: No such file or directory (ENOENT)
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

# That there is nothing to delete is not known then.
unset USE_UPGRADE_DEV
expect 3 '' "vdrctl: instance delete edge-1: No such file or directory (ENOENT)
hint: /qorv/devices/char/zaxdriver/ryn_vdr cannot be opened: is the kernel module loaded? Without it, try vdrsim run -- vdrctl ..." \
  "$vdrctl" instance delete edge-1 --if-exists
expect 3 '' '{"status":3,"error":{"command":"log-level get","message":"No such file or directory","errno":"ENOENT","hint":"/qorv/devices/char/zaxdriver/ryn_vdr cannot be opened: is the kernel module loaded? Without it, try vdrsim run -- vdrctl ..."}}' \
  "$vdrctl" -j log-level get

# Without a standard error, too.
to_closed_error() { "$vdrctl" "$@" 2>&-; }
to_full_error() { "$vdrctl" "$@" 2>/dev/full; }
expect 3 '' '' to_closed_error instance list
expect 3 '' '' to_full_error instance list

finish
