#!/usr/bin/env python3
"""Asks bash, zsh and fish to complete command lines, and holds the options against those that the programs print.

completion_test.py FOLDER: the programs are in FOLDER. The last line is the sum: N passed, N failed
"""
import os
import pathlib
import pty
import re
import select
import signal
import subprocess
import sys
import tempfile

COMPLETION = pathlib.Path(__file__).resolve().parents[2] / "packaging" / "completion"
PROGRAMS = pathlib.Path(sys.argv[1]).resolve()
LONGEST_WAIT = 60  # seconds until a shell that says nothing is given up

# Each shell makes every match a word of the command line, and then runs it: the program's place is taken by a function
# that prints its arguments.
PRINTER = "%s() { printf '%%s\\n' '' first-argument \"$@\" last-argument; }\n"
BASH = "PS1=; bind 'set bell-style none'; bind '\"\\C-g\": insert-completions'\n"
ZSH = """PS1=; unsetopt zle_bracketed_paste prompt_cr prompt_sp list_beep beep; fpath=(%s $fpath)
autoload -Uz compinit; compinit -u -D; zle -C insert-all complete-word _generic; bindkey '^g' insert-all
zstyle ':completion:insert-all::::' completer _all_matches _complete; zstyle ':completion:insert-all:*' insert yes
zstyle ':completion:*' menu no
"""


class Shell:
    """An interactive shell on a terminal of its own."""

    def __init__(self, command, setup, folder):
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.chdir(folder)
            os.environ.update(TERM="dumb", COLUMNS="5000", HOME=str(folder), LC_ALL="C.UTF-8")
            os.execvp(command[0], command)
        (folder / "setup").write_text(setup)
        self.run("stty columns 5000; . ./setup; rm setup")

    def run(self, text):
        """Types a line, and gives what is printed until a mark that is printed behind it."""
        os.write(self.terminal, (text + "\n" + "printf '%s-%s\\n' all told\n").encode())
        printed = b""
        while b"all-told" not in printed:
            if not select.select([self.terminal], [], [], LONGEST_WAIT)[0]:
                sys.exit(f"the shell does not answer; it printed: {printed!r}")
            printed += os.read(self.terminal, 65536)
        return printed.decode().replace("\r", "")

    def complete(self, line):
        """The words that come of completing at the end of `line`, other than those that it begins with."""
        given = line.rpartition(" ")[0].split(" ")[1:]
        said = self.run(line + "\a")
        words = re.search(r"\nfirst-argument\n(.*)last-argument\n", said, re.S)
        if not words:
            sys.exit(f"{line!r} gave no arguments: {said!r}")
        words = words.group(1).splitlines()
        unchanged = line.rpartition(" ")[2]
        return [word for word in words[len(given):] if word and word != unchanged]

    def end(self):
        os.kill(self.process, signal.SIGKILL)
        os.waitpid(self.process, 0)
        os.close(self.terminal)


class Fish:
    """Fish completes a line that is given to it."""

    def __init__(self, folder):
        self.folder = folder
        self.environment = dict(os.environ, PATH=f"{PROGRAMS}:{os.environ['PATH']}", HOME=str(folder),
                                XDG_CONFIG_HOME="/nowhere", XDG_DATA_HOME="/nowhere")

    def complete(self, line):
        script = f"set fish_complete_path '{COMPLETION}'; complete -C '{line}'"
        said = subprocess.run(["fish", "--no-config", "-c", script], cwd=self.folder,
                              env=self.environment, capture_output=True, text=True, check=True).stdout
        return [word.split("\t")[0] for word in said.splitlines()]

    def end(self):
        pass


def options_in(text):
    """The options of the rows of a help text."""
    options = set()
    for row in re.finditer(r"^  (?:    |(-\w), )?(--?[a-z][a-z-]*)(?: [A-Z]+)?(?:  |$)", text, re.M):
        options.update(name for name in row.groups() if name)
    return options


def printed_by(*command):
    run = subprocess.run([PROGRAMS / command[0], *command[1:]], capture_output=True, text=True, check=False)
    return run.stdout + run.stderr


