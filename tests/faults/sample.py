"""A small project, a small web and a help file in a folder of their own, and what may be left of them."""

import ctypes
import os
import shutil
import signal
import subprocess
import tempfile

PAGE = "<html><head><title>%s</title><meta name=\"keywords\" content=\"%s\"></head><body>%s</body></html>\r\n"
FILES = {
    "index.htm": PAGE % ("Start", "start", "<a href=\"sub/two.htm\">two</a><img src=\"i.gif\">"),
    "sub/two.htm": PAGE % ("Second", "two", "<link rel=stylesheet href=\"s.css\">more words"),
    "sub/s.css": "p { color: red }\r\n",
    "i.gif": "GIF89a",
}
PROJECT = ("[OPTIONS]\r\nCompiled file=help.chm\r\nContents file=a.hhc\r\nFull-text search=Yes\r\n"
           "[FILES]\r\nindex.htm\r\n")
CONTENTS = ("<UL><LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"Start\">"
            "<param name=\"Local\" value=\"index.htm\"></OBJECT></UL>\r\n")
EARLIER = b"ITSF an earlier help file"


def one_core():
    """For a child: one core, so that it works with one thread and calls come in the same order."""
    os.sched_setaffinity(0, {min(os.sched_getaffinity(0))})


def heed_signals():
    """For a child: whoever started this may ignore signals."""
    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, signal.SIG_DFL)


def adopt_orphans():
    """What a killed program has started becomes this process's own, which can wait for its end. Linux only."""
    pr_set_child_subreaper = 36
    ctypes.CDLL(None).prctl(pr_set_child_subreaper, 1, 0, 0, 0)


def wait_for_orphans():
    """Returns when nothing that a killed program has started is left."""
    try:
        while True:
            os.waitpid(-1, 0)
    except ChildProcessError:
        pass


def tree(folder):
    """Everything below the folder: bytes of files, None for folders, by path."""
    found = {}
    for above, folders, files in os.walk(folder):
        for name in folders:
            found[os.path.relpath(os.path.join(above, name), folder)] = None
        for name in files:
            path = os.path.join(above, name)
            with open(path, "rb") as file:
                found[os.path.relpath(path, folder)] = file.read()
    return found


def is_whole(data):
    """Whether the bytes are a help file that is as long as its header says."""
    if data[:4] != b"ITSF" or len(data) < 0x60 + 0x18:
        return False
    section = int.from_bytes(data[0x38:0x40], "little")
    return int.from_bytes(data[section + 8:section + 16], "little") == len(data)


class Target:
    """One program at work over an earlier result. `made` and `not_made` are its exit statuses."""

    def __init__(self, name, bin_folder, base, extra=0):
        self.name = name
        self.folder = os.path.join(base, name.replace(" ", "-"))
        self.unpacks = name in ("hh", "scrivo decompile")
        self.web = os.path.join(self.folder, "web")
        self.out = os.path.join(self.folder, "out")
        self.extra = extra  # pages more, for a run that takes its time
        program = os.path.join(bin_folder, name.split()[0])
        help_file = os.path.join(base, "whole.chm")
        self.command = {
            "hhc": [program, "--gnu", os.path.join(self.web, "help.hhp")],
            "hh": [program, "-decompile", self.out, help_file],
            "scrivo compile": [program, "compile", self.web, "-o", os.path.join(self.out, "help.chm")],
            "scrivo compile --compiler": [program, "compile", self.web, "-o", os.path.join(self.out, "help.chm"),
                                          "--compiler", os.path.join(bin_folder, "hhc")],
            "scrivo decompile": [program, "decompile", help_file, self.out],
        }[name]

    def reset(self):
        shutil.rmtree(self.folder, ignore_errors=True)
        files = dict(FILES)
        for number in range(self.extra):
            files["more/p%d.htm" % number] = PAGE % ("Page %d" % number, "k%d" % number, "words and words " * 300)
        if self.name == "hhc":
            files["help.hhp"] = PROJECT + "more\\*.htm\r\n" * (self.extra > 0)
            files["a.hhc"] = CONTENTS
        if not self.unpacks:
            for name, text in files.items():
                path = os.path.join(self.web, name)
                os.makedirs(os.path.dirname(path), exist_ok=True)
                with open(path, "w", newline="") as file:
                    file.write(text)
        os.makedirs(self.out, exist_ok=True)
        with open(self.result(), "wb") as file:
            file.write(EARLIER)
        self.before = tree(self.folder)

    def result(self):
        """The earlier file that a run replaces."""
        if self.unpacks:
            return os.path.join(self.out, "index.htm")
        return os.path.join(self.web if self.name == "hhc" else self.out, "help.chm")

    def run(self, environment=None, prefix=()):
        return subprocess.run([*prefix, *self.command], env={**os.environ, **(environment or {})},
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              timeout=60, preexec_fn=one_core)

    def learn(self):
        """Runs once without any fault, to know what a whole result is."""
        self.reset()
        done = self.run()
        if done.returncode != 0:
            raise SystemExit("%s does not work: %s" % (self.name, done.stdout.decode(errors="replace")))
        self.after = tree(self.folder)

    def damage(self, status, may_leave=(), folders_may_be_empty=False):
        """What is wrong in the folder after a run with that status; empty when nothing is."""
        wrong = []
        now = tree(self.folder)
        result = os.path.relpath(self.result(), self.folder)
        for path in self.before:
            if path not in now:
                wrong.append("%s is gone" % path)
            elif path != result and now[path] != self.before[path]:
                wrong.append("%s is not as it was" % path)
        for path, data in now.items():
            if path == result or path in self.before or path in may_leave:
                continue
            if path not in self.after:
                wrong.append("%s was left behind" % path)
            elif data is None and not folders_may_be_empty and not any(other.startswith(path + os.sep) for other in now):
                wrong.append("%s is an empty folder" % path)
            elif data != self.after[path]:
                wrong.append("%s is half" % path)
        data = now.get(result, EARLIER)
        is_new = data == self.after[result] or (not self.unpacks and is_whole(data))
        if not is_new and data != EARLIER:
            wrong.append("%s is neither the earlier file nor a whole new one" % result)
        if status == 0 and not is_new:
            wrong.append("status 0, but %s is the earlier file" % result)
        if status not in (0, None) and not self.unpacks and is_new:
            wrong.append("status %d, but %s is new" % (status, result))
        return wrong


def prepare(bin_folder, extra=0, more=()):
    """Makes the targets in a new folder, and those named in `more`. Returns them, and the folder to remove."""
    base = tempfile.mkdtemp(prefix="scrivo-faults-")
    compile_target = Target("hhc", bin_folder, base, extra)
    compile_target.learn()
    shutil.copy(compile_target.result(), os.path.join(base, "whole.chm"))
    targets = [compile_target]
    for name in ("hh", "scrivo compile", "scrivo decompile", *more):
        targets.append(Target(name, bin_folder, base, extra))
        targets[-1].learn()
    return targets, base
