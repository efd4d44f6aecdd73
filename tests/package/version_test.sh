#!/bin/sh
# The header, the build, the front page, both changelogs, the tools and the soname have one version.
# usage: version_test.sh SOURCE_DIRECTORY PROJECT_VERSION SHARED_OBJECT TOOL...
set -eu
source=$1 project=$2 library=$3
shift 3
failed=0

expanded() { # expanded NAME: what the macro is, as the preprocessor sees it
  printf '#include <vdrzax.h>\n%s\n' "$1" | cc -E -P -I"$source/include" -xc - | tail -n 1
}
major=$(expanded VDRZAX_VERSION_MAJOR)
minor=$(expanded VDRZAX_VERSION_MINOR)
patch=$(expanded VDRZAX_VERSION_PATCH)
version=$major.$minor.$patch

expect() { # expect WHERE SAYS
  [ "$2" = "$version" ] || { echo "$1 says '$2', the header $version"; failed=1; }
}
expect "the build" "$project"
expect "the front page" "$(sed -n 's/^This is version \([0-9.]*[0-9]\)[^0-9].*/\1/p' "$source/README.md")"
expect "the top of the changelog" \
  "$(sed -n '/^## /{s/^[^0-9]*\([0-9.]*[0-9]\).*/\1/p;q;}' "$source/CHANGELOG.md")"
expect "debian/changelog" "$(sed -n '1s/^vdrzax (\(.*\)) .*/\1/p' "$source/debian/changelog")"
for tool; do
  expect "$tool --version" "$("$tool" --version | sed 's/^[^ ]* //')"
done

soname=$(readelf -dW "$library" | sed -n 's/.*(SONAME).*\[libvdrzax\.so\.\(.*\)\]/\1/p')
[ "$soname" = "$major" ] || { echo "the soname ends in '$soname', the version begins with $major"; failed=1; }

# VDRZAX_VERSION compares in #if.
if ! printf '#include <vdrzax.h>\n#if VDRZAX_VERSION != %d%02d%02d\n#error\n#endif\n' \
  "$major" "$minor" "$patch" | cc -fsyntax-only -I"$source/include" -xc -; then
  echo "VDRZAX_VERSION is not $major, $minor and $patch in two digits each"
  failed=1
fi
exit $failed
