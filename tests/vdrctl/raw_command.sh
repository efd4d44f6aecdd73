#!/bin/sh
# raw_command.sh VDRCTL, in a simulated datapath without instances.
vdrctl=$1
. "$(dirname "$0")/expect.sh"

# No input and no reply; a word as the input; a word as the reply.
expect 0 '' '' "$vdrctl" command 42
expect 0 '{"length":0,"bytes":""}' '' "$vdrctl" --json command 42
expect 0 '' '' "$vdrctl" command 10 --value 0x41424304
expect 0 '00000000  04 43 42 41                                      |.CBA|' '' \
  "$vdrctl" command 9 --capacity 4
expect 0 '00000000  04 43 42 41                                      |.CBA|' '' \
  "$vdrctl" command 0x9 --capacity 1000
expect 0 '{"length":4,"bytes":"04434241"}' '' "$vdrctl" --json command 9 --capacity 4
expect 0 1094861572 '' "$vdrctl" log-level get

# A file as the input, as it stands: four bytes for a word, 968 for a block.
printf '\001\000\000\200' >"$room/word"
expect 0 '' '' "$vdrctl" command 10 --input "$room/word"
expect 0 2147483649 '' "$vdrctl" log-level get
{ printf 'edge-1'; head -c 962 /dev/zero; } >"$room/block"
expect 0 '' '' "$vdrctl" command 2 --input "$room/block"
expect 0 "name    word64  word68  byte72  text73  text329  word399  word568
edge-1       0       0       0  -       -              0        0" '' "$vdrctl" instance list
from_standard_input() { "$vdrctl" command 3 --input - <"$room/block"; }
expect 0 '' '' from_standard_input
expect 0 '[]' '' "$vdrctl" --json instance list

# The reply goes where --output says, in either form as bytes.
expect 0 '' '' "$vdrctl" command 9 --capacity 4 --output "$room/reply"
expect_bytes 01000080 "$room/reply"
expect 0 '' '' "$vdrctl" --json command 10 --value 3 --output "$room/reply"
expect_bytes '' "$room/reply"
"$vdrctl" command 9 --capacity 4 --output - >"$room/piped"
expect_bytes 03000000 "$room/piped"

# The file may get any descriptor, the first one too.
without_input() { "$vdrctl" "$@" <&-; }
expect 0 '' '' without_input command 9 --capacity 4 --output "$room/first"
expect_bytes 03000000 "$room/first"

# It is for everybody whom the operator's mask lets.
unmasked() { (umask 0 && "$vdrctl" command 9 --capacity 4 --output "$room/open" && stat -c %a "$room/open"); }
expect 0 666 '' unmasked

# A command whose reply nobody could have is not sent.
expect 1 '' "vdrctl: $room/none/reply: No such file or directory (ENOENT)" \
  "$vdrctl" command 10 --value 7 --output "$room/none/reply"
expect 0 3 '' "$vdrctl" log-level get
expect 1 '' "vdrctl: $room/none/answer: No such file or directory (ENOENT)" \
  "$vdrctl" policy set 1 --answer "$room/none/answer"
expect 0 '[]' '' "$vdrctl" --json policy list 1

# A command that fails leaves a file as it was, or none; what is written takes the place of all of it.
echo 'as it was' >"$room/reply"
expect 1 '' 'vdrctl: command 200: Inappropriate ioctl for device (ENOTTY)' \
  "$vdrctl" command 200 --output "$room/reply"
expect 0 'as it was' '' cat "$room/reply"
expect 1 '' 'vdrctl: command 200: Inappropriate ioctl for device (ENOTTY)' \
  "$vdrctl" command 200 --output "$room/new"
expect 2 '' "ls: cannot access '$room/new': No such file or directory" ls "$room/new"
expect 0 '' '' "$vdrctl" command 9 --capacity 4 --output "$room/reply"
expect_bytes 03000000 "$room/reply"

# No command has a longer input than a block, so no more than one byte beyond that is read.
too_long() {
  expect 1 '' "vdrctl: $1: File too large (EFBIG)
hint: the input of a command has at most 968 bytes" "$vdrctl" command 3 --input "$1"
}
too_long /dev/zero
rest_of_long() { head -c 2000 /dev/zero | { "$vdrctl" command 3 --input - || wc -c; }; }
expect 0 1031 "vdrctl: standard input: File too large (EFBIG)
hint: the input of a command has at most 968 bytes" rest_of_long
head -c 969 /dev/zero >"$room/long"
too_long "$room/long"

expect 1 '' "vdrctl: $room/none: No such file or directory (ENOENT)" \
  "$vdrctl" command 10 --input "$room/none"
expect 1 '' "vdrctl: $room: Is a directory (EISDIR)" "$vdrctl" command 10 --input "$room"
expect 1 '' "vdrctl: $room: Is a directory (EISDIR)" \
  "$vdrctl" command 9 --capacity 4 --output "$room"
expect 1 '' 'vdrctl: /dev/full: No space left on device (ENOSPC)' \
  "$vdrctl" command 9 --capacity 4 --output /dev/full

# The input is given back before the command is sent: the device gets the one descriptor that is left.
# Memcheck can't start so.
with_one_descriptor() { (exec 3>&- && ulimit -n 4 && "$vdrctl" "$@"); }
if with_one_descriptor --version >"$room/out" 2>&1; then
  expect 0 '' '' with_one_descriptor command 10 --input "$room/word"
fi

# Where the room for the reply is not to be had. Sanitizers can't start so.
with_little_memory() { (ulimit -v 1000000 && "$vdrctl" "$@"); }
if with_little_memory --version >"$room/out" 2>&1; then
  expect 1 '' 'vdrctl: command 9: Cannot allocate memory (ENOMEM)' \
    with_little_memory command 9 --capacity 4294967295
fi

# Neither for tables of a fixed size, or a whole file of commands.
for kilobytes in 10000 12000 14000 16000; do
  with_less_memory() { (ulimit -v $kilobytes && "$vdrctl" "$@"); }
  with_less_memory --version >"$room/out" 2>&1 && break
done
if with_less_memory --version >"$room/out" 2>&1; then
  expect 1 '' 'vdrctl: arp list edge-1: Cannot allocate memory (ENOMEM)' \
    with_less_memory arp list edge-1
  expect 1 '' 'vdrctl: bridge-endpoint list: Cannot allocate memory (ENOMEM)' \
    with_less_memory bridge-endpoint list
  expect 1 '' 'vdrctl: memory: Cannot allocate memory (ENOMEM)' with_less_memory batch /dev/zero
fi

# A reply beyond the buffer of a stream fails before the file is closed.
for number in 1 2 3 4 5 6 7 8; do
  "$vdrctl" instance set "edge-$number"
done
head -c 968 /dev/zero >"$room/empty-block"
expect 1 '' 'vdrctl: /dev/full: No space left on device (ENOSPC)' "$vdrctl" command 0 \
  --input "$room/empty-block" --capacity 100000 --output /dev/full

# What the datapath does not know, or does not take, fails with its errno.
expect 1 '' 'vdrctl: command 2147483647: Inappropriate ioctl for device (ENOTTY)' \
  "$vdrctl" command 2147483647
expect 1 '' 'vdrctl: command 9: Invalid argument (EINVAL)' "$vdrctl" command 9
expect 1 '' \
  '{"status":1,"error":{"command":"command 9","message":"Invalid argument","errno":"EINVAL"}}' \
  "$vdrctl" --json command 9

finish
