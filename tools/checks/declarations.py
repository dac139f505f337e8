"""What platform/ declares."""

import re

from tree import code_only, files, read

SCOPE = re.compile(r"\b(?:namespace|class|struct|union|enum(?:\s+(?:class|struct))?)\s+(?:BAYES_PLATFORM\s+)?"
                   r"(\w+)\s*(?:final\s*)?(?::(?!:)([^{};()]*))?\{")
FUNCTION = re.compile(r"\b(\w+)\s*\(")
ALIAS = re.compile(r"\busing\s+(\w+)\s*=")


def body_at(code, start):
    """The text between the brace before `start` and the one that closes it."""
    depth = 1
    for place in range(start, len(code)):
        depth += {"{": 1, "}": -1}.get(code[place], 0)
        if depth == 0:
            return code[start:place]
    return code[start:]


class Declarations:
    def __init__(self):
        self.bodies = {}  # type or namespace -> text between its braces
        self.bases = {}   # type -> names in its base clause
        self.names = set()
        for header in files(".h", under="platform/"):
            self.add(code_only(read(header)))

    def add(self, code):
        for match in SCOPE.finditer(code):
            self.bodies[match[1]] = self.bodies.get(match[1], "") + body_at(code, match.end())
            self.bases[match[1]] = re.findall(r"\w+", match[2] or "")
        self.names |= set(self.bodies) | set(FUNCTION.findall(code)) | set(ALIAS.findall(code))

    def has(self, name, *members):
        """`name` is a type with a body, a namespace, an alias or a function; each member lies in the one before."""
        scopes = (name, *members)
        return name in self.names and all(self.has_member(*pair) for pair in zip(scopes, members))

    def has_member(self, scope, member):
        """`scope` declares the member itself or inherits it."""
        if scope not in self.bodies:
            return False
        return bool(re.search(rf"\b{member.strip('~')}\b", self.bodies[scope])) or any(
            self.has_member(base, member) for base in self.bases[scope] if base != scope)
