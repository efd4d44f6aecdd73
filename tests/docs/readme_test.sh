#!/bin/sh
# The program that the front page shows is the one that is built and run as an example, and it
# compiles as C and as C++ without a warning. The lines of C++ are a part of the example agent.
# usage: readme_test.sh README EXAMPLE AGENT INCLUDE_DIRECTORY
set -eu
readme=$1 example=$2 agent=$3 include=$4
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# shellcheck disable=SC2016
sed -n '/^```c$/,/^```$/p' "$readme" | sed '1d;$d' >"$scratch/shown"
sed 1d "$example" >"$scratch/built" # without the comment that opens it
[ -s "$scratch/shown" ] || { echo "$readme shows no C program"; exit 1; }
if ! diff "$scratch/shown" "$scratch/built"; then
  echo "< as $readme shows it, > as $example has it"
  exit 1
fi
for language in c11 c++17; do
  cc -x "${language%%[0-9]*}" -std=$language -Wall -Wextra -pedantic -Werror -fsyntax-only \
    -I"$include" "$example"
done

# shellcheck disable=SC2016
lines=$(sed -n '/^```cpp$/,/^```$/p' "$readme" | sed '1d;$d')
[ -n "$lines" ] || { echo "$readme shows no C++"; exit 1; }
case $(cat "$agent") in
  *"$lines"*) ;;
  *) echo "$agent has no such part: $lines" && exit 1 ;;
esac
c++ -std=c++20 -Wall -Wextra -pedantic -Werror -fsyntax-only -I"$include" "$agent"
