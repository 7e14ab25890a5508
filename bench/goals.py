"""The operations that are measured, the goals, and whether they are met."""

import collections
import math

from results import SETS, Key

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
    "append": Operation("append one by one", "pugixml", "pugixml", 2.0, None),
    "insert-first": Operation("insert before the first", "pugixml", "pugixml", 2.2, None),
    "remove-first": Operation("remove the first", "pugixml", "pugixml", 1.9, None),
    "insert-last": Operation("insert before the last", "pugixml", "pugixml", 2.5, None),
    "remove-last": Operation("remove the last", "pugixml", "pugixml", 4.0, None),
    "backwards": Operation("go backwards over siblings", "pugixml", None, None, None),
    "queue": Operation("append one, remove the first", "pugixml", None, None, None),
}

# The goals that are no ratios between libraries.
MOST_BYTES_PER_NODE = 145
MOST_PEAK_TEXTS = 1.0
PEAK_ALLOWANCE = 128 * 1024  # what Expat needs besides, and whole pages
MOST_GROWTH = 1.5
MOST_CHILD_GROWTH = 3.0
MOST_SEARCH_RATIO = 2.0
MOST_KIBIBYTES = 116


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


def all_goals(results):
    return [
        *speed_goals(results),
        growth_goal(results, True, "a child at 10^6 children", "10^4", MOST_CHILD_GROWTH),
        *memory_goals(results),
        growth_goal(results, False, "a node at 10^6 nodes", "10^5", MOST_GROWTH),
        *extreme_goals(results),
        size_goal(results),
    ]
