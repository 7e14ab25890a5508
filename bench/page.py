#!/usr/bin/env python3
"""page.py RESULTS PAGE: writes the page of all results, and its plots beside it.
page.py --goals RESULTS: prints ratios, and what there is about the goals of speed.

RESULTS is the folder that `scripts/bench` has filled. The prose of the page is in page.md.in.
"""

import collections
import datetime
import json
import math
import os
import platform
import re
import statistics
import subprocess
import sys

LIBRARIES = ["xmldom", "plain", "expat", "pugixml", "libxml2", "tinyxml2", "xerces-c"]
SETS = ["small", "large", "real"]  # the documents that operations are compared on
PLOTTED = ["load", "destroy", "write", "text", "select-attribute", "compare"]
PROFILED = ["load", "destroy", "append", "insert-first", "remove-first"]

Operation = collections.namedtuple("Operation", "title base goal_base most most_on_any")

# The title in tables; the library that the ratios of all libraries are multiples of; and the goal:
# a library, the most that the geometric mean over the documents may be in multiples of it, and the
# most on any document.
OPERATIONS = {
    "load": Operation("load", "expat", "plain", 1.0, 1.15),
    "load-destroy": Operation("load and destroy", "plain", "plain", 1.0, None),
    "destroy": Operation("destroy", "plain", None, None, None),
    "write": Operation("write", "pugixml", "pugixml", 0.8, 1.2),
    "text": Operation("text of the root", "pugixml", "pugixml", 0.7, None),
    "select-name": Operation("select all `//name`", "pugixml", "pugixml", 1.0, 2.0),
    "select-attribute": Operation(
        "select all `//name[@attr='value']`", "pugixml", "pugixml", 1.0, 2.0),
    "select-path": Operation("select all `/a/b/c`", "pugixml", "pugixml", 1.0, 2.0),
    "first-found": Operation("select first, found", "pugixml", "pugixml", 0.3, None),
    "first-absent": Operation("select first, not there", "pugixml", "pugixml", 1.0, None),
    "compare": Operation("compare with an equal tree", "plain", "plain", 1.0, None),
    "append": Operation("append one by one", "pugixml", "pugixml", 1.5, None),
    "insert-first": Operation("insert before the first", "pugixml", "pugixml", 1.5, None),
    "remove-first": Operation("remove the first", "pugixml", "pugixml", 1.5, None),
}

# The goals that are no ratios between libraries.
MOST_BYTES_PER_NODE = 145
MOST_PEAK_TEXTS = 1.0
PEAK_ALLOWANCE = 128 * 1024  # what Expat needs besides, and whole pages
MOST_GROWTH = 1.5
MOST_CHILD_GROWTH = 3.0
MOST_SEARCH_RATIO = 2.0
MOST_KIBIBYTES = 112

Key = collections.namedtuple("Key", "operation set sample nodes library")
Load = collections.namedtuple("Load", "sample nodes bytes library heap records peak")
Step = collections.namedtuple("Step", "tree nodes name nanoseconds")
Ratios = collections.namedtuple("Ratios", "mean worst sample")
Growth = collections.namedtuple("Growth", "few many ratio")


