#!/bin/sh
# help.sh VDRCTL: what vdrctl tells about itself, to the byte.
vdrctl=$1
. "$(dirname "$0")/expect.sh"

# The help of an object, of one with a name that others begin with, and of a command, as they stand.
expect 0 "Usage: vdrctl policy VERB ...

Policies, known by a key.

Commands:
  policy list KEY                   List the policies of a key
  policy count KEY                  Show the number of policies of a key
  policy set KEY [--first N] [--second N] [--third N] [--answer FILE]
                                    Add a policy, or replace all of it: what is not given becomes 0
  policy delete KEY [--first N] [--second N] [--answer FILE] [--if-exists]
                                    Delete a policy

'vdrctl policy VERB --help' tells about one." '' "$vdrctl" policy --help
expect 0 "Usage: vdrctl multicast local-receiver VERB ...

Local receivers of a group.

Commands:
  multicast local-receiver list INSTANCE GROUP
                                    List the local receivers of a group
  multicast local-receiver add INSTANCE GROUP RECEIVER
                                    Add a local receiver to a group
  multicast local-receiver delete INSTANCE GROUP RECEIVER [--if-exists]
                                    Delete a local receiver of a group

'vdrctl multicast local-receiver VERB --help' tells about one." '' "$vdrctl" multicast local-receiver help
expect 0 "Usage: vdrctl soft-rss tunables VERB ...

Tunables of a software RSS object.

Commands:
  soft-rss tunables show NAME       Show the tunables of a software RSS object
  soft-rss tunables set NAME VALUE  Set the tunables of a software RSS object

'vdrctl soft-rss tunables VERB --help' tells about one." '' "$vdrctl" soft-rss tunables --help
expect 0 "Usage: vdrctl command CODE [--value N] [--input FILE] [--capacity N] [--output FILE]

Send one command of the device by its number.

Arguments:
  CODE                              Number of the command

Options:
  --value N                         Send this word as the input
  --input FILE                      Send the bytes of FILE, at most 968, as the input; not with --value
  --capacity N                      Room for the reply in bytes, 0 when not given
  --output FILE                     Write the bytes of the reply to FILE instead of showing them

'vdrctl --help' tells what holds for all commands." '' "$vdrctl" command --help
expect 0 "Usage: vdrctl completion SHELL

Print what completes command lines in a shell.

Arguments:
  SHELL                             The shell: bash|zsh|fish

'vdrctl --help' tells what holds for all commands." '' "$vdrctl" completion --help
expect 0 "Usage: vdrctl bridge-endpoint flush [--all]

Flush bridge endpoints; the kernel chooses which unless it is told all.

Options:
  --all                             Flush all of them

'vdrctl --help' tells what holds for all commands." '' "$vdrctl" bridge-endpoint flush --help
"$vdrctl" --help >"$room/help"
expect 0 "Usage: vdrctl [OPTIONS] OBJECT VERB [ARGUMENTS]

Controls the virtual distributed router of this host.

Objects and their verbs:
  instance                          list, show, set, delete, tune
  control-plane stats               show, reset" '' head -n 7 "$room/help"
expect 0 "  reference                         Print the manual of this program

'vdrctl OBJECT --help' and 'vdrctl OBJECT VERB --help' tell more.

Options of all commands, anywhere:
  -j, --json                        Print one JSON document instead of tables
      --columns NAMES               Show these fields alone, in this order: a,b,c
      --no-header                   Print tables without their first line
      --sort NAME                   Sort a list by this field
      --names FILE                  Take the names of fields from FILE
      --watch SECONDS               Run the command again and again, and show what it prints
  -h, --help                        Print help and exit
  -V, --version                     Print the version and exit

Numbers are decimal, or hexadecimal after 0x; addresses are written as 10.0.0.1, 10.0.0.0/24," '' \
  sed -n '/^  reference/,/^Numbers/p' "$room/help"

# The list of all commands, as people read it and as programs do.
"$vdrctl" commands >"$room/commands"
expect 0 'instance list [INSTANCE]
    List all router instances, or the one that is named
instance show INSTANCE
    Show all fields of a router instance' '' head -n 4 "$room/commands"
expect 0 'reference FORM
    Print the manual of this program' '' tail -n 2 "$room/commands"

"$vdrctl" --json commands >"$room/commands"
json_of() { sed 's/},{"object"/},\n{"object"/g' "$room/commands" | grep -F "{\"object\":\"$1\"" | sed 's/,$//'; }
expect 0 '{"object":"pre-unload","verb":null,"summary":"Tell the datapath that its kernel module is about to be unloaded","function":"VDRZAX_PreUnload","codes":[42],"parameters":[]}' \
  '' json_of pre-unload
