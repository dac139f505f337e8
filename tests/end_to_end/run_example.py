#!/usr/bin/env python3
"""Runs an example as a user would and holds its report against the expectations of tests/end_to_end/examples.

Their lines are those that run_scripts.py explains. NAME.expect belongs to examples/NAME/NAME.bay.
"""
import pathlib
import sys

import run_scripts


def main(program, file):
    path = pathlib.Path(file).resolve()
    folder = path.parents[3] / "examples" / path.stem
    files = {source.name: source.read_text(encoding="utf-8") for source in folder.iterdir()}
    files["study.bay"] = files.pop(f"{path.stem}.bay")
    expect = [line for line in path.read_text(encoding="utf-8").splitlines() if line.strip()]
    failed, stderr, messages = run_scripts.check(program, files, expect)
    if failed:
        print(*(f"not met: {line}" for line in failed), "standard error:", stderr, "messages:", messages, sep="\n")
    return 1 if failed or not expect else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
