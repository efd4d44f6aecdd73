#!/bin/sh
# The library built as packagers do: without a preset and without a type, sources joined where that
# can be, absolute directories, and one kind of library alone.
# usage: packager_test.sh SOURCE_DIRECTORY
set -eu
source=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
. "$(dirname "$0")/quietly.sh"
build=$scratch/build libraries=$scratch/place/libraries headers=$scratch/place/headers

# The type may come by the environment too.
unset CMAKE_BUILD_TYPE || true
configure() {
  quietly cmake -G Ninja -S "$source" -B "$build" -DVDRZAX_TESTS=OFF -DVDRZAX_MANUAL=OFF \
    -DCMAKE_UNITY_BUILD=ON -DCMAKE_INSTALL_LIBDIR="$libraries" -DCMAKE_INSTALL_INCLUDEDIR="$headers" "$@"
}
fail() {
  echo "$*"
  exit 1
}

# vdrctl finds the library there.
configure -DVDRZAX_TOOLS=ON
grep -q 'No build type is given, so this is a release build' "$scratch/log" ||
  fail "a build without a type does not say what it is"
grep -q 'CMAKE_BUILD_TYPE:STRING=RelWithDebInfo' "$build/CMakeCache.txt" || fail "it is something else"
grep -qF "RPATH \"$libraries\"" "$build/cmake_install.cmake" || fail "vdrctl looks elsewhere"
! grep -q -e -Werror "$build/build.ninja" || fail "warnings are errors though nobody asked for that"

configure -DVDRZAX_TOOLS=OFF
quietly cmake --build "$build"
quietly cmake --install "$build" --prefix "$scratch/prefix"
[ ! -e "$scratch/prefix" ] || fail "something was installed elsewhere: $(find "$scratch/prefix")"
export PKG_CONFIG_PATH="$libraries/pkgconfig"
[ "$(pkg-config --variable=libdir vdrzax)" = "$libraries" ] || fail "pkg-config names other libraries"
[ "$(pkg-config --variable=includedir vdrzax)" = "$headers" ] || fail "pkg-config names other headers"
quietly cmake -G Ninja -S "$source/examples" -B "$scratch/example" \
  -Dvdrzax_DIR="$libraries/cmake/vdrzax"
quietly cmake --build "$scratch/example"

# The archive alone serves by both names, the shared object by its own.
rm -r "$libraries" "$headers" "$scratch/example"
configure -DVDRZAX_TOOLS=OFF -DBUILD_SHARED_LIBS=OFF
quietly cmake --build "$build"
quietly cmake --install "$build"
[ -e "$libraries/libvdrzax.a" ] || fail "the archive is not installed"
[ ! -e "$libraries/libvdrzax.so" ] || fail "the shared object is installed"
quietly cmake -G Ninja -S "$source/examples" -B "$scratch/example" \
  -Dvdrzax_DIR="$libraries/cmake/vdrzax"
quietly cmake --build "$scratch/example"
rm -r "$libraries"
configure -DVDRZAX_TOOLS=OFF -DBUILD_SHARED_LIBS=ON
quietly cmake --build "$build"
quietly cmake --install "$build"
[ -e "$libraries/libvdrzax.so" ] || fail "the shared object is not installed"
[ ! -e "$libraries/libvdrzax.a" ] || fail "the archive is installed"
