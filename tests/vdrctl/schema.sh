#!/bin/sh
# schema.sh VDRCTL: schemas of what commands print, to the byte.
vdrctl=$1
. "$(dirname "$0")/expect.sh"
file=$room/names.json

# schema_is DOCUMENT WORDS...    The document comes behind its dialect and its title.
schema_is() {
  body=$1
  shift
  expect 0 '{"$schema":"https://json-schema.org/draft/2020-12/schema","title":"vdrctl '"$*"' --json",'"$body" \
    '' "$vdrctl" schema "$@" --names "$file"
}

cat >"$file" <<'END'
{"format": 1, "records": {
"InstanceRecord": {"words431": {"name": "to", "form": "ipv6"}},
"PolicyTableRefEntry": {
  "qword0": {"name": "bits", "form": "flags", "flags": {"a": 1}},
  "qword8": {"name": "mask", "form": "hex"}},
"MRoutingLocalRcvr": {
  "rcvrName": "receiver",
  "value64": {"name": "group", "form": "ipv4"},
  "value68": {"name": "state", "form": "boolean"},
  "address": {"name": "to", "form": "ipv6"}},
"MRoutingDomain": {"domainData": {"name": "data", "form": "text"}}}}
END
document='"type":"object","properties":{"level":{"type":"integer","minimum":0,"maximum":4294967295}},'
document=$document'"required":["level"],"additionalProperties":false}'
schema_is "$document" log-level get

document='"type":"object","properties":{"address":{"type":"string",'
document=$document'"pattern":"^[0-9a-f]{2}(:[0-9a-f]{2}){5}$"}},"required":["address"],'
document=$document'"additionalProperties":false}'
schema_is "$document" connection mac

document='"type":"object","properties":{"address":{"type":"string","format":"ipv4"}},'
document=$document'"required":["address"],"additionalProperties":false}'
schema_is "$document" multicast router show

document='"type":"object","properties":{"length":{"type":"integer","minimum":0,'
document=$document'"maximum":18446744073709551615},"bytes":{"type":"string","pattern":"^([0-9a-f]{2})*$"}},'
document=$document'"required":["length","bytes"],"additionalProperties":false}'
schema_is "$document" command

document='"type":"object","properties":{"refName":{"type":"string"},"refNameEscaped":{"const":true},'
document=$document'"refCount":{"type":"integer","minimum":0,"maximum":65535},"refEntries":{"type":"array",'
document=$document'"items":{"type":"object","properties":{"bits":{"type":"array","items":{"type":"string"}},'
document=$document'"mask":{"type":"integer","minimum":0,"maximum":18446744073709551615},'
document=$document'"qword16":{"type":"integer","minimum":0,"maximum":18446744073709551615}},"required":["bits",'
document=$document'"mask","qword16"],"additionalProperties":false},"maxItems":20}},"required":["refName",'
document=$document'"refCount","refEntries"],"additionalProperties":false}'
schema_is "$document" lif-policy-table show

document='"type":"array","items":{"type":"object","properties":{"receiver":{"type":"string"},'
document=$document'"receiverEscaped":{"const":true},"group":{"type":"string","format":"ipv4"},'
document=$document'"state":{"type":"boolean"},"to":{"type":"string","format":"ipv6"}},"required":["receiver",'
document=$document'"group","state","to"],"additionalProperties":false}}'
schema_is "$document" multicast local-receiver list

document='"type":"object","properties":{"domainName":{"type":"string"},"domainNameEscaped":{"const":true},'
document=$document'"domainLabel":{"type":"string"},"domainLabelEscaped":{"const":true},"data":{"type":"string"},'
document=$document'"dataEscaped":{"const":true},"domainValue":{"type":"integer","minimum":0,"maximum":4294967295}},'
document=$document'"required":["domainName","domainLabel","data","domainValue"],"additionalProperties":false}'
schema_is "$document" multicast domain show

document='"anyOf":[{"title":"StatsRecord of type 0","type":"object",'
document=$document'"properties":{"type":{"type":"integer","minimum":0,"maximum":4294967295},'
document=$document'"slots0":{"type":"array","items":{"type":"integer","minimum":0,"maximum":18446744073709551615},'
document=$document'"minItems":8,"maxItems":8},"slots9":{"type":"array","items":{"type":"integer","minimum":0,'
document=$document'"maximum":18446744073709551615},"minItems":19,"maxItems":19}},"required":["type","slots0",'
document=$document'"slots9"],"additionalProperties":false},{"title":"StatsRecord of type 1","type":"object",'
document=$document'"properties":{"type":{"type":"integer","minimum":0,"maximum":4294967295},'
document=$document'"slots0":{"type":"array","items":{"type":"integer","minimum":0,"maximum":18446744073709551615},'
document=$document'"minItems":77,"maxItems":77},"slots78":{"type":"array","items":{"type":"integer","minimum":0,'
document=$document'"maximum":18446744073709551615},"minItems":5,"maxItems":5},"slots84":{"type":"array",'
document=$document'"items":{"type":"integer","minimum":0,"maximum":18446744073709551615},"minItems":22,'
document=$document'"maxItems":22}},"required":["type","slots0","slots78","slots84"],"additionalProperties":false},'
document=$document'{"title":"StatsRecord of type 3","type":"object","properties":{"type":{"type":"integer",'
document=$document'"minimum":0,"maximum":4294967295},"slots1":{"type":"array","items":{"type":"integer",'
document=$document'"minimum":0,"maximum":18446744073709551615},"minItems":19,"maxItems":19}},"required":["type",'
document=$document'"slots1"],"additionalProperties":false},{"title":"StatsRecord of other types","type":"object",'
document=$document'"properties":{"type":{"type":"integer","minimum":0,"maximum":4294967295}},"required":["type"],'
document=$document'"additionalProperties":false}]}'
schema_is "$document" lif stats show

"$vdrctl" schema instance show --names "$file" >"$room/schema"
shown=$(grep -o '"to":{[^}]*}' "$room/schema")
expect 0 '"to":{"type":"string","format":"ipv6"}' '' echo "$shown"

# All at once: each under its command, without a dialect of its own.
"$vdrctl" schema >"$room/schema"
expect 0 '{"$schema":"https://json-schema.org/draft/2020-12/schema","$defs":{"instance list":{"title":"vdrctl instance list --json","type":"array",' \
  '' sed 's/"items".*//' "$room/schema"
expect 0 '"required":["length","bytes"],"additionalProperties":false}}}' '' \
  sed 's/.*]{2})\*\$"}},//' "$room/schema"

finish
