#!/bin/sh
# sum_output.sh COMMAND...: runs a compiler's command, and writes the checksum of the file that it makes (-o FILE) into FILE.sum.
# The compiler cache reads the sum of a precompiled header instead of its 60 to 240 MB, each time the header is used.
# SPDX-License-Identifier: GPL-3.0-or-later
"$@" || exit
while [ $# -gt 1 ]; do
  [ "$1" != -o ] || sha256sum <"$2" >"$2.sum" || exit
  shift
done
