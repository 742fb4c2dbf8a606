# Debian packages that the commands install when they are missing. Sourced by ./scrivo and ./check.

# install_missing WHAT_FOR PACKAGE…: installs those that are not there, with one line that says so.
install_missing() {
  local what=$1 missing=() package run=()
  shift
  if ! command -v dpkg-query >/dev/null; then
    echo "This is no Debian system. Needed $what, under the names they have on Debian 12: $*" >&2
    return 0
  fi
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing $what: ${missing[*]}" >&2
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Please install these packages as root, then run this again." >&2; return 1; }
    run=(sudo)
  fi
  local log
  log=$(mktemp)
  if ! { "${run[@]}" apt-get update && "${run[@]}" env DEBIAN_FRONTEND=noninteractive \
         apt-get install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1 </dev/null; then
    tail -n 20 "$log" >&2
    echo "The packages could not be installed; the whole record is in $log" >&2
    return 1
  fi
  rm -f "$log"
}

build_packages=(cmake ninja-build g++)
test_packages=(googletest libbenchmark-dev)
