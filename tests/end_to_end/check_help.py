#!/usr/bin/env python3
"""The examples that `bayes help` shows are accepted by the commands they explain, on data with the variables they name."""
import pathlib
import subprocess
import sys
import tempfile

DATA = ("score,passed,errors,before,after,later,school,age,height,weight,eyes,hair\n"
        "101,1,2,3,4,5,north,30,150,60,blue,fair\n99,0,3,4,6,5,south,50,170,70,brown,dark\n")


def main(program, folder):
    bad = 0
    files = sorted(pathlib.Path(folder).glob("*.bay"))
    for file in files:
        shown = subprocess.run([program, "help", file.stem], capture_output=True, text=True, check=False)
        with tempfile.TemporaryDirectory() as scratch:
            pathlib.Path(scratch, "data.csv").write_text(DATA)
            pathlib.Path(scratch, "study.bay").write_text("DATA FILE='data.csv'.\n" + file.read_text())
            done = subprocess.run([program, "check", "study.bay"], cwd=scratch, capture_output=True, text=True,
                                  check=False)
        if done.returncode != 0 or file.read_text() not in shown.stdout:
            bad += 1
            print(file.name, done.stderr, shown.stderr, sep="\n")
    print(f"{len(files)} examples, {bad} failed")
    return 0 if files and not bad else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
