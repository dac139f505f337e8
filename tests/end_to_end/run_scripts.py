#!/usr/bin/env python3
"""Runs the cases of one script: files, a command file, and what the report must hold.

    === what the case shows
    --- heights.csv              a file of the case's folder, or of a folder in it
    x
    1
    --- old.csv latin1           how the file is written: latin1, gzip, cut (its last 8 bytes are missing),
    --- long.csv repeat=2:500    folder (it is none), repeat=LINE:COUNT (the line comes COUNT times), rows=N (lines
                                 0, 1, ... N-1 follow), columns=N (v0 to vN-1, two cases of 1 and 2), bom, crlf
    --- study.bay                the commands; the program is run on this file
    DATA FILE='heights.csv'.
    ...
    --- expect                   one line for each expectation
    args --seed 3                more arguments of the program
    tmpdir NAME                  a file or folder of the case for temporary files; it may be none
    status 1                     exit status (0 when it isn't given)
    error 2:14 KEY | ARGUMENT | ...     a message: level, place (or -), key, its first arguments
    cell TITLE | ROW | COLUMN | 1.54    value of a cell, relative tolerance 1e-9; "text:..." for its text; "." for missing
    cells TITLE | 16             number of cells of the tables with that title
    note LABEL | TEXT            an entry of the notes
    rows TITLE | A | B           innermost labels of the table's rows, in order
    table TITLE                  such a table; `no table TITLE`: none
    caption TITLE | TEXT         text of a table's caption
    footnote TITLE | KEY | TEXT  a footnote of a table, its text when given; `no footnote TITLE | KEY`: none
    chart TITLE | TEMPLATE       such a chart; `no chart TITLE`: none
    charts 2                     number of charts
    panels TITLE | TEXT | ...    titles of a chart's panels, in order
    axes TITLE | TEXT | ...      the different titles of its x axes, in order
    colours TITLE | #123456 ...  of its lines, in order
    curve TITLE | SERIES | SERIES | 7 | 0.4     arguments and values of a curve: the value at an argument, to 0.1 %
    heading TEXT | 2             a heading with that many charts under it
    stderr TEXT                  standard error holds the text
    silent                       nothing but errors stands on standard error
    messages 2                   number of messages
    splits 3 | g=1, h=a | ...    the groups that the command of a line shows tables of, in order
    split 3 g=1 | TITLE | ROW | COLUMN | 1.54     `cell` for one group of the command of a line
    alike 3 g=1 | 8              line 3 shows for the group just what line 8 shows in tables and charts
    apart 3 | KEY                the footnotes of that key differ from group to group
    head KEY | VALUE             an entry of the data in the report's head
    same --threads 2             with these arguments in place of `args` the report is the same, byte for byte
    file NAME | TEXT             a file of the case's folder holds this text (any, without TEXT), "\\n" for line ends; `no file NAME`: none
    column NAME | COLUMN | 1.5 . 2     a CSV file's column, relative tolerance 1e-9, "." for an empty cell
"""
import csv
import gzip
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


def walk(document):
    """A chart document's objects, outermost first."""
    for child in document.values() if isinstance(document, dict) else document:
        if isinstance(child, (dict, list)):
            if isinstance(child, dict):
                yield child
            yield from walk(child)


def value_at(document, arguments, values, x):
    """On the straight line between the curve's two points around x."""
    rows = document["datasets"]["graphdataset"]
    points = [(row[arguments], row[values]) for row in rows if row[arguments] is not None and row[values] is not None]
    for (x1, y1), (x2, y2) in zip(points, points[1:]):
        if x1 <= x <= x2:
            return y1 + (y2 - y1) * (x - x1) / (x2 - x1)
    return math.nan


def repeat(text, line, count):
    lines = text.splitlines(keepends=True)
    lines[line - 1] = (lines[line - 1].removesuffix("\n") + "\n") * count
    return "".join(lines)


def write(folder, heading, text):
    """A file of the case, by its name and how it is written."""
    name, *ways = heading.split()
    path = pathlib.Path(folder, name)
    path.parent.mkdir(exist_ok=True)
    if "folder" in ways:
        path.mkdir()
        return
    for way in ways:
        if way.startswith("repeat="):
            text = repeat(text, *(int(number) for number in way[len("repeat="):].split(":")))
        if way.startswith("rows="):
            text += "".join(f"\n{i}" for i in range(int(way[len("rows="):])))
        if way.startswith("columns="):
            columns = range(int(way[len("columns="):]))
            text += "".join(",".join(f"{cell}{i if cell == 'v' else ''}" for i in columns) + "\n" for cell in "v12")
    text = ("\ufeff" if "bom" in ways else "") + (text.replace("\n", "\r\n") if "crlf" in ways else text)
    data = text.encode("latin-1" if "latin1" in ways else "utf-8")
    data = gzip.compress(data, mtime=0) if "gzip" in ways else data
    path.write_bytes(data[:-8] if "cut" in ways else data)


def shown(items):
    """What tables and charts show, without the words that name a group."""
    part = {"commands": [{"items": items}]}
    return ([(table["title"], table["cells"], table["footnotes"]) for table in reports.items(part, "table")],
            [chart["vegaLite"]["datasets"] for chart in reports.items(part, "chart")])


