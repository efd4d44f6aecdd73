#!/bin/sh
# names.sh VDRCTL, in a simulated datapath without instances: names of fields.
vdrctl=$1
. "$(dirname "$0")/expect.sh"
file=$room/names.json
XDG_CONFIG_HOME=$room/config
export XDG_CONFIG_HOME

"$vdrctl" instance set edge-1 --second 0x01020304 --fourth 5 --flag 1
cat >"$file" <<'END'
{"format": 1, "records": {"InstanceRecord": {
  "word64": {"name": "address", "form": "ipv4", "comment": "of the instance"},
  "word68": {"name": "state", "form": "flags", "flags": {"up": 1, "ready": 2}},
  "byte72": {"name": "active", "form": "boolean"},
  "word399": {"name": "mask", "form": "hex"},
  "words431[1]": "second", "words431[3]": {"name": "fourth_0-Z", "form": "hex"}}}}
END
expect 0 'name    address  state   active  text73  text329  mask  word568
edge-1  4.3.2.1  up 0x4  yes     -       -         0x0        0' '' \
  "$vdrctl" instance list --names "$file"
expect 0 '[{"address":"4.3.2.1","state":["up","0x4"],"active":true,"mask":0,"second":0,"words431[2]":0,"fourth_0-Z":0}]' '' \
  "$vdrctl" --names="$file" -j instance list --columns 'address,state,active,mask,second,words431[2],fourth_0-Z'
expect 2 '' "vdrctl: no column 'word64'; there are name, address, state, active, text73, text329, address393, mask, word403, word407, byte411, half412, byte416, byte417, bytes418, words431[0], second, words431[2], fourth_0-Z, address447, byte453, half454, byte456, text457, half521, bytes523, word563, byte567, word568, word572, byte576
Try 'vdrctl instance list --help'" "$vdrctl" --names="$file" instance list --columns word64

# The file of the user is found: in a folder that is named from the root, else in the usual one.
mkdir -p "$XDG_CONFIG_HOME/vdrzax" "$room/home/.config/vdrzax"
cp "$file" "$XDG_CONFIG_HOME/vdrzax/names.json"
sed s/address/usual/ "$file" >"$room/home/.config/vdrzax/names.json"
at_home() { (cd "$room" && HOME=$room/home "$vdrctl" -j instance list --columns "$1"); }
expect 0 '[{"address":"4.3.2.1"}]' '' at_home address
XDG_CONFIG_HOME=config
expect 0 '[{"usual":"4.3.2.1"}]' '' at_home usual
unset XDG_CONFIG_HOME
expect 0 '[{"usual":"4.3.2.1"}]' '' at_home usual
export XDG_CONFIG_HOME="$room/config"

# A home is asked for where it is named from the root; without one there are the names of the host.
unset XDG_CONFIG_HOME
usual_of_nobody() { (cd "$room" && unset HOME && "$vdrctl" -j instance list --columns word64); }
usual_of_relative() { (cd "$room" && HOME=home "$vdrctl" -j instance list --columns word64); }
if [ ! -e /etc/vdrzax/names.json ]; then
  expect 0 '[{"word64":16909060}]' '' usual_of_nobody
  expect 0 '[{"word64":16909060}]' '' usual_of_relative
fi
# shellcheck disable=SC2016
on_host() { # on_host PRIVILEGE COMMAND...: with a file in /etc, which nobody else sees.
  hide='mount -t tmpfs none /etc && mkdir /etc/vdrzax && cp "$0" /etc/vdrzax/names.json && exec "$@"'
  privilege=$1
  shift
  # shellcheck disable=SC2086
  unshare $privilege --mount sh -c "$hide" "$file" "$@"
}
for privilege in '' --map-root-user; do
  if on_host "$privilege" true 2>/dev/null; then
    expect 0 '[{"address":"4.3.2.1"}]' '' \
      on_host "$privilege" env -u HOME "$vdrctl" -j instance list --columns address
    break
  fi
done
export XDG_CONFIG_HOME="$room/config"

# It is read for records alone; one that is named is read in any case.
echo '[]' >"$XDG_CONFIG_HOME/vdrzax/names.json"
complaint="vdrctl: $XDG_CONFIG_HOME/vdrzax/names.json: /: is not an object"
expect 0 0 '' "$vdrctl" log-level get
expect 2 '' "$complaint" "$vdrctl" instance list
expect 2 '' "vdrctl: $XDG_CONFIG_HOME/vdrzax/names.json: /: is not an object" \
  "$vdrctl" log-level get --names "$XDG_CONFIG_HOME/vdrzax/names.json"
