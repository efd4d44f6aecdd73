#!/bin/sh
# An installed library serves a C program three ways: pkg-config, CMake, and the archive with cc
# alone; and a C++ program the first two.
# usage: install_test.sh BUILD_DIRECTORY EXAMPLES_DIRECTORY
set -eu
build=$1 examples=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix=$scratch/prefix

cmake --install "$build" --prefix "$prefix" >"$scratch/install.log"
library=$(dirname "$(find "$prefix" -name libvdrzax.so)")

run_path() { # run_path FILE: where the dynamic linker looks for what the file needs
  readelf -dW "$1" | sed -nE 's/.*\((RPATH|RUNPATH)\).*\[(.*)\]/\2/p'
}
for file in "$library/libvdrzax.so" "$prefix/bin/vdrsim"; do
  [ -z "$(run_path "$file")" ] || { echo "$file looks in $(run_path "$file")"; exit 1; }
done
# The tool finds the library from where it lies itself, so that an installed tree can be moved.
# shellcheck disable=SC2016
case $(run_path "$prefix/bin/vdrctl") in
  *:*) echo "vdrctl looks in several places"; exit 1 ;;
  '$ORIGIN/'*) ;;
  *) echo "vdrctl does not look beside itself"; exit 1 ;;
esac
"$prefix/bin/vdrctl" --version >/dev/null

if grep -q '^VDRZAX_MANUAL:BOOL=ON' "$build/CMakeCache.txt"; then
  for file in man/man1/vdrctl.1 man/man1/vdrsim.1 man/man1/vdrzax-memcheck.1 \
    man/man3/VDRZAX_GetInstances.3 man/man7/vdrzax.7 \
    doc/vdrzax/html/index.html bash-completion/completions/vdrctl zsh/site-functions/_vdrctl \
    fish/vendor_completions.d/vdrctl.fish; do
    [ -s "$prefix/share/$file" ] || { echo "share/$file is not installed"; exit 1; }
  done
fi

# A program that was linked finds what the installed tools put into a datapath of their own, whether the
# machine has a device or not.
expect_runs() {
  # shellcheck disable=SC2016
  listed=$("$prefix/bin/vdrsim" run -- sh -c '"$1" instance set edge-1 --second 7 && shift && "$@"' \
    sh "$prefix/bin/vdrctl" "$@" 2>&1) || true
  [ "$listed" = "edge-1 7" ] || { echo "$1 says: $listed"; exit 1; }
}

export PKG_CONFIG_PATH="$library/pkgconfig"
eval "set -- $(pkg-config --cflags --libs vdrzax)" # it writes spaces as a shell reads them
cc -o "$scratch/by_pkg_config" "$examples/list_instances.c" "$@"
expect_runs env LD_LIBRARY_PATH="$library" "$scratch/by_pkg_config"
c++ -std=c++20 -o "$scratch/agent" "$examples/agent.cpp" "$@"
expect_agent_runs() {
  "$prefix/bin/vdrsim" run -- "$@" >"$scratch/agent.log" && grep -q '^edge-1 10$' "$scratch/agent.log" ||
    { cat "$scratch/agent.log" && exit 1; }
}
expect_agent_runs env LD_LIBRARY_PATH="$library" "$scratch/agent"

PATH=$prefix/bin:$PATH LD_LIBRARY_PATH=$library "$examples/ci.sh" >/dev/null

cmake -G Ninja -S "$examples" -B "$scratch/example" -DCMAKE_PREFIX_PATH="$prefix" >"$scratch/configure.log"
cmake --build "$scratch/example" >"$scratch/build.log" || { cat "$scratch/build.log"; exit 1; }
expect_runs "$scratch/example/list_instances"
expect_runs "$scratch/example/list_instances_static"
expect_agent_runs "$scratch/example/agent_in_cxx"

cc -I"$prefix/include" -o "$scratch/with_archive" "$examples/list_instances.c" "$library/libvdrzax.a"
expect_runs "$scratch/with_archive"
cc -static -I"$prefix/include" -o "$scratch/all_static" "$examples/list_instances.c" "$library/libvdrzax.a"
expect_runs "$scratch/all_static"
