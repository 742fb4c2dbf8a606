#!/usr/bin/env bash
# Compiles a web with scrivo, in process, and its project with hhc and, where it is installed, with chmcmd, by turns.
#
#   bench/compile_bench.sh BIN WEB [ROUNDS [OTHER_HHC]]
#
# BIN is the folder of the programs, WEB a FrontPage web, of which a copy is compiled; OTHER_HHC another build of hhc, to
# compare with. Times are of the wall clock and of the processors, in milliseconds, the best and the middle one of ROUNDS
# (15). Exit status: 0 when scrivo and hhc gave the same bytes.
set -eu
bin=$(realpath "$1")
rounds=${3:-15}
other=${4:+$(realpath "$4")}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r "$2" "$work/web" && cp -r "$2" "$work/project"
chmod -R u+w "$work/project"
"$bin/scrivo" project -q "$work/project" -o "$work/help.chm" >"$work/paths"
project=$(head -n 1 "$work/paths")

in_process() { "$bin/scrivo" compile -q "$work/web" -o "$work/help.chm"; }
by_hhc() { "$bin/hhc" --gnu "$project"; }
by_other() { "$other" --gnu "$project"; }
by_chmcmd() { (cd "$work/project" && chmcmd "$(basename "$project")"); }

# Adds the times of a function's run to its lists.
measure() {
  local TIMEFORMAT='%R %U %S' LC_ALL=C
  { time "$1" >"$work/said" 2>&1 || echo "$1 failed: $(tail -n 1 "$work/said")" >&3; } 2>"$work/time" 3>&1
  awk '{ print $1 * 1000 }' "$work/time" >>"$work/$1.wall"
  awk '{ print ($2 + $3) * 1000 }' "$work/time" >>"$work/$1.processor"
}

# best_and_middle FUNCTION KIND
best_and_middle() {
  sort -n "$work/$1.$2" | awk -v kind="$2" '{ t[NR] = $1 }
    END { printf "  %s: best %.0f ms, middle %.0f ms", kind, t[1], t[int((NR + 1) / 2)] }'
}

kinds=(in_process by_hhc)
[ -z "$other" ] || kinds+=(by_other)
if command -v chmcmd >/dev/null; then kinds+=(by_chmcmd); fi
for ((round = 0; round < rounds; ++round)); do
  for kind in "${kinds[@]}"; do measure "$kind"; done
done
for kind in "${kinds[@]}"; do
  printf '%-11s%s%s\n' "$kind" "$(best_and_middle "$kind" wall)" "$(best_and_middle "$kind" processor)"
done
in_process && mv "$work/help.chm" "$work/first.chm" && by_hhc >/dev/null
cmp "$work/first.chm" "$work/help.chm" && echo "scrivo and hhc give the same bytes"
