#!/usr/bin/env bash
# Lets checkers that nobody here wrote judge what is installed and packed: those that are there. Prints a line for each, "ok" or
# "BAD", after what it found. Argument: the build's folder, with all that is installable.
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
build="$1"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
bad=0

# judge NAME COMMAND...: runs the command if its program is installed. What it prints is shown if it fails.
judge() {
  local name="$1"
  shift
  if ! command -v "$1" >/dev/null; then
    echo "skipped: $name, because $1 is not installed"
  elif "$@" >"$work/said" 2>&1; then
    echo "ok  $name"
  else
    cat "$work/said"
    echo "BAD $name"
    bad=1
  fi
}

export SOURCE_DATE_EPOCH="${SOURCE_DATE_EPOCH:-1}"
packaging/make_packages.sh "$build" "$work/packages" --quick
dpkg-deb -x "$work"/packages/*.deb "$work/root"
share="$work/root/usr/share"
# Where the LV2 plug-in and its content are looked for.
export LV2_PATH="$work/root/usr/lib/lv2" BRAMEL_COMMON_FILES="$share" BRAMEL_DOCUMENTS="$work"

judge "licences of the sources" reuse lint
judge "Debian package" lintian --allow-root --fail-on error,warning "$work"/packages/*.deb
judge "menu entry" desktop-file-validate "$share/applications/sivray.desktop"
judge "entry for software centres" appstreamcli validate --no-net "$share"/metainfo/*.xml
judge "LV2 texts" lv2_validate "$LV2_PATH"/Sivray.lv2/*.ttl
judge "LV2 plug-in" lv2bench urn:tesh:sivray
exit $bad
