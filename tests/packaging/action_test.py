#!/usr/bin/python3
"""Runs the action for GitHub, step by step as a runner does, and holds the ready workflows against it.

action_test.py FOLDER: the programs are in FOLDER. The last line is the sum: N passed, N failed
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import traceback

import yaml

TOP = pathlib.Path(__file__).resolve().parents[2]
PROGRAMS = pathlib.Path(sys.argv[1]).resolve()
ACTION = yaml.safe_load((TOP / "action.yml").read_text())
CALL = "OWNER/scrivo@main"  # how the workflows name the action


def filled_in(text, values):
    """The text with the value of each ${{ name }}; a name that is not among them is an error."""
    return re.sub(r"\$\{\{ *([\w.]+) *\}\}", lambda found: values[found.group(1)], text)


class Run:
    """What came of the action with these inputs, in the folder that a workflow runs in."""

    def __init__(self, folder, **inputs):
        values = {"github.action_path": str(TOP)}
        for name, told in ACTION["inputs"].items():
            assert name in inputs or not told["required"], f"the input {name} is not given"
            values[f"inputs.{name}"] = inputs.get(name, told.get("default", ""))
        said = folder / "said-by-steps"
        self.status, self.log = 0, ""
        for step in ACTION["runs"]["steps"]:
            said.write_text("")
            environment = {name: filled_in(text, values) for name, text in step.get("env", {}).items()}
            assert step["shell"] == "bash"
            run = subprocess.run(
                ["bash", "--noprofile", "--norc", "-eo", "pipefail", "-c", filled_in(step["run"], values)], cwd=folder,
                env={**os.environ, "PATH": f"{PROGRAMS}:{os.environ['PATH']}", "GITHUB_OUTPUT": str(said), **environment},
                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
            self.status, self.log = run.returncode, self.log + run.stdout
            for line in said.read_text().splitlines():
                name, _, value = line.partition("=")
                values[f"steps.{step['id']}.outputs.{name}"] = value
            if self.status != 0:
                return
        self.file = filled_in(ACTION["outputs"]["file"]["value"], values)

    def annotations(self):
        return [line for line in self.log.splitlines() if line.startswith("::")]


def is_help_file(path):
    return path.read_bytes().startswith(b"ITSF")


def make_sources(folder):
    (folder / "web").mkdir()
    (folder / "web/index.htm").write_text(
        '<title>Home</title><meta name="keywords" content="100%"><a href="gone.htm">x</a>')
    (folder / "project.hhp").write_text("[OPTIONS]\nCompiled file=made.chm\n[FILES]\nweb/index.htm\nnone.htm\n")


DEAD_LINK = '::warning file=web/index.htm,line=1::The linked file "gone.htm" does not exist.'
MISSING_FILE = "::error::Compilation failed while compiling none.htm."


def a_web_becomes_a_help_file(folder):
    run = Run(folder, source="web", output="out/a b.chm")
    assert run.annotations() == [DEAD_LINK], run.log
    assert pathlib.Path(run.file) == folder / "out/a b.chm" and is_help_file(pathlib.Path(run.file)), run.file


def arguments_are_parted_at_blanks(folder):
    run = Run(folder, source="web", output="strict.chm", arguments="--title  Manual --strict")
    assert run.status == 1 and DEAD_LINK in run.annotations(), run.log
    assert run.annotations()[-1] == "::error::web was not compiled (status 1)", run.log


def a_project_becomes_the_file_that_it_names(folder):
    run = Run(folder, source="project.hhp", arguments="--jobs 1")
    assert sorted(run.annotations()) == sorted([MISSING_FILE, DEAD_LINK]), run.log
    assert is_help_file(folder / "made.chm") and pathlib.Path(run.file).resolve() == (folder / "made.chm").resolve(), run.file


def a_project_becomes_the_file_that_was_asked_for(folder):
    run = Run(folder, source="project.hhp", output="out/manual.chm")
    assert run.status == 0 and run.file == "out/manual.chm" and is_help_file(folder / run.file), run.log


def what_cannot_be_compiled_fails(folder):
    run = Run(folder, source="missing.hhp")
    assert run.status == 1 and run.annotations()[-1] == "::error::missing.hhp was not compiled (status 1)", run.log


def workflows_call_the_action_as_it_is(_):
    names = sorted(path.name for path in (TOP / "docs/ci").glob("*.yml"))
    assert names == ["doxygen.yml", "sphinx.yml", "web.yml"], names
    for name in names:
        text = (TOP / "docs/ci" / name).read_text()
        steps = [step for job in yaml.safe_load(text)["jobs"].values() for step in job["steps"]]
        calls = [step for step in steps if step.get("uses") == CALL]
        assert len(calls) == 1, name
        given = set(calls[0]["with"])
        needed = {key for key, told in ACTION["inputs"].items() if told["required"]}
        assert needed <= given <= set(ACTION["inputs"]), (name, given)
        taken = set(re.findall(r"steps\.%s\.outputs\.(\w+)" % calls[0]["id"], text))
        assert taken and taken <= set(ACTION["outputs"]), (name, taken)


def main():
    passed = failed = 0
    for test in (a_web_becomes_a_help_file, arguments_are_parted_at_blanks, a_project_becomes_the_file_that_it_names,
                 a_project_becomes_the_file_that_was_asked_for, what_cannot_be_compiled_fails,
                 workflows_call_the_action_as_it_is):
        with tempfile.TemporaryDirectory() as place:
            folder = pathlib.Path(place)
            make_sources(folder)
            try:
                test(folder)
                passed += 1
            except Exception:  # whatever it is, the other tests go on
                failed += 1
                traceback.print_exc(file=sys.stdout)
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


sys.exit(main())
