#!/usr/bin/env python3
"""Two runs at once are asked to end in the middle of a query that sorts more than memory holds: each ends soon, says so and
leaves nothing in the temporary folder that they share.

    run_interrupt.py PROGRAM
"""
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

ROWS = 30_000
SECONDS = 60  # far more than it takes
STUDY = """DATA FILE='x.csv' SQL="SELECT a.x AS x FROM data a, data b ORDER BY hash(a.x * 7919 + b.x)".
BAYES ONESAMPLE /INFERENCE DISTRIBUTION=NORMAL VARIABLES=x ANALYSIS=POSTERIOR.
"""


def wait_for(condition, what):
    end = time.monotonic() + SECONDS
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"{what}: not within {SECONDS} seconds")
        time.sleep(0.02)


def start(program, folder, temporary):
    command = [program, "run", "study.bay", "--memory", "100MB", "--threads", "2", "-o", "report.txt"]
    return subprocess.Popen(command, cwd=folder, env={**os.environ, "TMPDIR": str(temporary)}, stderr=subprocess.PIPE,
                            text=True)


def check(program):
    signal.signal(signal.SIGINT, signal.default_int_handler)  # where it is ignored the programs would ignore it, too
    with tempfile.TemporaryDirectory() as name:
        folder, temporary = pathlib.Path(name, "study"), pathlib.Path(name, "temporary")
        folder.mkdir()
        temporary.mkdir()
        (folder / "x.csv").write_text("x\n" + "".join(f"{i}\n" for i in range(ROWS)))
        (folder / "study.bay").write_text(STUDY)
        runs = [start(program, folder, temporary) for _ in range(2)]
        try:
            wait_for(lambda: len([*temporary.glob("*/*")]) > 1, "temporary files of the queries")
            wait_for(lambda: len([*temporary.iterdir()]) == 2, "a temporary folder for each run")
            for run, which in zip(runs, (signal.SIGINT, signal.SIGTERM)):
                run.send_signal(which)
            for run in runs:
                _, errors = run.communicate(timeout=SECONDS)
                assert run.returncode == 1, f"status {run.returncode}"
                assert "interrupted" in errors, f"it should say so: {errors}"
            left = [*temporary.rglob("*")]
            assert not left, f"left behind: {left}"
        finally:
            for run in runs:
                run.kill()
                run.wait()


if __name__ == "__main__":
    check(sys.argv[1])
