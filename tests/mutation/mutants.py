"""Finds small changes of C++ sources that a test ought to notice.

A change replaces a few words in one line, drops a line, or swaps two lines. It is found line by
line, without understanding the language, so that a changed source need not compile.
"""

import re
from typing import Iterator, List, NamedTuple, Tuple


class Mutant(NamedTuple):
    """A source in which one or two lines are replaced."""

    kind: str  # what was changed, such as "condition"
    path: str  # of the source, from the root of the project
    line: int  # of the first line that is replaced, counted from 1
    before: List[str]
    after: List[str]

    function: str  # the last line up to it that begins a function at the margin

    def key(self) -> Tuple[str, ...]:
        """What tells this mutant from others, also when lines elsewhere have changed."""
        texts = [" ".join(" ".join(lines).split()) for lines in (self.before, self.after)]
        return (self.path, self.function, texts[0], texts[1])

    def describe(self) -> str:
        """As in reviewed.txt, but for the verdict and its reason."""
        lines = [f"{self.path}: {self.function}", f"# line {self.line}: {self.kind}"]
        lines += [f"- {text.strip()}" for text in self.before]
        lines += [f"+ {text.strip()}" for text in self.after]
        return "\n".join(lines)


# What is replaced within a line, and by what. The spaces keep operators of other meaning out, such
# as the brackets of a template.
REPLACEMENTS = [
    ("condition", r" == ", " != "),
    ("condition", r" != ", " == "),
    ("condition", r" && ", " || "),
    ("condition", r" \|\| ", " && "),
    ("condition", r"\bif \((?!!)(.+)\) (?=return|continue|break|throw|\{)", r"if (!(\1)) "),
    ("condition", r"(?<=[(&|] )!(?=\w)|(?<=\()!(?=\w)", ""),
    ("condition", r" \? (.+) : (.+?)(?=[;,)])", r" ? \2 : \1"),
    ("off by one", r" < ", " <= "),
    ("off by one", r" > (?=\w)", " >= "),
    ("off by one", r" <= ", " < "),
    ("off by one", r" >= ", " > "),
    ("off by one", r" \+ 1\b", ""),
    ("off by one", r" - 1\b", ""),
    ("off by one", r"(?<= )0(?=[;,)])", "1"),
    ("off by one", r"(?<= )1(?=[;,)])", "0"),
    ("off by one", r"\+\+(?=\w)", "--"),
    ("off by one", r"--(?=\w)", "++"),
    ("value", r"\btrue\b", "false"),
    ("value", r"\bfalse\b", "true"),
    ("value", r" \+= ", " = "),
    ("value", r" \|= ", " = "),
    ("missing null check", r"\w[\w.>-]* != nullptr && ", ""),
    ("missing null check", r"\w[\w.>-]* == nullptr \|\| ", ""),
]

STATEMENT = re.compile(r"^\s+[\w:*&.>\[\]<(-]+.*;$")
CALL = re.compile(r"^\s+(?!return|throw|delete|using|typedef|static_assert)[\w:.>-]+\(.*\);$")
ASSIGNMENT = re.compile(r"^\s+(?!const|static|int|bool|char|auto)[*\w.>\[\]-]+ = .*;$")
NULL_CHECK = re.compile(r"^\s+if \([^)]*nullptr\) (return|continue|break)\b.*;$")
LEAVES = re.compile(r"^\s+(return|throw|break|continue|goto|case|default)\b")


def code_of(line: str) -> str:
    """The line without its comment; empty for a line that holds no statement."""
    code = re.sub(r"\s*//.*$", "", line)
    if re.match(r"\s*(#|\*|/\*|static_assert|assert|using|namespace|template)", code):
        return ""
    return code


def quoted_spans(code: str) -> List[range]:
    return [range(*m.span()) for m in re.finditer(r'"(\\.|[^"\\])*"|\'(\\.|[^\'\\])*\'', code)]


def within_line(path: str, number: int, line: str, function: str) -> Iterator[Mutant]:
    code = code_of(line)
    quoted = quoted_spans(code)
    for kind, pattern, replacement in REPLACEMENTS:
        for match in re.finditer(pattern, code):
            if any(match.start() in span for span in quoted):
                continue
            changed = code[: match.start()] + match.expand(replacement) + code[match.end() :]
            yield Mutant(kind, path, number, [line], [changed], function)


def whole_lines(
    path: str, number: int, line: str, following: str, function: str
) -> Iterator[Mutant]:
    code = code_of(line)
    if CALL.match(code):
        yield Mutant("dropped call", path, number, [line], [";"], function)
    if ASSIGNMENT.match(code):
        yield Mutant("dropped assignment", path, number, [line], [";"], function)
    if NULL_CHECK.match(code):
        yield Mutant("missing null check", path, number, [line], [";"], function)
    both = [code, code_of(following)]
    if all(STATEMENT.match(text) and not LEAVES.match(text) for text in both) and (
        re.match(r"^\s*", code).group() == re.match(r"^\s*", following).group()
    ):
        yield Mutant("swapped order", path, number, [line, following], [following, line], function)


def mutants_of(path: str, text: str) -> List[Mutant]:
    """All mutants of a source, in the order of its lines."""
    lines = text.split("\n")
    found: List[Mutant] = []
    function = "outside of functions"
    for index, line in enumerate(lines):
        if re.match(r"[A-Za-z].*\(", line):
            function = line.rstrip(" {")
        found += within_line(path, index + 1, line, function)
        following = lines[index + 1] if index + 1 < len(lines) else ""
        found += whole_lines(path, index + 1, line, following, function)
    return found


def apply(mutant: Mutant, text: str) -> str:
    """The text of the source with the mutant's lines in place."""
    lines = text.split("\n")
    begin = mutant.line - 1
    assert lines[begin : begin + len(mutant.before)] == mutant.before
    lines[begin : begin + len(mutant.before)] = mutant.after
    return "\n".join(lines)
