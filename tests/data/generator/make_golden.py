#!/usr/bin/env python3
"""Writes the expected project files of the webs described here, from the rules of their formats.

    make_golden.py                           writes NAME.hhc, .hhk, .hhp and .htm for every NAME.site
                                             beside this script, and those of the sample web
    make_golden.py --check WEB PROJECT.hhp   compares the files of a project that was made from the web
                                             in the folder WEB with all its defaults; status 1 when one
                                             differs

A .site file has one statement a line, its fields separated by tabs:

    web ADDRESS FOLDER            the web's address and its folder on disk
    title TEXT                    the help title
    output PATH                   the compiled file
    defaultpage ADDRESS           the start page
    favorites on|off, index on|off
    page LOCATION TITLE KEYWORDS  a file of the web (fields at the end may be missing)
    node DEPTH LABEL LOCATION     a navigation node, depth 1 at the top; no location: a label only
    derived NAME                  a file of the "_derived" folder

Nothing here is shared with the program that is tested. Python 3, standard library only.
"""

import pathlib
import re
import sys

sys.dont_write_bytecode = True  # nothing but the golden files appears beside this script

import web_on_disk

HERE = pathlib.Path(__file__).resolve().parent
SAMPLE = HERE.parents[2] / "samples" / "Scrivo Builder sample web"
EOL = "\r\n"
DOCUMENT_START = ('<!DOCTYPE HTML PUBLIC "-//IETF//DTD HTML//EN">' + EOL
                  + "<HTML><HEAD></HEAD><BODY>" + EOL)
DOCUMENT_END = "</BODY></HTML>"


class Site:
    """One web as its .site file tells it."""

    def __init__(self):
        self.address = self.folder = self.title = self.output = self.default_page = ""
        self.favorites = self.index = True
        self.pages = []  # (location, title, keywords) in the order of a walk
        self.nodes = []  # (depth, label, location or None)
        self.derived = []

    @property
    def separator(self):
        return "\\" if "\\" in self.folder else "/"

    def path(self, name):
        return self.folder + self.separator + name

    def relative(self, address):
        """The location of an address, or of a path on disk, inside the web."""
        if address.startswith(self.address + "/"):
            return address[len(self.address) + 1:]
        if address.startswith(self.folder + self.separator):
            return address[len(self.folder) + 1:].replace(self.separator, "/")
        return address


def read_site(path):
    site = Site()
    for line in path.read_text(encoding="latin-1").splitlines():
        if not line or line.startswith("#"):
            continue
        word, *fields = line.split("\t")
        fields += [""] * (3 - len(fields))
        if word == "web":
            site.address, site.folder = fields[0], fields[1]
        elif word == "title":
            site.title = fields[0]
        elif word == "output":
            site.output = fields[0]
        elif word == "defaultpage":
            site.default_page = fields[0]
        elif word == "favorites":
            site.favorites = fields[0] == "on"
        elif word == "index":
            site.index = fields[0] == "on"
        elif word == "page":
            site.pages.append((fields[0], fields[1], fields[2]))
        elif word == "node":
            site.nodes.append((int(fields[0]), fields[1], fields[2] or None))
        elif word == "derived":
            site.derived.append(fields[0])
        else:
            raise ValueError(f"{path}: {line!r} is no statement")
    site.pages = walked(site.pages)
    return site


def walked(pages):
    """The pages as a walk meets them: a folder's own, then those of its folders, in first-seen order."""
    own = [page for page in pages if "/" not in page[0]]
    folders = list(dict.fromkeys(page[0].split("/")[0] for page in pages if "/" in page[0]))
    for folder in folders:
        below = [(page[0].split("/", 1)[1], *page[1:]) for page in pages
                 if page[0].startswith(folder + "/")]
        own += [(folder + "/" + page[0], *page[1:]) for page in walked(below)]
    return own


def contents_file(site):
    text = DOCUMENT_START + "<UL>" + EOL
    depth = 1
    for level, label, location in site.nodes:
        if level > depth:
            text += "<UL>" + EOL
        text += ("</UL>" + EOL) * (depth - level)
        depth = level
        text += '<LI><OBJECT TYPE="text/sitemap">' + EOL
        text += f'<PARAM NAME="Name" VALUE="{label}">'
        if location is not None:
            text += f'<PARAM NAME="Local" VALUE="{location}">'
        text += EOL + "</OBJECT>" + EOL
    return text + ("</UL>" + EOL) * depth + DOCUMENT_END + EOL


def index_file(site):
    """The index, or None when no page has a keyword."""
    labels = {}
    for _, label, location in site.nodes:
        if location is not None:
            labels.setdefault(location, label)
    entries = ""
    for location, title, keywords in site.pages:
        if not keywords:
            continue
        topic = labels.get(location, title)
        for keyword in keywords.replace(";", ",").split(","):
            entries += '<LI><OBJECT TYPE="text/sitemap">' + EOL
            entries += f'<PARAM NAME="Name" VALUE="{keyword}">'
            entries += f'<PARAM NAME="Name" VALUE="{topic}">'
            entries += f'<PARAM NAME="Local" VALUE="{location}">' + EOL + "</OBJECT>" + EOL
    if not entries:
        return None
    return DOCUMENT_START + "<UL>" + EOL + entries + "</UL>" + EOL + DOCUMENT_END + EOL


