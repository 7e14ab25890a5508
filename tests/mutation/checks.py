"""Runs the tests with a changed library, those that may notice it soonest first."""

import glob
import json
import os
import re
import signal
import subprocess
from typing import Dict, List, NamedTuple, Optional

from build import PROGRAMS, Build

# The slowest cases, which together take this share of the time of all, are run among the last.
SLOW_SHARE = 0.7
# What a program may take, with the library as it is and with a changed one.
MEMORY_BYTES = 8 * 1024**3
WALL_SECONDS = 1800
# How much of the random cases is run.
LESS = {"XMLDOM_CASES": "200", "XMLDOM_SECONDS": "1"}

TIME_OUT = "out of time"


class Check(NamedTuple):
    """Some cases of a program of tests."""

    program: str
    gtest_filter: str
    seconds: int  # of processor time that a changed library may take


class Checks:
    """What is run, and in which order."""

    def __init__(self, build: Build):
        self._build = build
        self._suites = _suites_of_rooms(build.source)
        self._slow: List[str] = []
        self._seconds: Dict[str, float] = {}

    def prepare(self, folder: str) -> None:
        """Runs all with the library as it is, and takes its times."""
        for program in PROGRAMS:
            result = os.path.join(folder, "result.json")
            before = os.times()
            failed = self._run(Check(program, "*", WALL_SECONDS), folder,
                               [f"--gtest_output=json:{result}"])
            after = os.times()
            if failed is not None:
                raise SystemExit(f"the tests fail with the library as it is: {failed}")
            self._seconds[program] = (after.children_user - before.children_user +
                                      after.children_system - before.children_system)
            if program == "xmldom-tests":
                self._slow = _slow_cases(result)

    def quick(self, source: str) -> List[Check]:
        """What notices most changes of a source: the quick cases of its room, then all others."""
        room = ":".join(f"{suite}.*:*/{suite}.*:*/{suite}/*.*"
                        for suite in self._suites.get(source.split("/")[1], []))
        slow = ":".join(self._slow)
        seconds = int(2 * (1 - SLOW_SHARE) * self._seconds[PROGRAMS[0]]) + 5
        first = [Check(PROGRAMS[0], f"{room}-{slow}", seconds)] if room else []
        return first + [Check(PROGRAMS[0], f"-{room}:{slow}" if room else f"-{slow}", seconds)]

    def thorough(self) -> List[Check]:
        """All the rest."""
        soak, *others = PROGRAMS[1:]
        return ([self._check(soak, "*"), self._check(PROGRAMS[0], ":".join(self._slow))] +
                [self._check(program, "*") for program in others])

    def _check(self, program: str, gtest_filter: str) -> Check:
        return Check(program, gtest_filter, int(2 * self._seconds[program]) + 5)

    def failure(self, checks: List[Check], folder: str) -> Optional[str]:
        """The first case that fails, or how its program ended; null when all pass."""
        for check in checks:
            failed = self._run(check, folder, [])
            if failed is not None:
                return failed
        return None

    def _run(self, check: Check, folder: str, options: List[str]) -> Optional[str]:
        """Runs the cases with the libraries in a folder, as far as there are any."""
        process = subprocess.Popen(
            ["prlimit", f"--cpu={check.seconds}", f"--as={MEMORY_BYTES}", "--core=0",
             self._build.program(check.program), "--gtest_fail_fast", "--gtest_brief=1",
             f"--gtest_filter={check.gtest_filter}"] + options,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, cwd=folder, start_new_session=True,
            env=dict(os.environ, LD_LIBRARY_PATH=folder, **LESS))
        try:
            output = process.communicate(timeout=WALL_SECONDS)[0].decode(errors="replace")
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            process.communicate()
            return TIME_OUT
        if process.returncode == 0:
            return None
        if process.returncode in (-signal.SIGXCPU, -signal.SIGKILL):
            return TIME_OUT
        named = re.search(r"^\[  FAILED  \] (\S+?),? ", output, re.MULTILINE)
        return named.group(1) if named else f"{check.program} ended with {process.returncode}"


def _suites_of_rooms(source: str) -> Dict[str, List[str]]:
    """The suites of the cases in each folder of tests/."""
    suites: Dict[str, List[str]] = {}
    for path in sorted(glob.glob(os.path.join(source, "tests", "*", "*_test.cpp"))):
        with open(path, encoding="utf-8") as file:
            found = re.findall(r"^TEST(?:_F|_P)?\((\w+),", file.read(), re.MULTILINE)
        room = os.path.basename(os.path.dirname(path))
        suites[room] = sorted(set(suites.get(room, []) + found))
    return suites


def _slow_cases(result: str) -> List[str]:
    with open(result, encoding="utf-8") as file:
        suites = json.load(file)["testsuites"]
    times = sorted(((float(case["time"].rstrip("s")), f"{suite['name']}.{case['name']}")
                    for suite in suites for case in suite["testsuite"]), reverse=True)
    slow, left = [], SLOW_SHARE * sum(seconds for seconds, _ in times)
    for seconds, name in times:
        if left <= 0:
            break
        slow.append(name)
        left -= seconds
    return slow
