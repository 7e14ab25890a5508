#!/usr/bin/env python3
"""page.py RESULTS PAGE: replaces the figures of the page by those that were measured last.
page.py --goals RESULTS: prints ratios, and what there is about the goals of speed.

RESULTS is the folder that `scripts/bench` has filled. The figures of the page stand between
a comment that names them, as in <!-- goals -->, and <!-- end -->; its plots are made beside it.
"""

import collections
import math
import os
import pathlib
import platform
import re
import subprocess
import sys

from results import SETS, Key, Results

LIBRARIES = ["xmldom", "plain", "expat", "pugixml", "libxml2", "tinyxml2", "xerces-c"]
PLOTTED = ["load", "destroy", "write", "text", "select-attribute", "compare"]

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
    "text-references": Operation("text with references", "pugixml", None, None, None),
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
MOST_PEAK_TEXTS = 2.0
PEAK_ALLOWANCE = 128 * 1024  # what Expat needs besides, and whole pages
MOST_GROWTH = 1.5
MOST_CHILD_GROWTH = 3.0
MOST_SEARCH_RATIO = 2.0
MOST_KIBIBYTES = 112


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
    beside = fixed(plain[name].ratio if name in plain else None)
    return judged(f"time {what}", f"at most {most:.1f} times that at {base}",
                  f"{ratio:.2f} ({', '.join(name)}; plain {beside})", ratio <= most)


def memory_goals(results):
    flat = [load for load in results.loads if (load.sample, load.library) == ("flat", "xmldom")]
    records, heap = [sum(getattr(load, field) / load.nodes for load in flat)
                     for field in ("records", "heap")]
    peak, sample = max(results.peaks(PEAK_ALLOWANCE), default=(math.inf, "not measured"))
    return [
        judged("heap bytes a node, flat records: the records and their copies",
               f"at most {MOST_BYTES_PER_NODE}",
               f"{records:.1f} ({heap:.1f} with the parser and its copy of the text)",
               0 < records <= MOST_BYTES_PER_NODE),
        judged("peak of loading a file, without the tree",
               "Expat's copy of the text, and at most once the text besides: "
               f"{MOST_PEAK_TEXTS:.1f} texts and 128 KiB",
               f"{peak:.2f} texts ({sample})", peak <= MOST_PEAK_TEXTS),
    ]


