#!/usr/bin/env bash
# usage: packaging/notices.sh linux|windows PACKAGE…
#
# Prints the notices that go with programs for this system into which these Debian packages were linked: what each says about its
# authors and licences, and the licences that it refers to.
set -eu
system=$1
shift
line=$(printf '=%.0s' {1..79})

case $system in
  linux) cat <<END ;;
Third-party notices

Scrivo itself is under the MIT licence, in the file LICENSE beside this one.

The programs in this archive are linked statically, so they hold parts of the
GNU C library, of the GNU C++ library and of GCC's runtime library. They were
taken unchanged from the Debian packages named below; Debian offers their
sources at https://snapshot.debian.org/. The GNU C library is under the GNU
Lesser General Public License: Scrivo's own sources and packaging/release are
all that is needed to link the programs with a changed library. The others are
under the GNU General Public License with the GCC Runtime Library Exception,
which allows programs to be distributed under terms of their own.
END
  windows) cat <<END ;;
Third-party notices

Scrivo itself is under the MIT licence, in the file LICENSE.txt beside this one.

The programs and libraries for Windows are linked statically, so they hold
parts of the MinGW-w64 runtime, of the GNU C++ library and of GCC's runtime
library. They were taken unchanged from the Debian packages named below; Debian
offers their sources at https://snapshot.debian.org/. The libraries of GCC are
under the GNU General Public License with the GCC Runtime Library Exception,
which allows programs to be distributed under terms of their own. The setup is
made with NSIS, and holds its parts that run on Windows.
END
  *) echo "packaging/notices.sh: there are no notices for $system" >&2; exit 2 ;;
esac
cat <<END

Tables of letters and code pages were computed from the Unicode Character
Database, whose licence is among the texts below.
END

licences=()
for package in "$@"; do
  file=/usr/share/doc/$package/copyright
  printf '\n%s\n%s %s\n%s\n\n' "$line" "$package" "$(dpkg-query -W -f '${Version}' "$package")" "$line"
  cat "$file"
  mapfile -t -O "${#licences[@]}" licences < <(grep -o '/usr/share/common-licenses/[A-Za-z0-9.-]*[A-Za-z0-9]' "$file")
done
while read -r licence; do
  printf '\n%s\n%s\n%s\n\n' "$line" "$licence" "$line"
  cat "$licence"
done < <(printf '%s\n' "${licences[@]}" | sort -u)
