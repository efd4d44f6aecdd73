#!/bin/sh
# What a job of continuous integration runs to test an agent without a hypervisor: any service that can
# run a script in a Debian container will do. It needs the packages libvdrzax-dev and vdrzax-tools, or an
# installed tree in PATH and PKG_CONFIG_PATH; no root, no kernel module and no privileges.
#
#   job:
#     image: debian
#     script: [apt-get install -y gcc pkg-config libvdrzax-dev vdrzax-tools, examples/ci.sh]
#
# usage: ci.sh [AGENT.c]
set -eu
agent=${1:-$(dirname "$0")/agent.c}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# shellcheck disable=SC2046
cc -Wall -Wextra -Werror -o "$work/agent" "$agent" $(pkg-config --cflags --libs vdrzax)

# All that a run starts shares one datapath, which is new and is forgotten with the run. So a test is a
# script: it prepares, runs the agent, and looks at what that made.
cat >"$work/test" <<'TEST'
set -eu
expect() { # expect WHAT IS
  [ "$2" = "$1" ] || { echo "expected '$1', got '$2'" >&2; exit 1; }
}
agent=$1

"$agent" >first
grep -q '^making edge-1$' first
expect 'uplink' "$(vdrctl lif list edge-1 --columns name --no-header)"

# What is there is left alone.
"$agent" >second
! grep '^making' second

# What went away comes back.
vdrctl lif delete edge-1 uplink
"$agent" | grep -q '^making uplink$'
TEST
cd "$work"
vdrsim run -- sh "$work/test" ./agent

# Without a datapath the agent says so.
status=0
./agent 2>/dev/null || status=$?
[ "$status" -eq 3 ] || { echo "without a datapath the agent ends with $status" >&2; exit 1; }
echo "the agent works"
