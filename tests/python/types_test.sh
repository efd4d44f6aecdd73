#!/bin/sh
# The module is strictly typed, also for Python 3.9, and a program that misuses it is told so.
# usage: types_test.sh PYTHON MODULE_DIRECTORY
set -eu
python=$1 module=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
check() { "$python" -m mypy --strict --no-error-summary --cache-dir "$scratch/cache" "$@"; }

check --python-version 3.9 "$module/vdrzax"
check "$module/vdrzax"

cat >"$scratch/agent.py" <<'END'
import vdrzax
vdr = vdrzax.Client()
def word(instance: vdrzax.InstanceRecord) -> int:
    return instance.word64
for instance in vdr.instances:
    name: str = instance.name
    word(instance)
hops = [hop.hopName + "!" for route in vdr.routes("edge-1") for hop in route.nextHops]
END
MYPYPATH=$module check "$scratch/agent.py"

cat >"$scratch/wrong.py" <<'END'
import vdrzax
vdr = vdrzax.Client()
vdr.instances.set(1)
vdr.instances.set("edge-1", third=1)
for instance in vdr.instances:
    name: int = instance.name
    instance.word63
END
if MYPYPATH=$module check "$scratch/wrong.py" >"$scratch/found"; then
  echo "nothing was found in a program that is wrong"
  exit 1
fi
for line in 3 4 6 7; do
  grep -q "wrong.py:$line: error" "$scratch/found" || { echo "line $line was taken"; exit 1; }
done
