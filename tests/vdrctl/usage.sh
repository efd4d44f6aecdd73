#!/bin/sh
# usage.sh VDRCTL VERSION: what the command line takes and refuses. No command is sent.
vdrctl=$1
version=$2
. "$(dirname "$0")/expect.sh"

# wrong WORDS COMPLAINT ARGUMENTS...: WORDS is what was understood.
wrong() {
  words=$1
  complaint=$2
  shift 2
  expect 2 '' "vdrctl: $complaint
Try '$words --help'" "$vdrctl" "$@"
}

wrong vdrctl "'vdrctl' is not a complete command"
expect 2 '' '{"status":2,"error":{"message":"'"'vdrctl'"' is not a complete command","hint":"Try '"'vdrctl --help'"'"}}' \
  "$vdrctl" --json
wrong vdrctl "'vdrctl' has no 'frob'" frob
wrong vdrctl "'vdrctl' has no '--frob'" --frob
wrong vdrctl "'vdrctl' has no '\\x1b'" "$(printf '\033')"
wrong 'vdrctl instance' "'vdrctl instance' is not a complete command" instance
wrong 'vdrctl instance' "'vdrctl instance' has no 'frob'" instance frob edge-1
wrong 'vdrctl instance list' "'vdrctl instance list' has no option '--frob'" instance list --frob
wrong 'vdrctl instance show' 'INSTANCE is required' instance show
wrong 'vdrctl instance delete' 'INSTANCE is required' instance delete
wrong 'vdrctl instance set' 'INSTANCE is required' instance set --second 1
wrong 'vdrctl instance tune' 'VALUE is required' instance tune edge-1 mtu
wrong 'vdrctl instance show' "'vdrctl instance show' takes no further argument: 'edge-2'" \
  instance show edge-1 edge-2
wrong 'vdrctl log-level get' "'vdrctl log-level get' takes no further argument: '3'" log-level get 3
wrong 'vdrctl log-level set' 'VALUE is required' log-level set
wrong 'vdrctl pre-unload' "'vdrctl pre-unload' takes no further argument: 'now'" pre-unload now
wrong 'vdrctl command' 'CODE is required' command

for number in -1 +1 x 0x 1x 0x1g ' 1' 1.5 4294967296 99999999999999999999; do
  wrong 'vdrctl log-level set' "VALUE: '$number' is not a number from 0 to 4294967295" \
    log-level set "$number"
  wrong 'vdrctl instance set' "--second: '$number' is not a number from 0 to 4294967295" \
    instance set edge-1 --second "$number"
done
wrong 'vdrctl instance set' "--flag: '256' is not a number from 0 to 255" \
  instance set edge-1 --flag=256
wrong 'vdrctl command' "CODE: '-1' is not a number from 0 to 2147483647" command -1
wrong 'vdrctl command' "CODE: '2147483648' is not a number from 0 to 2147483647" command 2147483648
wrong 'vdrctl command' '--value excludes --input' command 9 --value 1 --input "$0"
wrong 'vdrctl command' '--value excludes --input' command 9 --input "$0" --value 1

long=1234567890123456789012345678901234567890123456789012345678901234
for verb in list show set delete; do
  wrong "vdrctl instance $verb" 'INSTANCE: the text is 64 bytes long, and at most 63 are taken' \
    instance $verb $long
done
wrong 'vdrctl instance tune' 'INSTANCE: the text is 64 bytes long, and at most 63 are taken' \
  instance tune $long mtu 1
wrong 'vdrctl instance tune' 'TUNABLES: the text is 64 bytes long, and at most 63 are taken' \
  instance tune edge-1 $long 1
wrong 'vdrctl instance set' '--text: the text is 19 bytes long, and at most 18 are taken' \
  instance set edge-1 --text 1234567890123456789

expect 0 "vdrctl $version" '' "$vdrctl" --version
expect 0 "vdrctl $version" '' "$vdrctl" -V
expect 0 "vdrctl $version" '' "$vdrctl" instance show -V

