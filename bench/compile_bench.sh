#!/usr/bin/env bash
# Compiles a web with scrivo, in process, and its project with hhc and, where it is installed, with chmcmd, by turns.
#
#   bench/compile_bench.sh BIN WEB [ROUNDS]
#
# BIN is the folder of the programs, WEB a FrontPage web, of which a copy is compiled. Times are of the wall clock, in
# milliseconds, the best and the middle one of ROUNDS (15). Exit status: 0 when scrivo and hhc gave the same bytes.
set -eu
bin=$(realpath "$1")
rounds=${3:-15}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r "$2" "$work/web" && cp -r "$2" "$work/project"
chmod -R u+w "$work/project"
"$bin/scrivo" project -q "$work/project" -o "$work/help.chm" >"$work/paths"
project=$(head -n 1 "$work/paths")

in_process() { "$bin/scrivo" compile -q "$work/web" -o "$work/help.chm"; }
by_hhc() { "$bin/hhc" --gnu "$project"; }
by_chmcmd() { (cd "$work/project" && chmcmd "$(basename "$project")"); }

# Adds the time of a function's run to a list.
measure() {
  local start end
  start=${EPOCHREALTIME/./}
  "$1" >"$work/said" 2>&1 || echo "$1 failed: $(tail -n 1 "$work/said")"
  end=${EPOCHREALTIME/./}
  echo $((end - start)) >>"$work/$1"
}

kinds=(in_process by_hhc)
if command -v chmcmd >/dev/null; then kinds+=(by_chmcmd); fi
for ((round = 0; round < rounds; ++round)); do
  for kind in "${kinds[@]}"; do measure "$kind"; done
done
for kind in "${kinds[@]}"; do
  sort -n "$work/$kind" | awk -v kind="$kind" '{ t[NR] = $1 }
    END { printf "%-11s best %.1f ms, middle %.1f ms\n", kind, t[1] / 1000, t[int((NR + 1) / 2)] / 1000 }'
done
in_process && mv "$work/help.chm" "$work/first.chm" && by_hhc >/dev/null
cmp "$work/first.chm" "$work/help.chm" && echo "scrivo and hhc give the same bytes"