class Results:
    """All that was measured; a part that is missing is empty."""

    def __init__(self, folder):
        self.folder = folder
        self.context = {}
        self.times = {}  # of a Key: nanoseconds, the median of the repetitions
        self.spreads = []  # standard deviations in multiples of the means
        for part in SETS + ["growth", "scale"]:
            self.read_benchmarks(part + ".json")
        self.spreads.sort()
        self.loads = [Load(row[0], *map(int, row[1:3]), row[3], *map(int, row[4:]))
                      for row in self.rows("memory.tsv")]
        self.steps = [Step(tree, int(nodes), name, float(nanoseconds))
                      for tree, nodes, name, nanoseconds in self.rows("extremes.tsv")]
        self.sizes = collections.Counter()
        for library, size in self.rows("sizes.tsv"):
            self.sizes[library] += int(size) / 1024

    def text(self, name):
        path = os.path.join(self.folder, name)
        if not os.path.exists(path):
            return ""
        with open(path, encoding="utf-8") as file:
            return file.read()

    def rows(self, name):
        return [line.split("\t") for line in self.text(name).splitlines()]

    def read_benchmarks(self, name):
        """The file has one JSON document for each group of benchmarks that took turns."""
        text = self.text(name).strip()
        while text:
            document, end = json.JSONDecoder().raw_decode(text)
            text = text[end:].lstrip()
            self.context = document["context"]
            for run in document["benchmarks"]:
                operation, group, sample, nodes, library = run["run_name"].split("/")[:5]
                if run.get("aggregate_name") == "median":
                    key = Key(operation, group, sample, int(nodes), library)
                    self.times[key] = run["real_time"]
                elif run.get("aggregate_name") == "cv":
                    self.spreads.append(run["real_time"])

    def keys(self, operation, sets, library):
        return [key for key in self.times
                if key.operation == operation and key.set in sets and key.library == library]

    def per_node(self, key):
        return self.times[key] / key.nodes

    def ratio(self, key, base):
        """What a key's library takes in multiples of another; None where that takes no part."""
        other = self.times.get(key._replace(library=base))
        return other and self.times[key] / other

    def ratios(self, operation, sets, library, base):
        """Over all documents that both have done; None when there is none."""
        keys = self.keys(operation, sets, library)
        ratios = [(self.ratio(key, base), key.sample) for key in keys if self.ratio(key, base)]
        mean = ratios and statistics.geometric_mean(ratio for ratio, _ in ratios)
        return Ratios(mean, *max(ratios)) if ratios else None

    def growth(self, library):
        """The pairs of a document and a larger one, by operation and document."""
        pairs = collections.defaultdict(list)
        for key in sorted(self.times, key=lambda key: key.nodes):
            if key.set == "growth" and key.library == library:
                pairs[key.operation, key.sample].append(key)
        return {name: Growth(*pair, self.per_node(pair[1]) / self.per_node(pair[0]))
                for name, pair in pairs.items() if len(pair) == 2}

    def peaks(self, allowance):
        """What xmldom's loads need beside the records at their peak, in multiples of the text."""
        return [((load.peak - load.records - allowance) / load.bytes, load.sample)
                for load in self.loads if load.library == "xmldom"]

    def profile(self, operation, library):
        """The instructions that Callgrind has counted, by whose they are.

        An object or a function is named once and has a number from then on. The line behind
        "calls=" counts what was called, which has lines of its own.
        """
        allocator = re.compile("malloc|calloc|realloc|free|unlink_chunk|operator (new|delete)")
        own = {"xmldom": "libxmldom", "plain": "xmldom-bench"}.get(library, library)
        names, current = {}, {"ob": "", "fn": ""}
        parts = collections.Counter()
        is_of_callee = False
        for line in self.text(f"profile/{operation}.{library}").splitlines():
            word, _, rest = line.partition("=")
            if word in ("ob", "fn", "cob", "cfn"):
                number, _, name = rest.partition(" ")
                name = names.setdefault((word[-2:], number), name)
                if word in current:
                    current[word] = name
            elif word == "calls":
                is_of_callee = True
            elif re.match("[-+*0-9]", line):
                part = ("expat" if "libexpat" in current["ob"] else
                        "allocator" if allocator.search(current["fn"]) else
                        "own" if own in current["ob"] else "other")
                parts[part] += 0 if is_of_callee else int(line.split()[1])
                is_of_callee = False
        return parts


def table(header, rows):
    """A table in Markdown, its columns aligned so that it can be read as it stands."""
    rows = [[str(cell) for cell in row] for row in [header] + rows]
    widths = [max(map(len, column)) for column in zip(*rows)]
    lines = ["| " + " | ".join(map(str.ljust, row, widths)) + " |" for row in rows]
    lines.insert(1, "|" + "|".join("-" * (width + 2) for width in widths) + "|")
    return "\n".join(lines)


def fixed(value, decimals=2):
    return "n/a" if value is None else f"{value:.{decimals}f}"


def judged(what, goal, measured, is_met, on_all_documents=""):
    return [what, goal, measured, on_all_documents, "yes" if is_met else "NO"]


def speed_goals(results):
    rows = []
    for name, operation in OPERATIONS.items():
        if not operation.most:
            continue
        goal = f"at most {operation.most:.2f} times {operation.goal_base}"
        if operation.most_on_any:
            goal += f", on none above {operation.most_on_any:.2f}"
        small, everywhere = [results.ratios(name, sets, "xmldom", operation.goal_base)
                             for sets in (["small"], SETS)]
        cells = [f"{each.mean:.2f} ({each.worst:.2f} on {each.sample})" if each else "n/a"
                 for each in (small, everywhere)]
        is_met = (small and small.mean <= operation.most
                  and small.worst <= (operation.most_on_any or math.inf))
        rows.append(judged(operation.title, goal, cells[0], is_met, cells[1]))
    return rows


def growth_goal(results, of_edits, what, base, most):
    """The worst growth of the edits, or of all else."""
    plain = results.growth("plain")
    growths = [(growth.ratio, name) for name, growth in results.growth("xmldom").items()
               if (name[1] == "children") == of_edits]
    ratio, name = max(growths, default=(math.inf, ("not measured",)))
    beside = fixed(name in plain and plain[name].ratio)
    return judged(f"time {what}", f"at most {most:.1f} times that at {base}",
                  f"{ratio:.2f} ({', '.join(name)}; plain {beside})", ratio <= most)


