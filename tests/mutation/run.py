"""Breaks the library on purpose, in one place at a time, and counts how often the tests notice."""

import argparse
import json
import os
import random
from typing import List

from build import FOLDER, Build
from checks import Checks
from judge import Journal, Judge, Run
from mutants import Mutant, mutants_of
from review import Review, report

JOURNAL = os.path.join(FOLDER, "journal")
SURVIVORS = os.path.join(FOLDER, "survivors.json")
REPORT = os.path.join(FOLDER, "report.md")


def all_mutants(build: Build, rooms: List[str]) -> List[Mutant]:
    return [mutant for name in build.sources(rooms) for mutant in mutants_of(name, build.text(name))]


def main() -> None:
    parser = argparse.ArgumentParser(prog="scripts/mutants")
    parser.add_argument("--count", type=int, default=300)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(10**6))
    parser.add_argument("--room", action="append", default=[])
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--again", action="store_true")
    parser.add_argument("--continue", action="store_true", dest="continues")
    arguments = parser.parse_args()

    review = Review()
    build = Build()
    build.prepare()
    found = all_mutants(build, arguments.room)
    journal = Journal(os.devnull if arguments.again else JOURNAL,
                      None if arguments.continues else arguments.seed)
    if arguments.again:
        with open(SURVIVORS, encoding="utf-8") as file:
            keys = json.load(file)
        mutants = [mutant for mutant in found if list(mutant.key()) in keys]
        count = len(mutants)
        print(f"{count} that survived the last time", flush=True)
    else:
        mutants = list(found)
        random.Random(journal.seed).shuffle(mutants)
        mutants = list({mutant.key(): mutant for mutant in mutants}.values())  # each once
        count = arguments.count
        print(f"seed {journal.seed}: {count} of {len(found)} mutants", flush=True)

    checks = Checks(build)
    judges = [Judge(number, build, checks, review) for number in range(arguments.jobs)]
    checks.prepare(judges[0].folder)
    run = Run(judges, journal)
    survivors = sorted(run.thorough(run.quick(mutants, count)), key=lambda m: (m.path, m.line))
    with open(SURVIVORS, "w", encoding="utf-8") as file:
        json.dump([mutant.key() for mutant in survivors], file)

    text = report(journal.seed, len(found), run.counts, survivors, review)
    with open(REPORT, "w", encoding="utf-8") as file:
        file.write(text)
    print("\n" + text)
    for mutant in survivors:
        print(f"{review.verdict(mutant) or '?'}: {mutant.describe()}\n")


if __name__ == "__main__":
    main()
