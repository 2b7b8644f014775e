#!/usr/bin/env bash
# Runs simulated stages, two of which fail in the middle, and compares the report.
# SPDX-License-Identifier: GPL-3.0-or-later
set -uo pipefail
cd "$(dirname "$0")/../.."
source scripts/setup.sh
source scripts/stages.sh

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# Waits for the other lane.
wait_for() {
  local tries=100
  until [ -e "$work/$1" ]; do
    [ $((tries--)) -gt 0 ] || { echo "waited for $1 in vain"; return 1; }
    sleep 0.1
  done
}

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
stage_release() {
  compile good
  touch "$work/built"
  let_others_begin
  wait_for layout  # The lane behind has its own stages done meanwhile.
  run_tests release
  echo "not reached"
}
build_asan() {
  [ -e "$work/built" ] || echo "not reached"
  touch "$work/asan"
  compile bad
  echo "not reached"
}
stage_asan() { build_asan; echo "not reached"; }
stage_layout() { [ -e "$work/asan" ] || { echo "not reached"; return 1; }; echo "of layout"; touch "$work/layout"; }
stage_fuzz() { passed 2; failed fuzz_maps; return 1; }
stage_lint() { passed 1; }

complain() { printf '%s\n%s\n' "$1" "$output"; exit 1; }

output="$(run_stages "release asan" "layout fuzz lint" 2>&1)"
[ $? -ne 0 ] || complain "Passed in spite of failed stages"
! grep -q "not reached\|in vain" <<<"$output" || complain "A stage went on after it had failed, or ran in another order"
[ "$(grep -n "of layout" <<<"$output" | cut -d: -f1)" -gt "$(grep -n "out of 4" <<<"$output" | cut -d: -f1)" ] ||
  complain "The output of one stage lies within another's"
[ "$(tail -2 <<<"$output")" = "6 passed, 4 failed
Failed: release (widgets, editor); asan (build); fuzz (fuzz_maps)" ] || complain "Another sum was expected"

output="$(run_stages "" "layout lint" 2>&1)"
[ $? -eq 0 ] || complain "Failed without a failed stage"
[ "$(tail -2 <<<"$output")" = "2 passed, 0 failed
All checks passed" ] || complain "Another sum was expected"

# After an interrupt no process goes on.
stage_lint() { echo $BASHPID >"$work/lint"; sleep 100; }
(run_stages "" lint >/dev/null) &
wait_for lint || complain "No stage began"
began=$SECONDS
kill -TERM $!
wait $!
[ $((SECONDS - began)) -lt 50 ] || complain "An interruption waits for the end of a stage"
for _ in {1..50}; do
  [[ "$(ps -o stat= -p "$(cat "$work/lint")")" =~ ^(Z|$) ]] && exit
  sleep 0.1
done
complain "A stage goes on after an interruption"
