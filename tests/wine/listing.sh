# What a Wine prefix holds, to compare before and after. Sourced, after tests/wine/wine.sh.

# list_prefix: every entry of the registry and every file of drive C with what it holds, one a line. Left out are temporary
# files, what the tests put at the top of the drive, and the settings that the add-in keeps for its user. Wine is
# stopped, because it writes the registry then, and started again; it notes the time of its first start in DriverDateData.
list_prefix() {
  local hive
  : "${wine_loader:?}" "${wine_server:?}"
  limited "$wine_loader" wineboot.exe --end-session --shutdown >/dev/null 2>&1 </dev/null 9>&-
  stop_wine
  limited "$wine_server" --wait
  for hive in system user; do
    # A key's line ends with its time.
    awk -v hive="$hive" '
      /^\[/ { sub(/ [0-9]+$/, ""); key = $0; hidden = key ~ /VB and VBA Program Settings/; if (!hidden) print hive key; next }
      /^#/ || /^$/ || /DriverDateData/ || hidden { next }
      { print hive key $0 }' "$WINEPREFIX/$hive.reg"
  done | LC_ALL=C sort
  (cd "$WINEPREFIX/drive_c" && find . \( -ipath '*/temp' -o -path './*.exe' ! -path './*/*' -o -name 'go*' ! -path './*/*' -o \
    -name shown ! -path './*/*' \) -prune -o -type f -exec sha256sum {} + -o -printf '%y %p\n' | LC_ALL=C sort)
  limited "$wine_server" --persistent >/dev/null 2>&1 </dev/null 9>&-
}