# help USAGE LINE ARGUMENTS...: help on standard output that holds both lines.
help() {
  usage=$1
  line=$2
  shift 2
  "$vdrctl" "$@" >"$room/help" 2>"$room/err"
  status=$?
  [ "$status" -eq 0 ] || {
    failures=$((failures + 1))
    printf 'FAILED: vdrctl %s: expected status 0, got %s\n' "$*" "$status"
  }
  expect_bytes '' "$room/err"
  expect_line "Usage: $usage" "$room/help"
  expect_line "$line" "$room/help"
}
help 'vdrctl instance show INSTANCE' 'Show all fields of a router instance.' instance show edge-1 help
help 'vdrctl lif address VERB ...' 'IPv4 addresses of a LIF.' lif help address
help 'vdrctl instance list [INSTANCE]' 'Arguments:' instance list --columns name help
help 'vdrctl [OPTIONS] OBJECT VERB [ARGUMENTS]' '  vdrctl instance set edge-1 --text blue --flag 1' --help
help 'vdrctl [OPTIONS] OBJECT VERB [ARGUMENTS]' '  -V, --version                     Print the version and exit' help
help 'vdrctl instance VERB ...' \
  '                                    Delete a router instance' instance --help
help 'vdrctl instance list [INSTANCE]' \
  '  INSTANCE                          Name of the router instance' instance list --help
help 'vdrctl [OPTIONS] OBJECT VERB [ARGUMENTS]' 'Objects and their verbs:' --help
help 'vdrctl instance delete INSTANCE [--if-exists]' \
  '  --if-exists                       Succeed also when there is nothing to delete' help instance rm
help 'vdrctl instance tune INSTANCE TUNABLES VALUE' \
  'Set the tunables of a router instance.' instance tune -h
for setting in log-level extended-log-level stats-level tx-dispatch-queue-size; do
  help "vdrctl $setting VERB ..." 'Commands:' $setting help
  help "vdrctl $setting get" "'vdrctl --help' tells what holds for all commands." $setting get help
  help "vdrctl $setting set VALUE" 'Arguments:' $setting set --help
done
help 'vdrctl command CODE [--value N] [--input FILE] [--capacity N] [--output FILE]' \
  '  --input FILE                      Send the bytes of FILE, at most 968, as the input; not with --value' \
  command --help

# A slip of the hand is told what was meant, and nothing is guessed from a part of a word.
wrong vdrctl "'vdrctl' has no '--jsno' (did you mean '--json'?)" --jsno
wrong vdrctl "'vdrctl' has no 'instnace' (did you mean 'instance'?)" instnace list
wrong 'vdrctl instance' "'vdrctl instance' has no 'delte' (did you mean 'delete'?)" instance delte
wrong 'vdrctl instance' "'vdrctl instance' has no 'del-all'" instance del-all
wrong 'vdrctl instance' "'vdrctl instance' has no 'sho' (did you mean 'show'?)" instance sho
wrong 'vdrctl instance set' "'vdrctl instance set' has no option '--secnd' (did you mean '--second'?)" \
  instance set edge-1 --secnd=1
wrong 'vdrctl instance set' '--second N: a value is missing' instance set edge-1 --second
wrong 'vdrctl instance set' "'--second' is given twice" instance set edge-1 --second 1 --second=2
wrong 'vdrctl instance list' "'--json' takes no value" instance list --json=yes
wrong 'vdrctl instance show' 'INSTANCE: a backslash is written \\, and a byte \xNN, from \x01 to \xff' \
  instance show 'a\b'

# What a schema is asked for is understood as on a command line.
"$vdrctl" schema lif show >"$room/schema"
expect 0 "$(cat "$room/schema")" '' "$vdrctl" schema lif get
wrong 'vdrctl schema' "there is no command 'lif shw'" schema lif shw
wrong 'vdrctl schema' "there is no command 'lif'" schema lif
wrong 'vdrctl schema' "'vdrctl lif set' prints no JSON" schema lif set
wrong 'vdrctl schema' "'vdrctl commands' prints no JSON" schema commands
wrong 'vdrctl batch' "a file of commands can't be watched" batch /dev/null --watch 1

