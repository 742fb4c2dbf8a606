#!/usr/bin/env bash
# usage: tools/screenshots.sh [FOLDER [DPI]]
#
# Keeps pictures of the four dialogs, each at two sizes, as PNG files in FOLDER (default docs/images) at a resolution of
# DPI (default 96). The dialogs run over a copy of the sample web, under Wine on a display of their own.
set -u
cd "$(dirname "$(readlink -f "$0")")/.." || exit 1
. tools/packages.sh
. tests/wine/wine.sh

folder=${1:-docs/images} dpi=${2:-96}
work=$PWD/build/wine/screenshots
install_missing "what the pictures need" "${build_packages[@]}" "${test_packages[@]}" \
  g++-mingw-w64-x86-64-posix fonts-wine fonts-liberation2 || exit 1
(cmake --preset win-x64 && cmake --build --preset win-x64 --target show_windows) >"build/screenshots.log" 2>&1 ||
  { echo "The program that shows the dialogs does not build; the record is in build/screenshots.log" >&2; exit 1; }

mkdir -p "$work" "$folder"
exec 9>"$work/lock"
flock 9
trap stop_all EXIT
prepare_wine win-x64 "$work" || { echo "$why" >&2; exit 1; }
rm -rf "$work/pictures"
mkdir -p "$WINEPREFIX/drive_c/Webs"
cp -r "samples/Scrivo Builder sample web" "$WINEPREFIX/drive_c/Webs/scrivo"
mkdir "$work/pictures"
# Debian's Wine does not look where its own fonts are.
cp /usr/share/wine/fonts/{tahoma,tahomabd,marlett}.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
set_resolution "$dpi"
limited "$wine_loader" "$PWD/build/win-x64/bin/show_windows.exe" \
  'C:\Webs\scrivo' "Z:${work//\//\\}\\pictures" >"$work/show.log" 2>&1 </dev/null 9>&-
for name in compile run decompile error; do
  for size in "" -large; do
    [ -e "$work/pictures/$name$size.bmp" ] || { echo "$name$size was not shown; see $work/show.log" >&2; exit 1; }
    convert "$work/pictures/$name$size.bmp" -alpha off -strip -define png:compression-level=9 \
      -define png:exclude-chunks=date,time "$folder/$name$size.png" || exit 1
  done
done
