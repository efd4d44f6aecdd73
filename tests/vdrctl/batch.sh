#!/bin/sh
# batch.sh VDRCTL, in a simulated datapath without instances: commands of a file.
vdrctl=$1
. "$(dirname "$0")/expect.sh"
file=$room/commands

cat >"$file" <<'END'
# Words as a shell parts them.
instance set 'edge 1' --second 1   # a comment

  instance set "edge\"2\\\\" --text 'a # b'
instance set edge\ 3 --second=3
instance set 'edge-\xff\\'
instance list
END
expect 0 'name         word64  word68  byte72  text73  text329  word399  word568
edge 1            1       0       0  -       -              0        0
edge 3            3       0       0  -       -              0        0
edge"2\\          0       0       0  a # b   -              0        0
edge-\xff\\       0       0       0  -       -              0        0' \
  "vdrctl: $file: 5 done, 0 failed, 0 not tried" "$vdrctl" batch "$file"

# All lines are checked before the first is carried out.
printf 'instance delete "edge 1"\ninstance delet x\n\ninstance set "x\ninstance --help\nbatch x\n--json instance list\n' >"$file"
expect 2 '' "vdrctl: $file:2: 'vdrctl instance' has no 'delet' (did you mean 'delete'?)
Try 'vdrctl instance --help'
vdrctl: $file:4: a closing \" is missing
vdrctl: $file:5: help and version are not for a file of commands
vdrctl: $file:6: a file of commands can't run another one
vdrctl: $file:7: options that hold for all commands stand behind 'vdrctl batch'" "$vdrctl" batch "$file"
expect 0 '[{"name":"edge 1"},{"name":"edge 3"},{"name":"edge\"2\\"},{"name":"edge-\\xff\\\\","nameEscaped":true}]' \
  '' "$vdrctl" --json instance list --columns name

printf 'instance delete "edge 1"\ninstance delete nope\ninstance delete "edge 3"\n' >"$file"
expect 0 '' '' "$vdrctl" batch "$file" --dry-run
failed="vdrctl: $file:2: instance delete nope: No such file or directory (ENOENT)"
expect 1 '' "$failed
vdrctl: $file: 1 done, 1 failed, 1 not tried" "$vdrctl" batch "$file"
printf 'instance delete nope\ninstance delete "edge 3"\n' >"$file"
expect 1 '' "vdrctl: $file:1: instance delete nope: No such file or directory (ENOENT)
vdrctl: $file: 1 done, 1 failed, 0 not tried" "$vdrctl" batch --keep-going "$file"

# What is not there need not be deleted.
printf 'instance delete nope --if-exists\n' >"$file"
expect 0 '' "vdrctl: $file: 1 done, 0 failed, 0 not tried" "$vdrctl" batch "$file"
expect 0 '' '' "$vdrctl" instance rm nope --if-exists

# From standard input, with JSON for all that is printed.
piped() { printf 'log-level set 7\nlog-level get\ninstance show x' | "$vdrctl" -j batch -; }
expect 1 '{"level":7}' '{"status":1,"error":{"place":"standard input:3","command":"instance show x","message":"No such file or directory","errno":"ENOENT"}}
{"done":2,"failed":1,"notTried":0}' piped

piped() { printf 'log-level set 7\n' | "$vdrctl" batch -; }
expect 0 '' 'vdrctl: standard input: 1 done, 0 failed, 0 not tried' piped

# Any bytes make a line.
printf 'a\000b\n\377\n' >"$file"
expect 2 '' "vdrctl: $file:1: a byte of zero can't be a part of a word
vdrctl: $file:2: 'vdrctl' has no '\\xff'
Try 'vdrctl --help'" "$vdrctl" batch "$file"
expect 1 '' "vdrctl: $room/none: No such file or directory (ENOENT)" "$vdrctl" batch "$room/none"
: >"$file"
expect 0 '' "vdrctl: $file: 0 done, 0 failed, 0 not tried" "$vdrctl" batch "$file"

finish
