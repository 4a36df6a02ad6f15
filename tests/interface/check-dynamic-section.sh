#!/usr/bin/env bash
# Usage: check-dynamic-section.sh LIBRARY
#
# Plugins find the library as libVYRA.so.2 and rely on it to bring the system's OpenGL library in, while
# the library itself draws nothing and so needs no symbol of OpenGL.
set -euo pipefail
library=$1
dynamic=$(readelf -d "$library")

status=0
grep -qE '\(SONAME\).*\[libVYRA\.so\.2\]' <<<"$dynamic" || {
  echo "The library's name in its dynamic section is not libVYRA.so.2." >&2
  status=1
}
grep -qE '\(NEEDED\).*\[libGL\.so\.1\]' <<<"$dynamic" || {
  echo "The dynamic section lists no OpenGL library." >&2
  status=1
}
if nm -D --undefined-only "$library" | grep -E ' (gl|glX|egl)[A-Z]'; then
  echo "The library calls the OpenGL functions above." >&2
  status=1
fi
exit "$status"
