#!/usr/bin/env bash
# compare.sh PROGRAM COMMAND...: plays all kits with this system's kit_hashes and with that of another processor, and
# compares the output. The environment sets content and documents.
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
"$1" >"$work/here"
"${@:2}" >"$work/there"
diff "$work/here" "$work/there" || { echo "These kits sound otherwise there" >&2; exit 1; }
echo "$(wc -l <"$work/here") kits sound the same"
