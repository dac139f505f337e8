#!/usr/bin/env python3
"""Gives the chart documents of the studies to the library that their grammar comes with: it must take them without a warning
and draw every curve, with every point, and every title. Exit status 77: there is no node, or no such library."""
import html
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile

import report as reports

LIBRARY = pathlib.Path(__file__).parents[2] / ".deps" / "vega"
DRAW = pathlib.Path(__file__).with_name("draw_charts.js")


def marks(spec, inherited=None):
    """(mark, encoding) of every mark of a document, with what it inherits."""
    encoding = {**(inherited or {}), **spec.get("encoding", {})}
    for part in spec.get("layer", []) + spec.get("vconcat", []) + spec.get("hconcat", []):
        yield from marks(part, encoding)
    if "mark" in spec:
        yield spec["mark"], encoding


def titles(spec):
    title = spec.get("title", "")
    yield title["text"] if isinstance(title, dict) else title
    for part in spec.get("vconcat", []) + spec.get("hconcat", []):
        yield from titles(part)
    for channel in spec.get("encoding", {}).values():
        yield channel["title"]


def lines(document):
    """Number of points of each line."""
    rows = document["datasets"]["graphdataset"]
    return [sum(row[encoding["x"]["field"]] is not None and row[encoding["y"]["field"]] is not None for row in rows)
            for mark, encoding in marks(document) if mark["type"] == "line"]


def faults(document, drawn):
    yield from drawn["warnings"]
    if sorted(drawn["lines"]) != sorted(lines(document)):
        yield f"lines of {drawn['lines']} points instead of {lines(document)}"
    shown = {html.unescape(text) for text in drawn["titles"]}
    yield from (f"no title {title}" for title in titles(document) if title and title not in shown)


def main(program, examples):
    node = shutil.which("node")
    if node is None or not LIBRARY.exists():
        print("skipped: node or the chart library is missing (tools/setup installs both)")
        return 77
    documents = []
    with tempfile.TemporaryDirectory() as folder:  # some studies write files beside them
        copy = shutil.copytree(examples, pathlib.Path(folder, "examples"))
        for study in sorted(copy.glob("*/*.bay")):
            _, report, _ = reports.run(program, [study.name, "--seed", "1", "--quiet"], study.parent)
            documents += [chart["vegaLite"] for chart in reports.items(report, "chart")]
    done = subprocess.run([node, DRAW, LIBRARY], input=json.dumps(documents), capture_output=True, text=True, timeout=300)
    print(done.stderr)
    found = [f"{document['title']['text']}: {fault}" for document, drawn in zip(documents, json.loads(done.stdout))
             for fault in faults(document, drawn)]
    print(f"{len(documents)} charts", *found, sep="\n")
    return 1 if found or not documents else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
