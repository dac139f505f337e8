#!/usr/bin/env python3
"""The model files, read by a reader of their own, predict what was saved, case by case.

    check_models.py PROGRAM FOLDER_OF_READER
"""
import csv
import math
import pathlib
import sys
import tempfile

import models

# Bounds and variance come from the scales of uncentred parameters, which cancel where covariates lie far from zero.
TOLERANCE = {"mean": 1e-12, "variance": 1e-10, "lower": 1e-9, "upper": 1e-9}
COLUMNS = {"mean": "Mode_1", "variance": "Variance_1", "lower": "CIMeanPredictedLower_1",
           "upper": "CIMeanPredictedUpper_1"}
VARIABLES = {"x": "x", "z": "z", "g": "g", "n": "n", "t": "twice", "f": "far"}


def is_weightless(row, needs):
    """Without a weight that counts a case is in no pass of the program; a reader of the file knows no weights."""
    frequency = "w" in needs and (row["w"] == "" or round(float(row["w"])) <= 0)
    return frequency or ("v" in needs and (row["v"] == "" or float(row["v"]) <= 0))


def is_incomplete(row, needs):
    return any(row[VARIABLES[letter]] in ("", "-99", "-99.0", "-9", "-9.0") for letter in needs if letter in VARIABLES)


def differences(row, predicted, needs):
    if is_weightless(row, needs) or is_incomplete(row, needs):
        if any(row[name] for name in models.SAVED):
            yield "a case that can't be scored has values"
        return
    if (predicted is None) != (row["Mode_1"] == ""):
        yield f"predicted {predicted}, saved {row['Mode_1'] or 'nothing'}"
        return
    for key, column in COLUMNS.items() if predicted else ():
        if (key in predicted) != (row[column] != ""):
            yield f"{column}: predicted {predicted.get(key)}, saved {row[column] or 'nothing'}"
        elif key in predicted and not math.isclose(predicted[key], float(row[column]), rel_tol=TOLERANCE[key],
                                                   abs_tol=TOLERANCE[key]):
            yield f"{column}: predicted {predicted[key]!r}, saved {row[column]}"
    if row["MeanPredicted_1"] not in ("", row["Mode_1"]):
        yield "mean and mode differ"


def rows_of(folder, name):
    with open(pathlib.Path(folder, name + ".csv"), encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file))


def check_saved(folder, reader):
    for name, *_, needs in models.MODELS:
        rows, model = rows_of(folder, name), reader.Model(pathlib.Path(folder, name + ".xml"))
        scored = 0
        for number, row in enumerate(rows, 1):
            predicted = model.score(row)
            scored += predicted is not None and row["Mode_1"] != ""
            yield from (f"{name}, case {number}: {text}" for text in differences(row, predicted, needs))
        if scored < 150 or not any(row["y"] == "" and row["Mode_1"] for row in rows):
            yield f"{name}: {scored} cases were compared, or none without a response"


def check_definition(folder):
    """One covariate: the textbook's formulas for the mean, the variance of the response and the interval."""
    rows = rows_of(folder, "line")
    points = [(float(r["x"]), float(r["y"])) for r in rows if r["y"] and r["x"] and float(r["x"]) != -99]
    n = len(points)
    mean_x, mean_y = (math.fsum(values) / n for values in zip(*points))
    sxx = math.fsum((x - mean_x) ** 2 for x, _ in points)
    slope = math.fsum((x - mean_x) * (y - mean_y) for x, y in points) / sxx
    s2 = math.fsum((y - mean_y - slope * (x - mean_x)) ** 2 for x, y in points) / (n - 2)
    for number, row in enumerate(rows, 1):
        if not row["x"] or float(row["x"]) == -99:
            continue
        x = float(row["x"])
        leverage = 1 / n + (x - mean_x) ** 2 / sxx
        expected = {"MeanPredicted_1": mean_y + slope * (x - mean_x), "Variance_1": (n - 2) / (n - 4) * s2 * (1 + leverage)}
        for column, value in expected.items():
            if not math.isclose(float(row[column]), value, rel_tol=1e-11):
                yield f"line, case {number}: {column} is {row[column]}, by definition {value!r}"


def check_parameters(folder, program, reader):
    """A parameter file predicts the same means and holds nothing else."""
    means = {name: [row["Mode_1"] for row in rows_of(folder, name)] for name, *_ in models.MODELS}
    models.run(program, folder, "PARAMETER")
    for name, *_, needs in models.MODELS:
        model = reader.Model(pathlib.Path(folder, name + ".xml"))
        for number, (row, mean) in enumerate(zip(rows_of(folder, name), means[name]), 1):
            predicted = model.score(row)
            if mean and (set(predicted) != {"mean"} or not math.isclose(predicted["mean"], float(mean), rel_tol=1e-12)):
                yield f"{name}, case {number}: parameters predict {predicted}, saved {mean}"


def main(program, reader_folder):
    sys.path.insert(0, reader_folder)
    import score as reader
    with tempfile.TemporaryDirectory() as folder:
        done = models.run(program, folder)
        found = [f"the study failed: {done.stderr}"] if done.returncode else []
        if not found:
            found += [*check_saved(folder, reader), *check_definition(folder), *check_parameters(folder, program, reader)]
    print(*found[:20], f"{len(found)} differences in {len(models.MODELS)} models", sep="\n")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
