#!/usr/bin/env bash
# usage: tools/setup_pictures.sh SETUP [FOLDER]
#
# Keeps pictures of the pages of the Windows setup SETUP, which packaging/release makes, as PNG files in FOLDER (default
# docs/images). The setup runs under Wine on a display of its own, and installs into a prefix that is made for that.
set -u
cd "$(dirname "$(readlink -f "$0")")/.." || exit 1
. tools/packages.sh
. tests/wine/wine.sh

setup=$(readlink -f "${1:?usage: tools/setup_pictures.sh SETUP [FOLDER]}") folder=${2:-docs/images}
work=$PWD/build/wine/setup-pictures
mkdir -p "$work" "$folder"
install_missing "what the pictures need" imagemagick g++-mingw-w64-x86-64-posix fonts-wine || exit 1
exec 9>"$work/lock"
flock 9
trap stop_all EXIT
prepare_both_wines "$work" || { echo "$why" >&2; exit 1; }
drive=$WINEPREFIX/drive_c
x86_64-w64-mingw32-g++-posix -std=c++20 -O1 -static -o "$drive/user.exe" tests/packaging/windows_user.cc -lole32 -luuid || exit 1
cp "$setup" "$drive/setup.exe"
# Debian's Wine does not look where its own fonts are.
cp /usr/share/wine/fonts/{tahoma,tahomabd,marlett}.ttf "$drive/windows/Fonts/"
stop_wine
limited "$wine_server" --wait
limited "$wine_server" --persistent >/dev/null 2>&1 </dev/null 9>&-

# keep NAME: the window as it is shown once it changes no more, without the desktop around it.
keep() {
  local before='' now=none
  until [ "$before" = "$now" ]; do
    sleep 1
    before=$now now=$(import -display "$DISPLAY" -window root -strip "$work/root.png" && convert "$work/root.png" rgb:- | sha256sum)
  done
  convert "$work/root.png" -bordercolor "$(convert "$work/root.png" -format '%[pixel:p{0,0}]' info:)" -border 1 -trim +repage \
    -alpha off -strip -define png:compression-level=9 -define png:exclude-chunks=date,time "$folder/setup-$1.png"
}
user() { limited "$wine_loader" 'C:\user.exe' "$@" >>"$work/setup.log" 2>&1 </dev/null 9>&- || { cat "$work/setup.log"; exit 1; }; }

limited "$wine_loader" 'C:\setup.exe' >"$work/setup.log" 2>&1 </dev/null 9>&- &
for name in welcome licence users options folder; do
  user page
  keep "$name"
  user next
done
user page "Start Scrivo Host"
keep finish
