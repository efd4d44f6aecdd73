#!/bin/sh
# The lines by which the front page installs the library, builds its program and runs it work as they
# are printed: in a directory with the program and the build, and with nothing else set.
# usage: install_lines_test.sh README BUILD_DIRECTORY
set -eu
readme=$(realpath "$1") build=$(realpath "$2")
# A shell splits what pkg-config prints of a home with a space; the lines are not for such a one.
scratch=$(TMPDIR=/tmp mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
mkdir home build
ln -s "$build" build/release

block() { # block LANGUAGE: the lines of all such blocks
  # shellcheck disable=SC2016
  sed -n '/^```'"$1"'$/,/^```$/p' "$readme" | grep -v '^```'
}
block c >agent.c
{
  echo 'set -eux'
  block sh
} >lines.sh
grep -q '^cmake --install' lines.sh || { echo "the front page installs nothing"; exit 1; }
unset PKG_CONFIG_PATH LD_LIBRARY_PATH CPATH LIBRARY_PATH PREFIX || true
if ! { HOME=$scratch/home sh lines.sh && home/vdrzax/bin/vdrsim run -- ./agent-static; } >log 2>&1; then
  cat log
  exit 1
fi

# The part of the page that is meant for CMake.
mkdir cmake
{
  echo 'cmake_minimum_required(VERSION 3.25)'
  echo 'project(agent LANGUAGES C)'
  echo 'add_executable(agent ../agent.c)'
} >cmake/CMakeLists.txt
block cmake >>cmake/CMakeLists.txt
if ! { cmake -G Ninja -S cmake -B cmake/build -DCMAKE_PREFIX_PATH="$scratch/home/vdrzax" &&
  cmake --build cmake/build && home/vdrzax/bin/vdrsim run -- cmake/build/agent; } >log 2>&1; then
  cat log
  exit 1
fi
