#!/usr/bin/env python3
"""Holds the program's report against reference values: every case of a file that names a data file and a command.

The files under tests/data/reference say in `about` what their numbers mean and how to compare them.
"""
import json
import math
import pathlib
import sys

import report as reports

TESTS = {"n": "N", "mean": "Mean", "sd": "Std. Deviation", "em": "Std. Error Mean", "t": "t", "df": "df",
         "sig": "Sig.(2-tailed)"}
POSTERIOR = {"mode": "Mode", "mean": "Mean", "variance": "Variance", "lower": "Lower Bound", "upper": "Upper Bound"}


def columns_of(test, posterior, stats, posteriors=None):
    """The table, the column (innermost label) and the row of each expected number."""
    columns = {f"stats.{name}": (test, column, 0) for name, column in stats.items()}
    columns["lnBF"] = (test, "Bayes Factor", 0)
    columns.update({f"posterior.{name}": (posterior, column, 0)
                    for name, column in (posteriors or POSTERIOR).items()})
    return columns


COLUMNS = {
    "onesample_normal": columns_of("One-Sample T Test",
                                   "Posterior Distribution Characterization for One-Sample Mean", TESTS),
    "onesample_binomial": columns_of("Bayes-Factor for Binomial Proportion Test",
                                     "Posterior Distribution Characterization for Binomial Inference", {},
                                     {**POSTERIOR, "variance": "Var."}),
    "onesample_poisson": columns_of("Bayes-Factor for Poisson Rate Test",
                                    "Posterior Distribution Characterization for Poisson Inference",
                                    {"n": "N", "min": "min.", "max": "max."}, {**POSTERIOR, "variance": "Var."}),
    "related": columns_of("Related-Sample T Test",
                          "Posterior Distribution Characterization for Related-Sample Mean Difference",
                          {**TESTS, "mean": "Mean Difference"}),
    "independent": {
        **columns_of("Bayes-Factor Independent-Sample Test",
                     "Posterior Distribution Characterization for Independent-Sample Mean",
                     {"diff": "Mean Difference", "se_diff": "Pooled Std. Error Difference", "t": "t", "df": "df",
                      "sig": "Sig.(2-tailed)"}),
        **{f"stats.{name}{group}": ("Group Statistics", TESTS[name], group - 1)
           for name in ("n", "mean", "sd", "em") for group in (1, 2)},
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
        subtype, column, row = columns[name]
        found = reports.cells(report, subtype, [], [column])
        value = found[row]["value"] if len(found) > row else "no such cell"
        if len(found) <= row or not agrees(name, value, expected, case["expect"]):
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
