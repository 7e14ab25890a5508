"""Breaks the library on purpose, in one place at a time, and counts how often the tests notice.

Each job works in a copy of the project below build/mutants/. What is built there is a release
build of the library and of the tests that call it.
"""

import argparse
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import threading
import time
from concurrent.futures import ThreadPoolExecutor
from typing import List, Optional

from mutants import Mutant, apply, mutants_of

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
FOLDER = os.path.join(ROOT, "build", "mutants")
LIBRARIES = ["xmldom", "xmldom-support"]
PROGRAMS = ["xmldom-tests", "xmldom-allocation-tests", "xmldom-soak-tests", "xmldom-threads-tests"]


class Result:
    NOTICED = "noticed"
    SURVIVED = "survived"
    REJECTED = "does not compile"
    SAME = "same code"


class Job:
    """A copy of the project with a build of its own."""

    def __init__(self, number: int):
        self.source = os.path.join(FOLDER, str(number))
        self.build = os.path.join(self.source, "build")
        self.seconds = 0.0  # that the tests take on the library as it is

    def prepare(self) -> None:
        shutil.rmtree(self.source, ignore_errors=True)
        os.makedirs(self.source)
        files = subprocess.run(
            ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
            cwd=ROOT, check=True, capture_output=True).stdout.decode().split("\0")
        for name in filter(None, files):
            target = os.path.join(self.source, name)
            os.makedirs(os.path.dirname(target), exist_ok=True)
            if os.path.exists(os.path.join(ROOT, name)):
                shutil.copy2(os.path.join(ROOT, name), target, follow_symlinks=False)
        # Without the size limits and the instruction counts of a build that is optimised for size.
        subprocess.run(
            ["cmake", "-S", self.source, "-B", self.build, "-G", "Ninja",
             "-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG",
             "-DXMLDOM_BUILD_TOOL=OFF", "-DXMLDOM_BUILD_EXAMPLES=OFF", "-DXMLDOM_INSTALL=OFF"],
            check=True, stdout=subprocess.DEVNULL)
        subprocess.run(["ninja", "-C", self.build] + LIBRARIES + PROGRAMS, check=True,
                       stdout=subprocess.DEVNULL)
        begin = time.monotonic()
        failed = self.failing_test("")
        if failed is not None:
            sys.exit(f"the tests fail on the library as it is: {failed}")
        self.seconds = time.monotonic() - begin

    def run(self, program: str, gtest_filter: str, limit: float) -> Optional[str]:
        """The test that failed, or how the program ended; null when all passed."""
        environment = dict(os.environ, XMLDOM_CASES="400", XMLDOM_SECONDS="1")
        process = subprocess.Popen(
            [os.path.join(self.build, "tests", program), "--gtest_fail_fast", "--gtest_brief=1",
             "--gtest_filter=" + gtest_filter],
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, env=environment, cwd=self.build,
            start_new_session=True)
        watch = threading.Timer(limit, lambda: os.killpg(process.pid, signal.SIGKILL))
        watch.start()
        output = process.communicate()[0].decode(errors="replace")
        watch.cancel()
        if process.returncode == 0:
            return None
        named = re.search(r"^\[  FAILED  \] ([^\s,]+)", output, re.MULTILINE)
        return named.group(1) if named else f"{program} ended with {process.returncode}"

    def failing_test(self, subject: str) -> Optional[str]:
        """The first test that fails. Those that name the source `subject` run first."""
        limit = 4 * self.seconds + 60 if self.seconds > 0 else 3600
        if subject:
            failed = self.run("xmldom-tests", f"*{subject}*", limit)
            if failed is not None:
                return failed
        for program in PROGRAMS:
            failed = self.run(program, "*", limit)
            if failed is not None:
                return failed
        return None

    def objects(self) -> bytes:
        """The code of both libraries."""
        code = b""
        for library in LIBRARIES:
            path = os.path.join(self.build, "xmldom", f"lib{library}.so")
            code += subprocess.run(
                ["objdump", "--disassemble-all", "--section=.text", "--section=.rodata",
                 "--section=.data", "--no-show-raw-insn", path],
                check=True, capture_output=True).stdout
        return code

    def judge(self, mutant: Mutant, original: bytes) -> "tuple[str, str]":
        path = os.path.join(self.source, mutant.path)
        with open(path, encoding="utf-8") as file:
            text = file.read()
        try:
            with open(path, "w", encoding="utf-8") as file:
                file.write(apply(mutant, text))
            built = subprocess.run(["ninja", "-C", self.build] + LIBRARIES, capture_output=True)
            if built.returncode != 0:
                return Result.REJECTED, ""
            if self.objects() == original:
                return Result.SAME, ""
            subject = os.path.splitext(os.path.basename(mutant.path))[0]
            failed = self.failing_test(subject)
            return (Result.SURVIVED, "") if failed is None else (Result.NOTICED, failed)
        finally:
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)


