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


def places_of(test, posterior, stats, posteriors=None):
    """Where each expected number stands: table, row labels, column labels, and which of such cells it is."""
    places = {f"stats.{name}": (test, [], [column], 0) for name, column in stats.items()}
    places["lnBF"] = (test, [], ["Bayes Factor"], 0)
    places.update({f"posterior.{name}": (posterior, [], [column], 0)
                   for name, column in (posteriors or POSTERIOR).items()})
    return places


def anova_places(expect, _):
    """The same for one-way analysis of variance; the rows of parameters bear their names. None: no table shows it."""
    places = {f"anova.{i}": ("ANOVA", [], [column], row) for i, (column, row) in enumerate(ANOVA)}
    places.update({"lnBF": ("ANOVA", [], ["Bayes Factor"], 0), "R2": None, "adj_R2": None})
    for i, parameter in enumerate(expect["coefficients"]):
        label = parameter["name"].replace("=", " = ")
        places.update({f"coefficients.{i}.{name}": ("Bayesian Estimates of Coefficients", [label], [column], 0)
                       for name, column in POSTERIOR.items()})
    places.update({f"error_variance.{name}": ("Bayesian Estimates of Error Variance", [], [column], 0)
                   for name, column in POSTERIOR.items()})
    return places


def regression_places(expect, path):
    summary = "Bayes Factor Model Summary"
    places = {**anova_places(expect, path), "lnBF": (summary, [], ["Bayes Factor"], 0),
              "R2_full" if "R2_full" in expect else "R2": (summary, [], ["R Square"], 0),
              "adj_R2": (summary, [], ["Adjusted R Square"], 0)}
    places.update({f"predicted.{name}": ("Bayesian Estimates of Predicted Response", [], [column], 0)
                   for name, column in POSTERIOR.items()})
    places.update({f"ftests.{i}.{name}": ("F-test Table", [], [column], i) for i in range(len(expect.get("ftests", ())))
                   for name, column in (("F", "F"), ("df1", "df1"), ("df2", "df2"), ("sig", "Sig."))})
    return places


def levels_of(path):
    """The categories of the first two columns of a data file, in the order of the reference tables: as they come."""
    rows = [line.split(",") for line in path.read_text().splitlines()[1:]]
    return [list(dict.fromkeys(row[column] for row in rows)) for column in (0, 1)]


def loglinear_places(_, path):
    test = "Test of Independence"
    rows, columns = levels_of(path)
    places = {"lnBF": (test, ["Bayes Factor"], ["Value"], 0)}
    for name, row in (("chisq", "Pearson Chi-Square"), ("lr", "Likelihood Ratio"), ("yates", "Continuity Correction")):
        for part, column in (("value", "Value"), ("df", "df"), ("sig", "Asymptotic Sig.(2-sided)")):
            places[f"classical.{name}.{part}"] = (test, [row], [column], 0)
    for name, sides in (("two_sided", "2-sided"), ("one_sided", "1-sided")):
        places[f"classical.fisher.{name}"] = (test, ["Fisher's Exact Test"], [f"Exact Sig.({sides})"], 0)
    for i, row in enumerate(rows):
        for j, column in enumerate(columns):
            places[f"classical.expected.{i}.{j}"] = ("Category Tabulation", [row, "Expected Count"], [column], 0)
            places.update({f"interactions.{i * len(columns) + j}.{name}":
                           ("Posterior Distribution Characterization of Simulated Interactions", [f"{row}, {column}"],
                            [label], 0) for name, label in {**POSTERIOR, "median": "Median"}.items()})
    return places


CORRELATIONS = "Bayes Factor Inference on Pairwise Correlations"

