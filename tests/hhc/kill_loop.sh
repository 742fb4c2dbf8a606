#!/usr/bin/env bash
# usage: kill_loop.sh HHC [TIMES]
# Kills a compile again and again, each time at another moment, and looks at the output: it must be the
# old file or the new one, whole. Prints what was found; exit status 1 when anything else was there.
set -u
hhc=$(realpath "$1")
times=${2:-200}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 2

printf '[OPTIONS]\nCompiled file=help.chm\nFull-text search=Yes\n[FILES]\n*.htm\n' > help.hhp
for ((i = 0; i < 400; i++)); do
  { printf '<title>page %d</title>' "$i"; head -c 12000 /dev/urandom | base64; } > "p$i.htm"
done
start=$(date +%s%N)
"$hhc" --gnu help.hhp > /dev/null || exit 2
took=$((($(date +%s%N) - start) / 1000))
new=$(sha256sum < help.chm)
printf 'old file' > old.bin
old=$(sha256sum < old.bin)

olds=0 news=0 wrong=0
for ((i = 0; i < times; i++)); do
  cp old.bin help.chm
  "$hhc" --gnu help.hhp > /dev/null &
  child=$!
  # Moments spread over the whole run and past it, as the machine may be busier now than before.
  wait_us=$((took * (RANDOM % 2000) / 1000))
  sleep "$((wait_us / 1000000)).$(printf '%06d' $((wait_us % 1000000)))"
  kill -9 "$child" 2> /dev/null
  wait "$child" 2> /dev/null
  found=$(sha256sum < help.chm)
  if [ "$found" = "$old" ]; then olds=$((olds + 1))
  elif [ "$found" = "$new" ]; then news=$((news + 1))
  else wrong=$((wrong + 1)); fi
done
echo "$times kills: $olds times the old file, $news times the new one, $wrong times another"
[ "$wrong" -eq 0 ]
