"""What people have judged of mutants that survived, and what is reported of a run."""

import os
from typing import Dict, List, Optional, Tuple

from checks import TIME_OUT
from mutants import Mutant

# What becomes of a mutant.
NOTICED, PASSED, REJECTED, SAME = "noticed", "passed", "does not compile", "same code"

FILE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "reviewed.txt")
VERDICTS = {
    "same": "nobody can observe it",
    "cost": "it takes more time or memory, and does the same",
    "expat": "only another Expat than that of the tests would show it",
    "memory": "the tests notice it when they are run with the address sanitizer",
}


class Review:
    """The judgements in reviewed.txt, which says how they are written."""

    def __init__(self, path: str = FILE):
        self._verdicts: Dict[Tuple[str, ...], str] = {}
        with open(path, encoding="utf-8") as file:
            blocks = file.read().split("\n\n")
        for block in blocks:
            lines = [line for line in block.split("\n") if line and not line.startswith("#")]
            if lines:
                self._read(lines)

    def _read(self, lines: List[str]) -> None:
        verdict, source, function = lines[0].split(": ", 2)
        if verdict not in VERDICTS:
            raise SystemExit(f"{FILE}: no verdict: {lines[0]}")
        before, after = (" ".join(" ".join(line[2:] for line in lines if line[:2] == sign).split())
                         for sign in ("- ", "+ "))
        if not before or not after or not lines[-1].startswith("= "):
            raise SystemExit(f"{FILE}: a line is missing: {lines[0]}")
        self._verdicts[(source, function, before, after)] = verdict

    def verdict(self, mutant: Mutant) -> Optional[str]:
        return self._verdicts.get(mutant.key())


def report(seed: int, candidates: int, counts: Dict[str, int], survivors: List[Mutant],
           review: Review) -> str:
    """What is worth keeping of a run, as a part of a page."""
    noticed = counts[NOTICED] + counts[TIME_OUT]
    verdicts = [review.verdict(mutant) for mutant in survivors]
    judged = {verdict: verdicts.count(verdict) for verdict in VERDICTS}
    shown = noticed + judged["memory"]
    unknown = [mutant for mutant in survivors if review.verdict(mutant) is None]
    rows = [
        ("mutants tried", f"{noticed + len(survivors)} of {candidates} with the seed {seed}"),
        ("replaced by others", f"{counts[REJECTED]} do not compile, "
         f"{counts[SAME]} are the same code"),
        ("noticed", f"{noticed}, of which {counts[TIME_OUT]} ran out of time"),
    ]
    rows += [("survived: " + VERDICTS[verdict], str(judged[verdict])) for verdict in VERDICTS]
    rows += [
        ("survived: others", str(len(unknown))),
        ("noticed of all but the judged", f"{percentage(noticed, noticed + len(unknown))} %"),
        ("noticed, with the sanitizer, of all that do something else",
         f"{percentage(shown, shown + judged['expat'] + len(unknown))} %"),
    ]
    text = "| | |\n|---|---|\n" + "".join(f"| {name} | {value} |\n" for name, value in rows)
    text += "\nThose that are judged are in `tests/mutation/reviewed.txt`, with the reason of each."
    if unknown:
        text += " The others:\n\n```text\n" + "\n".join(m.describe() for m in unknown) + "\n```"
    return text + "\n"


def percentage(part: int, whole: int) -> str:
    return f"{100.0 * part / max(whole, 1):.1f}"
