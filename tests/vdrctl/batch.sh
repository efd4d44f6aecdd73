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

# A byte of zero would end a name early, whatever stands around it.
printf 'instance set "a\000b"\ninstance set a\\\000b\ninstance set '"'a\\000b'"'\nlog-level get # a\000b\n' >"$file"
expect 2 '' "vdrctl: $file:1: a byte of zero can't be a part of a word
vdrctl: $file:2: a byte of zero can't be a part of a word
vdrctl: $file:3: a byte of zero can't be a part of a word" "$vdrctl" batch "$file"

# Lines that end as other systems have it, a last one that does not end, and one that goes on and on.
printf 'log-level set 8\r\n\r\nlog-level get' >"$file"
expect 0 8 "vdrctl: $file: 2 done, 0 failed, 0 not tried" "$vdrctl" batch "$file"
{ printf 'log-level get\ninstance set ' && head -c 3000000 /dev/zero | tr '\000' x; } >"$file"
expect 2 '' "vdrctl: $file:2: INSTANCE: the text is 3000000 bytes long, and at most 63 are taken
Try 'vdrctl instance set --help'" "$vdrctl" batch "$file"
printf 'log-level get \\' >"$file"
expect 2 '' "vdrctl: $file:1: a character is missing behind the last backslash" "$vdrctl" batch "$file"
{ i=0 && while [ $i -lt 23 ]; do i=$((i + 1)) && echo x; done; } >"$file"
"$vdrctl" batch "$file" 2>"$room/err"
expect_line "vdrctl: $file:20: 'vdrctl' has no 'x'" "$room/err"
expect_line "vdrctl: $file: 3 more lines are wrong" "$room/err"
{ i=0 && while [ $i -lt 20 ]; do i=$((i + 1)) && echo x; done; } >"$file"
"$vdrctl" batch "$file" 2>"$room/told"
expect_line "vdrctl: $file:20: 'vdrctl' has no 'x'" "$room/told"
expect 0 "Try 'vdrctl --help'" '' tail -n 1 "$room/told"
echo x >>"$file"
"$vdrctl" batch "$file" 2>"$room/err"
expect_line "vdrctl: $file: 1 more line is wrong" "$room/err"
printf 'x\nx\n' >>"$file"
"$vdrctl" --json batch "$file" 2>"$room/err"
expect_line '{"status":2,"error":{"place":"'"$file"'","message":"3 more lines are wrong"}}' "$room/err"

# A file that a line names and that can't be used is the failure of that line.
printf 'log-level set 4\ncommand 10 --input %s\nlog-level get\n' "$room/none" >"$file"
expect 1 '' "vdrctl: $file:2: $room/none: No such file or directory (ENOENT)
vdrctl: $file: 1 done, 1 failed, 1 not tried" "$vdrctl" batch "$file"
expect 1 4 "vdrctl: $file:2: $room/none: No such file or directory (ENOENT)
vdrctl: $file: 2 done, 1 failed, 0 not tried" "$vdrctl" batch "$file" --keep-going
printf 'schema lif\nlog-level get\n' >"$file"
expect 2 4 "vdrctl: $file:1: there is no command 'lif'
Try 'vdrctl schema --help'
vdrctl: $file: 1 done, 1 failed, 0 not tried" "$vdrctl" batch "$file" --keep-going

# Little is read of a short file, and not much is made room for. Sanitizers can't start so.
with_little_memory() { (ulimit -v 100000 && "$vdrctl" "$@"); }
if with_little_memory --version >"$room/out" 2>&1; then
  expect 0 '' '' with_little_memory batch /dev/null --dry-run
fi

# Nothing that a line opened stays open.
{
  i=0 && while [ $i -lt 20 ]; do
    i=$((i + 1))
    printf 'instance delete nope\ncommand 9 --capacity 4 --output "%s"\ncommand 10 --input "%s"\n' \
      "$room/reply" "$room/reply"
  done
} >"$file"
with_few_descriptors() { (ulimit -n 12 && "$vdrctl" "$@"); }
if with_few_descriptors --version >"$room/out" 2>&1; then
  with_few_descriptors batch "$file" --keep-going 2>"$room/told"
  expect 0 "vdrctl: $file: 40 done, 20 failed, 0 not tried" '' tail -n 1 "$room/told"
fi

# What is printed goes out on the way: the last command waits until somebody has read what is before.
mkfifo "$room/answer"
{
  i=0 && while [ $i -lt 1000 ]; do i=$((i + 1)) && echo 'command 9 --capacity 4'; done
  printf 'policy set 1 --answer "%s"\n' "$room/answer"
} >"$file"
read_on_the_way() {
  "$vdrctl" batch "$file" | {
    head -c 65536 >"$room/read"
    cat "$room/answer" - >>"$room/read"
    wc -c <"$room/read"
  }
}
expect 0 66088 "vdrctl: $file: 1001 done, 0 failed, 0 not tried" read_on_the_way

# Columns are for all lines that print something, and are looked at beforehand too.
printf 'log-level set 5\ninstance list\nlog-level get\nbridge list\n' >"$file"
expect 2 '' "vdrctl: $file:3: this command prints no records, so there are no columns to choose
Try 'vdrctl log-level get --help'
vdrctl: $file:4: no column 'word64'; there are qword0, word8, name, word76, word80, text84, text212, word305, word309, qwords313
Try 'vdrctl bridge list --help'" "$vdrctl" batch "$file" --columns name,word64
expect 2 '' "vdrctl: $file:3: this command prints no records, so there are no columns to choose
Try 'vdrctl log-level get --help'" "$vdrctl" batch "$file" --sort name --dry-run
expect 0 4 '' "$vdrctl" log-level get
printf 'log-level set 5\nbridge list\nbridge list\n' >"$file"
expect 0 'name
name' "vdrctl: $file: 3 done, 0 failed, 0 not tried" "$vdrctl" batch "$file" --columns name
expect 1 '' "vdrctl: $room/none: No such file or directory (ENOENT)" \
  "$vdrctl" batch "$file" --dry-run --names "$room/none"

without_input() { "$vdrctl" "$@" <&-; }
expect 1 '' 'vdrctl: standard input: Bad file descriptor (EBADF)' without_input batch -
expect 1 '' 'vdrctl: standard input: Bad file descriptor (EBADF)' without_input command 10 --input -

# A command like that of the line before is found without the table, and is the same one.
printf 'instance set e1 --second 1\ninstance set e2 --second 2\ninstance rm e1\ninstance\ninstance del e2 x\n' >"$file"
expect 2 '' "vdrctl: $file:4: 'vdrctl instance' is not a complete command
Try 'vdrctl instance --help'
vdrctl: $file:5: 'vdrctl instance delete' takes no further argument: 'x'
Try 'vdrctl instance delete --help'" "$vdrctl" batch "$file"
printf 'log-level set 1\nlog-level set 2\nlog-level get\nlog-level get\n' >"$file"
expect 0 '2
2' "vdrctl: $file: 4 done, 0 failed, 0 not tried" "$vdrctl" batch "$file"

# Any bytes make a line.
printf 'a\000b\n\377\n' >"$file"
expect 2 '' "vdrctl: $file:1: a byte of zero can't be a part of a word
vdrctl: $file:2: 'vdrctl' has no '\\xff'
Try 'vdrctl --help'" "$vdrctl" batch "$file"
expect 1 '' "vdrctl: $room/none: No such file or directory (ENOENT)" "$vdrctl" batch "$room/none"
: >"$file"
expect 0 '' "vdrctl: $file: 0 done, 0 failed, 0 not tried" "$vdrctl" batch "$file"

finish
