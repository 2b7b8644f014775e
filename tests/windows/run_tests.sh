#!/usr/bin/env bash
# Runs the test program of a Windows build under Wine. Wine's files stay in the build's folder for the next run.
# Usage: run_tests.sh BUILD_FOLDER REPORT
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
build="$(realpath "$1")"
source "$(dirname "$0")/wine.sh"
trap 'wineserver -k || true' EXIT
timeout 300 wine "$build/bin/test_windows.exe" | tee "$2"
