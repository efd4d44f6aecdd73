#!/bin/sh
# The module is installed by pip from a tree without anything built, without a network, and has the
# version of the header; what is installed needs nothing of the tree.
# usage: install_test.sh PYTHON SOURCE_DIRECTORY VERSION LIBRARY
set -eu
python=$1 source=$2 version=$3 library=$4
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# A build leaves its files in the tree that it is given.
mkdir "$scratch/tree"
cp -R "$source/python/pyproject.toml" "$source/python/vdrzax" "$scratch/tree"
if ! "$python" -m pip install --quiet --no-index --no-build-isolation --no-deps \
  --disable-pip-version-check --root-user-action=ignore --target "$scratch/installed" \
  "$scratch/tree" >"$scratch/log" 2>&1; then
  cat "$scratch/log"
  exit 1
fi

cd "$scratch"
for file in py.typed _records.py _functions.py; do
  [ -f "installed/vdrzax/$file" ] || { echo "$file was not installed"; exit 1; }
done
PYTHONPATH=$scratch/installed VDRZAX_LIBRARY=$library "$python" -B - "$version" <<'END'
import importlib.metadata
import sys

import vdrzax

version = sys.argv[1]
assert importlib.metadata.version("vdrzax") == version, importlib.metadata.version("vdrzax")
assert vdrzax.__version__ == version
assert "installed" in vdrzax.__file__
vdrzax.Client()
END

# pytest finds the plugin by itself, and has it once when it is asked for as well.
for asked in "" "-p vdrzax.pytest_plugin"; do
  # shellcheck disable=SC2086
  PYTHONPATH=$scratch/installed "$python" -B -m pytest -p no:cacheprovider $asked --fixtures \
    "$scratch/tree" >"$scratch/log" 2>&1 || true
  grep -q '^vdrsim .*pytest_plugin.py' "$scratch/log" || {
    cat "$scratch/log"
    echo "pytest $asked does not find the fixture vdrsim"
    exit 1
  }
done
