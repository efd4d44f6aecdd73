# Read by the tests that build something: quietly COMMAND... shows what a command says when it fails.
quietly() {
  if ! "$@" >"$scratch/log" 2>&1; then
    cat "$scratch/log"
    echo "failed: $*"
    exit 1
  fi
}
