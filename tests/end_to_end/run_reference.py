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


# The ten numbers of an analysis of variance: column and row.
ANOVA = [("Sum of Squares", 0), ("df", 0), ("Mean Square", 0), ("F", 0), ("Sig.", 0), ("Sum of Squares", 1),
         ("df", 1), ("Mean Square", 1), ("Sum of Squares", 2), ("df", 2)]


def columns_of(test, posterior, stats, posteriors=None):
    """The table, the column (innermost label) and the row of each expected number."""
    columns = {f"stats.{name}": (test, column, 0) for name, column in stats.items()}
    columns["lnBF"] = (test, "Bayes Factor", 0)
    columns.update({f"posterior.{name}": (posterior, column, 0)
                    for name, column in (posteriors or POSTERIOR).items()})
    return columns


def anova_columns(expect):
    """The same for one-way analysis of variance; the rows of parameters bear their names. None: no table shows it."""
    columns = {f"anova.{i}": ("ANOVA", *place) for i, place in enumerate(ANOVA)}
    columns.update({"lnBF": ("ANOVA", "Bayes Factor", 0), "R2": None, "adj_R2": None})
    for i, parameter in enumerate(expect["coefficients"]):
        label = parameter["name"].replace("=", " = ")
        columns.update({f"coefficients.{i}.{name}": ("Bayesian Estimates of Coefficients", column, i, label)
                        for name, column in POSTERIOR.items()})
    columns.update({f"error_variance.{name}": ("Bayesian Estimates of Error Variance", column, 0)
                    for name, column in POSTERIOR.items()})
    return columns


def regression_columns(expect):
    summary = "Bayes Factor Model Summary"
    columns = {**anova_columns(expect), "lnBF": (summary, "Bayes Factor", 0),
               "R2_full" if "R2_full" in expect else "R2": (summary, "R Square", 0),
               "adj_R2": (summary, "Adjusted R Square", 0)}
    columns.update({f"predicted.{name}": ("Bayesian Estimates of Predicted Response", column, 0)
                    for name, column in POSTERIOR.items()})
    columns.update({f"ftests.{i}.{name}": ("F-test Table", column, i) for i in range(len(expect.get("ftests", ())))
                    for name, column in (("F", "F"), ("df1", "df1"), ("df2", "df2"), ("sig", "Sig."))})
    return columns


# Of each file, or made from what a case expects.
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
    "regression": regression_columns,
    "anova": anova_columns,
}
LOCATIONS = {"mode", "mean", "lower", "upper"}
# What a case says beside numbers of the report.
UNSHOWN = {"tolerance", "tolerances", "status", "name", "redundant", "value", "mean_prediction_at_x0"}


def leaves(expect, path=()):
    """The expected numbers by their path, like `coefficients.2.mode`, each with the group that it stands in."""
    for key, value in expect.items() if isinstance(expect, dict) else enumerate(expect):
        if key in UNSHOWN:
            continue
        if isinstance(value, (dict, list)):
            yield from leaves(value, (*path, str(key)))
        else:
            yield ".".join((*path, str(key))), value, expect


def tolerance_of(name, expect):
    special = expect.get("tolerances", {})
    return special.get(name, special.get(name.rpartition(".")[2], expect["tolerance"]))


def agrees(name, value, expected, group, expect):
    if expected is None or value is None:
        return value is expected
    tolerance = tolerance_of(name, expect)
    if name == "lnBF":
        return abs(math.log(value) - expected) <= tolerance * max(1, abs(expected))
    if name.rpartition(".")[2] in LOCATIONS and not name.startswith("stats."):
        absolute = expect.get("tolerances", {}).get("posterior location, absolute")
        scale = math.sqrt(group["variance"] or 0)
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
    if callable(columns):
        columns = columns(case["expect"])
    failed = []
    for name, expected, group in leaves(case["expect"]):
        if columns[name] is None:
            continue
        subtype, column, row, *label = columns[name]
        found = reports.cells(report, subtype, [], [column])
        cell = found[row] if row < len(found) else {"row": [], "value": "no such cell"}
        right_row = cell["row"][-1:] == (label or cell["row"][-1:])
        if row >= len(found) or not right_row or not agrees(name, cell.get("value"), expected, group, case["expect"]):
            failed.append(f"{name}: {cell['row']} {cell.get('value')} instead of {label} {expected}")
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
