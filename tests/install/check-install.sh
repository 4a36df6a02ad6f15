#!/usr/bin/env bash
# Usage: check-install.sh CMAKE GENERATOR C-COMPILER BUILD-FOLDER EXAMPLES CONSUMER
#
# Installs the build into a temporary prefix, moves the prefix, builds the examples' plugin and host
# against it, once through find_package and once through pkg-config, and flies them. Moving it shows that
# nothing of the installation depends on where it was first put.
set -euo pipefail
cmake=$1 generator=$2 compiler=$3 build=$4 examples=$5 consumer=$6
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "$*" >&2
  exit 1
}

# fly HOST SYSTEM-FOLDER: the plugin reports the altitude after one, two and three seconds of the climb, and
# the host what its calls cost.
fly() {
  local output
  output=$("$1" "$2/") || fail "$1 failed"
  grep -E ' s: altitude ' <<<"$output" >"$work/reports" || true
  diff -u - "$work/reports" <<'REPORTS' || fail "$1 with the plugin in $2 wrote: $output"
 1.0 s: altitude 1010 m
 2.0 s: altitude 1020 m
 3.0 s: altitude 1030 m
REPORTS
  grep -qE '^flight loop: 0\.[0-9]+ s$' <<<"$output" || fail "$1 told no cost: $output"
}

"$cmake" --install "$build" --prefix "$work/first" >"$work/log" || { cat "$work/log"; fail "the installation failed"; }
mv "$work/first" "$work/prefix"
library=$(find "$work/prefix" -name 'libVYRA.so.2')
[[ -n $library ]] || fail "no libVYRA.so.2 was installed"
libraries=$(dirname "$library")

[[ -f $work/prefix/include/vyra/VYRAHost.h ]] || fail "the headers are not in include/vyra"
[[ -n $(find "$work/prefix" -name LICENSE) ]] || fail "the licence was not installed"
if [[ -e $build/bin/vyra-sim ]]; then
  "$work/prefix/bin/vyra-sim" --help >/dev/null || fail "the installed vyra-sim does not start"
fi

# find_package
"$cmake" -G "$generator" "-DCMAKE_C_COMPILER=$compiler" -S "$consumer" -B "$work/cmake" \
  "-DCMAKE_PREFIX_PATH=$work/prefix" "-DEXAMPLES=$examples" >"$work/log" 2>&1 || { cat "$work/log"; fail "the consumer could not be configured"; }
"$cmake" --build "$work/cmake" >"$work/log" 2>&1 || { cat "$work/log"; fail "the consumer could not be built"; }
fly "$work/cmake/host" "$work/cmake/skyvora"

# pkg-config
export PKG_CONFIG_PATH=$libraries/pkgconfig
read -ra flags <<<"$(pkg-config --cflags --libs vyra)"
plugins=$work/pkg-config/Resources/plugins
mkdir -p "$plugins"
"$compiler" -std=c99 -shared -fPIC "$examples/plugin.c" -o "$plugins/altitude.vyp" "${flags[@]}"
"$compiler" -std=c99 -Wall -Wextra -Werror "$examples/host.c" "$examples/watching.c" -o "$work/host" "${flags[@]}" "-Wl,-rpath,$libraries"
fly "$work/host" "$work/pkg-config"
