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
wrong vdrctl "'vdrctl' is not a complete command" --json
wrong vdrctl "'vdrctl' has no 'frob'" frob
wrong vdrctl "'vdrctl' has no '--frob'" --frob
wrong vdrctl "'vdrctl' has no '\\x1b'" "$(printf '\033')"
wrong 'vdrctl instance' "'vdrctl instance' is not a complete command" instance
wrong 'vdrctl instance' "'vdrctl instance' has no 'frob'" instance frob edge-1
wrong 'vdrctl instance list' 'The following argument was not expected: --frob' instance list --frob
wrong 'vdrctl instance show' 'NAME is required' instance show
wrong 'vdrctl instance delete' 'NAME is required' instance delete
wrong 'vdrctl instance set' 'NAME is required' instance set --second 1
wrong 'vdrctl instance tune' 'VALUE is required' instance tune edge-1 mtu
wrong 'vdrctl instance show' 'The following argument was not expected: edge-2' \
  instance show edge-1 edge-2
wrong 'vdrctl log-level get' 'The following argument was not expected: 3' log-level get 3
wrong 'vdrctl log-level set' 'VALUE is required' log-level set
wrong 'vdrctl pre-unload' 'The following argument was not expected: now' pre-unload now
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
  wrong "vdrctl instance $verb" 'NAME: the text is 64 bytes long, and at most 63 are taken' \
    instance $verb $long
done
wrong 'vdrctl instance tune' 'NAME: the text is 64 bytes long, and at most 63 are taken' \
  instance tune $long mtu 1
wrong 'vdrctl instance tune' 'TUNABLES: the text is 64 bytes long, and at most 63 are taken' \
  instance tune edge-1 $long 1
wrong 'vdrctl instance set' '--text: the text is 19 bytes long, and at most 18 are taken' \
  instance set edge-1 --text 1234567890123456789

expect 0 "vdrctl $version" '' "$vdrctl" --version

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
help 'vdrctl [OPTIONS] OBJECT VERB' '  vdrctl instance set edge-1 --text blue --flag 1' --help
help 'vdrctl instance [OPTIONS] VERB' \
  '  delete                          Delete a router instance' instance --help
help 'vdrctl instance list [OPTIONS] [NAME]' \
  '  NAME                            Name of the router instance' instance list --help
help 'vdrctl instance set [OPTIONS] NAME' \
  '  NAME (required)                 Name of the router instance' instance set --help
help 'vdrctl instance tune [OPTIONS] NAME TUNABLES VALUE' \
  'Set the tunables of a router instance' instance tune -h
for setting in log-level extended-log-level stats-level tx-dispatch-queue-size; do
  help "vdrctl $setting [OPTIONS] VERB" 'Verbs:' $setting --help
  help "vdrctl $setting get [OPTIONS]" 'Options:' $setting get --help
  help "vdrctl $setting set [OPTIONS] VALUE" 'Positionals:' $setting set --help
done
help 'vdrctl pre-unload [OPTIONS]' 'Options:' pre-unload --help
help 'vdrctl command [OPTIONS] CODE' \
  '  --value N not with: --input     Send this word as the input' command --help

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
