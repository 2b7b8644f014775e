#!/usr/bin/env bash
# Makes the Debian package and the archive of the files that a build installs. The archive also holds ./install, which
# works there as in the repository, a readme, and the licence. The same build gives the same bytes: dates are those of
# SOURCE_DATE_EPOCH, and no user's name or rights are stored.
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail

usage='Usage: make_packages.sh BUILD OUT [--quick]     OUT is a folder; --quick hardly compresses, which takes most of the time'
[ $# -ge 2 ] && [ $# -le 3 ] && [ "${3:---quick}" = --quick ] || { echo "$usage" >&2; exit 2; }
build="$(readlink -f "$1")" out="$(readlink -m "$2")"
compression=xz level=6
[ $# -eq 2 ] || compression=gzip level=1
top="$(dirname "$(dirname "$(readlink -f "$0")")")"
: "${SOURCE_DATE_EPOCH:?must be set, as scripts/setup.sh does}"
source "$build/packaging/packages.env"  # version, processor, control

umask 022
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir -p "$out"

# settle FOLDER: makes its files readable for everybody and sets their times to that of the sources.
settle() {
  chmod -R u=rwX,go=rX "$1"
  find "$1" -exec touch -hd "@$SOURCE_DATE_EPOCH" {} +
}

name="sivray-$version-linux-$processor"
cmake --install "$build" --strip --prefix "$work/$name" >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }

# --- The Debian package
case "$processor" in
  x86_64) architecture=amd64 ;;
  aarch64) architecture=arm64 ;;
  *) architecture="$(dpkg --print-architecture)" ;;
esac
package="$work/package"
mkdir -p "$package/DEBIAN" "$work/debian"
cp -a "$work/$name" "$package/usr"

# In addition to the linked libraries: JUCE loads these X11 libraries when it opens a window.
depends="libxcursor1, libxext6, libxinerama1, libxrandr2"
printf 'Source: sivray\n\nPackage: sivray\nArchitecture: %s\n' "$architecture" >"$work/debian/control"
mapfile -d '' binaries < <(cd "$work" && find package/usr/bin package/usr/lib -type f \( -path '*/bin/*' -o -name '*.so' -o -name '*.clap' \) -print0)
linked="$(cd "$work" && dpkg-shlibdeps -O "${binaries[@]}" 2>"$work/log")" || { cat "$work/log" >&2; exit 1; }
depends="$(tr ',' '\n' <<<"${linked#*Depends=},$depends" | sed 's/^ *//' | LC_ALL=C sort -u | paste -sd, | sed 's/,/, /g')"
size="$(find "$package/usr" -type f -printf '%s\n' | awk '{sum += int(($1 + 1023) / 1024)} END {print sum}')"
sed -e "s|%architecture%|$architecture|; s|%depends%|$depends|; s|%size%|$size|" "$control" >"$package/DEBIAN/control"
(cd "$package" && find usr -type f -print0 | LC_ALL=C sort -z | xargs -0 md5sum) >"$package/DEBIAN/md5sums"
settle "$package"
# One thread, because the number of threads changes the bytes.
dpkg-deb --root-owner-group --threads-max=1 -Z$compression -z$level --build "$package" "$out/sivray_${version}_$architecture.deb" >/dev/null

# --- The archive
cp "$top/install" "$top/LICENSE" "$top/packaging/README.txt" "$work/$name/"
settle "$work/$name"
case $compression in
  xz) pack=(xz "-$level" --threads=1) archive="$out/$name.tar.xz" ;;
  gzip) pack=(gzip "-$level" --no-name) archive="$out/$name.tar.gz" ;;
esac
tar --create --directory "$work" --sort=name --owner=0 --group=0 --numeric-owner --format=gnu "$name" | "${pack[@]}" >"$archive"
