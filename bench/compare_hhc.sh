#!/usr/bin/env bash
# Compiles projects with two builds of hhc and compares the help files byte for byte; shows where they print other lines.
#
#   bench/compare_hhc.sh OLD_HHC NEW_HHC PROJECT.hhp…
#
# Copies of the projects' folders are compiled, at one recorded time. Exit status: 0 when all files are the same.
set -u
old=$(realpath "$1") new=$(realpath "$2")
shift 2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
status=0
for project in "$@"; do
  for hhc in "$old" "$new"; do
    rm -rf "$work/project"
    cp -r "$(dirname "$project")" "$work/project"
    chmod -R u+w "$work/project"
    find "$work/project" -iname '*.chm' -delete
    said=$work/said.$([ "$hhc" = "$old" ] && echo old || echo new)
    (cd "$work/project" && SOURCE_DATE_EPOCH=1000000000 "$hhc" --gnu "$(basename "$project")") >"$said" 2>&1
    find "$work/project" -iname '*.chm' -exec mv {} "${said/said/made}" \;
  done
  if cmp "$work/made.old" "$work/made.new"; then
    echo "$project: the same $(stat -c %s "$work/made.new") bytes"
    diff "$work/said.old" "$work/said.new"
  else
    status=1
  fi
  rm -f "$work"/made.*
done
exit $status
