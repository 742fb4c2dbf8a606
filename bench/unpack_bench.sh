#!/usr/bin/env bash
# Unpacks every .chm of a folder with hh, 7-Zip and extract_chmLib: compares what comes out, byte for
# byte, and the times.
#
#   bench/unpack_bench.sh HH FOLDER [ROUNDS]
#
# HH is the program to test. Every help file found under FOLDER is named in a line of its own with
# what was found; none is passed over in silence. Times are the best of ROUNDS (5), in milliseconds,
# on one core and on all. Exit status: 0 when every comparison was equal.
set -u
hh=$(realpath "$1")
folder=$2
rounds=${3:-5}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The best time of a command, in milliseconds; empties the folder $work/out before each round.
best() {
  local best_us= i start end
  for ((i = 0; i < rounds; ++i)); do
    rm -rf "$work/out" && mkdir "$work/out"
    start=${EPOCHREALTIME/./}
    "$@" > "$work/log" 2>&1
    end=${EPOCHREALTIME/./}
    if [ -z "$best_us" ] || ((end - start < best_us)); then best_us=$((end - start)); fi
  done
  printf '%d.%03d' $((best_us / 1000)) $((best_us % 1000))
}

# Compares the files below two folders; what only 7-Zip has on its own (the storage streams) is left
# out by unpacking with --internal on our side and dropping the storage on both.
compare() {
  rm -rf "$1/DataSpace" "$2/::DataSpace" "$2/DataSpace"
  find "$1" "$2" -type d -empty -delete
  diff -r -q "$1" "$2" > "$work/diff" 2>&1
}

status=0
files=0
while IFS= read -r -d '' chm; do
  files=$((files + 1))
  line=${chm#"$folder"/}
  "$hh" -decompile --internal "$work/ours" "$chm" 2> "$work/said" || line+="; hh says: $(head -1 "$work/said")"
  for peer in 7z extract_chmLib; do
    if ! command -v "$peer" > /dev/null; then
      line+="; $peer: not installed"
      continue
    fi
    mkdir -p "$work/$peer"
    case $peer in
      7z) 7z x -y -o"$work/7z" "$chm" > /dev/null 2>&1 ;;
      *) extract_chmLib "$chm" "$work/extract_chmLib" > /dev/null 2>&1 ;;
    esac
    if [ -z "$(find "$work/$peer" -type f -print -quit)" ]; then
      line+="; $peer: unpacks nothing"
    elif compare "$work/ours" "$work/$peer"; then
      line+="; $peer: equal"
    else
      line+="; $peer: DIFFERENT ($(wc -l < "$work/diff"), first: $(head -1 "$work/diff"))"
      status=1
    fi
    rm -rf "${work:?}/$peer"
  done
  rm -rf "$work/ours"
  line+="; ms: hh $(best taskset -c 0 "$hh" -decompile "$work/out" "$chm") on one core"
  line+=", $(best "$hh" -decompile "$work/out" "$chm") on all"
  if command -v 7z > /dev/null; then
    line+=", 7z $(best taskset -c 0 7z x -mmt=1 -y -o"$work/out" "$chm") on one core"
    line+=", $(best 7z x -y -o"$work/out" "$chm") on all"
  fi
  printf '%s\n' "$line"
done < <(find "$folder" -iname '*.chm' -type f -print0 | sort -z)
printf '%d help files\n' "$files"
exit "$status"
