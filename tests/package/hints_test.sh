#!/bin/sh
# The header lets compilers warn where a call is surely wrong, and nowhere else.
# usage: hints_test.sh INCLUDE_DIRECTORY C_COMPILER CXX_COMPILER
set -eu
include=$1 cc=$2 cxx=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

warnings() { # warnings STATEMENT [OPTION]: what the compiler says of a function of this statement
  {
    echo '#include <vdrzax.h>'
    echo "void f(void); void f(void) { RecordList* list = NULL; $1 (void)list; }"
  } | "$compiler" -x "$language" -c -o /dev/null -Wall -Wextra -pedantic ${2:+"$2"} -I"$include" - 2>&1
}

expect_warning() { # expect_warning OPTION STATEMENT
  if ! warnings "$2" >"$scratch/said" || ! grep -q -e "\[-W$1\]" "$scratch/said"; then
    echo "$compiler: no -W$1 for $2"
    cat "$scratch/said"
    failed=1
  fi
  expect_silence "$2" -DVDRZAX_NO_HINTS
}

expect_silence() { # expect_silence STATEMENT [OPTION]
  if ! warnings "$@" >"$scratch/said" || [ -s "$scratch/said" ]; then
    echo "$compiler: a warning for $*"
    cat "$scratch/said"
    failed=1
  fi
}

for language in c c++; do
  case $language in
    c) compiler=$cc ;;
    *) compiler=$cxx ;;
  esac
  # What was not filled is read.
  expect_warning unused-result 'VDRZAX_GetInstances(NULL, 0, &list);'
  expect_warning unused-result 'VDRZAXGetBridgeInstances(list);'
  expect_warning unused-result 'char mac[6]; VDRZAX_GetVMAC("uplink", mac);'
  expect_warning unused-result 'uint32_t level; VDRZAX_GetLogLevel(&level);'
  # What faults.
  expect_warning nonnull 'if (VDRZAX_GetInstances(NULL, 0, NULL) != 0) return;'
  expect_warning nonnull 'if (VDRZAX_GetRoutes(NULL, &list) != 0) return;'
  expect_warning nonnull 'VDRZAX_SetArp(1, "0a:00:00:00:00:01", NULL, "edge-1");'
  expect_warning nonnull 'VDRZAX_AddE2I(1, 2, NULL, 3, 4);'

  # What an agent may do.
  expect_silence 'VDRZAX_DelVdrInstance("edge-1");'
  expect_silence 'VDRZAX_ReleaseInstances(NULL);'
  # What is tested, optional, or given to the kernel.
  expect_silence 'VDRZAX_DelVdrInstance(NULL);'
  expect_silence 'if (VDRZAX_GetInstances(NULL, 0, &list) != 0) return;'
  expect_silence 'if (VDRZAX_GetConnections(NULL) != 0) return;'
  expect_silence 'VDRZAX_AddPmac(1, NULL);'
  expect_silence 'VDRZAX_DelPolicyTable(1, NULL);'
done
exit $failed
