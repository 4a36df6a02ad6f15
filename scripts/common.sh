# shellcheck shell=bash
#
# What demo, check and .ci/run share: installing missing packages and building a preset. Sourced by
# them after `set -euo pipefail`, from the root of the source tree.

# What a build with everything in it needs.
# shellcheck disable=SC2034  # used by the scripts that source this file
BUILD_PACKAGES=(g++ cmake ninja-build make gdb valgrind pkg-config libgl-dev libgtest-dev libcli11-dev libfmt-dev
  nlohmann-json3-dev libbenchmark-dev libgeographiclib-dev libtinyobjloader-dev libcsv-dev libdw-dev libelf-dev
  libpugixml-dev libfreetype-dev fonts-dejavu-core libpng-dev libegl-dev libegl-mesa0
  libgl1-mesa-dri libsdl2-dev libimgui-dev python3-jsonschema xvfb xdotool)

# What vyra-bench measures the library against, and draws with. It does without what is missing.
# shellcheck disable=SC2034
BENCHMARK_PACKAGES=(libsimgear-dev libboost-dev libsigc++-2.0-dev libglib2.0-dev gnuplot-nox)

# What scripts/check-abi needs.
# shellcheck disable=SC2034
ABI_PACKAGES=(abigail-tools g++ python3)

# What scripts/reference needs.
# shellcheck disable=SC2034
REFERENCE_PACKAGES=(doxygen python3)

# What scripts/package makes packages with, and scripts/check-packages tries them with.
# shellcheck disable=SC2034
PACKAGING_PACKAGES=(dpkg-dev file lintian mmdebstrap)

fail() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

step() {
  printf '== %s\n' "$*"
}

# Runs a command with its output in a file; prints the file's end only when the command fails.
quietly() {
  local description=$1 log
  shift
  log=$(mktemp)
  if ! "$@" >"$log" 2>&1 </dev/null; then
    tail -n 60 "$log" >&2
    rm -f "$log"
    fail "$description failed; the end of its output stands above."
  fi
  rm -f "$log"
}

# install_packages NAME...: installs those that are missing. When all are there it asks dpkg once and
# does nothing else.
install_packages() {
  command -v dpkg-query >/dev/null || fail "this needs Debian 12; elsewhere, install the like of: $*"
  local installed name missing=() as_root=()
  installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "$@" 2>/dev/null || true)
  for name in "$@"; do
    grep -qxF "$name installed" <<<"$installed" || missing+=("$name")
  done
  ((${#missing[@]})) || return 0
  if ((EUID != 0)); then
    { command -v sudo >/dev/null && sudo -n true 2>/dev/null; } ||
      fail "packages are missing and neither root nor sudo without a password is there to install them: ${missing[*]}"
    as_root=(sudo -n)
  fi
  step "Installing ${missing[*]}"
  quietly "apt-get update" "${as_root[@]}" apt-get update -q
  quietly "apt-get install" "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -qy --no-install-recommends "${missing[@]}"
}

# build_preset PRESET [TARGET...]: configures and builds into build/PRESET. At a terminal the build shows
# its progress on one line; elsewhere it is silent unless it fails.
build_preset() {
  local preset=$1 targets=()
  shift
  (($# == 0)) || targets=(--target "$@")
  step "Building build/$preset"
  quietly "Configuring the preset $preset" cmake --preset "$preset"
  if [[ -t 1 ]]; then
    cmake --build --preset "$preset" "${targets[@]}" || fail "building the preset $preset failed."
  else
    quietly "Building the preset $preset" cmake --build --preset "$preset" "${targets[@]}"
  fi
}
