#!/usr/bin/env python3
"""Holds the program's report against reference values: every case of a file that names a data file and a command.

The files under tests/data/reference say in `about` what their numbers mean and how to compare them.
"""
import json
import math
import pathlib
import sys

import report as reports

# For each file: the table and column (innermost label) of each expected number.
COLUMNS = {
    "onesample_normal": {
        "stats.n": ("One-Sample T Test", "N"),
        "stats.mean": ("One-Sample T Test", "Mean"),
        "stats.sd": ("One-Sample T Test", "Std. Deviation"),
        "stats.em": ("One-Sample T Test", "Std. Error Mean"),
        "stats.t": ("One-Sample T Test", "t"),
        "stats.df": ("One-Sample T Test", "df"),
        "stats.sig": ("One-Sample T Test", "Sig.(2-tailed)"),
        "lnBF": ("One-Sample T Test", "Bayes Factor"),
        "posterior.mode": ("Posterior Distribution Characterization for One-Sample Mean", "Mode"),
        "posterior.mean": ("Posterior Distribution Characterization for One-Sample Mean", "Mean"),
        "posterior.variance": ("Posterior Distribution Characterization for One-Sample Mean", "Variance"),
        "posterior.lower": ("Posterior Distribution Characterization for One-Sample Mean", "Lower Bound"),
        "posterior.upper": ("Posterior Distribution Characterization for One-Sample Mean", "Upper Bound"),
    },
}
LOCATIONS = {"posterior.mode", "posterior.mean", "posterior.lower", "posterior.upper"}


def flatten(expect):
    for key in ("stats", "posterior"):
        for name, value in (expect.get(key) or {}).items():
            yield f"{key}.{name}", value
    if "lnBF" in expect:
        yield "lnBF", expect["lnBF"]


def tolerance_of(name, expect):
    special = expect.get("tolerances", {})
    return special.get(name, special.get(name.rpartition(".")[2], expect["tolerance"]))


def agrees(name, value, expected, expect):
    if expected is None or value is None:
        return value is expected
    tolerance = tolerance_of(name, expect)
    if name == "lnBF":
        return abs(math.log(value) - expected) <= tolerance * max(1, abs(expected))
    if name in LOCATIONS:
        absolute = expect.get("tolerances", {}).get("posterior location, absolute")
        scale = math.sqrt(expect["posterior"]["variance"] or 0)
        return abs(value - expected) <= (absolute or tolerance * max(abs(expected), scale))
    return abs(value - expected) <= tolerance * abs(expected)


def check(program, data, columns, case):
    source = case["input"]
    commands = f"DATA FILE='{data / pathlib.Path(source['data_file']).name}'.\n"
    if source.get("weight"):
        commands += f"WEIGHT BY {source['weight']}.\n"
    commands += source["command"]
    status, report, stderr = reports.run(program, ["-c", commands], data)
    if report is None or status != 0:
        return [f"status {status}: {stderr}"]
    failed = []
    for name, expected in flatten(case["expect"]):
        title, column = columns[name]
        found = reports.cells(report, title, [], [column])
        value = found[0]["value"] if len(found) == 1 else "no such cell"
        if len(found) != 1 or not agrees(name, value, expected, case["expect"]):
            failed.append(f"{name}: {value} instead of {expected}")
    return failed


def main(program, file):
    path = pathlib.Path(file)
    columns = COLUMNS[path.stem]
    cases = [case for case in json.loads(path.read_text())["cases"] if "command" in case["input"]]
    bad = 0
    for case in cases:
        failed = check(program, path.parent / "data", columns, case)
        if failed:
            bad += 1
            print(case["name"], *(f"  {line}" for line in failed), sep="\n")
    print(f"{len(cases)} cases, {bad} failed")
    return 0 if cases and not bad else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