def all_mutants(rooms: List[str]) -> List[Mutant]:
    names = subprocess.run(["git", "ls-files", "xmldom/*.cpp"], cwd=ROOT, check=True,
                           capture_output=True, text=True).stdout.split()
    found: List[Mutant] = []
    for name in names:
        if rooms and name.split("/")[1] not in rooms:
            continue
        with open(os.path.join(ROOT, name), encoding="utf-8") as file:
            found += mutants_of(name, file.read())
    return found


def main() -> None:
    parser = argparse.ArgumentParser(
        prog="scripts/mutants",
        description="Makes small mutants of the library's sources and counts how many of them the "
        "tests notice. Those that survive are listed at the end.")
    parser.add_argument("--count", type=int, default=300, help="how many mutants (%(default)s)")
    parser.add_argument("--seed", type=int, help="which mutants; printed when it is not given")
    parser.add_argument("--room", action="append", default=[],
                        help="a folder of xmldom/ to choose from; all unless given")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="(%(default)s)")
    arguments = parser.parse_args()

    seed = arguments.seed if arguments.seed is not None else random.SystemRandom().randrange(10**6)
    candidates = all_mutants(arguments.room)
    random.Random(seed).shuffle(candidates)
    print(f"seed {seed}: {arguments.count} of {len(candidates)} mutants", flush=True)

    jobs = [Job(number) for number in range(arguments.jobs)]
    for job in jobs:
        job.prepare()
    original = [job.objects() for job in jobs]
    lock = threading.Lock()
    counts = {Result.NOTICED: 0, Result.SURVIVED: 0, Result.REJECTED: 0, Result.SAME: 0}
    survivors: List[Mutant] = []
    started = 0

    def next_mutant() -> Optional[Mutant]:
        # Mutants that cannot be judged are replaced by others.
        nonlocal started
        with lock:
            if started >= arguments.count or not candidates:
                return None
            started += 1
            return candidates.pop()

    def work(number: int) -> None:
        nonlocal started
        mutant = next_mutant()
        while mutant is not None:
            result, why = jobs[number].judge(mutant, original[number])
            with lock:
                counts[result] += 1
                if result in (Result.REJECTED, Result.SAME):
                    started -= 1
                else:
                    print(f"{result}: {mutant.describe()}" + (f"\n  {why}" if why else ""),
                          flush=True)
                if result == Result.SURVIVED:
                    survivors.append(mutant)
            mutant = next_mutant()

    with ThreadPoolExecutor(arguments.jobs) as pool:
        list(pool.map(work, range(arguments.jobs)))

    judged = counts[Result.NOTICED] + counts[Result.SURVIVED]
    print(f"\nseed {seed}: {judged} mutants judged, {counts[Result.NOTICED]} noticed "
          f"({100.0 * counts[Result.NOTICED] / max(judged, 1):.1f} %)")
    print(f"not judged: {counts[Result.REJECTED]} do not compile, {counts[Result.SAME]} are the "
          "same code")
    for mutant in sorted(survivors, key=lambda m: (m.path, m.line)):
        print("survived: " + mutant.describe())


if __name__ == "__main__":
    main()
