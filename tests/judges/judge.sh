#!/usr/bin/env bash
# Checks the installed and packed files with third-party checkers, those that are installed. For each it prints its
# findings and a line with "ok" or "BAD". Argument: the build's folder, with all installable files.
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
build="$1"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
bad=0

# judge NAME COMMAND...: runs the command if its program is installed. Shows its output if it fails.
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
# The search paths for the LV2 plug-in and its content.
export LV2_PATH="$work/root/usr/lib/lv2" BRAMEL_COMMON_FILES="$share" BRAMEL_DOCUMENTS="$work"

judge "licences of the sources" reuse lint
judge "Debian package" lintian --allow-root --fail-on error,warning "$work"/packages/*.deb
judge "menu entry" desktop-file-validate "$share/applications/sivray.desktop"
judge "entry for software centres" appstreamcli validate --no-net "$share"/metainfo/*.xml
judge "LV2 texts" lv2_validate "$LV2_PATH"/Sivray.lv2/*.ttl
judge "LV2 plug-in" lv2bench urn:tesh:sivray
exit $bad
