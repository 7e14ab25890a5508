"""The library and its tests as they are, and the library with one source changed.

What a changed library is made of is the same but for one source, so that one compilation and one
link make it. The programs of the tests are those of the library as it is: they load the changed one.
"""

import filecmp
import json
import os
import re
import shlex
import shutil
import subprocess
from typing import Dict, List

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
FOLDER = os.path.join(ROOT, "build", "mutants")
LIBRARIES = ["xmldom", "xmldom-support"]
PROGRAMS = ["xmldom-tests", "xmldom-soak-tests", "xmldom-allocation-tests", "xmldom-threads-tests"]


class Build:
    """A copy of the project below build/mutants/, so that the project can be worked on meanwhile."""

    def __init__(self) -> None:
        self.source = os.path.realpath(os.path.join(FOLDER, "copy"))
        self.folder = os.path.join(self.source, "build")
        self._compilations: Dict[str, str] = {}
        self._links: Dict[str, str] = {}
        self._objects: Dict[str, str] = {}

    def prepare(self) -> None:
        self._copy()
        # Neither for speed nor for size, and with each source of the library compiled by itself.
        subprocess.run(
            ["cmake", "-S", self.source, "-B", self.folder, "-G", "Ninja",
             "-DCMAKE_BUILD_TYPE=Mutants", "-DCMAKE_CXX_FLAGS=-O1",
             "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", "-DXMLDOM_BUILD_TOOL=OFF",
             "-DXMLDOM_BUILD_EXAMPLES=OFF", "-DXMLDOM_INSTALL=OFF"],
            check=True, stdout=subprocess.DEVNULL)
        subprocess.run(["ninja", "-C", self.folder] + LIBRARIES + PROGRAMS, check=True,
                       stdout=subprocess.DEVNULL)
        self._read_commands()

    def _copy(self) -> None:
        files = subprocess.run(
            ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
            cwd=ROOT, check=True, capture_output=True, text=True).stdout.split("\0")
        for name in filter(None, files):
            origin, target = os.path.join(ROOT, name), os.path.join(self.source, name)
            if not os.path.exists(origin) or _same(origin, target):
                continue
            os.makedirs(os.path.dirname(target), exist_ok=True)
            shutil.copyfile(origin, target)  # not its time: what was made of another is older
            shutil.copymode(origin, target)

    def _read_commands(self) -> None:
        with open(os.path.join(self.folder, "compile_commands.json"), encoding="utf-8") as file:
            for entry in json.load(file):
                name = os.path.relpath(entry["file"], self.source)
                if name.startswith("xmldom/"):
                    self._compilations[name] = entry["command"]
                    self._objects[name] = re.search(r" -o (\S+)", entry["command"]).group(1)
        for library in LIBRARIES:
            commands = subprocess.run(
                ["ninja", "-C", self.folder, "-t", "commands", library], check=True,
                capture_output=True, text=True).stdout.split("\n")
            self._links[library] = next(c for c in commands if f"-soname,lib{library}.so" in c)

    def compile(self, name: str, text: str, target: str) -> bool:
        """Compiles a text in place of the source of this name. False: it does not compile."""
        path = os.path.join(self.source, name)
        command = re.sub(r" -o \S+ -c .*", "", self._compilations[name])
        made = subprocess.run(
            shlex.split(command) + ["-w", "-iquote", os.path.dirname(path), "-o", target, "-c",
                                    "-x", "c++", "-"],
            input=f'#line 1 "{path}"\n{text}', cwd=self.folder, capture_output=True, text=True)
        return made.returncode == 0

    def link(self, name: str, compiled: str, folder: str) -> None:
        """Links the library that the source of this name belongs to, with another object for it."""
        library = "xmldom-support" if name.startswith("xmldom/support/") else "xmldom"
        command = self._links[library].replace(f" {self._objects[name]} ", f" {compiled} ")
        target = os.path.join(folder, re.search(r"-soname,(\S+)", command).group(1))
        command = re.sub(r" -o \S+", lambda match: f" -o {target}", command)
        subprocess.run(command, shell=True, check=True, cwd=self.folder)

    def sources(self, rooms: List[str]) -> List[str]:
        return [name for name in sorted(self._compilations)
                if not rooms or name.split("/")[1] in rooms]

    def text(self, name: str) -> str:
        with open(os.path.join(self.source, name), encoding="utf-8") as file:
            return file.read()

    def program(self, name: str) -> str:
        return os.path.join(self.folder, "tests", name)


def _same(one: str, other: str) -> bool:
    return os.path.exists(other) and filecmp.cmp(one, other, shallow=False)