def derived_page(site):
    lines = ["<HTML><HEAD><TITLE></TITLE></HEAD><BODY>"]
    lines += [f'<img src="_derived/{name}">' for name in sorted(site.derived, key=lambda name: (name.upper(), name))]
    lines.append("</BODY></HTML>")
    return "".join(line + EOL for line in lines)


def is_page(location):
    return location.rsplit("/", 1)[-1].rpartition(".")[2].lower() in ("htm", "html")


def project_file(site, names):
    lines = [
        "[OPTIONS]",
        "Auto Index = Yes",
        "Binary Index = Yes",
        "Binary TOC = Yes",
        "Compatibility = 1.1 Or later",
        "Compiled file=" + site.output,
        "Contents file=" + site.path(names["hhc"]),
        "Default window=default",
        "Default topic=" + site.relative(site.default_page),
        "Display compile progress=Yes",
        "Full-text search=Yes",
        "Language=0x409 English (United States)",
        "Title=" + site.title,
    ]
    if "hhk" in names:
        lines.append("Index File = " + site.path(names["hhk"]))
    lines += ["", "[WINDOWS]", "", f'default=,"{names["hhc"]}",']
    index = f',"{names["hhk"]}",,,,,,,' if "hhk" in names else ",,,,,,,,"
    style = "0x23520" if site.favorites else "0x22520"
    lines.append(f'default=,"{names["hhc"]}"{index}{style},,0x3006,,,,,,,,0')
    lines += ["", "[FILES]", ""]
    output = site.relative(site.output)
    lines += [location for location, _, _ in site.pages if is_page(location) and location != output]
    lines.append(site.path(names["htm"]))
    return "".join(line + EOL for line in lines)


def temporary_names(with_index):
    """The names of the files in the order in which a run makes them, as the tests' disk numbers them."""
    kinds = (["hhk"] if with_index else []) + ["hhc", "htm", "hhp"]
    endings = {"hhk": ".hhk", "hhc": ".hhc", "htm": ".tmp.htm", "hhp": ".hhp"}
    return {kind: f"Scr{0x1A2 + number:X}{endings[kind]}" for number, kind in enumerate(kinds)}


def golden_files(site, names=None):
    """The expected files by ending; `names` are those that the project names, by ending."""
    files = {"hhc": contents_file(site), "htm": derived_page(site)}
    index = index_file(site) if site.index else None
    if index is not None:
        files["hhk"] = index
    files["hhp"] = project_file(site, names or temporary_names(index is not None))
    return files


def web_at(root, folder):
    """The web in the folder `root`, as if it lay in `folder`."""
    site = Site()
    site.address, site.folder = "file://" + folder, folder
    web_on_disk.read_web(site, str(root))
    return site


def first_difference(actual, expected):
    lines = zip(actual.split(b"\r\n"), expected.split(b"\r\n"))
    for number, (got, want) in enumerate(lines, 1):
        if got != want:
            return f"line {number} is {got!r}, should be {want!r}"
    return f"{len(actual)} bytes, should be {len(expected)}"


def check(root, project):
    """True when the project's files are as they should be; says where not."""
    text = project.read_bytes().decode("latin-1")
    names = {"hhp": project.name, "htm": text.rstrip("\r\n").rsplit("/", 1)[-1]}
    for ending, pattern in (("hhc", r"^Contents file=.*/(.*)\r$"), ("hhk", r"^Index File = .*/(.*)\r$")):
        found = re.search(pattern, text, re.MULTILINE)
        if found:
            names[ending] = found.group(1)
    site = web_at(root, web_on_disk.as_bytes(str(project.parent)))
    site.pages = [page for page in site.pages if page[0] not in names.values()]  # made by the run
    site.index = "hhk" in names
    site.output = re.search(r"^Compiled file=(.*)\r$", text, re.MULTILINE).group(1)
    right = True
    for ending, expected in golden_files(site, names).items():
        path = project.parent / names.get(ending, "(no index)")
        actual = path.read_bytes() if path.exists() else b""
        if actual == expected.encode("latin-1"):
            print(f"{path}: as expected, {len(actual)} bytes")
            continue
        right = False
        print(f"{path}: {first_difference(actual, expected.encode('latin-1'))}")
    return right


def write_golden(stem, site):
    for ending, text in golden_files(site).items():
        (HERE / f"{stem}.{ending}").write_bytes(text.encode("latin-1"))


def main(arguments):
    if len(arguments) == 3 and arguments[0] == "--check":
        return 0 if check(pathlib.Path(arguments[1]), pathlib.Path(arguments[2]).resolve()) else 1
    if arguments:
        print(__doc__, file=sys.stderr)
        return 2
    for path in sorted(HERE.glob("*.site")):
        write_golden(path.stem, read_site(path))
    if SAMPLE.is_dir():
        write_golden("sample", web_at(SAMPLE, "/webs/" + SAMPLE.name))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