def extreme_goals(results):
    done = [key for key in results.times if key.set == "extremes"]
    undone = [name for name in results.failed if "/extremes/" in name]
    all_of_it, first = [results.times.get(Key(name, "extremes", "levels", 10**5, "xmldom"))
                        for name in ("select-absent", "first-absent")]
    ratio = first / all_of_it if first and all_of_it else math.inf
    return [
        judged("10^6 levels and 10^7 siblings on a stack of 256 KiB", "everything is done",
               "not done: " + ", ".join(undone) if undone else f"{len(done)} steps done",
               done and not undone),
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


def ratio_rows(results, sets):
    """The ratios of all libraries for each operation that was measured."""
    for name, operation in OPERATIONS.items():
        ratios = [results.ratios(name, sets, library, operation.base) for library in LIBRARIES]
        if any(ratios):
            yield name, operation, [each and each.mean for each in ratios]


def ratio_table(results, sets):
    rows = [[operation.title, operation.base, *map(fixed, means)]
            for _, operation, means in ratio_rows(results, sets)]
    return table(["operation", "in multiples of"] + LIBRARIES, rows)


def document_table(results):
    rows = [[operation.title, key.sample, key.nodes, fixed(results.per_node(key)),
             operation.goal_base, fixed(results.ratio(key, operation.goal_base))]
            for name, operation in OPERATIONS.items() if operation.most
            for key in results.keys(name, SETS, "xmldom")]
    header = ["operation", "document", "nodes", "xmldom, ns a node", "in multiples of", "ratio"]
    return table(header, rows)


def profile_table(results):
    parts = ["Expat", "allocator", "own", "other"]
    rows = [[OPERATIONS[operation].title, library, fixed(sum(counts.values()), 0)]
            + [fixed(counts[part], 0) for part in parts]
            for (operation, library), counts in results.profile.items()]
    return table(["operation", "library", "all"] + parts, rows)


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
    plain = {name: fixed(growth.ratio) for name, growth in results.growth("plain").items()}
    rows = [[*name, few.nodes, fixed(results.per_node(few)), many.nodes,
             fixed(results.per_node(many)), fixed(ratio), plain.get(name, "n/a")]
            for name, (few, many, ratio) in results.growth("xmldom").items()]
    return table(["operation", "document", "nodes", "ns a node", "nodes", "ns a node", "ratio",
                  "ratio of the plain tree"], rows)


def extreme_table(results):
    rows = [[key.sample, key.nodes, key.operation, fixed(time / 1e6, 1), fixed(time / key.nodes, 1)]
            for key, time in results.times.items() if key.set == "extremes"]
    return table(["tree", "nodes", "operation", "ms", "ns a node"], rows)


def machine(results):
    cpuinfo = pathlib.Path("/proc/cpuinfo").read_text()
    processor = re.search("model name.*: (.*)|$", cpuinfo).group(1) or "unknown processor"
    memory = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE") >> 30
    system = platform.uname()
    half, most = [results.spreads[len(results.spreads) * part // 10] * 100 for part in (5, 9)]
    return "\n".join([
        f"- Date: {results.context['date'][:10]}",
        f"- Machine: {processor}, {os.cpu_count()} cores, {memory} GiB of memory; "
        f"{system.system} {system.release} {system.machine}",
        f"- Compiler: {results.context['compiler']}",
        f"- C library: {' '.join(platform.libc_ver())}",
        f"- Measured: {results.context['libraries']}",
        f"- Standard deviation of the repetitions: at most {half:.1f} % of the mean for half of "
        f"all times, at most {most:.1f} % for nine in ten",
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
    folder.mkdir(exist_ok=True)
    for operation in PLOTTED:
        libraries = [name for name in LIBRARIES if results.keys(operation, ["scale"], name)]
        rows = [["nodes"] + libraries]
        for key in results.keys(operation, ["scale"], "xmldom"):
            times = [results.times.get(key._replace(library=name)) for name in libraries]
            rows.append([key.nodes] + [time and time / key.nodes for time in times])
        plot(folder / f"{operation}.svg", SCALE_PLOT, rows, title=operation, size="800,480")
    rows = [["operation"] + LIBRARIES]
    rows += [[f'"{name} ({operation.base})"'] + means
             for name, operation, means in ratio_rows(results, ["small"])]
    title = "in multiples of the library in brackets, geometric means over the small documents"
    plot(folder / "ratios.svg", RATIO_PLOT, rows, title=title, size="1100,560")


def write_page(results, path):
    figures = {
        "machine": machine(results),
        "goals": all_goals(results),
        "small-ratios": ratio_table(results, ["small"]),
        "all-ratios": ratio_table(results, SETS),
        "documents": document_table(results),
        "profile": profile_table(results),
        "heap": memory_table(results, "heap"),
        "records": memory_table(results, "records"),
        "peak": memory_table(results, "peak"),
        "texts": table(["document", "texts"],
                       [[sample, fixed(texts)] for texts, sample in results.peaks(0)]),
        "sizes": table(["library", "text and data, KiB"],
                       [[name, fixed(size, 0)] for name, size in results.sizes.items()]),
        "growth": growth_table(results),
        "extremes": extreme_table(results),
    }
    page = re.sub("<!-- ([a-z-]+) -->\n.*?<!-- end -->",
                  lambda part: f"<!-- {part[1]} -->\n{figures[part[1]]}\n<!-- end -->",
                  path.read_text(), flags=re.DOTALL)
    path.write_text(page)
    write_plots(results, path.parent / "performance")


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    if sys.argv[1] == "--goals":
        results = Results(sys.argv[2])
        measured = [row for row in speed_goals(results) if row[3] != "n/a"]
        print(document_table(results), ratio_table(results, SETS), goal_table(measured), sep="\n\n")
    else:
        results = Results(sys.argv[1])
        write_page(results, pathlib.Path(sys.argv[2]))
    for name in results.failed:
        print("failed:", name, file=sys.stderr)


main()
