"""Made data sets and models of them, each with its predictions saved and its model written to a file."""
import json
import pathlib
import random
import subprocess

SAVED = ["MeanPredicted_1", "Variance_1", "Mode_1", "CIMeanPredictedLower_1", "CIMeanPredictedUpper_1"]
SAVE = "/SAVE MEANPRED VARIANCE MODE CIMEANPREDL CIMEANPREDU"
DICTIONARY = {"fields": [
    {"name": "n", "type": "number", "title": "Number of <doors> & \"gates\"", "missingValues": ["-9"],
     "categories": [{"value": 1, "label": "one"}, {"value": 2.5, "label": "two & a half"}, {"value": -9, "label": "?"}]},
    {"name": "x", "type": "number", "title": "First covariate", "missingValues": ["-99"]},
    {"name": "s", "type": "string", "categories": [{"value": "left", "label": "Left side"}]}]}

# Name, statements before the command, command with its variables, subcommands, variables that every scored case needs.
MODELS = [
    ("line", "", "REGRESSION y WITH x", "", "x"),
    ("factor", "", "REGRESSION y BY g WITH x z", "", "gxz"),
    ("numeric_factor", "", "REGRESSION y BY n g", "", "ng"),
    ("anova", "", "ANOVA y BY g", "/CRITERIA CILEVEL=80", "g"),
    ("aliased", "", "REGRESSION y BY g n WITH x twice", "", "gnxt"),
    ("far_from_zero", "", "REGRESSION y WITH far z", "", "fz"),
    ("weights", "WEIGHT BY w.", "REGRESSION y BY g WITH x", "/DESIGN REGWGT=v FACTORS=g COVARIATES=x", "gxvw"),
    ("design", "", "REGRESSION y BY g WITH x z", "/DESIGN COVARIATES=z", "gxz"),
    ("bayes_factor", "", "REGRESSION y BY g WITH x", "/INFERENCE ANALYSIS=BAYESFACTOR", "gx"),
    ("conjugate", "", "REGRESSION y WITH x z",
     "/PRIOR TYPE=CONJUGATE SHAPEPARAM=2 SCALEPARAM=3 MEANVECTOR=0 1 -1 VMATRIX={4;0.5,1;0,0,2}", "xz"),
    ("split", "SPLIT FILE BY s.", "REGRESSION y BY g WITH x", "", "gx"),
    ("split_numeric_factor", "SPLIT FILE BY s.", "REGRESSION y BY n WITH z", "", "nz"),
    ("split_two", "SPLIT FILE BY k s. WEIGHT BY w.".replace(". ", ".\n"), "REGRESSION y WITH x", "", "xw"),
    ("split_factor", "SPLIT FILE BY g.", "ANOVA y BY n", "", "n"),
]


def make_row(source):
    """Some cells are empty, or hold what the dictionary calls missing; level d of g stands on the left side only."""
    side = source.choice(["left", "right", "right", ""])
    x, z = source.gauss(0, 2), source.gauss(5, 1)
    group = source.choice("abcd" if side == "left" else "abc")
    doors = source.choice([1, 2.5, 4])
    y = 1 + 0.7 * x - 0.3 * z + "abcd".index(group) + doors + source.gauss(0, 1)
    row = {"y": y, "x": x, "z": z, "twice": 2 * x, "far": 1000 + x, "g": f" {group}'&\"<" if group == "b" else group,
           "n": doors, "s": side, "k": source.choice([0.1, 2]), "w": source.choice([1, 2, 3, 0, 1.4]),
           "v": source.choice([0.5, 1, 2, 2, 0])}
    for name, empty in (("y", ""), ("x", "-99"), ("z", ""), ("g", ""), ("n", "-9"), ("w", ""), ("v", "")):
        if source.random() < 0.06:
            row[name] = empty
    return row


def write_data(folder):
    source = random.Random(20)
    rows = [make_row(source) for _ in range(400)]
    # A level without a response anywhere: no model knows it.
    rows.append({**rows[0], "g": "unknown", "y": ""})
    # A split with too few cases for any model.
    rows.append({**rows[0], "s": "lonely"})
    quote = lambda cell: '"' + cell.replace('"', '""') + '"' if isinstance(cell, str) and cell else str(cell)
    lines = [",".join(rows[0])] + [",".join(quote(cell) for cell in row.values()) for row in rows]
    pathlib.Path(folder, "data.csv").write_text("\n".join(lines) + "\n", encoding="utf-8")
    pathlib.Path(folder, "data.json").write_text(json.dumps(DICTIONARY), encoding="utf-8")


def write_study(folder, option="MODEL"):
    """One study for all models; NAME.xml and NAME.csv hold what each leaves behind."""
    lines = []
    for name, before, command, subcommands, _ in MODELS:
        lines += ["DATA FILE='data.csv'.", before, f"BAYES {command}", f"  {subcommands}", f"  {SAVE}",
                  f"  /OUTFILE {option}='{name}.xml'.", f"SAVE DATA OUTFILE='{name}.csv'."]
    pathlib.Path(folder, "study.bay").write_text("\n".join(line for line in lines if line.strip()) + "\n",
                                                 encoding="utf-8")


def run(program, folder, option="MODEL"):
    write_data(folder)
    write_study(folder, option)
    return subprocess.run([program, "run", "study.bay", "--format", "json"], cwd=folder, capture_output=True, text=True,
                          timeout=300)
