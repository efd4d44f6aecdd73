#!/bin/sh
# large_batch.sh VDRCTL: a file of commands that is as long as is taken, and a byte longer.
vdrctl=$1
. "$(dirname "$0")/expect.sh"
file=$room/commands

printf '#' >"$file"
truncate -s 268435456 "$file"
expect 0 '' '' "$vdrctl" batch "$file" --dry-run
truncate -s 268435457 "$file"
expect 1 '' "vdrctl: $file: File too large (EFBIG)
hint: a file of commands has at most 256 MiB" "$vdrctl" batch "$file" --dry-run

finish
