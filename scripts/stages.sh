# Functions that run the stages of ./test one after another and sum up. Sourced by ./test; needs bash and scripts/setup.sh.
# SPDX-License-Identifier: GPL-3.0-or-later

# Within a stage: passed COUNT and failed NAME tell of single checks. A stage that tells of none counts as one check.
passed() { echo "$1" >>"$REPORT/passed"; }
failed() { echo "$1" >>"$REPORT/failed"; }

# compile PRESET [TARGETS...]: builds, and tells if that fails.
compile() {
  build "$@" || { failed build; return 1; }
}

# run_tests PRESET [TESTS...]: runs these tests of a build, or all, and tells of each.
run_tests() {
  local preset="$1" code=0 all
  shift
  ctest --test-dir "build/$preset" --output-on-failure -j2 --no-tests=error ${*:+-R "^($(tr ' ' '|' <<<"$*"))\$"} |
    tee "$REPORT/ctest" || code=$?
  all="$(sed -n 's/.*tests failed out of \([0-9]*\)$/\1/p' "$REPORT/ctest")"
  sed -n '/^The following tests FAILED:/,$s/^[[:space:]]*[0-9]* - \([^ ]*\) (.*/\1/p' "$REPORT/ctest" >>"$REPORT/failed"
  passed $((${all:-0} - $(wc -l <"$REPORT/failed")))
  return $code
}

# run_stages NAMES...: runs stage_NAME for each name, and later ones also if one fails. Prints the time that each has taken,
# the sum of all checks, and last a line that names each failed stage with its failed checks. Returns whether all have passed.
# Not to be called in a condition, where the shell ignores errors inside the stages.
run_stages() {
  local name code count=0 failures=0 bad=() table=()
  for name in "$@"; do
    REPORT="$(mktemp -d)"
    touch "$REPORT/passed" "$REPORT/failed"
    (
      set -e
      trap 'times >"$REPORT/times"' EXIT
      "stage_$name"
    )
    code=$?
    local ok wrong
    ok="$(awk '{sum += $1} END {print sum + 0}' "$REPORT/passed")"
    wrong="$(wc -l <"$REPORT/failed")"
    if [ $code -ne 0 ]; then
      bad+=("$name$(paste -sd, "$REPORT/failed" | sed 's/,/, /g; s/..*/ (&)/')")
      [ "$wrong" -gt 0 ] || wrong=1
    elif [ "$ok" -eq 0 ]; then
      ok=1
    fi
    count=$((count + ok))
    failures=$((failures + wrong))
    table+=("$(printf '%-8s %6d passed %4d failed %6s processor s' "$name" "$ok" "$wrong" \
      "$(tail -1 "$REPORT/times" | sed 's/[ms]/ /g' | awk '{printf "%.0f", 60 * ($1 + $3) + $2 + $4}')")")
    rm -rf "$REPORT"
  done
  say "Stages"
  printf '%s\n' "${table[@]}"
  echo "$count passed, $failures failed"
  [ ${#bad[@]} -eq 0 ] && { echo "All checks passed"; return 0; }
  echo "Failed: $(printf '%s; ' "${bad[@]}" | sed 's/; $//')"
  return 1
}