def memory_goals(results):
    flat = [load for load in results.loads if (load.sample, load.library) == ("flat", "xmldom")]
    heap = sum(load.heap / load.nodes for load in flat)
    peak, sample = max(results.peaks(PEAK_ALLOWANCE), default=(math.inf, "not measured"))
    return [
        judged("heap bytes a node, flat records: all that a document keeps without its parser",
               f"at most {MOST_BYTES_PER_NODE}", f"{heap:.1f}", 0 < heap <= MOST_BYTES_PER_NODE),
        judged("peak of loading a file, without the tree",
               f"Expat's copy of the text: {MOST_PEAK_TEXTS:.1f} texts and 128 KiB",
               f"{peak:.2f} texts ({sample})", peak <= MOST_PEAK_TEXTS),
    ]


def extreme_goals(results):
    undone = [f"{step.tree} of {step.nodes}" for step in results.steps if step.name == "NOT DONE"]
    times = {step.name: step.nanoseconds for step in results.steps}
    ratio = times.get("select first `//a/b`", math.inf) / times.get("select all `//a/b`", 1)
    return [
        judged("10^6 levels and 10^7 siblings on a stack of 256 KiB", "everything is done",
               "not done: " + ", ".join(undone) if undone else f"{len(results.steps)} steps done",
               results.steps and not undone),
        judged("`//a/b` that fails on 10^5 nested `a`, select first",
               f"at most {MOST_SEARCH_RATIO:.1f} times select all",
               fixed(ratio), ratio <= MOST_SEARCH_RATIO),
    ]


def size_goal(results):
    size = results.sizes["xmldom"]
    return judged("both shared libraries, stripped, text and data",
                  f"at most {MOST_KIBIBYTES} KiB", f"{size:.0f} KiB", 0 < size <= MOST_KIBIBYTES)


def goal_table(rows):
    return table(["what", "goal", "small documents", "all documents", "met"], rows)


def all_goals(results):
    return goal_table([
        *speed_goals(results),
        growth_goal(results, True, "a child at 10^6 children", "10^4", MOST_CHILD_GROWTH),
        *memory_goals(results),
        growth_goal(results, False, "a node at 10^6 nodes", "10^5", MOST_GROWTH),
        *extreme_goals(results),
        size_goal(results),
    ])


def ratio_table(results, sets):
    rows = []
    for name, operation in OPERATIONS.items():
        ratios = [results.ratios(name, sets, library, operation.base) for library in LIBRARIES]
        if any(ratios):
            cells = [fixed(each and each.mean) for each in ratios]
            rows.append([operation.title, operation.base] + cells)
    return table(["operation", "in multiples of"] + LIBRARIES, rows)


def document_table(results):
    rows = [[operation.title, key.sample, key.nodes, fixed(results.per_node(key)),
             operation.goal_base, fixed(results.ratio(key, operation.goal_base))]
            for name, operation in OPERATIONS.items() if operation.most
            for key in results.keys(name, SETS, "xmldom")]
    header = ["operation", "document", "nodes", "xmldom, ns a node", "in multiples of", "ratio"]
    return table(header, rows)


def profile_table(results):
    rows = []
    for operation in PROFILED:
        for library in ("xmldom", "plain", "pugixml"):
            parts = results.profile(operation, library)
            nodes = int(results.text(f"profile/{operation}.{library}.nodes") or 1)
            counts = [sum(parts.values())]
            counts += [parts[part] for part in ("expat", "allocator", "own", "other")]
            cells = [fixed(count / nodes, 0) for count in counts]
            rows.append([OPERATIONS[operation].title, library] + cells)
    return table(["operation", "library", "all", "Expat", "allocator", "own", "other"], rows)


def memory_table(results, field):
    """Bytes a node: a row for each document, a column for each library that knows any."""
    bytes_of = {(load.sample, load.nodes, load.library): getattr(load, field) / load.nodes
                for load in results.loads if getattr(load, field) > 0}
    libraries = [name for name in LIBRARIES if any(name == key[2] for key in bytes_of)]
    documents = dict.fromkeys(key[:2] for key in bytes_of)
    rows = [[*document] + [fixed(bytes_of.get((*document, name)), 1) for name in libraries]
            for document in documents]
    return table(["document", "nodes"] + libraries, rows)


def growth_table(results):
    plain = results.growth("plain")
    rows = [[*name, few.nodes, fixed(results.per_node(few)), many.nodes,
             fixed(results.per_node(many)), fixed(ratio), fixed(plain[name].ratio)]
            for name, (few, many, ratio) in results.growth("xmldom").items() if name in plain]
    return table(["operation", "document", "nodes", "ns a node", "nodes", "ns a node", "ratio",
                  "ratio of the plain tree"], rows)


