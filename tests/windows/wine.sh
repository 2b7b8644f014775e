# Wine with its files in $build/prefix, so that it writes nothing into the user's folders. Sourced; needs bash.
# SPDX-License-Identifier: GPL-3.0-or-later
export WINEPREFIX="$build/prefix" WINEDEBUG=-all WINEDLLOVERRIDES="winemenubuilder.exe=d;mscoree=;mshtml="
if [ ! -e "$WINEPREFIX/system.reg" ]; then
  timeout 300 wineboot -i >/dev/null 2>&1
  wineserver -w
fi
