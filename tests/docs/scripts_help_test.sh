#!/bin/sh
# Each script tells its usage when it is asked for help, and does nothing else; the page on checks names
# each check.
# usage: scripts_help_test.sh SOURCE_DIRECTORY
set -eu
cd "$1"
failed=0
asked=0
for script in scripts/* scripts/checks/*; do
  [ -f "$script" ] && [ -x "$script" ] || continue
  asked=$((asked + 1))
  # One that does not begin so would start to work.
  if ! grep -qE '^\. "\$\(dirname "\$0"\)/(\.\./)?help"$' "$script"; then
    echo "$script does not read scripts/help"
    failed=1
    continue
  fi
  if ! help=$("$script" --help 2>&1); then
    echo "$script --help fails: $help"
    failed=1
  fi
  case $help in
    *"usage: $script"*) ;;
    *)
      echo "$script --help does not tell its usage: $help"
      failed=1
      ;;
  esac
  case $script in
    scripts/checks/*)
      if ! grep -qF "| \`${script##*/}\` |" docs/checks.md; then
        echo "docs/checks.md does not name $script"
        failed=1
      fi
      ;;
  esac
done
[ "$asked" -ge 10 ] || { echo "only $asked scripts are found"; exit 1; }
exit $failed
