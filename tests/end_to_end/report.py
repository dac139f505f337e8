"""Runs the program and reads its JSON report: what the end-to-end tests share."""
import json
import os
import subprocess


def start(program, arguments, folder, environment=None, form="json"):
    """The finished process of `bayes run ... --format FORM`."""
    return subprocess.run([program, "run", *arguments, "--format", form], cwd=folder, capture_output=True,
                          text=True, timeout=300, env={**os.environ, "LC_ALL": "C.UTF-8", **(environment or {})})


def run(program, arguments, folder):
    """Exit status, report (None when there is none) and standard error of such a process."""
    return read(start(program, arguments, folder))


def read(done):
    """The same of a finished process."""
    try:
        report = json.loads(done.stdout)
    except json.JSONDecodeError:
        report = None
    return done.returncode, report, done.stderr


def items(report, kind):
    """All items of a kind, in order, with those under headings."""
    found = []

    def walk(level):
        for item in level:
            if item["type"] == kind:
                found.append(item)
            walk(item.get("items", []))

    for command in report["commands"] if report else []:
        walk(command["items"])
    return found


def ends_in(labels, ending):
    return labels[max(0, len(labels) - len(ending)):] == ending


def cells(report, title, row, column):
    """Cells of the tables with this title, or subtype, whose row and column labels end in the given texts."""
    return [cell for table in items(report, "table") if title in (table["title"], table["subtype"])
            for cell in table["cells"]
            if ends_in(cell["row"], row) and ends_in(cell["column"], column)]
