#!/usr/bin/env bash
# Makes the files that users get, from a clean clone of the last commit: Debian package and archive for Linux, the files
# for Windows if its packages can be installed, and their checksums.
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
top="$PWD"

usage() {
  cat <<'TEXT'
Usage: scripts/release.sh [--twice] [--linux]

Writes build/packages. --linux leaves out the files for Windows. --twice builds again in another folder, without the compiler
cache, and fails if a byte differs.
TEXT
}

fail() { printf 'release: %s\n' "$*" >&2; exit 1; }

twice='' systems=(linux windows)
for word in "$@"; do
  case "$word" in
    --twice) twice=1 ;;
    --linux) systems=(linux) ;;
    -h | --help) usage; exit 0 ;;
    *) usage >&2; exit 2 ;;
  esac
done

# --- One version in all places
version="$(sed -n 's/^project(Sivray VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)"
grep -q "^sivray ($version) " packaging/changelog || fail "packaging/changelog does not begin with $version"
grep -q "<release version=\"$version\"" packaging/*.metainfo.xml || fail "the metainfo has no release $version"
grep -q "^## $version\$" CHANGELOG.md || fail "CHANGELOG.md has no $version"
[ -z "$(git status --porcelain --untracked-files=no)" ] || fail "there are changes that are not committed"

work="$(mktemp -d "${TMPDIR:-/tmp}/sivray-release.XXXXXX")"
trap 'rm -rf "$work"' EXIT

# make FOLDER: clones into the folder and makes all packages in its build/out.
make() {
  git clone --quiet --no-hardlinks "$top" "$1"
  (
    cd "$1"
    [ ! -d "$top/build/unpacked" ] || { mkdir build && ln -s "$top/build/unpacked" build/unpacked; }
    ./install --packages
    mkdir build/out
    mv build/release/packages/* build/out
    if [[ " ${systems[*]} " = *" windows "* ]]; then
      ./run windows
      mv build/windows/Sivray-windows.zip "build/out/sivray-$version-windows-x86_64.zip"
      for setup in build/windows/*etup*.exe; do
        [ ! -e "$setup" ] || mv "$setup" "build/out/sivray-$version-windows-x86_64-setup.exe"
      done
    fi
    cd build/out
    sha256sum -- * >SHA256SUMS
  )
}

make "$work/first"
if [ -n "$twice" ]; then
  CCACHE_DISABLE=1 make "$work/elsewhere/second"
  diff "$work/first/build/out/SHA256SUMS" "$work/elsewhere/second/build/out/SHA256SUMS" || fail "the same sources gave other bytes"
fi
rm -rf build/packages
mkdir -p build
mv "$work/first/build/out" build/packages
printf '\nMade in build/packages:\n'
cat build/packages/SHA256SUMS
