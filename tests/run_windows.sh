#!/usr/bin/env bash
# usage: tests/run_windows.sh win-x64|win-x86 [GTEST OPTION…]
#
# Runs every *_tests.exe of a preset under Wine: in a fresh prefix under build/, on a display of its own, each program
# with a hard time limit; when one hangs, a screenshot is kept beside its log. Installs what is missing (Debian). The
# last line is the sum: N passed, N failed, N skipped
#
#   SCRIVO_WINDOWS_SECONDS   the time limit of one program (default 300)
#   SCRIVO_WINE32_ROOT       the i386 root for 32-bit Wine (default build/wine32-root)
set -u
cd "$(dirname "$(readlink -f "$0")")/.." || exit 1
. tools/packages.sh
. tests/wine/wine.sh
. tests/wine/compile_sample.sh

preset=${1:?usage: tests/run_windows.sh win-x64|win-x86}
shift
limit=${SCRIVO_WINDOWS_SECONDS:-300}
work=$PWD/build/wine/$preset
passed=0 failed=0 skipped=0

finish() {
  echo "$passed passed, $failed failed, $skipped skipped"
  [ "$failed" -eq 0 ]
  exit
}

# count PATTERN LOG: the figure of a line such as "[  PASSED  ] 12 tests."
count() { sed -n "s/^\[  $1 *\] \([0-9]*\) test.*/\1/p" "$2" | tail -n 1; }

# run_program PROGRAM: runs it within the time limit and adds its figures to the sum. $variant is added to its name.
variant=
run_program() {
  local name log status=0 good bad over runner sleeper
  name=$(basename "$1" .exe)$variant
  log=$work/$name.log
  local program=$1
  shift
  run_wine "$program" "$@" >"$log.raw" 2>&1 </dev/null &
  runner=$!
  sleep "$limit" &
  sleeper=$!
  wait -n "$runner" "$sleeper"
  status=$?
  local hung=false
  if kill -0 "$runner" 2>/dev/null; then
    hung=true
    import -display "$DISPLAY" -window root "$work/$name.png"
    stop_wine
    kill -KILL "$runner" 2>/dev/null
  fi
  kill "$sleeper" 2>/dev/null
  wait "$runner" "$sleeper" 2>/dev/null
  tr -d '\r' <"$log.raw" >"$log" && rm -f "$log.raw"

  good=$(count PASSED "$log") bad=$(count FAILED "$log") over=$(count SKIPPED "$log")
  bad=${bad:-0} over=${over:-0}
  local broken=
  if $hung; then
    broken="did not end within $limit seconds"
    if [ -z "$good" ]; then broken+=", in: $(grep '^\[ RUN ' "$log" | tail -n 1)"; else broken+=" after its own sum"; fi
    broken+=$'\n'"        the screen is kept in ${work#"$PWD"/}/$name.png"
  elif [ -z "$good" ]; then
    broken="ended with status $status before its own sum"
  elif [ "$status" -ne 0 ] && { [ "$bad" -eq 0 ] || [ "$status" -ne 1 ]; }; then
    broken="ended with status $status after its own sum"
  fi
  if [ -z "$good" ]; then  # what it came to
    good=$(grep -c '^\[       OK \]' "$log")
    bad=$(grep -c '^\[  FAILED  \]' "$log")
  fi
  if [ -n "$broken" ]; then bad=$((bad + 1)); fi
  passed=$((passed + good)) failed=$((failed + bad)) skipped=$((skipped + over))
  printf '%-28s %5d passed, %d failed, %d skipped\n' "$preset/$name" "$good" "$bad" "$over"
  grep -E -B 12 '^\[  FAILED  \].*ms\)' "$log" | head -n 80
  if [ -n "$broken" ]; then
    echo "FAILED: $name $broken"
    $hung || tail -n 20 "$log"
  fi
}

# run_sample: the checks of the command line, within the time limit.
run_sample() {
  local good=0 bad=0 answer
  while read -r answer; do
    if [ "$answer" = ok ]; then
      good=$((good + 1))
    else
      bad=$((bad + 1))
      echo "FAILED: scrivo.exe $answer"
    fi
  done < <(export -f compile_sample run_wine in_wine_root
           export wine_root wine_loader
           timeout "$limit" bash -c 'compile_sample "$@" 9>&-' bash "$preset" "$work" || echo "did not end in time")
  passed=$((passed + good)) failed=$((failed + bad))
  printf '%-28s %5d passed, %d failed, 0 skipped\n' "$preset/sample web" "$good" "$bad"
}

mkdir -p "$work"
exec 9>"$work/lock"
flock 9
trap stop_all EXIT
prepare_wine "$preset" "$work"
case $? in
  0) ;;
  2)
    skipped=1
    echo "skipped: $why"
    finish
    ;;
  *)
    failed=1
    echo "FAILED: $why"
    finish
    ;;
esac
shopt -s nullglob
for program in build/"$preset"/bin/*_tests.exe; do
  run_program "$program" "$@"
done
# The forms again at other resolutions.
forms=build/$preset/bin/forms_tests.exe
if [ $# -eq 0 ] && [ -e "$forms" ]; then
  for dpi in 144 192; do
    variant="_$dpi"
    set_resolution "$dpi" && run_program "$forms" --gtest_filter='MainFormTest.*:ErrorFormTest.*:DecompileTest.*Tidy*'
  done
  variant=
  set_resolution 96
fi
if [ $# -eq 0 ] && [ -e "build/$preset/bin/scrivo.exe" ] && [ -e "build/$preset/bin/hhc.exe" ]; then run_sample; fi
if [ $((passed + failed)) -eq 0 ]; then
  echo "FAILED: there are no tests in build/$preset/bin"
  failed=1
fi
finish
