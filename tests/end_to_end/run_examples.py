#!/usr/bin/env python3
"""Runs a command file of examples/ and compares what the terminal shows with the approved text.

With BAYES_APPROVE=1 in the environment, what is shown becomes the approved text: read the difference before it is committed.
"""
import difflib
import os
import pathlib
import subprocess
import sys


def main(program, commands, approved):
    commands, approved = pathlib.Path(commands), pathlib.Path(approved)
    done = subprocess.run([program, "run", commands.name, "--seed", "1"], cwd=commands.parent, capture_output=True,
                          text=True, timeout=300, env={**os.environ, "LC_ALL": "C.UTF-8"})
    if done.returncode != 0:
        print(done.stderr)
        return 1
    if os.environ.get("BAYES_APPROVE") == "1":
        approved.write_text(done.stdout, encoding="utf-8")
    expected = approved.read_text(encoding="utf-8") if approved.exists() else ""
    difference = list(difflib.unified_diff(expected.splitlines(), done.stdout.splitlines(), "approved", "shown",
                                           lineterm=""))
    print("\n".join(difference))
    return 1 if difference or not expected else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
