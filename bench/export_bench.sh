#!/usr/bin/env bash
# Compiles a project with hhc and makes a site of the help file with scrivo, by turns, each on one thread.
#
#   bench/export_bench.sh BIN PROJECT.hhp [ROUNDS]
#
# BIN is the folder of the programs; a copy of the project's folder is compiled. Prints the processor times of each round
# (3), the best ones, their ratio, and what the site takes. Exit status: 0 when exporting took no more than compiling.
set -eu
bin=$(realpath "$1")
rounds=${3:-3}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r "$(dirname "$2")" "$work/project"
chmod -R u+w "$work/project"
project=$(basename "$2")
cd "$work/project"
find . -iname '*.chm' -delete

# Prints the processor time of a command, in seconds.
processor_time() {
  local TIMEFORMAT='%U %S' LC_ALL=C
  { time "$@" >"$work/said" 2>&1; } 2>"$work/time" || { cat "$work/said" >&2; return 1; }
  awk '{ printf "%.2f\n", $1 + $2 }' "$work/time"
}

for ((round = 1; round <= rounds; ++round)); do
  compiling=$(processor_time "$bin/hhc" --gnu --jobs 1 "$project")
  rm -rf "$work/site"
  exporting=$(processor_time "$bin/scrivo" export -q ./*.[Cc][Hh][Mm] "$work/site")
  echo "round $round: hhc $compiling s, scrivo export $exporting s"
  echo "$compiling $exporting" >>"$work/times"
done
echo "site: $(du -sb "$work/site" | cut -f1) bytes in $(find "$work/site" -type f | wc -l) files," \
  "of which pages $(du -sb "$work/site/pages" | cut -f1), data $(du -sb "$work/site/data" | cut -f1)"
sort -n "$work/times" | awk '
  NR == 1 { compiling = $1 }
  NR == 1 || $2 < exporting { exporting = $2 }
  END {
    printf "best: hhc %.2f s, scrivo export %.2f s, ratio %.2f\n", compiling, exporting, exporting / compiling
    exit exporting > compiling
  }'
