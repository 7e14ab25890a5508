#!/usr/bin/env python3
"""page.py RESULTS PAGE: replaces the figures of the page by those that were measured last.
page.py --goals RESULTS: prints ratios, and what there is about the goals of speed.

RESULTS is the folder that `scripts/bench` has filled. The figures of the page stand between
a comment that names them, as in <!-- goals -->, and <!-- end -->; its plots are made beside it.
"""

import os
import pathlib
import platform
import re
import statistics
import subprocess
import sys

from goals import OPERATIONS, all_goals, fixed, speed_goals, step_goals
from results import SETS, Results

LIBRARIES = ["xmldom", "plain", "expat", "pugixml", "libxml2", "tinyxml2", "xerces-c"]
PLOTTED = ["load", "destroy", "write", "text", "select-attribute", "compare"]


def table(header, rows):
    """A table in Markdown, its columns aligned so that it can be read as it stands."""
    rows = [[str(cell) for cell in row] for row in [header] + rows]
    widths = [max(map(len, column)) for column in zip(*rows)]
    lines = ["| " + " | ".join(map(str.ljust, row, widths)) + " |" for row in rows]
    lines.insert(1, "|" + "|".join("-" * (width + 2) for width in widths) + "|")
    return "\n".join(lines)


def goal_table(rows):
    return table(["what", "goal", "small documents", "all documents", "met"], rows)


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


def destruction_table(results):
    """A row for each document; for each C library what both orders take, and the ratio of the sums."""
    least = results.destructions()
    ratios = {"glibc": [], "musl": []}
    rows = []
    for sample, nodes in dict.fromkeys(key[:2] for key in least):
        cells = [sample, nodes]
        for library in ratios:
            orders = [least[sample, nodes, library, order] for order in ("backwards", "forwards")]
            cells += [" + ".join(fixed(time, 1) for time in making) for making in orders]
            ratios[library].append(sum(orders[1]) / sum(orders[0]))
            cells.append(fixed(ratios[library][-1]))
        rows.append(cells)
    if rows:
        cells = ["geometric mean", ""]
        for of_documents in ratios.values():
            cells += ["", "", fixed(statistics.geometric_mean(of_documents))]
        rows.append(cells)
    return table(["document", "nodes"] + [f"{library}{what}" for library in ratios for what in
                                          (", backwards", ", forwards", ", ratio of sums")], rows)


def threads_table(results):
    rows = [[library, nodes, fixed(one / 1e3, 1), fixed(two / 1e3, 1), fixed(one / two)]
            for (library, nodes), (one, two) in results.threads().items()]
    return table(["library", "nodes", "one thread, µs a document", "two threads, µs a document",
                  "work of two threads, in multiples of one"], rows)


def machine(results):
    cpuinfo = pathlib.Path("/proc/cpuinfo").read_text()
    processor = re.search("model name.*: (.*)|$", cpuinfo).group(1) or "unknown processor"
    memory = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE") >> 30
    system = platform.uname()
    commit = subprocess.run(["git", "describe", "--always", "--dirty"], stdout=subprocess.PIPE,
                            text=True).stdout.strip() or "unknown"
    half, most = [results.spreads[len(results.spreads) * part // 10] * 100 for part in (5, 9)]
    return "\n".join([
        f"- Date: {results.context['date'][:10]}",
        f"- Sources of xmldom: commit {commit}",
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
        "goals": goal_table(all_goals(results)),
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
        "threads": threads_table(results),
        "destruction": destruction_table(results),
        "extremes": extreme_table(results),
    }
    page = re.sub("<!-- ([a-z-]+) -->\n.*?<!-- end -->",
                  lambda part: f"<!-- {part[1]} -->\n\n{figures[part[1]]}\n\n<!-- end -->",
                  path.read_text(), flags=re.DOTALL)
    path.write_text(page)
    write_plots(results, path.parent / "performance")


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    if sys.argv[1] == "--goals":
        results = Results(sys.argv[2])
        measured = [row for row in speed_goals(results) if row[3] != "n/a"] + step_goals(results)
        print(document_table(results), ratio_table(results, SETS), goal_table(measured), sep="\n\n")
    else:
        results = Results(sys.argv[1])
        write_page(results, pathlib.Path(sys.argv[2]))
    for name in results.failed:
        print("failed:", name, file=sys.stderr)


main()
