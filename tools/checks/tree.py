"""What the checks share: the tree they look at, its files, C++ text without comments, and how a finding is told.

Every check takes the tree as its first argument (default: the one it lies in) and exits with 1 when it found
something. A finding is one line, "file:line: what is wrong; what to do"."""

import os
import re
import subprocess
import sys

ROOT = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 and not sys.argv[1].startswith("-") else
                       os.path.join(os.path.dirname(__file__), "..", ".."))
BUILD = os.path.join(ROOT, "build")


def names():
    """Paths, relative to the tree, of what is or could be committed. An unpacked archive has no git."""
    if not os.path.exists(os.path.join(ROOT, ".git")):
        return sorted(walk())
    command = ["git", "-C", ROOT, "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    return sorted(subprocess.run(command, check=True, capture_output=True, text=True).stdout.split("\0"))


def files(*suffixes, under=""):
    wanted = (n for n in names() if n.endswith(suffixes or "") and n.startswith(under))
    return [n for n in wanted if os.path.isfile(os.path.join(ROOT, n))]


def links():
    """(name, target) of the symbolic links."""
    return [(n, os.readlink(os.path.join(ROOT, n))) for n in names() if os.path.islink(os.path.join(ROOT, n))]


def walk():
    for folder, subfolders, leaves in os.walk(ROOT):
        if folder == ROOT:
            subfolders[:] = [s for s in subfolders if not s.startswith("build") and s != ".deps"]
        for name in leaves + [s for s in subfolders if os.path.islink(os.path.join(folder, s))]:
            yield os.path.relpath(os.path.join(folder, name), ROOT)


def read(name):
    with open(os.path.join(ROOT, name), encoding="utf-8", errors="replace") as file:
        return file.read()


TOKEN = re.compile(
    r'//[^\n]*|/\*.*?\*/'                       # comments
    r'|R"(?P<mark>[^(\s]*)\((?P<raw>.*?)\)(?P=mark)"'
    r'|"(?P<text>(?:[^"\\\n]|\\.)*)"'
    r"|(?<![0-9a-fA-F])'(?:[^'\\\n]|\\.)+'",    # characters, but no digit separators
    re.DOTALL)


def blank(match):
    return re.sub(r"[^\n]", " ", match.group())


def code_only(text):
    """C++ text with comments and literals blanked out; every line keeps its number."""
    return TOKEN.sub(blank, text)


def string_literals(text):
    """(line, text) of each string literal; neighbours count as one, as for the compiler."""
    literals = []
    last_end = None
    for match in TOKEN.finditer(text):
        content = match.group("raw") if match.group("raw") is not None else match.group("text")
        if content is None:
            continue
        gap = None if last_end is None else code_only(text[last_end:match.start()])
        if gap is not None and not gap.strip():
            literals[-1][1] += content
        else:
            literals.append([text.count("\n", 0, match.start()) + 1, content])
        last_end = match.end()
    return literals


findings = []


def report(name, line, what):
    findings.append(f"{name}:{line}: {what}")


def finish():
    for finding in findings:
        print(finding)
    sys.exit(1 if findings else 0)