in_batch() { printf '%s\n' "$@" | "$vdrctl" batch - --dry-run; }
expect 0 '' '' in_batch 'log-level get' 'log-level set 1'
expect 2 '' "$complaint" in_batch 'log-level get' 'instance list'
expect 2 '' "$complaint" in_batch 'instance list' 'log-level get'
rm -r "$XDG_CONFIG_HOME"

# One name is enough for the elements of a row to stand apart.
echo '{"format":1,"records":{"InstanceRecord":{"words431[0]":"first"}}}' >"$file"
expect 0 '[{"first":0,"words431[3]":0}]' '' \
  "$vdrctl" --names "$file" -j instance list --columns 'first,words431[3]'

# Each form is shown on every kind of field that it fits.
"$vdrctl" multicast local-receiver add edge-1 239.1.2.3 r1
cat >"$file" <<'END'
{"format": 1, "records": {
"MRoutingLocalRcvr": {
  "rcvrName": {"name": "a", "form": "text"},
  "value64": {"name": "b", "form": "decimal"},
  "value68": {"name": "c", "form": "counter"},
  "address": {"name": "d", "form": "ipv6"}},
"InstanceRecord": {
  "address393": {"name": "e", "form": "mac"},
  "words431": {"name": "f", "form": "ipv6"},
  "bytes523": {"name": "g", "form": "text"}}}}
END
expect 0 '[{"a":"r1","b":50463215,"c":0,"d":"::"}]' '' \
  "$vdrctl" --names "$file" -j multicast local-receiver list edge-1 239.1.2.3
expect 0 '[{"e":"00:00:00:00:00:00","f":"::","g":""}]' '' \
  "$vdrctl" --names "$file" -j instance list --columns e,f,g

wrong() { # wrong COMPLAINT DOCUMENT
  printf '%s' "$2" >"$file"
  expect 2 '' "vdrctl: $file: $1" "$vdrctl" --names "$file" instance list
}
in_record() { wrong "/records/InstanceRecord$1" "{\"format\":1,\"records\":{\"InstanceRecord\":$2}}"; }
wrong 'parse error at line 1, column 1: syntax error while parsing value - unexpected end of input; expected '"'[', '{', or a literal" ''
wrong "number overflow parsing '6E777'" 6E777
wrong '/: is not an object' '[]'
wrong "/format: 1 is the only format" '{"records":{}}'
wrong "/format: 1 is the only format" '{"format":2,"records":{}}'
wrong "/records: is missing" '{"format":1}'
wrong "/recods: neither 'format' nor 'records'" '{"format":1,"recods":{}}'
wrong "/records/InstanceRecrd: there is no record of this name (did you mean 'InstanceRecord'?)" \
  '{"format":1,"records":{"InstanceRecrd":{}}}'
in_record ': is not an object' 3
in_record "/word65: the record has no field of this name (did you mean 'word64'?)" '{"word65":"x"}'
in_record '/word64: is not an object' '{"word64":3}'
in_record "/word64: has no 'name'" '{"word64":{}}'
in_record '/word64/name: is not a text' '{"word64":{"name":3}}'
in_record "/word64: a name is of 1 to 63 letters, digits, '_' and '-'" '{"word64":"a,b"}'
in_record "/word64: a name is of 1 to 63 letters, digits, '_' and '-'" '{"word64":""}'
in_record "/word64/form: 'hax' is none of decimal, hex, counter, boolean, flags, ipv4, ipv6, mac, text (did you mean 'hex'?)" \
  '{"word64":{"name":"x","form":"hax"}}'
in_record "/word64/form: 'mac' does not fit this field" '{"word64":{"name":"x","form":"mac"}}'
in_record "/word64: 'flags' and the form 'flags' go together" '{"word64":{"name":"x","form":"flags"}}'
in_record "/byte72/flags/a: is not a number of 1 to 8 bits, and not 0" \
  '{"byte72":{"name":"x","form":"flags","flags":{"a":256}}}'
