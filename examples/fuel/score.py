#!/usr/bin/env python3
"""Scores a table with a model file: python3 score.py MODEL.xml TABLE.csv

Knows the file format only (PMML 4.4: general linear models, and mining models that hold one for each group of
cases), nothing of the program that wrote the file. Shows one line for each case: the mean of the prediction and, from
a file with the scales of the parameters, the variance of the response and the bounds of the mean.
"""
import csv
import math
import sys
import xml.etree.ElementTree as ElementTree

MISSING = {"", "NA", "NaN", "."}


def short(element):
    return element.tag.rpartition("}")[2]


def child(element, name):
    return next((e for e in element if short(e) == name), None)


def children(element, name):
    return [] if element is None else [e for e in element if short(e) == name]


class Field:
    """How the cells of a column are read: None stands for missing and for what is not valid."""

    def __init__(self, element):
        self.number = element.get("dataType") != "string"
        values = children(element, "Value")
        self.valid = {self.convert(v.get("value")) for v in values if v.get("property", "valid") == "valid"}
        self.missing = {self.convert(v.get("value")) for v in values if v.get("property") == "missing"}

    def convert(self, text):
        return float(text) if self.number else text

    def read(self, text):
        if text is None or text in MISSING:
            return None
        value = self.convert(text)
        return None if value in self.missing or (self.valid and value not in self.valid) else value


def holds(predicate, case):
    if short(predicate) == "CompoundPredicate":
        assert predicate.get("booleanOperator") == "and"
        return all(holds(part, case) for part in predicate)
    field, operator = predicate.get("field"), predicate.get("operator")
    if operator == "isMissing":
        return case[field] is None
    assert operator == "equal"
    return case[field] is not None and case[field] == type(case[field])(predicate.get("value"))


class LinearModel:
    def __init__(self, element):
        self.maps = {}
        for derived in children(child(element, "LocalTransformations"), "DerivedField"):
            mapped = child(derived, "MapValues")
            pair = child(mapped, "FieldColumnPair")
            convert = str if derived.get("dataType") == "string" else float
            rows = [{short(cell): convert(cell.text or "") for cell in row} for row in child(mapped, "InlineTable")]
            table = {row[pair.get("column")]: row[mapped.get("outputColumn")] for row in rows}
            self.maps[derived.get("name")] = (pair.get("field"), table)
        self.names = [e.get("name") for e in child(element, "ParameterList")]
        self.factors = [e.get("name") for e in children(child(element, "FactorList"), "Predictor")]
        self.covariates = [e.get("name") for e in children(child(element, "CovariateList"), "Predictor")]
        self.cells = [(e.get("parameterName"), e.get("predictorName"), e.get("value")) for e in child(element, "PPMatrix")]
        self.beta = {e.get("parameterName"): float(e.get("beta")) for e in child(element, "ParamMatrix")}
        self.scales = {(e.get("pRow"), e.get("pCol")): float(e.get("value"))
                       for e in children(child(element, "PCovMatrix"), "PCovCell")}
        self.extra = {e.get("name"): float(e.get("value")) for e in children(element, "Extension")}
        self.df = float(element.get("modelDF", "nan"))

    def score(self, case):
        case = {**case, **{name: table.get(case[field]) for name, (field, table) in self.maps.items()}}
        if any(case[name] is None for name in self.factors + self.covariates):
            return None
        terms = dict.fromkeys(self.names, 1.0)
        for parameter, predictor, value in self.cells:
            x = case[predictor]
            terms[parameter] *= x ** float(value) if predictor in self.covariates else x == type(x)(value)
        mean = math.fsum(self.beta[name] * x for name, x in terms.items())
        return {"mean": mean, **(self.spread(mean, terms) if self.scales else {})}

    def spread(self, mean, terms):
        square = math.fsum((1 if row == column else 2) * value * terms[row] * terms[column]
                           for (row, column), value in self.scales.items())
        width = self.extra["credibleQuantile"] * math.sqrt(max(square, 0))
        bounds = {"lower": mean - width, "upper": mean + width}
        if self.df <= 2:  # the response has no variance
            return bounds
        return {"variance": self.df / (self.df - 2) * (self.extra["errorScale"] + square), **bounds}


class Model:
    def __init__(self, path):
        root = ElementTree.parse(path).getroot()
        self.fields = {e.get("name"): Field(e) for e in child(root, "DataDictionary")}
        mining = child(root, "MiningModel")
        if mining is None:
            self.segments = [(None, LinearModel(child(root, "GeneralRegressionModel")))]
            return
        assert child(mining, "Segmentation").get("multipleModelMethod") == "selectFirst"
        self.segments = [(segment[0], LinearModel(child(segment, "GeneralRegressionModel")))
                         for segment in children(child(mining, "Segmentation"), "Segment")]

    def score(self, row):
        """The prediction for a row of texts by column name; None when the model has none for it."""
        case = {name: field.read(row.get(name)) for name, field in self.fields.items()}
        for predicate, model in self.segments:
            if predicate is None or holds(predicate, case):
                return model.score(case)
        return None


def main(model, table):
    model = Model(model)
    names = ["mean", "variance", "lower", "upper"]
    print(*names, sep=",")
    with open(table, encoding="utf-8", newline="") as file:
        for row in csv.DictReader(file):
            result = model.score(row) or {}
            print(*(f"{result[name]:.6g}" if name in result else "" for name in names), sep=",")


if __name__ == "__main__":
    main(*sys.argv[1:])
