# Functions that run the stages of ./test and sum up. Sourced by ./test; needs bash and scripts/setup.sh.
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Stages run in two lanes beside each other. Those in front open windows and wait for them most of the time; those behind
# compute. Once the first stage in front has called `let_others_begin`, the lane behind compiles what the stages in front
# need (build_NAME), then runs its own stages, all at a lower priority. Each stage writes into a file, which is shown when
# the stages before it have been shown.

# Within a stage: passed COUNT and failed NAME report single checks. A stage without reports counts as one check.
passed() { echo "$1" >>"$REPORT/passed"; }
failed() { echo "$1" >>"$REPORT/failed"; }

# Within a stage: reports that the builds are done that other stages need.
let_others_begin() { touch "$REPORTS/begun"; }

# compile PRESET [TARGETS...]: builds, and reports a failure.
compile() {
  build "$@" || { failed build; return 1; }
}

# run_tests PRESET [TESTS...]: runs these tests of a build, or all, and reports each. $JOBS is the number of parallel
# tests, 2 if unset.
run_tests() {
  local preset="$1" code=0 all
  shift
  ctest --test-dir "build/$preset" --output-on-failure -j "${JOBS:-2}" --no-tests=error ${*:+-R "^($(tr ' ' '|' <<<"$*"))\$"} |
    tee "$REPORT/ctest" || code=$?
  all="$(sed -n 's/.*tests failed out of \([0-9]*\)$/\1/p' "$REPORT/ctest")"
  sed -n '/^The following tests FAILED:/,$s/^[[:space:]]*[0-9]* - \([^ ]*\) (.*/\1/p' "$REPORT/ctest" >>"$REPORT/failed"
  passed $((${all:-0} - $(wc -l <"$REPORT/failed")))
  return $code
}

# timed NAME FUNCTION: calls the function in a shell that ends at the first error, and adds its time to that of the
# stage NAME. In the lane behind it has a lower priority while the lane in front runs.
timed() {
  (
    [ -z "${IS_BEHIND:-}" ] || [ -e "$REPORTS/front_ended" ] || renice -n 19 -p "$BASHPID" >/dev/null
    stage="$1"
    began="${EPOCHREALTIME//[!0-9]/}"
    trap 'times >"$REPORT/times"; echo "$(tail -1 "$REPORT/times") $((${EPOCHREALTIME//[!0-9]/} - began))" >>"$REPORTS/$stage/seconds"' EXIT
    set -e
    "$2"
  )
}

# run_stage NAME: runs stage_NAME. Writes its output, counts, seconds and finally its exit code into $REPORTS/NAME.
run_stage() {
  REPORT="$REPORTS/$1"
  touch "$REPORT/passed" "$REPORT/failed"
  timed "$1" "stage_$1" >"$REPORT/output" 2>&1
  echo $? >"$REPORT/code"
  touch "$REPORT/ended"
}

# run_front NAMES...: runs the stages of the lane in front.
run_front() {
  local name
  for name in "$@"; do
    run_stage "$name"
    let_others_begin
  done
  touch "$REPORTS/front_ended"
  let_others_begin
}

# run_behind FRONT BEHIND: runs the lane behind. Takes the names of both lanes' stages.
run_behind() {
  local name IS_BEHIND=1
  until [ -e "$REPORTS/begun" ]; do sleep 0.2; done
  for name in $1; do
    if [ "$(type -t "build_$name")" = function ]; then
      # A failure here happens again in the stage, which reports it.
      REPORT="$(mktemp -d "$REPORTS/build.XXXXXX")"
      timed "$name" "build_$name" >"$REPORT/output" 2>&1
    fi
  done
  for name in $2; do run_stage "$name"; done
}

# show NAME: prints the stage's output until the stage has ended.
show() {
  local shown=0 size ended=''
  while [ -z "$ended" ]; do
    [ ! -e "$REPORTS/$1/ended" ] || ended=1
    size="$(stat -c %s "$REPORTS/$1/output" 2>/dev/null || echo 0)"
    [ "$size" -eq "$shown" ] || tail -c "+$((shown + 1))" "$REPORTS/$1/output" | head -c "$((size - shown))"
    shown="$size"
    [ -n "$ended" ] || sleep 0.2
  done
}

# shorten: passes lines through. On a terminal, each step of a build overwrites the line of the one before.
shorten() {
  [ -t 1 ] || { cat; return; }
  awk -v "width=$(tput cols 2>/dev/null || echo 80)" '
    /^\[[0-9]+\/[0-9]+, / { printf "\r\033[K%s", substr($0, 1, width - 1); fflush(); isStep = 1; next }
    { if (isStep) printf "\r\033[K"; isStep = 0; print; fflush() }'
}

# end_lanes: ends both lanes, the processes that print them, and all processes that they have started.
end_lanes() {
  local lane
  for lane in "${LANES[@]}"; do kill -- "-$lane" 2>/dev/null; done
  wait
  rm -rf "$REPORTS"
}

# sum_up NAMES...: prints the result and the time of each stage, the total of all checks, and finally a line that names
# each failed stage with its failed checks. Returns whether all have passed.
sum_up() {
  local name report ok wrong count=0 failures=0 bad=()
  say "Stages"
  for name in "$@"; do
    report="$REPORTS/$name"
    ok="$(awk '{sum += $1} END {print sum + 0}' "$report/passed")"
    wrong="$(wc -l <"$report/failed")"
    if [ "$(cat "$report/code")" -ne 0 ]; then
      bad+=("$name$(paste -sd, "$report/failed" | sed 's/,/, /g; s/..*/ (&)/')")
      [ "$wrong" -gt 0 ] || wrong=1
    elif [ "$ok" -eq 0 ]; then
      ok=1
    fi
    count=$((count + ok))
    failures=$((failures + wrong))
    sed 's/[ms]/ /g' "$report/seconds" | awk -v "head=$(printf '%-8s %6d passed %4d failed' "$name" "$ok" "$wrong")" \
      '{busy += 60 * ($1 + $3) + $2 + $4; all += $5 / 1e6} END {printf "%s %6.0f processor s in %5.0f s\n", head, busy, all}'
  done
  cat "$REPORTS"/*/seconds | sed 's/[ms]/ /g' | awk -v "all=$SECONDS" \
    '{busy += 60 * ($1 + $3) + $2 + $4} END {printf "Together %.0f processor s in %.0f s\n", busy, all}'
  echo "$count passed, $failures failed"
  [ ${#bad[@]} -eq 0 ] && { echo "All checks passed"; return 0; }
  echo "Failed: $(printf '%s; ' "${bad[@]}" | sed 's/; $//')"
  return 1
}

# run_stages FRONT BEHIND: runs stage_NAME for each name in both lanes, continues after failures, and sums up. Must not
# be called in a condition, where the shell ignores errors inside the stages.
run_stages() {
  local name
  REPORTS="$(mktemp -d)"
  LANES=()
  trap end_lanes EXIT
  trap 'exit 130' INT TERM
  for name in $1 $2; do mkdir "$REPORTS/$name"; done
  set -m  # Each lane is a group of processes.
  run_front $1 </dev/null &
  LANES+=($!)
  run_behind "$1" "$2" </dev/null &
  LANES+=($!)
  { for name in $1 $2; do show "$name"; done | shorten; } &  # A signal interrupts `wait`, but not a command in front.
  LANES+=($!)
  set +m
  wait
  LANES=()
  sum_up $1 $2
}
