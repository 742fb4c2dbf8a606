#!/usr/bin/env python3
"""Prints the bill of materials of a release, in the JSON form of SPDX 2.3.

bill_of_materials.py VERSION FOLDER PACKAGE… -- PACKAGE…

FOLDER holds the files of the release; each PACKAGE is a Debian package of which parts are linked into the static programs
for Linux and, behind the dashes, into those for Windows.
"""
import datetime
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys

GCC = "GPL-3.0-or-later WITH GCC-exception-3.1"
GLIBC = "LGPL-2.1-or-later"
LICENCES = {"libc6": GLIBC, "libc6-dev": GLIBC, "libgcc-s1": GCC, "libstdc++6": GCC, "nsis-common": "Zlib AND CPL-1.0"}


def licence_of(package):
    """A package of another name has to be looked at by a person first."""
    if re.fullmatch(r"lib(gcc|stdc\+\+)-\d+-dev|g(cc|\+\+)-mingw-w64-.*", package):
        return GCC
    if re.fullmatch("mingw-w64-.*-dev", package):
        return "ZPL-2.1"
    if package not in LICENCES:
        sys.exit(f"bill_of_materials.py: the licence of {package} is not known; add it to the list")
    return LICENCES[package]


def said_by(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()


def identifier(name):
    return "SPDXRef-" + re.sub(r"[^A-Za-z0-9.-]", "-", name)


def artefact(path, version):
    return {
        "SPDXID": identifier(path.name), "name": "scrivo", "versionInfo": version, "packageFileName": path.name,
        "checksums": [{"algorithm": "SHA256", "checksumValue": hashlib.sha256(path.read_bytes()).hexdigest()}],
        "downloadLocation": "NOASSERTION", "filesAnalyzed": False,
        "licenseConcluded": "MIT", "licenseDeclared": "MIT", "copyrightText": "Copyright (c) 2026 The Scrivo authors",
        "supplier": "Organization: The Scrivo authors",
    }


def library(package):
    return {
        "SPDXID": identifier(package), "name": package,
        "versionInfo": said_by("dpkg-query", "-W", "-f", "${Version}", package),
        "downloadLocation": "https://snapshot.debian.org/", "filesAnalyzed": False,
        "licenseConcluded": licence_of(package), "licenseDeclared": licence_of(package), "copyrightText": "NOASSERTION",
        "supplier": "Organization: Debian",
    }


def main():
    version, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    dashes = sys.argv.index("--")
    linked, linked_windows = sys.argv[3:dashes], sys.argv[dashes + 1:]
    source = folder / f"scrivo-{version}.tar.gz"
    packages = sorted(folder.glob("*.deb"))
    archive, = folder.glob(f"scrivo-{version}-linux-*.tar.gz")
    windows = [folder / f"scrivo-{version}-windows{end}" for end in (".exe", "-x64.zip", "-x86.zip")]
    depends = said_by("dpkg-deb", "-f", str(packages[0]), "Depends")
    needed = sorted(re.match(r"[^ (|]+", item).group(0) for item in depends.split(", "))
    artefacts = [artefact(path, version) for path in (source, *packages, archive, *windows)]

    relations = [("SPDXRef-DOCUMENT", "DESCRIBES", made["SPDXID"]) for made in artefacts]
    relations += [(identifier(made.name), "GENERATED_FROM", identifier(source.name)) for made in (*packages, archive, *windows)]
    relations += [(identifier(made.name), "DYNAMIC_LINK", identifier(name)) for made in packages for name in needed]
    relations += [(identifier(archive.name), "STATIC_LINK", identifier(name)) for name in linked]
    relations += [(identifier(made.name), "STATIC_LINK", identifier(name)) for made in windows for name in linked_windows
                  if name != "nsis-common" or made.suffix == ".exe"]
    made_at = datetime.datetime.fromtimestamp(int(os.environ["SOURCE_DATE_EPOCH"]), datetime.timezone.utc)
    digest = hashlib.sha256(json.dumps(artefacts).encode()).hexdigest()
    json.dump({
        "spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT", "name": f"scrivo-{version}",
        "documentNamespace": f"https://spdx.org/spdxdocs/scrivo-{version}-{digest[:32]}",
        "creationInfo": {"created": made_at.strftime("%Y-%m-%dT%H:%M:%SZ"),
                         "creators": ["Organization: The Scrivo authors", f"Tool: packaging/release-{version}"]},
        "packages": artefacts + [library(name) for name in sorted({*needed, *linked, *linked_windows})],
        "relationships": [{"spdxElementId": one, "relationshipType": kind, "relatedSpdxElement": other}
                          for one, kind, other in relations],
    }, sys.stdout, indent=2)
    print()


main()
