# Wine for the tests: installing it, a fresh prefix, a display of its own. Sourced, from the top folder, after
# tools/packages.sh. What is said to the user goes to standard error; a reason for giving up is left in $why.

wine_packages=(wine wine64 xvfb imagemagick)

wine_seconds=300  # the time limit for what Wine does by itself, such as making a prefix
display_process= prefix_in_use=false

# prepare_wine PRESET WORK: makes everything ready for run_wine. 2 when this machine can have no 32-bit Wine, 1 when
# anything else fails; $why then tells the reason. WORK is the folder for prefix and logs.
prepare_wine() {
  local preset=$1 work=$2
  wine_root= why=
  case $preset in
    win-x64)
      install_wine "Wine for the Windows tests" "${wine_packages[@]}" || return 1
      wine_loader=/usr/lib/wine/wine64 wine_server=/usr/lib/wine/wineserver64
      ;;
    win-x86)
      install_wine "a display for the Windows tests" xvfb imagemagick || return 1
      wine_loader=/usr/lib/wine/wine wine_server=/usr/lib/wine/wineserver32
      have_wine32 || make_wine32_root || return
      ;;
    *)
      why="$preset is no preset for Windows"
      return 1
      ;;
  esac
  start_display "$work" && make_prefix "$work"
}

# install_wine WHAT_FOR PACKAGE…: install_missing, whose output becomes the reason when it fails.
install_wine() {
  local said
  if said=$(install_missing "$@" 2>&1); then
    [ -z "$said" ] || echo "$said" >&2
    return 0
  fi
  why="what the tests need cannot be installed: $said"
  return 1
}

have_wine32() {
  [ "$(dpkg-query -W -f '${db:Status-Status}' wine32:i386 2>/dev/null)" = installed ] && return 0
  [ -e "$(wine32_root)/.complete" ] && { enter_wine32_root; return; }
  install_wine32
}

# The i386 packages beside the machine's own, when apt can resolve that; the architecture is taken away again otherwise.
# $no_packages tells why it could not.
install_wine32() {
  local added=false log=$PWD/build/wine32-packages.log
  no_packages="only root can install i386 packages"
  [ "$(id -u)" -eq 0 ] || return 1
  no_packages="the i386 packages of Wine cannot be installed (the whole record is in $log)"
  if ! dpkg --print-foreign-architectures | grep -qx i386; then
    dpkg --add-architecture i386 || return 1
    added=true
  fi
  if { apt-get update && apt-get install -s --no-install-recommends wine32:i386; } >"$log" 2>&1 </dev/null; then
    echo "Installing 32-bit Wine for the Windows tests: wine32:i386" >&2
    DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends wine32:i386 >"$log" 2>&1 </dev/null &&
      return 0
  fi
  if $added; then
    dpkg --remove-architecture i386
    apt-get update >/dev/null 2>&1 </dev/null
  fi
  return 1
}

wine32_root() { readlink -m "${SCRIVO_WINE32_ROOT:-build/wine32-root}"; }

