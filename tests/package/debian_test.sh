#!/bin/sh
# What the packaging repeats of the tree agrees with it: the exported names, and that nobody but the owner
# gives a licence.
# usage: debian_test.sh SOURCE_DIRECTORY
set -eu
export LC_ALL=C
cd "$1"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Each name with its version, behind it the release that it came with.
sed -n 's/^ \(VDRZAX[A-Za-z0-9_]*@VDRZAX_[0-9]*\) [0-9.]*$/\1/p' debian/libvdrzax1.symbols |
  grep -v '^\(VDRZAX_[0-9]*\)@\1$' | sort >"$scratch/packaged"
sed 's/@@/@/' library/abi/libvdrzax.symbols | sort >"$scratch/recorded"
if ! diff "$scratch/recorded" "$scratch/packaged"; then
  echo "< on record in library/abi, > in debian/libvdrzax1.symbols"
  exit 1
fi

[ "$(grep -c . LICENSE)" -eq 1 ] || { echo "LICENSE is more than a sentence"; exit 1; }
grep -qF " $(cat LICENSE)" debian/copyright || { echo "debian/copyright says something else"; exit 1; }
claims='SPDX-Licen|[Ll]icen[sc]ed under|Public License|MIT License|Apache License|BSD [0-9]-[Cc]lause'
if grep -rnE "$claims" --exclude-dir=build --exclude-dir='.?*' . | grep -v '^\./tests/package/debian_test\.sh:'; then
  echo "these claim a licence, which the owner has not chosen"
  exit 1
fi
