#!/usr/bin/env bash
# Runs made-up stages, two of which fail in their middle, and compares what is said of them.
# SPDX-License-Identifier: GPL-3.0-or-later
set -uo pipefail
cd "$(dirname "$0")/../.."
source scripts/setup.sh
source scripts/stages.sh

build() { [ "$1" = good ]; }
ctest() {
  cat <<'TEXT'
The following tests did not run:
	  3 - program (Skipped)
The following tests FAILED:
	  1 - widgets (Failed)
	 12 - editor (Timeout)
TEXT
  echo "50% tests passed, 2 tests failed out of 4"
  return 8
}
stage_layout() { true; }
stage_release() { compile good; run_tests release; echo "not reached"; }
stage_asan() { compile bad; echo "not reached"; }
stage_fuzz() { passed 2; failed fuzz_maps; return 1; }
stage_lint() { passed 1; }

complain() { printf '%s\n%s\n' "$1" "$output"; exit 1; }

output="$(run_stages layout release asan fuzz lint 2>&1)"
[ $? -ne 0 ] || complain "Passed in spite of failed stages"
! grep -q "not reached" <<<"$output" || complain "A stage went on after it had failed"
[ "$(tail -2 <<<"$output")" = "6 passed, 4 failed
Failed: release (widgets, editor); asan (build); fuzz (fuzz_maps)" ] || complain "Another sum was expected"

output="$(run_stages layout lint 2>&1)"
[ $? -eq 0 ] || complain "Failed without a failed stage"
[ "$(tail -2 <<<"$output")" = "2 passed, 0 failed
All checks passed" ] || complain "Another sum was expected"
