# Functions that install missing packages and build. Sourced by ./run and ./test; needs bash.
# SPDX-License-Identifier: GPL-3.0-or-later

# Paths relative to the checkout let all checkouts share the compiler cache.
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
# The sloppiness lets the cache store files that read a precompiled header; PCH_EXTSUM identifies that header by the
# checksum beside it; DEPEND saves running the preprocessor.
export CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_PCH_EXTSUM=1 CCACHE_DEPEND=1

# Dates in packages are those of the last commit, or without git of the release, so the same sources give the same
# bytes.
export SOURCE_DATE_EPOCH="${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null ||
  date -d "$(sed -n 's/^ -- .*>  //p' packaging/changelog | head -n 1)" +%s)}"

# in_huge_pages COMMAND...: runs it with its heap in huge pages, if the system allows that. It reduces Clang's time by a
# fifth, and by more under a hypervisor with slow page faults.
in_huge_pages() {
  GLIBC_TUNABLES="glibc.malloc.hugetlb=1:glibc.malloc.top_pad=$((64 << 20))${GLIBC_TUNABLES:+:$GLIBC_TUNABLES}" "$@"
}

say() { printf '\n== %s\n' "$*"; }

is_installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'ok installed'; }

# choose PACKAGE...: prints the first package that can be installed without removing others.
choose() {
  local package
  for package in "$@"; do
    apt-get install -s --no-install-recommends "$package" 2>/dev/null | grep -q '^Remv' || break
  done
  echo "$package"
}

# told_apt ARGUMENTS...: runs apt-get as root, waits for other installations, and prints the progress.
told_apt() {
  "${privileged[@]}" env DEBIAN_FRONTEND=noninteractive LC_ALL=C apt-get -qq -o DPkg::Lock::Timeout=600 -o APT::Status-Fd=1 "$@" |
    awk -F: '$1 == "dlstatus" || $1 == "pmstatus" {
      word = $1 == "dlstatus" ? "fetched" : "installed"; tens = 10 * int($3 / 10)
      if (word != last) { printf "%s%s, %%:", last == "" ? "" : "\n", word; done = -1 }
      if (tens > done) { printf " %d", tens; fflush(); done = tens }
      last = word
    } END { if (last != "") print "" }'
}

# update_lists: updates the package lists with told_apt. Retries, because apt-get does not wait for the lock of the
# lists.
update_lists() {
  local said
  for _ in {1..60}; do
    said="$(told_apt update 2>&1 >/dev/null)" && return
    [[ "$said" = *"/lists/lock"* ]] || break
    sleep 5
  done
  echo "$said" >&2
  return 1
}

# install_packages FILE...: installs every missing package that the files list, through apt-get, as root or with sudo.
install_packages() {
  local lines line names name missing=() unpacked=() privileged=()
  mapfile -t lines < <(sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' "$@")
  for line in "${lines[@]}"; do
    IFS='|' read -ra names <<<"${line//[][]/}"
    for name in "${names[@]}"; do
      is_installed "$name" && continue 2
    done
    case "$line" in
      '['*) [ -d build/unpacked/usr ] || unpacked+=("${names[@]}") ;;
      *) missing+=("${names[*]}") ;;
    esac
  done
  [ "$(id -u)" -eq 0 ] || privileged=(sudo)
  if [ ${#missing[@]} -gt 0 ]; then
    if [ ${#privileged[@]} -gt 0 ] && ! command -v sudo >/dev/null; then
      printf 'Packages are missing, and there is no sudo to install them. Root types:\n  %s\n' \
        "apt-get update && apt-get install --no-install-recommends $(printf '%s\n' "${missing[@]}" | cut -d' ' -f1 | xargs)" >&2
      return 1
    fi
    say "Installing ${#missing[@]} packages: ${missing[*]// / or }"
    update_lists || return
    for line in "${!missing[@]}"; do
      read -ra names <<<"${missing[line]}"
      missing[line]="$(choose "${names[@]}")"
    done
    told_apt install -y --no-install-recommends "${missing[@]}" || return
  fi
  [ ${#unpacked[@]} -eq 0 ] || unpack "${unpacked[@]}"
}

# unpack PACKAGE...: downloads these packages and their data packages, and unpacks them into build/unpacked. Installing
# Debian's JUCE would also install the dependencies of modules that are not used here, such as a web browser: 724 MB.
unpack() {
  local work package
  say "Fetching $* for the build alone"
  mkdir -p build
  work="$(mktemp -d build/unpacked.XXXXXX)"
  fetch() { (cd "$work" && apt-get -qq -o APT::Sandbox::User=root download "$@" "${@/%/-data}"); }
  fetch "$@" 2>/dev/null || { update_lists && fetch "$@"; } || { rm -rf "$work"; return 1; }
  for package in "$work"/*.deb; do
    dpkg-deb -x "$package" "$work"
    rm "$package"
  done
  # The CMake files name the folder of an installed package; make them name this folder.
  find "$work" -name '*.cmake' -exec sed -i "s|\"/usr/|\"$PWD/build/unpacked/usr/|g" {} +
  rm -rf build/unpacked
  mv "$work" build/unpacked
}

# configure PRESET: configures the build if it is new, or if presets or packages have changed. With SIVRAY_PLAIN set,
# `release` is configured without tests and benchmarks, whose packages may be missing; a build that has them keeps them.
configure() {
  local stamp="build/$1/.configured" options=() kind=whole
  if [ "$1" = release ]; then
    [ -z "${SIVRAY_PLAIN:-}" ] || { [ -e "$stamp" ] && [ "$(cat "$stamp")" != plain ]; } || kind=plain
    [ $kind = plain ] || options=(-DSIVRAY_BUILD_TESTS=ON -DSIVRAY_BUILD_BENCHMARKS=ON)
    [ $kind = whole ] || options=(-DSIVRAY_BUILD_TESTS=OFF -DSIVRAY_BUILD_BENCHMARKS=OFF)
  fi
  if [ ! -e "build/$1/build.ninja" ] || [ CMakePresets.json -nt "$stamp" ] || [ packages.txt -nt "$stamp" ] ||
    { [ $kind = whole ] && [ "$(cat "$stamp")" = plain ]; }; then
    say "Configuring build/$1"
    cmake --preset "$1" "${options[@]}" --log-level=WARNING >"build-$1.log" 2>&1 ||
      { cat "build-$1.log"; rm -f "build-$1.log"; return 1; }
    rm -f "build-$1.log"
    echo $kind >"$stamp"
  fi
}

# build PRESET [TARGETS...]: configures and builds. Returns whether both succeeded, also when called in a condition.
# Waits while another process builds the same preset.
build() {
  local preset="$1"
  shift
  mkdir -p build
  (
    flock 9
    configure "$preset" || exit
    say "Building build/$preset${*:+ ($*)}: steps done/all, seconds"
    begun=$SECONDS
    NINJA_STATUS='[%f/%t, %e s] ' in_huge_pages cmake --build "build/$preset" ${*:+--target "$@"} || exit
    echo "Built in $((SECONDS - begun)) s"
  ) 9>"build/$preset.lock"
}
