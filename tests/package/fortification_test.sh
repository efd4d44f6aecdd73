#!/bin/sh
# Built with the flags of a distribution, the library is fortified but for the sources in which a
# trusted count may take a copy past the array that it begins in.
# usage: fortification_test.sh SOURCE_DIRECTORY
set -eu
export LC_ALL=C
source=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
. "$(dirname "$0")/quietly.sh"

# Such copies are those of counted entries, where a source decodes a record that has some, and those
# that a request takes by a count.
cd "$source/library"
{
  grep -l 'CountedBytes<' ./*/*.cpp
  grep -lE '^ *Entries\(' ./*/*_record.h | sed 's|^\./||' | while read -r record; do
    grep -lF "#include \"$record\"" ./*/*.cpp || true
  done
} | sort -u >"$scratch/sources"
[ "$(wc -l <"$scratch/sources")" -ge 5 ] || { echo "too few such sources are found"; exit 1; }
sed 's|.*/||; s|$|.o|' "$scratch/sources" | sort >"$scratch/trusting"
# The compiler does not see each size, so not each such source would be fortified today.
while read -r path; do
  if [ "$(grep -v '^//' "$path" | head -n 1)" != '#undef _FORTIFY_SOURCE' ]; then
    echo "library/$path: does not begin with #undef _FORTIFY_SOURCE, as lif/lifs.cpp does"
    exit 1
  fi
done <"$scratch/sources"

# No option that follows undoes these flags.
quietly cmake -G Ninja -S "$source" -B "$scratch/build" -DCMAKE_BUILD_TYPE=None \
  -DCMAKE_C_COMPILER=gcc -DCMAKE_CXX_COMPILER=g++ \
  -DCMAKE_CXX_FLAGS='-O2 -Wp,-U_FORTIFY_SOURCE,-D_FORTIFY_SOURCE=3' -DVDRZAX_WERROR=ON \
  -DVDRZAX_TOOLS=OFF -DVDRZAX_TESTS=OFF
quietly cmake --build "$scratch/build" --target vdrzax_static
nm -A --undefined-only "$scratch/build/libvdrzax.a" | grep -v __stack_chk_fail |
  sed -n 's/.*:\([^:]*\.o\):.* \(__[a-z0-9_]*_chk\)$/\1 \2/p' | sort -u >"$scratch/fortified"
[ -s "$scratch/fortified" ] || { echo "nothing is fortified"; exit 1; }
cut -d' ' -f1 "$scratch/fortified" | comm -12 - "$scratch/trusting" >"$scratch/wrong"
if [ -s "$scratch/wrong" ]; then
  echo "fortified, though a copy may go on past its array there:"
  sed 's/^/  /' "$scratch/wrong"
  exit 1
fi
