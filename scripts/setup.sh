# Functions that install missing packages and build. Sourced by ./run and ./test; needs bash.
# SPDX-License-Identifier: GPL-3.0-or-later

# Lets all checkouts share the compiler cache.
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
# Without it the cache leaves out what reads a precompiled header.
export CCACHE_SLOPPINESS=pch_defines,time_macros

# Dates in packages are that of the last commit, or without git that of the release: the same sources give the same bytes.
export SOURCE_DATE_EPOCH="${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null ||
  date -d "$(sed -n 's/^ -- .*>  //p' packaging/changelog | head -n 1)" +%s)}"

say() { printf '\n== %s\n' "$*"; }

# install_packages FILE: installs every missing package that FILE lists, through apt-get, as root or with sudo.
install_packages() {
  local wanted missing=() package privileged=()
  mapfile -t wanted < <(sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' "$1")
  for package in "${wanted[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Missing packages, and no sudo to install them: ${missing[*]}" >&2; return 1; }
    privileged=(sudo)
  fi
  say "Installing packages: ${missing[*]}"
  "${privileged[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq
  "${privileged[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# install_optional FILE: as install_packages, but on failure prints one line and returns false.
install_optional() {
  install_packages "$1" 2>/dev/null || { echo "Skipped: the packages in $1 cannot be installed here"; return 1; }
}

# configure PRESET: configures the build if it is new or its presets or packages have changed.
configure() {
  local stamp="build/$1/.configured"
  if [ ! -e "build/$1/build.ninja" ] || [ CMakePresets.json -nt "$stamp" ] || [ packages.txt -nt "$stamp" ]; then
    say "Configuring build/$1"
    cmake --preset "$1" --log-level=WARNING >"build-$1.log" 2>&1 || { cat "build-$1.log"; rm -f "build-$1.log"; return 1; }
    rm -f "build-$1.log"
    touch "$stamp"
  fi
}

# build PRESET [TARGETS...]: configures and builds. Returns whether both went well, also in a condition.
build() {
  local preset="$1"
  shift
  configure "$preset" || return
  say "Building build/$preset${*:+ ($*)}: steps done/all, seconds"
  local begun=$SECONDS
  NINJA_STATUS='[%f/%t, %e s] ' cmake --build "build/$preset" ${*:+--target "$@"} || return
  echo "Built in $((SECONDS - begun)) s"
}
