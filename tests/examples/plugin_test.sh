#!/bin/sh
# usage: plugin_test.sh HOST PLUGIN VDRSIM VDRCTL
set -eu
host=$1 plugin=$2 vdrsim=$3 vdrctl=$4

# Neither the host nor the plugin needs the shared object.
for file in "$host" "$plugin"; do
  if readelf -dW "$file" | grep -q 'NEEDED.*libvdrzax'; then
    echo "$file needs the shared object"
    exit 1
  fi
done
exported=$(nm -D --defined-only "$plugin" | awk '$2 == "T" {print $3}' | grep -v '^_')
[ "$exported" = collect ] || { echo "the plugin exports $exported"; exit 1; }

# shellcheck disable=SC2016
printed=$("$vdrsim" run -- sh -c '
  "$1" instance set edge-1 && "$1" instance set edge-2 && "$1" stats-level set 3 && "$2" "$3"
' sh "$vdrctl" "$host" "$plugin")
[ "$printed" = 'vdr_instances 2
vdr_stats_level 3' ] || { echo "the host prints: $printed"; exit 1; }

# A plugin that isn't there, and one that is none, are errors that name it.
for file in /nowhere.so "$(dirname "$0")/plugin_test.sh"; do
  if said=$("$host" "$file" 2>&1); then
    echo "the host loads $file"
    exit 1
  fi
  case $said in
    "plugin_host: "*"$file"*) ;;
    *) echo "the host says: $said"; exit 1 ;;
  esac
done
