#!/bin/sh
# An installed library serves a C program three ways: pkg-config, CMake, and the archive with cc
# alone.
# usage: install_test.sh BUILD_DIRECTORY EXAMPLES_DIRECTORY
set -eu
build=$1 examples=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix=$scratch/prefix

cmake --install "$build" --prefix "$prefix" >"$scratch/install.log"
library=$(dirname "$(find "$prefix" -name libvdrzax.so)")

# A program that was linked fails to reach the device here, which shows that it runs.
expect_runs() {
  if message=$("$@" 2>&1); then
    echo "$1 found a device"
    exit 1
  fi
  case $message in
    "list router instances: "*) ;;
    *)
      echo "$1 says: $message"
      exit 1
      ;;
  esac
}

export PKG_CONFIG_PATH="$library/pkgconfig"
# shellcheck disable=SC2046
cc -o "$scratch/by_pkg_config" "$examples/list_instances.c" $(pkg-config --cflags --libs vdrzax)
expect_runs env LD_LIBRARY_PATH="$library" "$scratch/by_pkg_config"

cmake -G Ninja -S "$examples" -B "$scratch/example" -DCMAKE_PREFIX_PATH="$prefix" >"$scratch/configure.log"
cmake --build "$scratch/example" >"$scratch/build.log" || { cat "$scratch/build.log"; exit 1; }
expect_runs "$scratch/example/list_instances"
expect_runs "$scratch/example/list_instances_static"

cc -I"$prefix/include" -o "$scratch/with_archive" "$examples/list_instances.c" "$library/libvdrzax.a"
expect_runs "$scratch/with_archive"
cc -static -I"$prefix/include" -o "$scratch/all_static" "$examples/list_instances.c" "$library/libvdrzax.a"
expect_runs "$scratch/all_static"
