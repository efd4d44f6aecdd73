#!/bin/sh
# As part of another project this one builds what that links, installs nothing, and leaves the other's
# settings and warnings alone.
# usage: subproject_test.sh SOURCE_DIRECTORY
set -eu
source=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
. "$(dirname "$0")/quietly.sh"

build_parent() {
  quietly cmake -G Ninja -S "$source/tests/package/parent" -B "$scratch/build" \
    -DVDRZAX_TREE="$source" "$@"
  quietly cmake --build "$scratch/build"
  rm -rf "$scratch/prefix"
  quietly cmake --install "$scratch/build" --prefix "$scratch/prefix"
}
expect() { # expect WHAT EXPECTED DIRECTORY: the files there that bear our names
  found=$(cd "$scratch" && find "$3" \( -name 'libvdrzax*.so' -o -name 'lib*.a' -o -name 'vdr*.h' \
    -o -name 'vdrctl' -o -name 'vdrsim' -o -name program -o -name 'vdrzax.pc' \) ! -type d |
    sed 's|.*/||' | sort | tr '\n' ' ')
  if [ "$found" != "$2" ]; then
    echo "$1: expected \"$2\", found \"$found\""
    exit 1
  fi
}

mkdir "$scratch/prefix"
build_parent
mkdir -p "$scratch/prefix"
expect "built though nothing links it" '' build
expect "installed though nobody asked" '' prefix

build_parent -DPARENT_LINKS=ON
expect "built for a program" 'libvdrzax.so program ' build
expect "installed with a program" 'program ' prefix

rm -rf "$scratch/build"
build_parent -DPARENT_LINKS=ON -DBUILD_SHARED_LIBS=OFF
expect "built for a static program" 'libvdrzax.a program ' build
expect "installed with a static program" 'program ' prefix
if readelf -dW "$scratch/build/program" | grep -q NOW; then
  echo "a program of the other project is linked with our options"
  exit 1
fi

build_parent -DPARENT_LINKS=ON -DBUILD_SHARED_LIBS=OFF -DVDRZAX_INSTALL=ON
expect "installed on request" 'libvdrzax.a program vdrzax.h vdrzax.pc ' prefix
