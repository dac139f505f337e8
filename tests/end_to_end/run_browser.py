#!/usr/bin/env python3
"""Opens the HTML reports of all commands in a browser, on a desk, on a phone, in the dark and on paper, and holds what it
shows against the JSON reports of the same runs. Exit status 77: there is no browser."""
import pathlib
import re
import sys
import tempfile

import browser as browsers
import report as reports

EXAMPLES = ["sleep/sleep", "sleep/pairs", "tooth-growth/tooth-growth", "attitude/correlations", "attitude/attitude",
            "plantgrowth/plantgrowth", "hair-eye/hair-eye"]
# Widths in pixels, colour scheme and medium.
VIEWS = {"desk": (1200, False, ""), "phone": (390, False, ""), "dark": (1200, True, ""), "paper": (700, False, "print")}

EVIL = "</style><script>alert(1)</script><img src=x onerror=alert(2)> &amp; \\\"quoted\\\" 'too'"
EVIL_FILES = {
    "a&b <i>.csv": "x,g\n1,1\n2,1\n4,1\n3,2\n5,2\n9,2\n",
    "a&b <i>.json": '{"fields": [{"name": "x", "type": "number", "title": "%s"}, {"name": "g", "type": "integer",'
                    '"title": "%s", "categories": [{"value": 1, "label": "%s"}, {"value": 2, "label": "plain"}]}]}'
                    % (EVIL, EVIL, EVIL),
    "study.bay": "DATA FILE='a&b <i>.csv'.\nBAYES INDEPENDENT /INFERENCE DISTRIBUTION=NORMAL VARIABLES=x GROUP=g "
                 "SELECT=LEVEL(1 2) ANALYSIS=BOTH.\nSPLIT FILE BY g.\nBAYES ONESAMPLE /INFERENCE DISTRIBUTION=NORMAL "
                 "VARIABLES=x ANALYSIS=BOTH.\nBAYES ONESAMPLE /INFERENCE DISTRIBUTION=NORMAL VARIABLES='<b>'.\n",
}

# What the page holds: tables with their cells, charts with the number of their curves.
CONTENTS = r"""(() => {
  const text = element => { const copy = element.cloneNode(true); copy.querySelectorAll('sup, .layer').forEach(s => s.remove());
                            return copy.textContent; };
  const figures = [...document.querySelectorAll('figure')];
  return {
    tables: figures.filter(f => !f.matches('.chart')).map(f => ({
      title: text(f.querySelector('caption')),
      cells: [...f.querySelectorAll('td')].map(text).filter(shown => shown)})),
    charts: figures.filter(f => f.matches('.chart')).map(f => ({
      title: f.querySelector('svg[role=img] > title').textContent,
      described: f.querySelector('svg > desc').textContent.length > 20,
      numbers: [...f.querySelectorAll('details table')].map(t => t.rows.length),
      curves: [...f.querySelectorAll('path[fill=none]')].filter(p => p.getBBox().width > 50 && p.getTotalLength() > 100).length})),
    unnamed: document.querySelectorAll('th:not([scope]), table:not(:has(caption))').length,
    scripts: document.querySelectorAll('script, img, [onerror], [onload]').length,
  };
})()"""

# Links of the outline that lead nowhere, ids that stand twice, tables and charts that no link leads to.
LINKS = r"""(() => {
  const ids = [...document.querySelectorAll('[id]')].map(e => e.id);
  const links = [...document.querySelectorAll('nav a')].map(a => a.getAttribute('href').slice(1));
  return {dead: links.filter(link => !ids.includes(link)), twice: ids.filter((id, i) => ids.indexOf(id) !== i),
          missed: [...document.querySelectorAll('figure, section h2')].filter(e => !links.includes(e.id)).length};
})()"""

# Texts of drawings that touch each other or the drawing's edge. A pixel of slack: boxes are larger than their letters.
COLLISIONS = r"""(() => [...document.querySelectorAll('figure svg')].flatMap(svg => {
  const edge = svg.getBoundingClientRect();
  const texts = [...svg.querySelectorAll('text')].map(t => [t.textContent, t.getBoundingClientRect()]);
  const slack = edge.width / svg.viewBox.baseVal.width;
  const touch = (a, b) => a.left + slack < b.right && b.left + slack < a.right && a.top + slack < b.bottom && b.top + slack < a.bottom;
  return texts.flatMap(([text, box], i) => [
    ...(box.left < edge.left || box.right > edge.right || box.top < edge.top || box.bottom > edge.bottom ? [text + ' is cut off'] : []),
    ...texts.slice(i + 1).filter(other => touch(box, other[1])).map(other => text + ' touches ' + other[0])]);
}))()"""