# Of each file, or made from what a case expects and its data file.
PLACES = {
    "onesample_normal": places_of("One-Sample T Test",
                                  "Posterior Distribution Characterization for One-Sample Mean", TESTS),
    "onesample_binomial": places_of("Bayes-Factor for Binomial Proportion Test",
                                    "Posterior Distribution Characterization for Binomial Inference", {},
                                    {**POSTERIOR, "variance": "Var."}),
    "onesample_poisson": places_of("Bayes-Factor for Poisson Rate Test",
                                   "Posterior Distribution Characterization for Poisson Inference",
                                   {"n": "N", "min": "min.", "max": "max."}, {**POSTERIOR, "variance": "Var."}),
    "related": places_of("Related-Sample T Test",
                         "Posterior Distribution Characterization for Related-Sample Mean Difference",
                         {**TESTS, "mean": "Mean Difference"}),
    "independent": {
        **places_of("Bayes-Factor Independent-Sample Test",
                    "Posterior Distribution Characterization for Independent-Sample Mean",
                    {"diff": "Mean Difference", "se_diff": "Pooled Std. Error Difference", "t": "t", "df": "df",
                     "sig": "Sig.(2-tailed)"}),
        **{f"stats.{name}{group}": ("Group Statistics", [], [TESTS[name]], group - 1)
           for name in ("n", "mean", "sd", "em") for group in (1, 2)},
    },
    "regression": regression_places,
    "anova": anova_places,
    # The first count is the first variable's own, on the diagonal; the pair's stands beside it.
    "correlation": {
        "stats.n": (CORRELATIONS, ["N"], [], 1),
        **{f"stats.{name}": (CORRELATIONS, [f"{coefficient} Correlation"], [], 0)
           for name, coefficient in (("r", "Pearson"), ("spearman", "Spearman"), ("tau", "Kendall"))},
        "lnBF": (CORRELATIONS, ["Bayes Factor"], [], 0),
        **{f"{posterior}.{name}": ("Posterior Distribution Characterization for Pairwise Correlations", [label], [], 0)
           for posterior in ("posterior", "posterior_rho_s") for name, label in POSTERIOR.items()},
    },
    "loglinear": loglinear_places,
}
LOCATIONS = {"mode", "mean", "median", "lower", "upper"}
# What a case says beside numbers of the report: notes on the case, intermediate numbers, numbers in a footnote's text.
UNSHOWN = {"tolerance", "tolerances", "status", "name", "redundant", "value", "mean_prediction_at_x0", "T",
           "posterior_latent_rho", "lower_tail", "upper_tail", "cells_below_5", "min_expected"}
# Five Monte Carlo standard errors of 10,000 draws, in standard deviations (the variance: relative). The limits of a
# simultaneous interval are far quantiles.
SIMULATED = {"mean": 0.05, "median": 0.063, "variance": 0.07, "lower": 0.4, "upper": 0.4}


def leaves(expect, path=()):
    """The expected numbers by their path, like `coefficients.2.mode`, each with the group that it stands in."""
    for key, value in expect.items() if isinstance(expect, dict) else enumerate(expect):
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
    statistic = name.rpartition(".")[2]
    if name.startswith("interactions."):
        variance = group["variance"]
        unit = variance if statistic == "variance" else math.sqrt(variance)
        return abs(value - expected) <= SIMULATED[statistic] * unit
    if name == "lnBF":
        return value > 0 and abs(math.log(value) - expected) <= tolerance * max(1, abs(expected))
    if statistic in LOCATIONS and not name.startswith("stats."):
        absolute = expect.get("tolerances", {}).get("posterior location, absolute")
        scale = math.sqrt(group["variance"] or 0)
        return abs(value - expected) <= (absolute or tolerance * max(abs(expected), scale))
    return abs(value - expected) <= tolerance * abs(expected)


def check(program, data, places, case):
    source = case["input"]
    path = data / pathlib.Path(source["data_file"]).name
    commands = f"DATA FILE='{path}'.\n"
    if source.get("weight"):
        commands += f"WEIGHT BY {source['weight']}.\n"
    commands += source["command"]
    status, report, stderr = reports.run(program, ["-c", commands, "--seed", "1"], data)
    if report is None or status != 0:
        return [f"status {status}: {stderr}"]
    if callable(places):
        places = places(case["expect"], path)
    failed = []
    for name, expected, group in leaves(case["expect"]):
        if name not in places and UNSHOWN.intersection(name.split(".")) or places[name] is None:
            continue
        table, row, column, number = places[name]
        found = reports.cells(report, table, row, column)
        if number >= len(found) or not agrees(name, found[number].get("value"), expected, group, case["expect"]):
            failed.append(f"{name}: {[cell.get('value') for cell in found]}[{number}] instead of {expected}")
    return failed


def main(program, file):
    path = pathlib.Path(file).resolve()
    places = PLACES[path.stem]
    cases = [case for case in json.loads(path.read_text())["cases"] if "command" in case["input"]]
    bad = 0
    for case in cases:
        failed = check(program, path.parent / "data", places, case)
        if failed:
            bad += 1
            print(case["name"], *(f"  {line}" for line in failed), sep="\n")
    print(f"{len(cases)} cases, {bad} failed")
    return 0 if cases and not bad else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