def step_table(results):
    rows = [[step.tree, step.nodes, step.name, fixed(step.nanoseconds / 1e6, 1),
             fixed(step.nanoseconds / step.nodes, 1)] for step in results.steps]
    return table(["tree", "nodes", "step", "ms", "ns a node"], rows)


def machine(results):
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        processor = re.search("model name.*: (.*)|$", file.read()).group(1) or "unknown processor"
    memory = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE") >> 30
    system = platform.uname()
    return "\n".join([
        f"- Date: {datetime.date.today()}",
        f"- Machine: {processor}, {os.cpu_count()} cores, {memory} GiB of memory; "
        f"{system.system} {system.release} {system.machine}",
        f"- Compiler: {results.context.get('compiler')}",
        f"- C library: {' '.join(platform.libc_ver())}",
        f"- Measured: {results.context.get('libraries')}",
    ])


PLOT = """set terminal svg size {size} font "sans,13" background "white"
set title "{title}" noenhanced
set datafile missing "?"
set key outside right noenhanced
$data << EOD
{data}
EOD
"""
SCALE_PLOT = PLOT + """set logscale xy
set xrange [800:1250000]
set format x "10^{{%T}}"
set xlabel "nodes"
set ylabel "ns a node"
set grid
plot for [column = 2:{columns}] $data using 1:column \\
  title columnheader(column) with linespoints linewidth 2 pointtype 7 pointsize 0.5
"""
RATIO_PLOT = PLOT + """set logscale y
set grid ytics
set style data histogram
set style histogram clustered gap 2
set style fill solid 0.8 noborder
set xtics rotate by -40 noenhanced
plot for [column = 2:{columns}] $data using column:xticlabels(1) title columnheader(column)
"""


def plot(path, script, rows, **words):
    """Writes a plot; `rows` begin with the names of the columns; None is a missing value."""
    if len(rows) < 2:
        return
    lines = [" ".join("?" if cell is None else str(cell) for cell in row) for row in rows]
    script = script.format(data="\n".join(lines), columns=len(rows[0]), **words)
    with open(path, "w", encoding="utf-8") as file:
        subprocess.run(["gnuplot"], input=script, stdout=file, check=True, text=True)


def write_plots(results, folder):
    os.makedirs(folder, exist_ok=True)
    for operation in PLOTTED:
        libraries = [name for name in LIBRARIES if results.keys(operation, ["scale"], name)]
        rows = [["nodes"] + libraries]
        for key in results.keys(operation, ["scale"], "xmldom"):
            times = [results.times.get(key._replace(library=name)) for name in libraries]
            rows.append([key.nodes] + [time and time / key.nodes for time in times])
        plot(f"{folder}/{operation}.svg", SCALE_PLOT, rows, title=operation, size="800,480")
    rows = [["operation"] + LIBRARIES]
    for name, operation in OPERATIONS.items():
        ratios = [results.ratios(name, ["small"], library, operation.base) for library in LIBRARIES]
        rows.append([f'"{name} ({operation.base})"'] + [each and each.mean for each in ratios])
    title = "in multiples of the library in brackets, geometric means over the small documents"
    plot(f"{folder}/ratios.svg", RATIO_PLOT, rows, title=title, size="1100,560")


def write_page(results, path):
    with open(os.path.join(os.path.dirname(__file__), "page.md.in"), encoding="utf-8") as file:
        prose = file.read()
    spreads = results.spreads or [0]
    page = prose.format(
        machine=machine(results),
        half_spread=fixed(spreads[len(spreads) // 2] * 100, 1),
        most_spread=fixed(spreads[len(spreads) * 9 // 10] * 100, 1),
        goals=all_goals(results),
        plots="\n\n".join(
            f"![{OPERATIONS[each].title}](performance/{each}.svg)" for each in PLOTTED),
        small_ratios=ratio_table(results, ["small"]),
        all_ratios=ratio_table(results, SETS),
        documents=document_table(results),
        profile=profile_table(results),
        heap=memory_table(results, "heap"),
        records=memory_table(results, "records"),
        peak=memory_table(results, "peak"),
        texts=table(["document", "texts"],
                    [[sample, fixed(texts)] for texts, sample in results.peaks(0)]),
        sizes=table(["library", "text and data, KiB"],
                    [[name, fixed(size, 0)] for name, size in results.sizes.items()]),
        growth=growth_table(results),
        steps=step_table(results),
    )
    with open(path, "w", encoding="utf-8") as file:
        file.write(page)
    write_plots(results, os.path.join(os.path.dirname(path), "performance"))


if len(sys.argv) != 3:
    sys.exit(__doc__)
elif sys.argv[1] == "--goals":
    found = Results(sys.argv[2])
    measured = [row for row in speed_goals(found) if row[3] != "n/a"]
    print(document_table(found), ratio_table(found, SETS), goal_table(measured), sep="\n\n")
else:
    write_page(Results(sys.argv[1]), sys.argv[2])
