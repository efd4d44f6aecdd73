#!/bin/sh
# Each function of the public headers has a comment directly above it, which an editor shows. It
# names every parameter, or the function whose parameters it shares, but for Releases, whose one
# parameter explains itself. No comment says where a field of a request lies.
# usage: comments_test.sh INCLUDE_DIRECTORY
set -eu
include=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

faults() { # faults INCLUDE_DIRECTORY: a line for each function without its comment
  awk '
    /^\/\*/ { comment = "" }
    /^(\/\*| \*)/ { comment = comment $0 " " }
    /^VDRZAX_API / {
      ++functions
      if (above !~ /\*\/$/) print FILENAME ": no comment directly above: " $0
      commented = above ~ /\*\/$/
      declaration = ""
    }
    /^VDRZAX_API /, /;$/ {
      declaration = declaration $0
      if (/;$/ && commented) check(declaration, comment)
    }
    /^(\/\*| \*).*offsets? [0-9]/ {
      print FILENAME ": where a field lies belongs to docs/protocol.md: " $0
    }
    { above = $0 }
    END { if (functions < 100) print "only " functions + 0 " functions found" }

    function check(declaration, comment,    name, list, count, words, word, i) {
      match(declaration, /VDRZAX_?[A-Za-z0-9]+\(/)
      name = substr(declaration, RSTART, RLENGTH - 1)
      list = substr(declaration, RSTART + RLENGTH)
      sub(/\).*/, "", list)
      gsub(/ \* /, "", comment)
      if (list == "void" || name ~ /_Release/ || comment ~ /as VDRZAX|those of VDRZAX/) return
      count = split(list, words, ",")
      for (i = 1; i <= count; ++i) {
        word = words[i]
        sub(/.*[ *]/, "", word)
        if (word ~ /^(out|list)$/ && comment ~ /said at the top/) continue
        if (comment !~ "[^A-Za-z0-9]" word "[^A-Za-z0-9]") {
          print FILENAME ": the comment of " name " does not name " word
        }
      }
    }' "$1"/vdrzax/*.h
}

faults "$include" >"$scratch/faults"
cat "$scratch/faults"
[ ! -s "$scratch/faults" ] || exit 1

# A function that loses its comment is found.
cp -R "$include" "$scratch/include"
sed -i 's/^VDRZAX_API int VDRZAXIoctl(/\n&/' "$scratch/include/vdrzax/channel.h"
case $(faults "$scratch/include") in
  *"no comment directly above: VDRZAX_API int VDRZAXIoctl("*) ;;
  *) echo "a function without a comment went unnoticed" && exit 1 ;;
esac
