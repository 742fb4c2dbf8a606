#!/usr/bin/env python3
"""Writes a help project over a folder of HTML pages: contents by folders, an index of the titles, full-text search.

    bench/make_project.py FOLDER NAME

makes NAME.hhp, NAME.hhc and NAME.hhk in FOLDER, for NAME.chm.
"""

import html
import re
import sys
from pathlib import Path

OPTIONS = """[OPTIONS]
Compatibility=1.1 or later
Compiled file={name}.chm
Contents file={name}.hhc
Index file={name}.hhk
Default topic={first}
Title=Reference
Language=0x409
Full-text search=Yes
Binary TOC=Yes
Binary Index=Yes
[FILES]
"""


def title_of(path):
    found = re.search(r"<title>(.*?)</title>", path.read_text("utf-8", "replace"), re.S | re.I)
    return html.unescape(found.group(1)).strip() if found else path.name


def entry(name, page=""):
    local = f'<param name="Local" value="{html.escape(page)}">' if page else ""
    return f'<LI><OBJECT type="text/sitemap"><param name="Name" value="{html.escape(name)}">{local}</OBJECT>'


def contents_of(folder, top, titles):
    """The entries of a folder: its pages, then the folders in it, each with its own entries."""
    items = sorted(folder.iterdir())
    lines = [entry(titles[path], path.relative_to(top).as_posix()) for path in items if path in titles]
    for below in items:
        inner = contents_of(below, top, titles) if below.is_dir() else []
        if inner:
            lines += [entry(below.name), "<UL>", *inner, "</UL>"]
    return lines


def main():
    folder, name = Path(sys.argv[1]), sys.argv[2]
    titles = {path: title_of(path) for path in sorted(folder.rglob("*.htm*")) if path.is_file()}
    if not titles:
        sys.exit(f"{folder}: there are no pages in it")
    index = [entry(title, path.relative_to(folder).as_posix())
             for path, title in sorted(titles.items(), key=lambda item: item[1])]
    for extension, lines in ((".hhc", contents_of(folder, folder, titles)), (".hhk", index)):
        text = "\n".join(["<HTML><BODY>", "<UL>", *lines, "</UL>", "</BODY></HTML>", ""])
        (folder / (name + extension)).write_text(text, "utf-8")
    pages = [path.relative_to(folder).as_posix() for path in titles]
    text = OPTIONS.format(name=name, first=pages[0]) + "\n".join(pages) + "\n"
    (folder / (name + ".hhp")).write_text(text, "utf-8")
    print(f"{len(pages)} pages")


main()