wanted='{"object":"command","verb":null,"summary":"Send one command of the device by its number",'
wanted=$wanted'"function":"VDRZAXIoctl","codes":[],"parameters":['
wanted=$wanted'{"name":"CODE","kind":"number","required":true,"limit":2147483647,"meaning":"Number of the command"},'
wanted=$wanted'{"name":"--value N","kind":"number","required":false,"limit":4294967295,"meaning":"Send this word as the input"},'
wanted=$wanted'{"name":"--input FILE","kind":"file","required":false,"limit":null,"meaning":"Send the bytes of FILE, at most 968, as the input"},'
wanted=$wanted'{"name":"--capacity N","kind":"number","required":false,"limit":4294967295,"meaning":"Room for the reply in bytes, 0 when not given"},'
wanted=$wanted'{"name":"--output FILE","kind":"file","required":false,"limit":null,"meaning":"Write the bytes of the reply to FILE instead of showing them"}]}'
expect 0 "$wanted" '' json_of command
wanted='{"object":"bridge network","verb":"list","summary":"List the networks of a bridge",'
wanted=$wanted'"function":["VDRZAX_GetBridgeNetworks","VDRZAXGetBridgeNetworks"],"codes":[63],'
wanted=$wanted'"parameters":[{"name":"BRIDGE","kind":"text","required":true,"limit":63,"meaning":"Name that selects the bridge"}]}'
expect 0 "$wanted" '' json_of 'bridge network'
wanted='{"object":"bridge-endpoint","verb":"flush","summary":"Flush bridge endpoints; the kernel chooses which unless it is told all",'
wanted=$wanted'"function":"VDRZAX_FlushBridgeEndpoint","codes":[47,48],'
wanted=$wanted'"parameters":[{"name":"--all","kind":"switch","required":false,"limit":null,"meaning":"Flush all of them"}]}'
expect 0 "$wanted" '' eval 'json_of bridge-endpoint | grep flush'

# The manual: its head with the options, a command in the midst, and its end.
"$vdrctl" reference man >"$room/man"
cat >"$room/wanted" <<'END'
.\" Made by `vdrctl reference man` from the table of commands.
.TH VDRCTL 1 "" "vdrzax" "User commands"
.SH NAME
vdrctl \- control the virtual distributed router of this host
.SH SYNOPSIS
.B vdrctl
.RI [ OPTIONS ] " OBJECT VERB " [ ARGUMENTS ]
.SH DESCRIPTION
Each command carries out one function of
.B libvdrzax
on the datapath of this host, and prints what the kernel says: tables, or JSON with
.BR \-\-json .
.SH OPTIONS
.TP
.B \-j, \-\-json
Print one JSON document instead of tables
.TP
.B \-\-columns NAMES
Show these fields alone, in this order: a,b,c
.TP
.B \-\-no\-header
Print tables without their first line
.TP
.B \-\-sort NAME
Sort a list by this field
.TP
.B \-\-names FILE
Take the names of fields from FILE
.TP
.B \-\-watch SECONDS
Run the command again and again, and show what it prints
.TP
.B \-h, \-\-help
Print help and exit
.TP
.B \-V, \-\-version
Print the version and exit
.SH COMMANDS
.SS instance
Router instances.
.TP
.B vdrctl instance list [INSTANCE]
List all router instances, or the one that is named.
Calls
.BR VDRZAX_GetInstances .
.RS
.TP
.I INSTANCE
Name of the router instance (text of at most 63 bytes)
.RE
END
sed '/^\.B vdrctl instance show/,$d' "$room/man" | sed '$d' >"$room/part"
expect 0 "$(cat "$room/wanted")" '' cat "$room/part"
cat >"$room/wanted" <<'END'
.TP
.B vdrctl command CODE [\-\-value N] [\-\-input FILE] [\-\-capacity N] [\-\-output FILE]
Send one command of the device by its number.
Calls
.BR VDRZAXIoctl .
.RS
.TP
.I CODE
Number of the command (number up to 2147483647)
.RE
.RS
.TP
.I \-\-value N
Send this word as the input (number up to 4294967295)
.RE
.RS
.TP
.I \-\-input FILE
Send the bytes of FILE, at most 968, as the input (file); not with \-\-value
.RE
.RS
.TP
.I \-\-capacity N
Room for the reply in bytes, 0 when not given (number up to 4294967295)
.RE
.RS
.TP
.I \-\-output FILE
Write the bytes of the reply to FILE instead of showing them (file)
.RE
END
sed -n '/^\.B vdrctl command CODE/,/^\.B vdrctl batch/p' "$room/man" | sed '$d' | sed '$d' >"$room/part"
expect 0 "$(sed 1d "$room/wanted")" '' cat "$room/part"
cat >"$room/wanted" <<'END'
.SH EXIT STATUS
.TP
0
The command succeeded.
.TP
1
The command failed.
.TP
2
The command line was not understood.
.TP
3
There is no device: it is absent, another kind of file, or not permitted.
.SH ENVIRONMENT
.TP
.B USE_UPGRADE_DEV
When it exists, with any value, commands go to the upgrade node.
.TP
.B XDG_CONFIG_HOME
Where
.I vdrzax/names.json
is looked for.
.TP
.B NO_COLOR
Is respected: nothing is ever coloured.
.SH FILES
.TP
.I /etc/vdrzax/names.json
Names of fields on this host.
.SH SEE ALSO
.BR vdrsim (1)
END
sed -n '/^\.SH EXIT STATUS/,$p' "$room/man" >"$room/part"
expect 0 "$(cat "$room/wanted")" '' cat "$room/part"

finish
