#!/usr/bin/env python3
"""Runs a command file of examples/ and compares what the terminal shows with the approved text.

The study runs in a copy of its folder. Comments of the form "#   $ command" are run behind it, and what they show is
part of the text.

With BAYES_APPROVE=1 in the environment, what is shown becomes the approved text: read the difference before it is committed.
"""
import difflib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile


MARK = "#   $ "


def run(command, folder, **options):
    return subprocess.run(command, cwd=folder, capture_output=True, text=True, timeout=300,
                          env={**os.environ, "LC_ALL": "C.UTF-8"}, **options)


def show(program, commands):
    """What is shown, or nothing and what went wrong."""
    with tempfile.TemporaryDirectory() as name:
        folder = shutil.copytree(commands.parent, pathlib.Path(name, "study"))
        steps = [run([program, "run", commands.name, "--seed", "1"], folder)]
        for line in commands.read_text(encoding="utf-8").splitlines():
            if line.startswith(MARK) and not steps[-1].returncode:
                step = run(line[len(MARK):], folder, shell=True)
                step.stdout = f"\n{line[len(MARK) - 2:]}\n{step.stdout}"
                steps.append(step)
    failed = "".join(step.stderr for step in steps if step.returncode)
    return "" if failed or steps[-1].returncode else "".join(step.stdout for step in steps), failed


def main(program, commands, approved):
    commands, approved = pathlib.Path(commands), pathlib.Path(approved)
    shown, failed = show(program, commands)
    if not shown:
        print(failed)
        return 1
    if os.environ.get("BAYES_APPROVE") == "1":
        approved.write_text(shown, encoding="utf-8")
    expected = approved.read_text(encoding="utf-8") if approved.exists() else ""
    difference = list(difflib.unified_diff(expected.splitlines(), shown.splitlines(), "approved", "shown", lineterm=""))
    print("\n".join(difference))
    return 1 if difference or not expected else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