class Sum:
    passed = failed = 0

    def expect(self, name, line, found, wanted):
        if sorted(found) == sorted(wanted):
            self.passed += 1
            return
        self.failed += 1
        print(f"{name}: {line!r} is completed to {sorted(found)}, and ought to be to {sorted(wanted)}")


def check(name, shell, total):
    def expect(line, wanted):
        """Some shells end a folder's name with a slash, and some offer options where an operand may stand."""
        found = [word.rstrip("/") for word in shell.complete(line)]
        if not line.rpartition(" ")[2].startswith("-"):
            found = [word for word in found if not word.startswith("-")]
        total.expect(name, line, found, wanted)

    def offered(line):
        """Options with one hyphen and with two may be shown together or apart."""
        both = shell.complete(line + "-") + shell.complete(line + "--")
        return {word[:-1] if word.endswith("=") else word for word in both}

    overview = printed_by("scrivo", "--help")
    commands = re.findall(r"^  ([a-z]+) ", overview, re.M)
    general = {"-h", "--help"}
    total.expect(name, "scrivo ", [w for w in shell.complete("scrivo ") if not w.startswith("-")], commands + ["help"])
    total.expect(name, "scrivo -", offered("scrivo "), general | {"--version"})
    for command in commands:
        wanted = options_in(printed_by("scrivo", command, "--help")) | general
        total.expect(name, f"scrivo {command} -", offered(f"scrivo {command} "), wanted)
    total.expect(name, "hhc -", offered("hhc "), options_in(printed_by("hhc", "--help")) | {"-h"})
    total.expect(name, "hh -", offered("hh "), options_in(printed_by("hh", "--help")) | {"-decompile", "-h"})

    folders = ["web", "my web"]
    help_files = ["Old.CHM", "new.chm"]
    expect("scrivo comp", ["compile"])
    expect("scrivo help comp", ["compile"])
    expect("scrivo compile ", folders)
    expect("scrivo compile --no-index ", folders)
    expect("scrivo compile --contents ", ["auto", "navigation", "folders"])
    expect("scrivo compile --contents=n", ["--contents=navigation"])
    expect("scrivo tree --code-page koi", ["koi8-r"])
    expect("scrivo tree --language zh", ["zh-CN", "zh-TW"])
    expect("scrivo compile --index ti", ["titles"])
    expect("scrivo compile --index titles,h", ["titles,headings"])
    expect("scrivo compile -o ", folders + help_files)
    expect("scrivo info ", folders + help_files)
    expect("scrivo export ", folders + help_files + ["book.hhp"])
    expect("scrivo text -o ", folders)
    expect("scrivo decompile --quiet ne", ["new.chm"])
    expect("scrivo nonsense ", [])
    expect("hhc ", folders + ["book.hhp"])
    expect("hhc --jobs 2 --gnu bo", ["book.hhp"])
    expect("scrivo compile web ", [])
    expect("scrivo compile --title web ", folders)
    expect("scrivo decompile new.chm ", folders)
    expect("scrivo export new.chm ", folders)
    expect("hh -decompile ", folders)
    expect("hh -decompile web ", folders + help_files)


def main():
    total = Sum()
    with tempfile.TemporaryDirectory() as place:
        folder = pathlib.Path(place)
        (folder / "web").mkdir()
        (folder / "my web").mkdir()
        for file in ("new.chm", "Old.CHM", "book.hhp", "notes.txt"):
            (folder / file).touch()
        printers = "".join(PRINTER % program for program in ("scrivo", "hhc", "hh"))
        sources = "".join(f". '{COMPLETION}/{program}.bash'\n" for program in ("scrivo", "hhc", "hh"))
        for name, start in (
                ("bash", lambda: Shell(["bash", "--norc", "--noprofile", "-i"], BASH + printers + sources, folder)),
                ("zsh", lambda: Shell(["zsh", "-f", "-i"], ZSH % COMPLETION + printers, folder)),
                ("fish", lambda: Fish(folder))):
            shell = start()
            check(name, shell, total)
            shell.end()
    print(f"{total.passed} passed, {total.failed} failed")
    return 1 if total.failed else 0


sys.exit(main())