# An option of all commands is one before the command too, but for what only begins like one.
wrong vdrctl "'vdrctl' is not a complete command" --columns
wrong vdrctl "'vdrctl' is not a complete command" --columns name
wrong vdrctl "'vdrctl' is not a complete command" --columns=name
wrong vdrctl "'vdrctl' has no '--columnsx' (did you mean '--columns'?)" --columnsx name instance list
wrong vdrctl "'vdrctl' has no '--colunms=a' (did you mean '--columns'?)" --colunms=a instance list
wrong vdrctl "'vdrctl' has no '--json=yes'" --json=yes instance list
wrong vdrctl "'vdrctl' has no '-x'" -x instance list
wrong vdrctl "'vdrctl' has no '-'" - instance list
wrong vdrctl "'vdrctl' has no ''" '' instance list
wrong 'vdrctl instance list' "'vdrctl instance list' has no option '--jsno' (did you mean '--json'?)" \
  instance list --jsno
wrong 'vdrctl policy count' \
  'this command prints no records, so there are no columns to choose' policy count 1 --columns help
wrong 'vdrctl instance list' "'vdrctl instance list' has no option '-x'" instance list -x
wrong 'vdrctl instance show' "'vdrctl instance show' takes no further argument: '--'" \
  instance show edge-1 -- --
wrong 'vdrctl instance show' "'vdrctl instance show' takes no further argument: 'help'" \
  instance show -- edge-1 help
wrong 'vdrctl instance show' "'vdrctl instance show' takes no further argument: '--json'" \
  instance show edge-1 -- --json
wrong 'vdrctl instance show' "'--columns' is given twice" \
  --columns a instance show --columns=b edge-1
wrong 'vdrctl instance list' "'--no-header' is given twice" --no-header instance list --no-header
expect 2 '' '{"status":2,"error":{"message":"INSTANCE is required","hint":"Try '"'vdrctl instance show --help'"'"}}' \
  "$vdrctl" instance -j show

# A synonym stands for a verb of the object, and for no other.
wrong 'vdrctl log-level' "'vdrctl log-level' has no 'rm'" log-level rm

# Columns are looked at before anything is sent.
wrong 'vdrctl instance list' "column 'name' is given twice" instance list --columns name,word64,name
wrong 'vdrctl lif-policy-table show' \
  "no column ''; there are refName, refCount, refEntries" lif-policy-table show a b --columns ''
wrong 'vdrctl lif-policy-table show' \
  "no column ''; there are refName, refCount, refEntries" lif-policy-table show a b --columns refName,
wrong 'vdrctl policy list' "no column 'x'; there are policyWord0, policyWord1, policyWord2, policyWord3, policyWord4, policyQword" \
  policy list 1 --sort x
wrong 'vdrctl log-level get' 'this command prints no records, so there are no columns to choose' \
  log-level get --columns level
wrong 'vdrctl instance show' 'this command prints no list, so there is nothing to sort' \
  instance show a --sort name

# Every kind of value.
wrong 'vdrctl lif address set' \
  "ADDRESS/LENGTH: '10.0.0.1' is not an IPv4 prefix such as 10.0.0.0/24 or 10.0.0.0/255.255.255.0" \
  lif address set edge-1 uplink 10.0.0.1
wrong 'vdrctl control-plane set-address' \
  "ADDRESS: '10.0.0' is not an IPv4 address such as 10.0.0.1" control-plane set-address edge-1 10.0.0
wrong 'vdrctl neighbour6 delete' "ADDRESS: 'x' is not an IPv6 address such as 2001:db8::1" \
  neighbour6 delete edge-1 uplink x
wrong 'vdrctl lif address6 set' \
  "ADDRESS/LENGTH: '::1/129' is not an IPv6 prefix such as 2001:db8::/32" \
  lif address6 set edge-1 uplink ::1/129
wrong 'vdrctl arp set' "MAC: '2:0' is not a hardware address such as 02:00:5e:10:ab:ff" \
  arp set edge-1 uplink 10.0.0.1 2:0
wrong 'vdrctl completion' "SHELL: 'tcsh' is not one of bash|zsh|fish" completion tcsh
wrong 'vdrctl soft-rss table set' \
  "QUEUES: '1,256' is not a list of up to 128 numbers from 0 to 255, as 0,1,2,3" \
  soft-rss table set rss 1,256

wrong 'vdrctl batch' 'FILE: the name of a file is missing' batch ''
wrong 'vdrctl command' '--input: the name of a file is missing' command 9 --input=

