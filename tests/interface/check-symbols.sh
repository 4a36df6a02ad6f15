#!/usr/bin/env bash
# Usage: check-symbols.sh LIBRARY LIST INCLUDE-FOLDER
#
# The library exports exactly the functions of LIST, all with the version of this interface, and LIST is
# exactly what the headers declare with VYRA_API. A function that is added, lost or renamed by accident,
# or leaks out of the library, shows as a line of one of the two differences.
set -euo pipefail
library=$1 list=$2 include=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

LC_ALL=C sort "$list" >"$work/list"
# The version's own name is an absolute symbol (type A) of the version script; it is no function.
nm -D --defined-only "$library" | awk '$2 != "A" { print $3 }' | LC_ALL=C sort >"$work/exported"
# A declaration may go on over several lines: everything from VYRA_API to the semicolon is one.
cat "$include"/*.h | tr '\n' ' ' | grep -oE 'VYRA_API [^;({]*\(' | grep -oE 'VYRA[A-Za-z0-9]+ ?\($' |
  tr -d ' (' | LC_ALL=C sort >"$work/declared"
sed 's/$/@@VYRA_2.1/' "$work/list" >"$work/versioned"

status=0
if ! diff -u --label "$list" --label "$library" "$work/versioned" "$work/exported"; then
  echo "The library does not export what the list says." >&2
  status=1
fi
if ! diff -u --label "$list" --label "declared with VYRA_API" "$work/list" "$work/declared"; then
  echo "The headers do not declare what the list says." >&2
  status=1
fi
exit "$status"