for mask in 0 -1 1.5 true '"1"'; do
  in_record "/byte72/flags/a: is not a number of 1 to 8 bits, and not 0" \
    "{\"byte72\":{\"name\":\"x\",\"form\":\"flags\",\"flags\":{\"a\":$mask}}}"
done
in_record "/word64/nam: none of 'name', 'form', 'flags' and 'comment'" '{"word64":{"nam":"x"}}'
in_record ": two fields are called 'word68'" '{"word64":"word68"}'
in_record '/word64: is there twice' '{"word64":"a","word68":"b","word64":"c"}'
in_record '/word64/flags/up: is there twice' '{"word64":{"name":"x","form":"flags","flags":{"up":1,"up":2}}}'
wrong '/records/InstanceRecord: is there twice' \
  '{"format":1,"records":{"LifRecord":{},"InstanceRecord":{},"InstanceRecord":{}}}'
wrong '/format: is there twice' '{"format":1,"records":{"LifRecord":{"word128":"x"}},"format":1}'
wrong "parse error at line 2, column 12: syntax error while parsing value - invalid literal; last read: '\"records\":t}'" \
  '{"format":1,
"records":t}'
in_record "/name/form: 'ipv4' does not fit this field" '{"name":{"name":"x","form":"ipv4"}}'
for form in ipv4 ipv6 mac; do
  in_record "/bytes523/form: '$form' does not fit this field" "{\"bytes523\":{\"name\":\"x\",\"form\":\"$form\"}}"
done
in_record "/word64/form: 'text' does not fit this field" '{"word64":{"name":"x","form":"text"}}'
in_record "/word64/form: 'ipv6' does not fit this field" '{"word64":{"name":"x","form":"ipv6"}}'
in_record "/word64/form: is not a text" '{"word64":{"name":"x","form":6}}'
in_record "/word64/flags: is not an object" '{"word64":{"name":"x","form":"flags","flags":[]}}'
in_record "/word64/flags/a,b: a name is of 1 to 63 letters, digits, '_' and '-'" \
  '{"word64":{"name":"x","form":"flags","flags":{"a,b":1}}}'
in_record "/word64: 'flags' and the form 'flags' go together" '{"word64":{"name":"x","flags":{"a":1}}}'
in_record "/words431[4]: the record has no field of this name (did you mean 'words431[0]'?)" '{"words431[4]":"x"}'
# Elements have names in rows of several numbers alone, and what is skipped is not shown at all.
in_record "/byte72[0]: the record has no field of this name (did you mean 'byte72'?)" '{"byte72[0]":"x"}'
wrong "/records/RouteRecord/nextHops[0]: the record has no field of this name (did you mean 'nextHops'?)" \
  '{"format":1,"records":{"RouteRecord":{"nextHops[0]":"x"}}}'
wrong "/records/BridgeClusterRecord/skipped64: the record has no field of this name" \
  '{"format":1,"records":{"BridgeClusterRecord":{"skipped64":"x"}}}'
expect 1 '' "vdrctl: $room/none: No such file or directory (ENOENT)" \
  "$vdrctl" --names "$room/none" instance list

# As long and as wide as is taken, and no more.
longest=$(printf %063d 0)
cat >"$file" <<END
{"format": 1, "records": {
"InstanceRecord": {"word64": "$longest", "byte72": {"name": "x", "form": "flags", "flags": {"all": 255}}},
"PolicyRecord": {"policyQword": {"name": "y", "form": "flags", "flags": {"all": 18446744073709551615}}}}}
END
expect 0 "[{\"$longest\":16909060,\"x\":[\"0x1\"]}]" '' \
  "$vdrctl" -j --names "$file" instance list --columns "$longest,x" edge-1
in_record "/word64: a name is of 1 to 63 letters, digits, '_' and '-'" "{\"word64\":\"${longest}0\"}"

# To the byte as long as is taken, and one more.
{ printf '{"format":1,"records":{}}' && head -c 1048551 /dev/zero | tr '\000' ' '; } >"$file"
expect 0 0 '' "$vdrctl" --names "$file" log-level get
printf ' ' >>"$file"
expect 1 '' "vdrctl: $file: File too large (EFBIG)
hint: a file of names has at most 1 MiB" "$vdrctl" --names "$file" log-level get
expect 1 '' 'vdrctl: /dev/zero: File too large (EFBIG)
hint: a file of names has at most 1 MiB' "$vdrctl" --names /dev/zero instance list

finish