# limited WORDS PARAMETER MOST ARGUMENTS...: the text of the parameter comes behind the arguments.
limited() {
  where=$1
  parameter=$2
  most=$3
  shift 3
  wrong "$where" "$parameter: the text is $((most + 1)) bytes long, and at most $most are taken" \
    "$@" "$(printf "%0$((most + 1))d" 0)"
}
limited 'vdrctl instance list' --columns 4096 instance list --columns
limited 'vdrctl instance list' --sort 255 instance list --sort
limited 'vdrctl instance list' --watch 16 instance list --watch
limited 'vdrctl schema' OBJECT 63 schema
limited 'vdrctl schema' VERB 63 schema lif
limited 'vdrctl schema' WORD 63 schema lif address
limited 'vdrctl connection plumb' --second 15 connection plumb c1 --second
limited 'vdrctl connection plumb' --fourth 17 connection plumb c1 --fourth
limited 'vdrctl connection plumb' --fifth 31 connection plumb c1 --fifth
limited 'vdrctl connection plumb' --sixth 255 connection plumb c1 --sixth
limited 'vdrctl bfd-port plumb' --second-name 15 bfd-port plumb p1 --second-name
limited 'vdrctl transport-node set' --third-name 15 transport-node set one --third-name
limited 'vdrctl soft-rss table set' QUEUES 1024 soft-rss table set rss
wrong 'vdrctl transport-node set' '--bytes: the text is 130 bytes long, and at most 128 are taken' \
  transport-node set one --bytes "$(printf %0130d 0)"
wrong 'vdrctl lif-policy-table set' 'TABLES: the text is 4097 bytes long, and at most 4096 are taken' \
  lif-policy-table set edge-1 uplink "1:2:$(printf %04093d 0)"
wrong 'vdrctl lif set' "--mode: '4' is not a number from 0 to 3" lif set edge-1 uplink --mode 4
wrong 'vdrctl lif set' "--flags: '536870912' is not a number from 0 to 536870911" \
  lif set edge-1 uplink --flags 536870912

# As many as a command has room for, and one more.
repeated() { printf "%0$2d" 0 | sed "s/0/$1,/g; s/,\$//"; }
checked() { echo "$*" | "$vdrctl" batch - --dry-run; }
expect 0 '' '' checked soft-rss table set rss "$(repeated 255 128)"
expect 0 '' '' checked lif-policy-table set edge-1 uplink "$(repeated 1:2:3 20)"
queues=$(repeated 255 129)
wrong 'vdrctl soft-rss table set' \
  "QUEUES: '$queues' is not a list of up to 128 numbers from 0 to 255, as 0,1,2,3" \
  soft-rss table set rss "$queues"
tables=$(repeated 1:2:3 21)
wrong 'vdrctl lif-policy-table set' \
  "TABLES: '$tables' is not up to 20 times three numbers, as 1:2:3,4:5:6" \
  lif-policy-table set edge-1 uplink "$tables"

# The help of all commands names each, and each has a help of its own.
lists() { # lists OBJECT VERB...
  object=$1
  shift
  "$vdrctl" --help | grep "^  $object " | tr -c 'a-z0-9-' '\n' >"$room/listed"
  for verb; do
    expect_line "$verb" "$room/listed"
    "$vdrctl" "$object" "$verb" --help >"$room/help" || {
      failures=$((failures + 1))
      echo "FAILED: vdrctl $object $verb has no help"
    }
    grep -q "^Usage: vdrctl $object $verb" "$room/help" || {
      failures=$((failures + 1))
      echo "FAILED: the help of vdrctl $object $verb is that of another"
    }
  done
}
lists instance list show set delete tune
for setting in log-level extended-log-level stats-level tx-dispatch-queue-size; do
  lists $setting get set
done
for command in pre-unload command; do
  "$vdrctl" --help | sed -n "s/^  \($command\) .*/\1/p" >"$room/listed"
  expect_line $command "$room/listed"
done

# What could not be written is an error.
to_full_device() { "$vdrctl" "$@" >/dev/full; }
to_closed_output() { "$vdrctl" "$@" >&-; }
full='vdrctl: standard output: No space left on device (ENOSPC)'
expect 1 '' "$full" to_full_device --help
expect 1 '' "$full" to_full_device --version
closed='vdrctl: standard output: Bad file descriptor (EBADF)'
expect 1 '' "$closed" to_closed_output --help
expect 1 '' "$closed" to_closed_output instance list --help
expect 1 '' "$closed" to_closed_output --version

finish
