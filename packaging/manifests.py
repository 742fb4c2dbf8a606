#!/usr/bin/env python3
"""Writes what package managers need to install a release: manifests.py VERSION FOLDER ADDRESS

FOLDER holds the files of the release, ADDRESS is the folder on the web that they will be downloaded from. Makes
FOLDER/manifests/ with the files for winget, Scoop, Chocolatey and Homebrew, which name the files there and their hashes.
"""
import hashlib
import json
import pathlib
import sys

SUMMARY = "Makes compiled help files (.chm) from FrontPage webs, and unpacks them"
PUBLISHER = "The Scrivo authors"


def winget(version, home, setup):
    head = f"PackageIdentifier: Scrivo.Scrivo\nPackageVersion: {version}\n"
    installers = "".join(f"""  - Architecture: x86
    Scope: {scope}
    InstallerUrl: {setup[0]}
    InstallerSha256: {setup[1].upper()}
    InstallerSwitches:
      Custom: {switch}
""" for scope, switch in (("user", "/CurrentUser"), ("machine", "/AllUsers")))
    return {
        "winget/Scrivo.Scrivo.yaml": head + "DefaultLocale: en-US\nManifestType: version\nManifestVersion: 1.6.0\n",
        "winget/Scrivo.Scrivo.installer.yaml": head + "InstallerType: nullsoft\nUpgradeBehavior: install\n"
        "ProductCode: Scrivo\nExpectedReturnCodes:\n  - InstallerReturnCode: 1\n    ReturnResponse: cancelledByUser\n"
        "  - InstallerReturnCode: 3010\n    ReturnResponse: rebootRequiredToFinish\nInstallers:\n" + installers + "ManifestType: installer\nManifestVersion: 1.6.0\n",
        "winget/Scrivo.Scrivo.locale.en-US.yaml": head + f"PackageLocale: en-US\nPublisher: {PUBLISHER}\n"
        f"PackageName: Scrivo\nPackageUrl: {home}\nLicense: MIT\nShortDescription: {SUMMARY}\n"
        "ManifestType: defaultLocale\nManifestVersion: 1.6.0\n",
    }


def scoop(version, home, x64, x86):
    return {"scoop/scrivo.json": json.dumps({
        "version": version, "description": SUMMARY, "homepage": home, "license": "MIT",
        "architecture": {"64bit": {"url": x64[0], "hash": x64[1]}, "32bit": {"url": x86[0], "hash": x86[1]}},
        "bin": ["scrivo.exe", "hhc.exe"], "shortcuts": [["ScrivoHost.exe", "Scrivo Host"]],
    }, indent=4) + "\n"}


def chocolatey(version, home, setup):
    return {
        "chocolatey/scrivo.nuspec": f"""<?xml version="1.0" encoding="utf-8"?>
<package xmlns="http://schemas.microsoft.com/packaging/2015/06/nuspec.xsd">
  <metadata>
    <id>scrivo</id>
    <version>{version}</version>
    <title>Scrivo</title>
    <authors>{PUBLISHER}</authors>
    <projectUrl>{home}</projectUrl>
    <tags>chm help html-help frontpage</tags>
    <summary>{SUMMARY}</summary>
    <description>{SUMMARY}. Has an add-in for FrontPage and SharePoint Designer, a command line and a help compiler.</description>
  </metadata>
  <files>
    <file src="tools\\**" target="tools" />
  </files>
</package>
""",
        "chocolatey/tools/chocolateyinstall.ps1": f"""$ErrorActionPreference = 'Stop'
Install-ChocolateyPackage -PackageName 'scrivo' -FileType 'exe' -SilentArgs '/S /AllUsers /PATH=1' `
  -Url '{setup[0]}' -Checksum '{setup[1]}' -ChecksumType 'sha256' -ValidExitCodes @(0, 3010)
""",
        "chocolatey/tools/chocolateyuninstall.ps1": """$ErrorActionPreference = 'Stop'
[array] $keys = Get-UninstallRegistryKey -SoftwareName 'Scrivo'
if ($keys.Count -eq 1) {
  Uninstall-ChocolateyPackage -PackageName 'scrivo' -FileType 'exe' -SilentArgs '/S /AllUsers' `
    -File "$($keys[0].InstallLocation)\\uninstall.exe" -ValidExitCodes @(0, 3010)
}
""",
    }


def homebrew(home, source):
    return {"homebrew/scrivo.rb": f"""class Scrivo < Formula
  desc "{SUMMARY}"
  homepage "{home}"
  url "{source[0]}"
  sha256 "{source[1]}"
  license "MIT"

  depends_on "cmake" => :build
  depends_on "ninja" => :build
  depends_on :linux

  def install
    system "cmake", "-S", ".", "-B", "build", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", *std_cmake_args
    system "cmake", "--build", "build"
    system "cmake", "--install", "build"
  end

  test do
    (testpath/"web/index.htm").write "<title>Start</title><p>Text"
    system bin/"scrivo", "compile", "web", "-o", "made.chm"
    assert_equal "ITSF", (testpath/"made.chm").binread(4)
  end
end
"""}


def main():
    version, folder, address = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3].rstrip("/")

    def file(name):
        return f"{address}/{name}", hashlib.sha256((folder / name).read_bytes()).hexdigest()

    setup = file(f"scrivo-{version}-windows.exe")
    made = {
        **winget(version, address, setup),
        **scoop(version, address, file(f"scrivo-{version}-windows-x64.zip"), file(f"scrivo-{version}-windows-x86.zip")),
        **chocolatey(version, address, setup),
        **homebrew(address, file(f"scrivo-{version}.tar.gz")),
    }
    for name, text in made.items():
        path = folder / "manifests" / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)


main()
