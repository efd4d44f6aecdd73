#!/bin/sh
# instances.sh VDRCTL, in a simulated datapath without instances.
vdrctl=$1
. "$(dirname "$0")/expect.sh"

header='name  word64  word68  byte72  text73  text329  word399  word568'
expect 0 "$header" '' "$vdrctl" instance list
expect 0 '[]' '' "$vdrctl" --json instance list
expect 0 '[]' '' "$vdrctl" instance list --json
expect 0 '[]' '' "$vdrctl" instance --json list edge-1

unknown() {
  expect 1 '' "vdrctl: instance $1 edge-1: No such file or directory (ENOENT)" \
    "$vdrctl" instance "$1" edge-1
}
unknown show
unknown delete
expect 1 '' 'vdrctl: instance tune edge-1 mtu 5: No such file or directory (ENOENT)' \
  "$vdrctl" instance tune edge-1 mtu 5
expect 1 '' "vdrctl: instance show '': Invalid argument (EINVAL)" "$vdrctl" instance show ''
# Only what is not there is no failure of a deletion.
expect 1 '' "vdrctl: instance delete '': Invalid argument (EINVAL)" \
  "$vdrctl" instance delete '' --if-exists
# The device may get any descriptor, the first one too.
without_input() { "$vdrctl" "$@" <&-; }
expect 1 '' 'vdrctl: instance delete edge-1: No such file or directory (ENOENT)' \
  without_input instance delete edge-1
export USE_UPGRADE_DEV=
unknown delete
unset USE_UPGRADE_DEV

expect 0 '' '' "$vdrctl" instance set edge-1
expect 0 "name    word64  word68  byte72  text73  text329  word399  word568
edge-1       0       0       0  -       -              0        0" '' "$vdrctl" instance list

expect 0 '' '' "$vdrctl" instance set edge-1 --second 7 --text 'a blue one' --fourth 0xff --flag 255
expect 0 '' '' "$vdrctl" instance tune edge-1 'mtu=1' 4294967295
expect 0 '' '' "$vdrctl" instance set list --text 123456789012345678
expect 0 "name    word64  word68  byte72  text73              text329     word399  word568
edge-1       7     255     255  a blue one          mtu=1    4294967295        0
list         0       0       0  123456789012345678  -                 0        0" '' \
  "$vdrctl" instance list
expect 0 "name  word64  word68  byte72  text73              text329  word399  word568
list       0       0       0  123456789012345678  -              0        0" '' \
  "$vdrctl" instance list list
expect 0 "name        edge-1
word64      7
word68      255
byte72      255
text73      a blue one
text329     mtu=1
address393  00:00:00:00:00:00
word399     4294967295
word403     0
word407     0
byte411     0
half412     0
byte416     0
byte417     0
bytes418    0 0 0 0 0 0 0 0 0 0 0 0 0
words431    0 0 0 0
address447  00:00:00:00:00:00
byte453     0
half454     0
byte456     0
text457     -
half521     0
bytes523    00000000000000000000000000000000000000000000000000000000000000000000000000000000
word563     0
byte567     0
word568     0
word572     0
byte576     0" '' "$vdrctl" instance show edge-1

rest='"word403":0,"word407":0,"byte411":0,"half412":0,"byte416":0,"byte417":0,'
rest=$rest'"bytes418":[0,0,0,0,0,0,0,0,0,0,0,0,0],"words431":[0,0,0,0],'
rest=$rest'"address447":"00:00:00:00:00:00","byte453":0,"half454":0,"byte456":0,"text457":"",'
rest=$rest'"half521":0,"bytes523":"0000000000000000000000000000000000000000'
rest=$rest'0000000000000000000000000000000000000000",'
rest=$rest'"word563":0,"byte567":0,"word568":0,"word572":0,"byte576":0}'
edge='{"name":"edge-1","word64":7,"word68":255,"byte72":255,"text73":"a blue one",'
edge=$edge'"text329":"mtu=1","address393":"00:00:00:00:00:00","word399":4294967295,'$rest
list='{"name":"list","word64":0,"word68":0,"byte72":0,"text73":"123456789012345678",'
list=$list'"text329":"","address393":"00:00:00:00:00:00","word399":0,'$rest
expect 0 "$edge" '' "$vdrctl" --json instance show edge-1
expect 0 "[$edge,$list]" '' "$vdrctl" --json instance list
expect 0 "[$list]" '' "$vdrctl" --json instance list list

# A name that is a word of the command line, or looks like an option, is still a name.
expect 0 '' '' "$vdrctl" instance delete list
expect 0 "[$edge]" '' "$vdrctl" --json instance list
expect 0 '' '' "$vdrctl" instance set -- --json
expect 0 '' '' "$vdrctl" instance delete -- --json

# Text from the kernel does not reach the terminal as it stands.
expect 0 '' '' "$vdrctl" instance delete edge-1
expect 0 '' '' "$vdrctl" instance set "$(printf 'e\033[2J')"
expect 0 'name      word64  word68  byte72  text73  text329  word399  word568
e\x1b[2J       0       0       0  -       -              0        0' '' "$vdrctl" instance list
expect 1 '' 'vdrctl: instance show \x07: No such file or directory (ENOENT)' \
  "$vdrctl" instance show "$(printf '\007')"
expect 0 '' '' "$vdrctl" instance delete "$(printf 'e\033[2J')"

# What the locale shows is shown, and takes the columns that it takes; what nobody would see is not.
"$vdrctl" instance set "$(printf '\303\251\344\270\255')"
in_locale() { LC_ALL=$1 && export LC_ALL && shift && "$vdrctl" "$@"; }
expect 0 'name  word64
é中        0' '' in_locale C.UTF-8 instance list --columns name,word64
expect 0 'name                  word64
\xc3\xa9\xe4\xb8\xad       0' '' in_locale C instance list --columns name,word64
expect 0 '' '' "$vdrctl" instance delete '\xc3\xa9\xe4\xb8\xad'
"$vdrctl" instance set "$(printf 'a\342\200\256\314\201')"
expect 0 'a\xe2\x80\xae\xcc\x81' '' \
  in_locale C.UTF-8 instance list --columns name --no-header
expect 0 '' '' "$vdrctl" instance delete 'a\xe2\x80\xae\xcc\x81'

# 63 bytes are a name.
long=123456789012345678901234567890123456789012345678901234567890123
expect 0 '' '' "$vdrctl" instance set $long
expect 0 '' '' "$vdrctl" instance tune $long $long 1
expect 0 '' '' "$vdrctl" instance delete $long
expect 0 "$header" '' "$vdrctl" instance list

finish
