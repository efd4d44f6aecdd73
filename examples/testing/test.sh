#!/bin/sh
# Tests how the agent behaves when the datapath fails: it retries, it does not retry for ever, and it
# leaves nothing behind. Each case is a run with a fault; the journal tells what the agent did.
# usage: test.sh AGENT    with vdrsim and vdrctl on the path
set -u
agent=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

check() { # check CASE EXPECTED ACTUAL
  if [ "$2" = "$3" ]; then
    echo "ok: $1"
  else
    printf 'FAILED: %s\n  expected: %s\n  is:       %s\n' "$1" "$2" "$3"
    failures=$((failures + 1))
  fi
}

# Runs the agent under a fault, then looks at what is left of its instance. A fault that meets no
# command is a mistake in the test, which --strict-faults makes a failure.
agent_under() { # agent_under FAULT
  status=0
  vdrsim run --fault "$1" --strict-faults --journal "$work/journal" -- sh -c '
    "$1"
    status=$?
    vdrsim ctl journal mark "the agent has ended"
    vdrctl lif list edge-1 --json >"$2" 2>/dev/null || echo nothing >"$2"
    exit $status' sh "$agent" "$work/left" 2>"$work/errors" || status=$?
}

# The commands of the agent and what became of them, up to the mark.
did() {
  python3 - "$work/journal" <<'PROGRAM'
import json, sys

steps = []
for line in open(sys.argv[1]):
    entry = json.loads(line)
    if "mark" in entry:
        break
    if "code" in entry:
        steps.append(f"{entry['name']} {entry['errno']}")
print(", ".join(steps))
PROGRAM
}

agent_under SetLif:error=EBUSY:when=1..2
check "a busy datapath is tried again" \
  "SetVdrInstance 0, SetLif EBUSY, SetLif EBUSY, SetLif 0" "$(did)"
check "and the agent succeeds" 0 $status
check "with its uplink" 1 "$(grep -c uplink "$work/left")"

agent_under SetLif:error=EAGAIN
check "but not for ever, and then nothing is left" \
  "SetVdrInstance 0, SetLif EAGAIN, SetLif EAGAIN, SetLif EAGAIN, SetLif EAGAIN, DelVdrInstance 0" \
  "$(did)"
check "and the agent says so" "1 agent: uplink: Resource temporarily unavailable" \
  "$status $(cat "$work/errors")"

agent_under 'any:error=EPERM:if=instance==edge-1:when=2'
check "what will not pass is not tried again" \
  "SetVdrInstance 0, SetLif EPERM, DelVdrInstance 0" "$(did)"
check "and nothing is left" nothing "$(cat "$work/left")"

[ $failures -eq 0 ]
