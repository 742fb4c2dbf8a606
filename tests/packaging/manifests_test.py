#!/usr/bin/python3
"""Holds the manifests of a release against what the package managers take, and against the files of the release.

manifests_test.py RELEASE: the folder that packaging/release has filled. The last line is the sum: N passed, N failed
"""
import json
import pathlib
import re
import sys
import traceback
import xml.etree.ElementTree as xml
import zipfile

import yaml

TOP = pathlib.Path(__file__).resolve().parents[2]
RELEASE = pathlib.Path(sys.argv[1]).resolve()
MANIFESTS = RELEASE / "manifests"
VERSION = re.search(r"^project\(scrivo VERSION ([0-9.]+) ", (TOP / "CMakeLists.txt").read_text(), re.M).group(1)
SUMS = dict(reversed(line.split()) for line in (RELEASE / "SHA256SUMS").read_text().splitlines())
SWITCHES = {"/S", "/AllUsers", "/CurrentUser"} | {
    f"/{name}={value}" for value in "01"
    for name in re.findall(r"!insertmacro ReadOption \w+ (\w+)", (TOP / "packaging/windows/setup.nsi").read_text())}

ADDRESS, HASH = r"https://[^ ]+", r"[0-9A-Fa-f]{64}"
ANY = r".{2,}"

# winget, manifest version 1.6.0: what each file has to say and may say, of what we use.
WINGET = {
    "version": ({"DefaultLocale": r"[a-z]{2}-[A-Z]{2}"}, {}),
    "defaultLocale": ({"PackageLocale": r"[a-z]{2}-[A-Z]{2}", "Publisher": ANY, "PackageName": ANY, "License": r".{3,}",
                       "ShortDescription": r".{3,256}"}, {"PackageUrl": ADDRESS}),
    "installer": ({}, {"InstallerType": "nullsoft", "UpgradeBehavior": "install|uninstallPrevious", "ProductCode": ANY}),
}
WINGET_HEAD = {"PackageIdentifier": r"[^.\s]{1,32}(\.[^.\s]{1,32}){1,7}", "PackageVersion": re.escape(VERSION),
               "ManifestType": ANY, "ManifestVersion": r"1\.6\.0"}
WINGET_INSTALLER = {"Architecture": "x86|x64|arm64", "Scope": "user|machine", "InstallerUrl": ADDRESS, "InstallerSha256": HASH}
WINGET_RESPONSES = {1: "cancelledByUser", 3010: "rebootRequiredToFinish"}


def holds(told, needed, allowed):
    """Every field that is needed, no other than those allowed, and each in its form."""
    assert set(needed) <= set(told) <= set(needed) | set(allowed), sorted(told)
    for name, form in {**needed, **allowed}.items():
        assert name not in told or re.fullmatch(form, str(told[name])), (name, told[name])


def names_files_of_the_release():
    """Each address is followed by the hash of the file that it leads to."""
    pairs = []
    for path in (path for path in MANIFESTS.rglob("*") if path.is_file()):
        text = path.read_text()
        found = re.findall(r"https://downloads\.scrivo\.example/[0-9.]+/([a-z0-9.-]+)", text)
        hashes = re.findall(rf"\b{HASH}\b", text)
        assert len(found) == len(hashes), path
        pairs += [(file, SUMS[file] == digest.lower()) for file, digest in zip(found, hashes)]
    assert len(pairs) == 6 and all(right for _, right in pairs), pairs


def winget():
    files = {path.name: yaml.safe_load(path.read_text()) for path in (MANIFESTS / "winget").iterdir()}
    identifier = "Scrivo.Scrivo"
    names = {"version": f"{identifier}.yaml", "installer": f"{identifier}.installer.yaml",
             "defaultLocale": f"{identifier}.locale.en-US.yaml"}
    assert set(files) == set(names.values()), sorted(files)
    for kind, name in names.items():
        told = files[name]
        assert told["ManifestType"] == kind and told["PackageIdentifier"] == identifier
        installers = told.pop("Installers", [])
        responses = told.pop("ExpectedReturnCodes", [])
        needed, allowed = WINGET[kind]
        holds(told, {**WINGET_HEAD, **needed}, allowed)
        if kind != "installer":
            assert not installers and not responses
            continue
        assert {one["InstallerReturnCode"]: one["ReturnResponse"] for one in responses} == WINGET_RESPONSES
        scopes = {}
        for one in installers:
            switches = one.pop("InstallerSwitches")
            holds(one, WINGET_INSTALLER, {})
            assert set(switches) == {"Custom"} and set(switches["Custom"].split()) <= SWITCHES, switches
            scopes[one["Scope"]] = switches["Custom"]
        assert scopes == {"user": "/CurrentUser", "machine": "/AllUsers"}, scopes


def scoop():
    told = json.loads((MANIFESTS / "scoop/scrivo.json").read_text())
    architectures = told.pop("architecture")
    programs, shortcuts = told.pop("bin"), told.pop("shortcuts")
    holds(told, {"version": re.escape(VERSION), "homepage": ADDRESS, "license": "MIT"}, {"description": ANY})
    assert set(architectures) == {"64bit", "32bit"}
    for one in architectures.values():
        holds(one, {"url": ADDRESS, "hash": HASH}, {})
        with zipfile.ZipFile(RELEASE / one["url"].rpartition("/")[2]) as archive:
            inside = set(archive.namelist())
        assert set(programs) | {program for program, _ in shortcuts} <= inside, inside
    assert "hh.exe" not in programs  # Windows' own has that name


def chocolatey():
    folder = MANIFESTS / "chocolatey"
    space = "{http://schemas.microsoft.com/packaging/2015/06/nuspec.xsd}"
    package = xml.fromstring((folder / "scrivo.nuspec").read_bytes())
    assert package.tag == f"{space}package" and [part.tag for part in package] == [f"{space}metadata", f"{space}files"]
    told = {part.tag.removeprefix(space): part.text for part in package[0]}
    holds(told, {"id": "[a-z0-9.-]+", "version": re.escape(VERSION), "authors": ANY, "description": r".{30,4000}"},
          {"title": ANY, "projectUrl": ADDRESS, "tags": r"[a-z -]+", "summary": ANY})
    assert package[1][0].attrib == {"src": "tools\\**", "target": "tools"}
    scripts = {path.name: path.read_text() for path in (folder / "tools").iterdir()}
    assert set(scripts) == {"chocolateyinstall.ps1", "chocolateyuninstall.ps1"}, sorted(scripts)
    for name, text in scripts.items():
        silent = re.search(r"-SilentArgs '([^']*)'", text).group(1).split()
        assert {"/S", "/AllUsers"} <= set(silent) <= SWITCHES, (name, silent)
        assert "-ValidExitCodes @(0, 3010)" in text, name  # 3010: all is done, and something goes at the next start


def main():
    passed = failed = 0
    for test in (names_files_of_the_release, winget, scoop, chocolatey):
        try:
            test()
            passed += 1
        except Exception:  # whatever it is, the other tests go on
            failed += 1
            traceback.print_exc(file=sys.stdout)
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


sys.exit(main())
