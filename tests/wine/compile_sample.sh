# The command line from end to end on Windows: scrivo.exe compiles the sample web, by itself and with hhc.exe, and reads the
# result again. Sourced; needs run_wine.

# compile_sample PRESET WORK: says "ok" or what went wrong, one line a check.
compile_sample() {
  local bin=build/$1/bin site="$2/sample web" shipped=$2/shipped drive=$WINEPREFIX/drive_c out=$2/compile_sample.log
  rm -rf "$site" "$shipped" && cp -r "samples/Scrivo Builder sample web" "$shipped"
  # People compile the sample where it lies; what that has left there is no part of it.
  find "$shipped" -type f \( -iname '*.chm' -o -iname '*.hh[ckp]' -o -name '*.tmp.htm' \) -delete
  cp -r "$shipped" "$site"
  # Each program in a folder of its own, so that nothing leads from one to the other.
  mkdir -p "$drive/Tools" "$drive/Help Workshop"
  cp "$bin/scrivo.exe" "$drive/Tools/" && cp "$bin/hhc.exe" "$drive/Help Workshop/"
  local scrivo=$drive/Tools/scrivo.exe

  if run_wine "$scrivo" compile "$site" -o 'C:\sample.chm' >"$out" 2>&1 </dev/null &&
      [ "$(head -c 4 "$drive/sample.chm")" = ITSF ]; then
    echo ok
  else
    echo "does not compile the sample web: $(tail -n 3 "$out")"
  fi
  mv "$drive/sample.chm" "$drive/in_process.chm"
  if run_wine "$scrivo" compile "$site" -o 'C:\sample.chm' --compiler 'C:\Help Workshop\hhc.exe' \
      >"$out" 2>&1 </dev/null && cmp "$drive/sample.chm" "$drive/in_process.chm" >>"$out" 2>&1; then
    echo ok
  else
    echo "does not get the same help file from hhc.exe: $(tail -n 3 "$out")"
  fi
  if run_wine "$scrivo" list 'C:\sample.chm' >"$out" 2>&1 </dev/null &&
      grep -q 'getting_started\.htm' "$out" && grep -q 'index\.htm' "$out"; then
    echo ok
  else
    echo "does not list the pages of the sample's help file: $(tail -n 3 "$out")"
  fi
  local left
  left=$(diff -r -q "$shipped" "$site")
  if [ -z "$left" ]; then echo ok; else echo "does not leave the web as it was: ${left//$'\n'/; }"; fi
}
