#!/usr/bin/env bash
# Lints the browser's side and tests it in the browsers that are there, with sites made by a program:
#
#   tests/reader/run.sh PROGRAM
#
# The last line is the sum: N passed, N failed, N skipped. Without the npm registry nothing can be tested; the last line
# says so. SCRIVO_BROWSERS chooses browsers: chrome, firefox, or both with a blank between (the default). SCRIVO_BOOKS
# names more help files to try, with ":" between; an index of another compiler may break some words differently.
set -u
program=$(readlink -f "$1")
cd "$(dirname "$(readlink -f "$0")")" || exit 1
passed=0 failed=0 skipped=0

if ! [ node_modules/.package-lock.json -nt package-lock.json ]; then
  if ! npm ci --no-audit --no-fund --silent 2>npm.log; then
    if npm --version >/dev/null 2>&1 && ! timeout 20 npm ping >/dev/null 2>&1; then
      echo "skipped: the npm registry cannot be reached"
      exit 0
    fi
    cat npm.log
    echo "0 passed, 1 failed, 0 skipped"
    exit 1
  fi
  touch node_modules/.package-lock.json
fi

# count NAME COMMAND…: one check that either holds or does not.
count() {
  local name=$1
  shift
  if "$@"; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "FAILED: $name"
  fi
}

# ESLint reads no files outside its folder, so it is run from the top.
(cd ../.. && tests/reader/node_modules/.bin/eslint -c tests/reader/eslint.config.js reader/*.js tests/reader/*.js)
count eslint test $? -eq 0
(cd ../.. && tests/reader/node_modules/.bin/stylelint --config tests/reader/stylelint.config.js reader/*.css)
count stylelint test $? -eq 0

# test_in BROWSER PATH: all tests in one browser.
test_in() {
  local log
  log=$(mktemp)
  SCRIVO=$program SCRIVO_BROWSER=$1 SCRIVO_BROWSER_PATH=$2 timeout --kill-after=10 540 \
    node --test --test-reporter=tap ./*_test.js >"$log" 2>&1 </dev/null
  local status=$? pass fail skip
  pass=$(sed -n 's/^# pass \([0-9]*\)$/\1/p' "$log" | tail -n 1)
  fail=$(sed -n 's/^# fail \([0-9]*\)$/\1/p' "$log" | tail -n 1)
  skip=$(sed -n 's/^# skipped \([0-9]*\)$/\1/p' "$log" | tail -n 1)
  printf '%-28s %5d passed, %d failed\n' "$1" "${pass:-0}" "${fail:-0}"
  sed -n 's/^# \(axe in .*\|.* of letters compared\)$/  \1/p' "$log"
  passed=$((passed + ${pass:-0})) failed=$((failed + ${fail:-0})) skipped=$((skipped + ${skip:-0}))
  if [ $status -ne 0 ]; then
    grep -B 2 -A 24 '^ *not ok' "$log" | head -n 120
    if [ -z "${fail:-}" ] || [ "${fail:-0}" -eq 0 ]; then
      failed=$((failed + 1))
      echo "FAILED: the tests in $1 ended with status $status"
    fi
  fi
  rm -f "$log"
}

for browser in ${SCRIVO_BROWSERS:-chrome firefox}; do
  case $browser in
    chrome) path=$(command -v chromium || command -v chromium-browser || true) ;;
    firefox) path=$(command -v firefox-esr || command -v firefox || true) ;;
  esac
  if [ -n "$path" ]; then test_in "$browser" "$path"; else echo "$browser is not installed; not tested in it"; fi
done
echo "$passed passed, $failed failed, $skipped skipped"
[ "$failed" -eq 0 ]
