# Sourced by the scripts beside it.

room=$(mktemp -d) || exit 1
trap 'rm -rf "$room"' EXIT
failures=0

# expect STATUS STDOUT STDERR COMMAND...: runs COMMAND and compares all three, to the byte. The texts
# are given without their last newline; an empty text stands for no output at all.
expect() {
  wanted_status=$1
  wanted_text "$2" >"$room/wanted-out"
  wanted_text "$3" >"$room/wanted-err"
  shift 3
  "$@" >"$room/out" 2>"$room/err" </dev/null
  status=$?
  if [ "$status" -eq "$wanted_status" ] && cmp -s "$room/wanted-out" "$room/out" &&
    cmp -s "$room/wanted-err" "$room/err"; then
    return
  fi
  failures=$((failures + 1))
  printf 'FAILED: %s\n' "$*"
  printf 'status: expected %s, got %s\n' "$wanted_status" "$status"
  differ 'standard output' "$room/wanted-out" "$room/out"
  differ 'standard error' "$room/wanted-err" "$room/err"
}

# expect_bytes HEX FILE: compares the bytes of a file.
expect_bytes() {
  got=$(od -An -v -tx1 "$2" | tr -d ' \n')
  [ "$got" = "$1" ] && return
  failures=$((failures + 1))
  printf 'FAILED: bytes of %s: expected %s, got %s\n' "$2" "$1" "$got"
}

# expect_line TEXT FILE: looks for a whole line in a file.
expect_line() {
  grep -qxF -e "$1" "$2" && return
  failures=$((failures + 1))
  printf 'FAILED: %s: expected the line\n%s\ngot\n' "$2" "$1"
  cat "$2"
}

wanted_text() {
  if [ -n "$1" ]; then printf '%s\n' "$1"; fi
}

differ() {
  cmp -s "$2" "$3" && return
  printf '%s: expected\n' "$1"
  cat "$2"
  printf '%s: got\n' "$1"
  cat "$3"
}

# Ends the script with its result.
finish() {
  [ "$failures" -eq 0 ] || printf '%s checks failed\n' "$failures"
  [ "$failures" -eq 0 ]
  exit
}
