#!/usr/bin/env bash
# Redraws the pictures of the panel in docs/panel with the release build. test_panel compares the panel with them: look
# at the changes before you keep them.
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "$0")/.."
cp build/release/Sivray/Tesh/Bramel/Resource/SivrayManual/panel/*.png docs/panel/
echo "docs/panel holds the pictures of the manual that the build made."