# An i386 Debian of its own, where the packages do not go beside the machine's.
make_wine32_root() {
  local root suite log=$PWD/build/wine32-root.log
  root=$(wine32_root)
  if [ "$(id -u)" -ne 0 ]; then
    why="no 32-bit Wine: $no_packages, and only root can make an i386 root for it"
    return 2
  fi
  if ! unshare --mount true 2>/dev/null; then
    why="no 32-bit Wine: $no_packages, and an i386 root for it cannot be entered here (no mounts)"
    return 2
  fi
  install_wine "the maker of an i386 root for 32-bit Wine" debootstrap || return 1
  mkdir -p "$(dirname "$root")"
  exec 8>"$root.lock"
  flock 8
  if [ ! -e "$root/.complete" ]; then
    echo "Installing 32-bit Wine in an i386 root of its own: $root" >&2
    suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
    rm -rf --one-file-system "$root"
    if ! debootstrap --arch=i386 --variant=minbase --include=wine,wine32 "$suite" "$root" >"$log" 2>&1 </dev/null; then
      why="no 32-bit Wine: $no_packages, and no i386 root can be made for it: $(tail -n 1 "$log")"
      return 2
    fi
    rm -rf "$root"/var/cache/apt/archives/*.deb
    touch "$root/.complete"
  fi
  exec 8>&-
  enter_wine32_root
}

# From here on Wine runs in the i386 root.
enter_wine32_root() { enter_root "$(wine32_root)"; }

enter_root() {
  wine_root=$1
  mkdir -p "$wine_root$PWD" "$wine_root/tmp/.X11-unix" "$wine_root/proc" "$wine_root/dev"
}

# prepare_both_wines WORK: as prepare_wine, for a Wine that runs programs of 64 and of 32 bit in one prefix. It lies in a
# Debian of its own, since the packages of two architectures seldom go together with what a machine has already.
prepare_both_wines() {
  local work=$1 root log=$PWD/build/wine-root.log suite
  wine_loader=/usr/lib/wine/wine64 wine_server=/usr/lib/wine/wineserver64 why=
  install_wine "the maker of a Debian with Wine, and a display" debootstrap xvfb || return 1
  if [ "$(id -u)" -ne 0 ] || ! unshare --mount true 2>/dev/null; then
    why="no Wine for programs of both kinds: only root can make a Debian for it, and only where mounts are allowed"
    return 2
  fi
  root=$(readlink -m "${SCRIVO_WINE_ROOT:-build/wine-root}")
  mkdir -p "$(dirname "$root")"
  exec 8>"$root.lock"
  flock 8
  if [ ! -e "$root/.complete" ]; then
    echo "Installing Wine for programs of both kinds in a Debian of its own: $root" >&2
    suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
    rm -rf --one-file-system "$root"
    if ! { debootstrap --variant=minbase "$suite" "$root" && chroot "$root" dpkg --add-architecture i386 &&
           chroot "$root" apt-get update &&
           DEBIAN_FRONTEND=noninteractive chroot "$root" apt-get install -y --no-install-recommends wine wine64 wine32:i386
         } >"$log" 2>&1 </dev/null; then
      why="no Wine for programs of both kinds: $(tail -n 1 "$log") (the whole record is in $log)"
      return 2
    fi
    rm -rf "$root"/var/cache/apt/archives/*.deb "$root"/var/lib/apt/lists/*
    touch "$root/.complete"
  fi
  exec 8>&-
  enter_root "$root"
  start_display "$work" && make_prefix "$work"
}

# in_wine_root COMMAND…: runs a command where Wine is. The mounts end with the command.
in_wine_root() {
  if [ -z "$wine_root" ]; then
    "$@"
    return
  fi
  unshare --mount -- sh -c '
    root=$1 here=$2
    shift 2
    mount --bind "$here" "$root$here" && mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix" &&
      mount --rbind /proc "$root/proc" && mount --rbind /dev "$root/dev" || exit 125
    exec chroot "$root" sh -c '\''cd "$1" && shift && exec "$@"'\'' sh "$here" "$@"
  ' sh "$wine_root" "$PWD" "$@"
}

# A display that nobody else uses; DISPLAY names it.
start_display() {
  local number
  mkdir -p /tmp/.X11-unix
  rm -f "$1/display"
  mkfifo "$1/display"
  Xvfb -displayfd 7 -screen 0 1280x1024x24 -nolisten tcp 7>"$1/display" >"$1/xvfb.log" 2>&1 9>&- &
  display_process=$!
  read -r -t 30 number <"$1/display"
  rm -f "$1/display"
  if [ -z "${number:-}" ]; then
    why="no display can be started: $(tail -n 1 "$1/xvfb.log")"
    return 1
  fi
  export DISPLAY=:$number
}

# A fresh copy of a prefix that was made once. Wine's own offers to download parts of itself are off.
make_prefix() {
  local work=$1
  export HOME=$work/home WINEPREFIX=$work/prefix WINEDEBUG=-all
  export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
  mkdir -p "$HOME"
  if [ ! -e "$work/template/.complete" ]; then
    rm -rf "$work/template"
    if ! make_template >"$work/wineboot.log" 2>&1 </dev/null 9>&-; then
      why="Wine cannot make a prefix: $(tail -n 1 "$work/wineboot.log") (the whole record is in $work/wineboot.log)"
      return 1
    fi
    touch "$work/template/.complete"
  fi
  rm -rf "$WINEPREFIX"
  prefix_in_use=true
  cp -a "$work/template" "$WINEPREFIX" && limited "$wine_server" --persistent 9>&- && return 0
  why="the prefix cannot be copied to $WINEPREFIX, or Wine's server does not start in it"
  return 1
}

# limited COMMAND…: in_wine_root, with a time limit.
limited() { in_wine_root timeout --verbose --kill-after=10 "$wine_seconds" "$@"; }

# Makes the prefix $work/template and leaves no program of it running. Its windows stand on a desktop of Wine's own: on
# a display without a window manager each one would be waited for.
make_template() {
  local -x WINEPREFIX=$work/template
  local explorer='HKCU\Software\Wine\Explorer'
  limited "$wine_loader" wineboot.exe --init &&
    limited "$wine_loader" reg add "$explorer" /v Desktop /d Default /f &&
    limited "$wine_loader" reg add "$explorer\Desktops" /v Default /d 1280x1024 /f &&
    limited "$wine_server" --wait && return 0
  in_wine_root timeout --kill-after=10 30 "$wine_server" --kill
  return 1
}

# run_wine PROGRAM ARGUMENT…
run_wine() { in_wine_root "$wine_loader" "$@" 9>&-; }

# set_resolution DPI: the dots per inch of every program that starts from here on.
set_resolution() {
  run_wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null 2>&1 </dev/null || return
  stop_wine  # it is read when the server starts
  limited "$wine_server" --wait
  limited "$wine_server" --persistent 9>&-
}

# Ends every program of the prefix.
stop_wine() { in_wine_root timeout --kill-after=10 30 "$wine_server" --kill; }

# Ends what prepare_wine has started, however far it came.
stop_all() {
  if $prefix_in_use; then stop_wine; fi
  [ -z "$display_process" ] || kill "$display_process" 2>/dev/null
}
