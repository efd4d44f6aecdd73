#!/bin/sh
# completion_words.sh VDRCTL: the words of the table in what completes command lines; the shells themselves are
# tried elsewhere.
vdrctl=$1
. "$(dirname "$0")/expect.sh"

files='--names|--output|--answer|--input'
values='--columns|--sort|--watch|--second|--text|--fourth|--flag|--fifth|--sixth|--seventh'
values=$values'|--aux-name|--a3|--a4|--a5|--a6|--a7|--flags|--mode|--mac|--third|--gateway'
values=$values'|--interface|--selector1|--selector2|--selector3|--name|--value|--first|--lif'
values=$values'|--second-name|--value1|--value2|--value3|--fourth-name|--fifth-name|--tag|--flag1'
values=$values'|--flag2|--selector|--third-name|--bytes|--value4|--value5|--d|--e|--capacity'
for shell in bash zsh; do
  "$vdrctl" completion $shell >"$room/script"
  expect_line "      $files|$values) $([ $shell = bash ] && echo '((++index))' || echo '(( $#line )) && shift line'); continue ;;" "$room/script"
  expect_line "    $values) return ;;" "$room/script"
  expect_line "    'instance') words='list show set delete tune' ;;" "$room/script"
  expect_line "    'multicast') words='set domain group local-receiver remote-receiver replication-address router' ;;" \
    "$room/script"
  expect_line "    'soft-rss') words='stats tunables table' ;;" "$room/script"
  expect_line "    'command') options='--value --input --capacity --output' arguments='' ;;" "$room/script"
  expect_line "    'instance delete') options='--if-exists' arguments='' ;;" "$room/script"
  expect_line "    'batch') options='--dry-run --keep-going' arguments='FILES' ;;" "$room/script"
  expect_line "    'completion') options='' arguments='bash zsh fish' ;;" "$room/script"
  # A command without a verb is followed by no word.
  expect 1 '' '' grep "'batch') words=" "$room/script"
  expect 0 1 '' grep -c "'soft-rss') words=" "$room/script"
done

"$vdrctl" completion fish >"$room/script"
expect_line "            case $(echo "$files|$values" | tr '|' ' ')" "$room/script"
while read -r line; do expect_line "$line" "$room/script"; done <<'END'
complete -c vdrctl -f
complete -c vdrctl -s j -l json -d 'Print one JSON document instead of tables'
complete -c vdrctl -l columns -x -d 'Show these fields alone, in this order: a,b,c'
complete -c vdrctl -l names -r -F -d 'Take the names of fields from FILE'
complete -c vdrctl -s V -l version -d 'Print the version and exit'
complete -c vdrctl -n "__vdrctl_said ''" -a instance -d 'Router instances'
complete -c vdrctl -n "__vdrctl_said ''" -a command -d 'Send one command of the device by its number'
complete -c vdrctl -n "__vdrctl_said 'lif address'" -a set -d 'Set an IPv4 address of a LIF'
complete -c vdrctl -n "__vdrctl_said 'lif'" -a address -d 'IPv4 addresses of a LIF'
complete -c vdrctl -n "__vdrctl_begins 'instance set'" -l second -x -d 'Word with a meaning of the kernel\'s'
complete -c vdrctl -n "__vdrctl_begins 'command'" -l input -r -F -d 'Send the bytes of FILE, at most 968, as the input'
complete -c vdrctl -n "__vdrctl_begins 'batch'" -l dry-run -d 'Check all lines and carry out none'
complete -c vdrctl -n "__vdrctl_begins 'batch'" -F
complete -c vdrctl -n "__vdrctl_said 'completion'" -a 'bash zsh fish'
END

finish
