#!/usr/bin/env python3
"""Runs the cases of one script: files, a command file, and what the report must hold.

    === what the case shows
    --- heights.csv              a file of the case's folder
    x
    1
    --- study.bay                the commands; the program is run on this file
    DATA FILE='heights.csv'.
    ...
    --- expect                   one line for each expectation
    args --seed 3                more arguments of the program
    status 1                     exit status (0 when it isn't given)
    error 2:14 KEY | ARGUMENT | ...     a message: level, place (or -), key, its first arguments
    cell TITLE | ROW | COLUMN | 1.54    value of a cell, relative tolerance 1e-9; "text:..." for its text; "." for missing
    cells TITLE | 16             number of cells of the tables with that title
    note LABEL | TEXT            an entry of the notes
    rows TITLE | A | B           innermost labels of the table's rows, in order
    table TITLE                  such a table; `no table TITLE`: none
    caption TITLE | TEXT         text of a table's caption
    footnote TITLE | KEY | TEXT  a footnote of a table, its text when given; `no footnote TITLE | KEY`: none
    stderr TEXT                  standard error holds the text
    messages 2                   number of messages
"""
import math
import pathlib
import sys
import tempfile

import report as reports


def parse(text):
    """(name, {file name: text}, [expectation lines]) of each case."""
    cases = []
    for block in ("\n" + text).split("\n=== ")[1:]:
        name, _, rest = block.partition("\n")
        parts = ("\n" + rest).split("\n--- ")[1:]
        files = dict(part.split("\n", 1) if "\n" in part else (part, "") for part in parts)
        expect = [line for line in files.pop("expect").splitlines() if line.strip()]
        cases.append((name, files, expect))
    return cases


def fields(text):
    return [field.strip() for field in text.split("|")]


def same(cell, expected):
    if expected == ".":
        return cell["value"] is None
    if expected.startswith("text:"):
        return cell["text"] == expected[len("text:"):]
    return cell["value"] is not None and math.isclose(cell["value"], float(expected), rel_tol=1e-9, abs_tol=1e-300)


class Expectations:
    """One method for each kind of expectation; each returns whether the run meets it."""

    def __init__(self, status, report, stderr):
        self.status, self.report, self.stderr = status, report, stderr

    def message(self, level, rest):
        place, _, rest = rest.partition(" ")
        key, *arguments = fields(rest)
        for item in reports.items(self.report, "message"):
            where = f"{item['line']}:{item['column']}" if "line" in item else "-"
            if (item["level"] == level and item["key"] == key and where == place
                    and item["arguments"][:len(arguments)] == arguments):
                return True
        return False

    def error(self, rest):
        return self.message("error", rest)

    def warning(self, rest):
        return self.message("warning", rest)

    def messages(self, rest):
        return len(reports.items(self.report, "message")) == int(rest)

    def titles(self):
        return [table[key] for table in reports.items(self.report, "table") for key in ("title", "subtype")]

    def table(self, rest):
        return rest in self.titles()

    def no(self, rest):
        word, _, what = rest.partition(" ")
        return word in ("table", "footnote") and self.report is not None and not getattr(self, word)(what)

    def rows(self, rest):
        title, *labels = fields(rest)
        found = [cell["row"][-1] for table in reports.items(self.report, "table") if table["title"] == title
                 for cell in table["cells"]]
        return list(dict.fromkeys(found)) == labels

    def cell(self, rest):
        title, row, column, value = fields(rest)
        found = reports.cells(self.report, title, row.split(" > "), column.split(" > "))
        return any(same(cell, value) for cell in found)

    def cells(self, rest):
        title, count = fields(rest)
        tables = [table for table in reports.items(self.report, "table") if table["title"] == title]
        return sum(len(table["cells"]) for table in tables) == int(count)

    def caption(self, rest):
        title, text = fields(rest)
        return any(text in table.get("caption", "") for table in reports.items(self.report, "table")
                   if table["title"] == title)

    def footnote(self, rest):
        title, key, *text = fields(rest)
        return any(note["key"] == key and [note["text"]] == (text or [note["text"]])
                   for table in reports.items(self.report, "table") if table["title"] == title
                   for note in table["footnotes"])

    def note(self, rest):
        label, text = fields(rest)
        return any(entry["label"] == label and entry["text"] == text
                   for notes in reports.items(self.report, "notes") for entry in notes["entries"])

    def stderr_holds(self, rest):
        return rest in self.stderr


def check(program, files, expect):
    """The expectations that the case doesn't meet, and what was seen."""
    options = {"status": "0", "args": ""}
    lines = []
    for line in expect:
        word, _, rest = line.partition(" ")
        if word in options:
            options[word] = rest
        else:
            lines.append((word, rest))
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            pathlib.Path(folder, name).write_bytes(text.encode("utf-8"))
        status, report, stderr = reports.run(program, ["study.bay", *options["args"].split()], folder)
    seen = Expectations(status, report, stderr)
    failed = [] if status == int(options["status"]) else [f"status {status} instead of {options['status']}"]
    for word, rest in lines:
        method = seen.stderr_holds if word == "stderr" else getattr(seen, word)
        if not method(rest):
            failed.append(f"{word} {rest}")
    return failed, stderr, reports.items(report, "message")


def main(program, script):
    cases = parse(pathlib.Path(script).read_text(encoding="utf-8"))
    bad = 0
    for name, files, expect in cases:
        failed, stderr, messages = check(program, files, expect)
        if failed:
            bad += 1
            print(f"{script}: {name}", *(f"  not met: {line}" for line in failed), sep="\n")
            print("  standard error:", stderr, "  messages:", messages, sep="\n")
    print(f"{len(cases)} cases, {bad} failed")
    return 0 if cases and not bad else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
