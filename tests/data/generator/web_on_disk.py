"""Reads a FrontPage web from its folder for make_golden.py, as the navigation structure tells it.

Text is kept as strings of bytes (each character stands for one byte of the generated files): names as
they are on disk, labels, titles and keywords in windows-1252, "?" for what that lacks.
"""

import codecs
import html.parser
import os
import re

HOST_FOLDERS = ("_borders", "_derived", "_fpclass", "_overlay", "_themes")
WELCOME_PAGES = ("index.htm", "index.html", "default.htm", "default.html")


def as_bytes(name):
    return os.fsencode(name).decode("latin-1")


def as_ansi(text):
    return text.encode("cp1252", "replace").decode("latin-1")


def in_name_order(names):
    return sorted(names, key=lambda name: (name.lower(), name))


def is_hosts(folder):
    return folder.lower().startswith("_vti_") or folder.lower() in HOST_FOLDERS


def files_below(root, below=""):
    """Locations of all files: a folder's own in name order, then those of its folders."""
    entries = list(os.scandir(os.path.join(root, below)))
    files = {as_bytes(entry.name): entry.name for entry in entries if entry.is_file()}
    folders = {as_bytes(entry.name): entry.name for entry in entries if entry.is_dir()}
    found = [os.path.join(below, files[name]) for name in in_name_order(files)]
    for name in in_name_order(folders):
        if not is_hosts(name):
            found += files_below(root, os.path.join(below, folders[name]))
    return found


class Head(html.parser.HTMLParser):
    """Title, keywords and charset of a page."""

    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.title = self.keywords = self.charset = None
        self.in_title = False

    def handle_starttag(self, tag, attributes):
        values = {name: value or "" for name, value in attributes}
        if tag == "title" and self.title is None:
            self.title, self.in_title = "", True
        if tag == "meta":
            if values.get("name", "").lower() == "keywords" and self.keywords is None:
                self.keywords = values.get("content", "")
            declared = re.search(r"charset=([\w-]+)", values.get("content", ""))
            if declared and values.get("http-equiv", "").lower() == "content-type":
                self.charset = self.charset or declared.group(1)

    def handle_endtag(self, tag):
        if tag == "title":
            self.in_title = False

    def handle_data(self, data):
        if self.in_title:
            self.title += data


def head_of(path):
    with open(path, "rb") as page:
        raw = page.read()
    head = Head()
    head.feed(raw.decode("latin-1"))
    try:
        charset = codecs.lookup(head.charset or "cp1252").name
    except LookupError:
        charset = "cp1252"
    if charset == "iso8859-1":
        charset = "cp1252"
    head = Head()
    head.feed(raw.decode(charset, "replace"))
    return head


def notes_of(root, location):
    """What the host has noted about a page: its lines by name."""
    folder, name = os.path.split(location)
    path = os.path.join(root, folder, "_vti_cnf", name)
    if not os.path.isfile(path):
        return {}
    with open(path, encoding="utf-8", errors="replace") as notes:
        lines = [line.rstrip("\r\n").split(":", 1) for line in notes if ":" in line]
    return {name: value.split("|", 1)[-1] for name, value in lines}


def facts_of(root, location):
    """Title and keywords of a page; the page itself wins over the host's notes."""
    if not location.lower().endswith((".htm", ".html")):
        return "", ""
    head, notes = head_of(os.path.join(root, location)), notes_of(root, location)
    title = " ".join((head.title or "").split()) or notes.get("vti_title", "")
    return as_ansi(title), as_ansi(head.keywords or "")


def fields_of(line):
    """The fields of a structure line; a backslash keeps the comma or backslash behind it."""
    fields, escaped = [""], False
    for character in line:
        if escaped or character not in "\\,":
            fields[-1] += character
            escaped = False
        elif character == "\\":
            escaped = True
        else:
            fields.append("")
    return fields


def structure_of(root):
    """The nodes of the structure file: (id, url, label, parent), in the file's order."""
    with open(os.path.join(root, "_vti_pvt", "structure.cnf"), encoding="utf-8", newline="") as cnf:
        lines = cnf.read().replace("\r\n", "\n").split("\n")
    nodes, at = [], 2
    while at < len(lines):
        if lines[at]:
            fields = fields_of(lines[at])
            nodes.append((fields[0], fields[1], fields[3], fields[4]))
            at += int(fields[6])
        at += 1
    return nodes


def tree_of(root, locations):
    """(depth, label, location or None) of every node outside link bars, parents first."""
    exact = set(locations)
    any_case = {}
    for location in locations:
        any_case.setdefault(location.lower(), location)
    children = {}
    for node in structure_of(root):
        children.setdefault(node[3], []).append(node)

    def below(parent, depth):
        tree = []
        for number, url, label, _ in children.get(parent, []):
            if url.startswith("sid:"):
                continue
            location = url if url in exact else any_case.get(url.lower())
            tree.append((depth, as_ansi(label), as_bytes(location) if location else None))
            tree += below(number, depth + 1)
        return tree

    return below("0", 1)


def read_web(site, root):
    """Fills a site (see make_golden.py) from a web's folder."""
    locations = files_below(root)
    site.nodes = tree_of(root, locations)
    site.pages = [(as_bytes(location), *facts_of(root, location)) for location in locations]
    derived = os.path.join(root, "_derived")
    if os.path.isdir(derived):
        site.derived = [as_bytes(entry.name) for entry in os.scandir(derived) if entry.is_file()]
    top = [node for node in site.nodes if node[0] == 1 and node[2] is not None]
    home = next((node for node in top if node[2].lower() in WELCOME_PAGES), None)
    site.title = home[1] if home else site.address.rsplit("/", 1)[-1]
    first = next((location for _, _, location in site.nodes if location is not None), None)
    site.default_page = f"{site.address}/{first}" if first else ""
    site.output = site.path(re.sub("[/:]", "_", site.title) + ".CHM")
