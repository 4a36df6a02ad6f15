#!/usr/bin/env bash
# Usage: check-template.sh CMAKE C-COMPILER C++-COMPILER BUILD-FOLDER BROKEN
#
# Installs the build into a temporary prefix and does with the installed template what an author does, outside of
# this tree and with nothing set but the prefix: builds it in C and in C++, with CMake's one-configuration and
# multi-configuration generators and with make and pkg-config, flies its test each time and installs it. Then it
# builds the plugins in BROKEN, which must all fail for the reason that they are named for.
set -euo pipefail
cmake=$1 c=$2 cxx=$3 build=$4 broken=$5
export CC=$c CXX=$cxx
unset CMAKE_PREFIX_PATH PKG_CONFIG_PATH LD_LIBRARY_PATH MAKEFLAGS MFLAGS
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

fail() {
  echo "$*" >&2
  exit 1
}

# quietly COMMAND...: its output is shown when it fails.
quietly() {
  "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2; fail "this failed: $*"; }
}

# fly BUILD [CTEST-ARGUMENT...]
fly() {
  quietly ctest --test-dir "$@" --no-tests=error --output-on-failure
  grep -q '100% tests passed, 0 tests failed out of 1' "$work/log" || { cat "$work/log" >&2; fail "no flight in $1"; }
}

quietly "$cmake" --install "$build" --prefix "$prefix"
template=$prefix/share/vyra/template

# One configuration.
for language in c cpp; do
  quietly "$cmake" -G Ninja -S "$template/$language" -B "$work/$language" -DCMAKE_PREFIX_PATH="$prefix"
  quietly "$cmake" --build "$work/$language"
  fly "$work/$language"
  quietly "$cmake" --install "$work/$language" --prefix "$work/skyvora-$language"
  installed=$work/skyvora-$language/Resources/plugins/stopwatch/64/lin.vyp
  [[ -f $installed ]] || fail "there is no $installed"
done
[[ -f $work/c/flights/stopwatch.flight/junit.xml ]] || fail "the flight test left no junit.xml"

# A flight test that cannot fail would be none.
sed -i 's/"atLeast": 1.9/"atLeast": 2.9/' "$template/c/flight.json"
! ctest --test-dir "$work/c" >"$work/log" 2>&1 || fail "the flight test passes whatever happens"

# Several configurations, side by side.
quietly "$cmake" -G "Ninja Multi-Config" -S "$template/cpp" -B "$work/multi" -DCMAKE_PREFIX_PATH="$prefix"
for configuration in Debug Release; do
  quietly "$cmake" --build "$work/multi" --config "$configuration"
  fly "$work/multi" -C "$configuration"
  module=$work/multi/plugins/$configuration/stopwatch/64/lin.vyp
  [[ -f $module ]] || fail "there is no $module"
done

# Without CMake, in folders of the author's.
cp -r "$template" "$work/make"
sed -i 's/"atLeast": 2.9/"atLeast": 1.9/' "$work/make/c/flight.json"
for language in c cpp; do
  quietly make -C "$work/make/$language" check PREFIX="$prefix"
  grep -q ' 0 FAILED' "$work/log" || { cat "$work/log" >&2; fail "make check has no flight"; }
done

# What must not be built. Each target of BROKEN fails with its text.
quietly "$cmake" -G Ninja -S "$broken" -B "$work/broken" -DCMAKE_PREFIX_PATH="$prefix"
while IFS='|' read -r target text; do
  ! "$cmake" --build "$work/broken" --target "$target" >"$work/log" 2>&1 || fail "$target was built"
  # CMake breaks its lines where the folder's name makes them too long.
  tr -s ' \n' ' ' <"$work/log" | grep -F "$text" >/dev/null || { cat "$work/log" >&2; fail "$target did not fail with: $text"; }
  [[ ! -e $work/broken/plugins/$target/64/lin.vyp ]] || fail "$target left a module"
done <<'TARGETS'
undefined|NobodyHasThis
startless|it exports no VyPluginStart: there is no such function in it.
hidden|it exports no VyPluginStart: it is hidden; include VYRAPlugin.h
mangled|it exports no VyPluginStart: it has a C++ name; include VYRAPlugin.h
TARGETS
