"""Tells of each mutant whether the tests notice it, several at once."""

import json
import os
import shutil
import threading
from concurrent.futures import ThreadPoolExecutor
from typing import Callable, Dict, List, Optional, Tuple

from build import FOLDER, Build
from checks import TIME_OUT, Checks
from mutants import Mutant, apply
from review import NOTICED, PASSED, REJECTED, SAME, Review


class Judge:
    """Tells what becomes of mutants; for one thread each."""

    def __init__(self, number: int, build: Build, checks: Checks, review: Review):
        self._build = build
        self._review = review
        self._checks = checks
        self.folder = os.path.join(FOLDER, f"job-{number}")
        shutil.rmtree(self.folder, ignore_errors=True)  # an earlier run may have left a library
        os.makedirs(self.folder)
        self._unchanged: Dict[str, bytes] = {}

    def make(self, mutant: Mutant) -> Optional[str]:
        """Puts the changed library into the folder, and nothing else. Returns why it cannot."""
        for name in os.listdir(self.folder):
            if ".so." in name:
                os.remove(os.path.join(self.folder, name))
        text = self._build.text(mutant.path)
        target = os.path.join(self.folder, "changed.o")
        if mutant.path not in self._unchanged:
            assert self._build.compile(mutant.path, text, target)
            self._unchanged[mutant.path] = _bytes(target)
        if not self._build.compile(mutant.path, apply(mutant, text), target):
            return REJECTED
        if _bytes(target) == self._unchanged[mutant.path]:
            return SAME
        self._build.link(mutant.path, target, self.folder)
        return None

    def quick(self, mutant: Mutant) -> Tuple[str, str]:
        kept_out = self.make(mutant)
        if kept_out is not None:
            return kept_out, ""
        if self._review.verdict(mutant) == "same":
            return PASSED, ""  # nothing can notice it
        failed = self._checks.failure(self._checks.quick(mutant.path), self.folder)
        return (PASSED, "") if failed is None else (NOTICED, failed)

    def thorough(self, mutant: Mutant) -> Tuple[str, str]:
        if self._review.verdict(mutant) is not None:
            return PASSED, ""  # judged already
        self.make(mutant)
        failed = self._checks.failure(self._checks.thorough(), self.folder)
        return (PASSED, "") if failed is None else (NOTICED, failed)


def _bytes(path: str) -> bytes:
    with open(path, "rb") as file:
        return file.read()


class Journal:
    """What the quick tests have said of mutants, so that a run that was ended can be continued."""

    def __init__(self, path: str, seed: Optional[int]):
        """Begins a new one for a seed, or goes on with the last for none."""
        self._path = path
        self.known: Dict[Tuple[str, ...], Tuple[str, str]] = {}
        if seed is not None:
            self.seed = seed
            with open(path, "w", encoding="utf-8") as file:
                file.write(f"{seed}\n")
            return
        with open(path, encoding="utf-8") as file:
            self.seed = int(file.readline())
            for line in file:
                key, result, why = json.loads(line)
                if result != PASSED:  # there may be new tests
                    self.known[tuple(key)] = (result, why)

    def add(self, mutant: Mutant, result: str, why: str) -> None:
        with open(self._path, "a", encoding="utf-8") as file:
            file.write(json.dumps([mutant.key(), result, why]) + "\n")


class Run:
    """Judges mutants, several at once, and counts."""

    def __init__(self, judges: List[Judge], journal: Journal):
        self._judges = judges
        self._journal = journal
        self._lock = threading.Lock()
        self.counts = {NOTICED: 0, TIME_OUT: 0, REJECTED: 0, SAME: 0}

    def quick(self, candidates: List[Mutant], count: int) -> List[Mutant]:
        """Judges so many, in place of those that cannot be judged others. Returns what passed."""

        def judged_by(judge: Judge, mutant: Mutant) -> Tuple[str, str]:
            known = self._journal.known.get(mutant.key())
            if known is not None:
                return known
            result, why = judge.quick(mutant)
            with self._lock:
                self._journal.add(mutant, result, why)
            return result, why

        return self._each(candidates, count, judged_by)

    def thorough(self, mutants: List[Mutant]) -> List[Mutant]:
        return self._each(mutants, len(mutants), Judge.thorough)

    def _each(self, mutants: List[Mutant], count: int,
              judged_by: Callable[[Judge, Mutant], Tuple[str, str]]) -> List[Mutant]:
        waiting = list(reversed(mutants))
        passed: List[Mutant] = []
        left = count

        def work(judge: Judge) -> None:
            nonlocal left
            while True:
                with self._lock:
                    if left == 0 or not waiting:
                        return
                    left -= 1
                    mutant = waiting.pop()
                result, why = judged_by(judge, mutant)
                with self._lock:
                    if result in (REJECTED, SAME):
                        left += 1
                    else:
                        print(f"{result}: {mutant.describe()}" + (f"\n  {why}" if why else ""),
                              flush=True)
                    if result == PASSED:
                        passed.append(mutant)
                    else:
                        self.counts[TIME_OUT if why == TIME_OUT else result] += 1

        with ThreadPoolExecutor(len(self._judges)) as pool:
            list(pool.map(work, self._judges))
        return passed