class Expectations:
    """One method for each kind of expectation; each returns whether the run meets it."""

    def __init__(self, start, folder, arguments):
        self.start, self.folder = start, pathlib.Path(folder)
        done = start(arguments)
        self.status, self.report, self.stderr = reports.read(done)
        self.stdout = done.stdout

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
        kind, _, title = rest.partition(" ")
        if kind == "file":
            return not (self.folder / title).exists()
        if kind == "footnote":
            return self.report is not None and not self.footnote(title)
        return (kind in ("table", "chart") and self.report is not None
                and title not in [item["title"] for item in reports.items(self.report, kind)])

    def rows(self, rest):
        title, *labels = fields(rest)
        found = [cell["row"][-1] for table in reports.items(self.report, "table") if table["title"] == title
                 for cell in table["cells"]]
        return list(dict.fromkeys(found)) == labels

    def documents(self, title):
        return [item["vegaLite"] for item in reports.items(self.report, "chart") if item["title"] == title]

    def chart(self, rest):
        return any([item["title"], item["template"]] == fields(rest) for item in reports.items(self.report, "chart"))

    def charts(self, rest):
        return len(reports.items(self.report, "chart")) == int(rest)

    def panels(self, rest):
        title, *panels = fields(rest)
        return any([part["title"] for part in walk(document) if "encoding" in part and "title" in part] == panels
                   for document in self.documents(title))

    def axes(self, rest):
        title, *axes = fields(rest)
        return any(list(dict.fromkeys(part["x"]["title"] for part in walk(document) if "x" in part and "y" in part))
                   == axes for document in self.documents(title))

    def colours(self, rest):
        title, colours = fields(rest)
        return any([part["color"] for part in walk(document) if part.get("type") == "line"] == colours.split()
                   for document in self.documents(title))

    def curve(self, rest):
        title, arguments, values, x, y = fields(rest)
        return any(math.isclose(value_at(document, arguments, values, float(x)), float(y), rel_tol=1e-3, abs_tol=1e-3)
                   for document in self.documents(title))

    def heading(self, rest):
        text, count = fields(rest)
        return any(sum(item["type"] == "chart" for item in heading["items"]) == int(count)
                   for heading in reports.items(self.report, "heading") if heading["text"] == text)

    def cell(self, rest):
        title, row, column, value = fields(rest)
        found = reports.cells(self.report, title, row.split(" > "), column.split(" > "))
        return any(same(cell, value) for cell in found)

    def command(self, line):
        return next(command for command in self.report["commands"] if command["line"] == int(line))

    def groups(self, line):
        """(group, its items) of the command in that line, in order."""
        def show(value):
            return "." if value in (None, "") else value if isinstance(value, str) else f"{value:g}"

        named = [(", ".join(f"{part['variable']}={show(part['value'])}" for part in item.get("split", [])), item)
                 for item in self.command(line)["items"]]
        return [(name, [item for other, item in named if other == name]) for name in dict.fromkeys(n for n, _ in named)]

    def splits(self, rest):
        line, *names = fields(rest)
        seen = [name for name, items in self.groups(line) if any(item["type"] == "table" for item in items)]
        return seen == (names or [""])

    def split(self, rest):
        line, _, rest = rest.partition(" ")
        name, title, row, column, value = fields(rest)
        part = {"commands": [{"items": dict(self.groups(line)).get(name, [])}]}
        return any(same(cell, value) for cell in reports.cells(part, title, row.split(" > "), column.split(" > ")))

    def alike(self, rest):
        group, other = fields(rest)
        line, _, name = group.partition(" ")
        tables, charts = shown(dict(self.groups(line)).get(name, []))
        return len(tables) > 0 and (tables, charts) == shown(self.command(other)["items"])

    def apart(self, rest):
        line, key = fields(rest)
        texts = [{note["text"] for item in items for note in item.get("footnotes", []) if note["key"] == key}
                 for _, items in self.groups(line) if items[0]["type"] != "notes"]
        return len(texts) > 1 and all(texts) and len(set().union(*texts)) == sum(len(group) for group in texts)

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

    def file(self, rest):
        name, *text = fields(rest)
        path = self.folder / name
        return path.is_file() and "".join(text).replace("\\n", "\n") in path.read_text(encoding="utf-8")

    def column(self, rest):
        name, column, values = fields(rest)
        with open(self.folder / name, encoding="utf-8", newline="") as file:
            cells = [row[column] for row in csv.DictReader(file)]
        expected = values.split()
        return len(cells) == len(expected) and all(
            cell == "" if value == "." else cell != "" and math.isclose(float(cell), float(value), rel_tol=1e-9)
            for cell, value in zip(cells, expected))

    def same(self, rest):
        return self.start(rest.split()).stdout == self.stdout

    def head(self, rest):
        key, value = fields(rest)
        return str(self.report["run"].get("data", {}).get(key)) == value

    def silent(self, _):
        return all(": error: " in line for line in self.stderr.splitlines())

    def stderr_holds(self, rest):
        return rest in self.stderr


def check(program, files, expect):
    """The expectations that the case doesn't meet, and what was seen."""
    options = {"status": "0", "args": "", "tmpdir": ""}
    lines = []
    for line in expect:
        word, _, rest = line.partition(" ")
        if word in options:
            options[word] = rest
        else:
            lines.append((word, rest))
    with tempfile.TemporaryDirectory() as folder:
        for heading, text in files.items():
            write(folder, heading, text)

        def start(arguments):
            temporary = {"TMPDIR": str(pathlib.Path(folder, options["tmpdir"]))} if options["tmpdir"] else {}
            return reports.start(program, ["study.bay", *arguments], folder, temporary)

        seen = Expectations(start, folder, options["args"].split())
        failed = []
        if seen.status != int(options["status"]):
            failed.append(f"status {seen.status} instead of {options['status']}")
        for word, rest in lines:
            method = seen.stderr_holds if word == "stderr" else getattr(seen, word)
            if not method(rest):
                failed.append(f"{word} {rest}")
    return failed, seen.stderr, reports.items(seen.report, "message")


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
