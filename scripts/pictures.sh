#!/usr/bin/env bash
# Draws the pictures of the panel in docs/panel anew, from the release build. test_panel compares the panel with them:
# look at what has changed before you keep it.
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "$0")/.."
cp build/release/Sivray/Tesh/Bramel/Resource/SivrayManual/panel/*.png docs/panel/
echo "docs/panel holds the pictures of the manual that the build made."