# Texts with less contrast than 4.5 to 1 (Web Content Accessibility Guidelines 2.2, 1.4.3).
PALE = r"""(() => {
  const parse = colour => colour.match(/[\d.]+/g).map(Number);
  const light = colour => parse(colour).slice(0, 3).map(c => c / 255).map(c => c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4)
                          .reduce((sum, c, i) => sum + c * [0.2126, 0.7152, 0.0722][i], 0);
  const paper = element => { const colour = getComputedStyle(element).backgroundColor, part = parse(colour)[3];
                             return part === 0 && element.parentElement ? paper(element.parentElement) : part === 0 ? 'rgb(255,255,255)' : colour; };
  return [...document.querySelectorAll('body *:not(svg *)')]
    .filter(e => [...e.childNodes].some(n => n.nodeType === 3 && n.textContent.trim()))
    .filter(e => { const [a, b] = [light(getComputedStyle(e).color), light(paper(e))].sort((x, y) => x - y);
                   return (b + 0.05) / (a + 0.05) < 4.5; }).map(e => e.textContent.slice(0, 40));
})()"""

TOO_WIDE = """(() => { const page = document.documentElement; return page.scrollWidth - page.clientWidth; })()"""

# The first table as the clipboard's plain text gets it.
COPIED = """(() => { getSelection().selectAllChildren(document.querySelector('figure table')); return getSelection().toString(); })()"""


def count_lines(document):
    """The line marks of a chart document."""
    if isinstance(document, list):
        return sum(map(count_lines, document))
    if not isinstance(document, dict):
        return 0
    return (document.get("type") == "line") + sum(map(count_lines, document.values()))


def expected(report):
    tables = [{"title": table["title"], "cells": [cell["text"] for cell in table["cells"] if cell["text"]]}
              for table in reports.items(report, "table")]
    charts = [(chart["vegaLite"]["title"]["text"], count_lines(chart["vegaLite"]["vconcat"]))
              for chart in reports.items(report, "chart")]
    return tables, charts


def differences(contents, report):
    """What of the run the page doesn't show as it is."""
    tables, charts = expected(report)
    if not tables:
        yield "the run made no table"
    if [table["title"] for table in contents["tables"]] != [table["title"] for table in tables]:
        yield f"tables {contents['tables']}"
    for shown, table in zip(contents["tables"], tables):
        if sorted(shown["cells"]) != sorted(table["cells"]):
            yield f"cells of {table['title']}: {shown['cells']}"
    if [(chart["title"], chart["curves"]) for chart in contents["charts"]] != charts:
        yield f"charts {contents['charts']}"
    for chart in contents["charts"]:
        if not chart["described"] or len(chart["numbers"]) != chart["curves"] or min(chart["numbers"]) < 10:
            yield f"description of {chart['title']}: {chart}"
    for kind in ("unnamed", "scripts"):
        if contents[kind]:
            yield f"{contents[kind]} {kind}"


def faults(browser, page, report):
    browser.show_as(1200)
    browser.open(page)
    yield from differences(browser.evaluate(CONTENTS), report)
    yield from (f"{kind} links: {found}" for kind, found in browser.evaluate(LINKS).items() if found)
    for view, (width, dark, medium) in VIEWS.items():
        browser.show_as(width, dark=dark, media=medium)
        if browser.evaluate(TOO_WIDE) > 0:
            yield f"{view}: {browser.evaluate(TOO_WIDE)} pixels too wide"
        yield from (f"{view}: too pale: {text}" for text in browser.evaluate(PALE))
        yield from (f"{view}: {collision}" for collision in browser.evaluate(COLLISIONS))
    yield from browser.complaints()


def copying(browser):
    copied = browser.evaluate(COPIED)
    if not re.search(r"^extra\t10\t0\.750\t1\.789\t", copied, re.MULTILINE):
        yield f"copied: {copied!r}"


def run(program, study, folder, browser):
    """The faults of one study's report, which is written to the folder."""
    page = pathlib.Path(folder, "report.html")
    arguments = ["--seed", "1", "--quiet"]
    _, report, stderr = reports.run(program, [study.name, *arguments], study.parent)
    reports.start(program, [study.name, *arguments, "-o", str(page)], study.parent, form="html")
    if report is None or not page.exists():
        return [stderr]
    found = list(faults(browser, page, report))
    return found + (list(copying(browser)) if study.name == "sleep.bay" else [])


def main(program, examples):
    if browsers.find() is None:
        print("skipped: Chromium is not installed (tools/setup installs it)")
        return 77
    failed = 0
    with tempfile.TemporaryDirectory() as folder, browsers.Browser() as browser:
        for name, text in EVIL_FILES.items():
            pathlib.Path(folder, name).write_text(text, encoding="utf-8")
        studies = [pathlib.Path(examples, name + ".bay") for name in EXAMPLES] + [pathlib.Path(folder, "study.bay")]
        for study in studies:
            found = run(program, study, folder, browser)
            failed += bool(found)
            print(study.name, *(found[:10] or ["is shown well"]), sep="\n  ")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
