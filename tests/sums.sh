# Runs test programs, shows what they came to, and adds it up in $passed, $failed and $skipped. Logs are kept in
# build/logs/. Sourced by ./check, from the top folder.

passed=0 failed=0 skipped=0

say() { printf '\n== %s\n' "$*"; }

fail() {
  failed=$((failed + 1))
  echo "FAILED: $*"
}

# build PRESET: configures a preset and builds its targets.
build() {
  local log=build/$1.log
  mkdir -p build
  say "$1: building"
  if (cmake --preset "$1" && cmake --build --preset "$1") >"$log" 2>&1; then return 0; fi
  grep -E -A 5 'error|FAILED' "$log" | head -n 40
  fail "$1 does not build; the whole record is in $log"
  return 1
}

# run_suite NAME COMMAND…: runs one GoogleTest program and adds its figures to the sum.
run_suite() {
  local name=$1 log=build/logs/$1.log status
  shift
  mkdir -p "$(dirname "$log")"
  timeout --kill-after=10 600 "$@" --gtest_brief=1 >"$log" 2>&1 </dev/null
  status=$?
  local good bad passed_over
  good=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) test.*/\1/p' "$log" | tail -n 1)
  bad=$(sed -n 's/^\[  FAILED  \] \([0-9]*\) test.*listed below.*/\1/p' "$log" | tail -n 1)
  passed_over=$(sed -n 's/^\[  SKIPPED \] \([0-9]*\) test.*/\1/p' "$log" | tail -n 1)
  passed=$((passed + ${good:-0}))
  failed=$((failed + ${bad:-0}))
  skipped=$((skipped + ${passed_over:-0}))
  printf '%-28s %5d passed, %d failed\n' "$name" "${good:-0}" "${bad:-0}"
  if [ $status -ne 0 ]; then
    grep -E -A 30 'WARNING: ThreadSanitizer' "$log" | head -n 60
    grep -E -B 12 '^\[  FAILED  \]|ERROR: AddressSanitizer|runtime error:' "$log" | head -n 60
    [ -n "${bad:-}" ] || { tail -n 20 "$log"; fail "$name ended with status $status"; }
  elif [ "${good:-0}" -eq 0 ]; then
    fail "$name ran no test"
  fi
}

run_suites() {
  local program
  say "$1: testing"
  for program in build/"$1"/bin/*_tests; do
    run_suite "$1/$(basename "$program")" "$program"
  done
}

# fuzz TARGET: a few seconds from the corpus in the tree; finds are kept beside the log.
fuzz() {
  local target=$1 log=build/logs/fuzz_$1.log
  local corpus=build/fuzz/$target
  mkdir -p "$corpus" build/logs
  # Some targets write files, which a disk takes its time for.
  local temporary=${TMPDIR:-/tmp}
  [ ! -w /dev/shm ] || temporary=/dev/shm
  if TMPDIR=$temporary build/native-asan/bin/"fuzz_$target" -max_total_time="${SCRIVO_FUZZ_SECONDS:-4}" -timeout=20 \
       -rss_limit_mb=2048 -artifact_prefix="$corpus"- "$corpus" tests/fuzz/"$target" >"$log" 2>&1 </dev/null; then
    passed=$((passed + 1))
    printf '%-28s %s\n' "fuzz $target" "$(sed -n 's/^Done \([0-9]* runs\).*/\1/p' "$log" | tail -n 1)"
  else
    tail -n 30 "$log"
    fail "fuzz $target (the input is kept beside $corpus)"
  fi
}

# campaign NAME COMMAND…: runs a program whose last line is a sum, and adds that to the sum. What it says is shown when
# something failed; what it left out, and why, is shown in any case.
campaign() {
  local name=$1 log sum
  log=build/logs/${name// /_}.log
  shift
  mkdir -p build/logs
  timeout --kill-after=10 "${campaign_seconds:-900}" "$@" >"$log" 2>&1 </dev/null
  sum=$(tail -n 1 "$log" | grep -E '^[0-9]+ passed, [0-9]+ failed$')
  printf '%-28s %s\n' "$name" "$sum"
  if [ -z "$sum" ]; then
    tail -n 20 "$log"
    fail "$name gave no figures"
    return
  fi
  passed=$((passed + ${sum%% *}))
  sum=${sum% failed}
  failed=$((failed + ${sum##* }))
  grep '^skipped: ' "$log"
  [ "${sum##* }" -eq 0 ] || { head -n 40 "$log"; echo "The whole record is in $log"; }
}

# report NAME TITLE: what a runner of its own came to; the last line of its log is its sum, or says that it was skipped.
report() {
  local log=build/logs/$1.log last
  say "$2"
  cat "$log"
  last=$(tail -n 1 "$log")
  if [[ $last == "skipped: "* ]]; then
    skipped=$((skipped + 1))
  elif [[ $last =~ ^([0-9]+)\ passed,\ ([0-9]+)\ failed(,\ ([0-9]+)\ skipped)?$ ]]; then
    passed=$((passed + BASH_REMATCH[1]))
    failed=$((failed + BASH_REMATCH[2]))
    skipped=$((skipped + ${BASH_REMATCH[4]:-0}))
  else
    fail "$1: the runner gave no figures"
  fi
}

# print_sum: the last line of all. Fails when a test has.
print_sum() {
  echo
  if [ "$skipped" -gt 0 ]; then
    echo "$passed passed, $failed failed, $skipped skipped"
  else
    echo "$passed passed, $failed failed"
  fi
  [ "$failed" -eq 0 ]
}
