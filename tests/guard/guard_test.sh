#!/bin/sh
# guard_test.sh GUARDED VDRSIM: what `guarded` passes on, and that nobody is left however a test ends.
# Whoever is left holds the output open, and says so at last.
guarded=$1
vdrsim=$2
failures=0

expect() { # expect WHAT EXPECTED ACTUAL
  [ "$2" = "$3" ] && return
  failures=$((failures + 1))
  printf 'FAILED: %s: expected "%s", got "%s"\n' "$1" "$2" "$3"
}

# Children, orphans, processes in sessions of their own, all deaf to requests to stop.
# shellcheck disable=SC2016
crowd='
  trap "" TERM INT HUP
  stay() { sleep 300 && echo "$1 is left"; }
  stay child &
  (stay orphan &)
  setsid sh -c "sleep 300 & sleep 300 && echo a session is left" &
'

ends() { # ends WHAT EXPECTED COMMAND...: the output, and the status at its end
  what=$1
  expected=$2
  shift 2
  output=$("$@" 2>&1; echo "status $?")
  expect "$what" "$expected" "$output"
}
ends 'status' 'status 3' "$guarded" sh -c 'exit 3'
# shellcheck disable=SC2016
ends 'signal' 'status 143' "$guarded" sh -c 'kill -TERM $$'
for number in 1 2 3 13; do # HUP, INT, QUIT, PIPE
  ends "signal $number, ignored outside" "status $((128 + number))" \
    sh -c "trap '' $number; exec \"\$0\" sh -c 'kill -$number \$\$; echo deaf'" "$guarded"
done
ends 'no command' 'usage: guarded [--seconds SECONDS] COMMAND...
status 2' "$guarded"
ends 'no such command' 'guarded: ./none: No such file or directory
status 127' "$guarded" ./none
ends 'arguments' 'a b|
status 0' "$guarded" printf '%s|\n' 'a b'
ends 'a success' 'status 0' "$guarded" sh -c "$crowd"
ends 'a failure' 'status 1' "$guarded" sh -c "$crowd exit 1"
ends 'a hanging test' 'guard: it has not ended after 1 s and is killed
status 124' "$guarded" --seconds 1 sh -c "$crowd wait"
ends 'a hanging run' 'guard: it has not ended after 1 s and is killed
status 124' "$guarded" --seconds 1 "$vdrsim" run -- sh -c "$crowd wait"

# The guard itself is killed, as ctest does when the time that it gives a test is over.
# shellcheck disable=SC2016
output=$(exec 2>/dev/null
  sh -c 'GUARD=$$ exec "$@"' sh \
    "$guarded" "$vdrsim" run -- sh -c "$crowd"'echo ready; kill -KILL $GUARD; wait' || :)
expect 'a killed guard' ready "$output"

# shellcheck disable=SC2016
ends 'the other node' 'unset
status 0' env USE_UPGRADE_DEV=1 "$guarded" sh -c 'echo ${USE_UPGRADE_DEV-unset}'

[ $failures -eq 0 ]
