"""The operations that are measured, the goals, and whether they are met."""

import collections
import math

from results import SETS, Key

Operation = collections.namedtuple(
    "Operation", "title base goal_base most_small most most_on_any nodes",
    defaults=[None, None, None, None, None])

# The title in tables; the library that the ratios of all libraries are multiples of; and the goal: a
# library, and in multiples of it the most that the geometric mean may be over the small documents
# and over all documents, the most on any document, and the number of nodes that it is for. None
# stands for no such limit, and for any number.
OPERATIONS = {
    "load": Operation("load", "expat", "plain", None, 1.0, 1.15),
    "load-destroy": Operation("load and destroy", "plain", "plain", 1.0, 1.05),
    "destroy": Operation("destroy", "plain"),
    "write": Operation("write", "pugixml", "pugixml", None, 0.7),
    "text": Operation("text of the root", "pugixml", "pugixml", 0.7, 1.0),
    "text-references": Operation("text with references", "pugixml", "pugixml", None, 2.0),
    "select-name": Operation("select all `//name`", "pugixml", "pugixml", None, 1.0, 1.8),
    "select-attribute": Operation(
        "select all `//name[@attr='value']`", "pugixml", "pugixml", None, 1.0, 1.8),
    "select-path": Operation("select all `/a/b/c`", "pugixml", "pugixml", None, 1.0, 1.8),
    "first-found": Operation("select first, found", "pugixml", "pugixml", None, 0.3),
    "first-absent": Operation("select first, not there", "pugixml", "pugixml", None, 0.8),
    "compare": Operation("compare with an equal tree", "plain", "plain", None, 1.0),
    "append": Operation("append one by one", "pugixml", "pugixml", None, 2.0),
    "insert-first": Operation("insert before the first", "pugixml", "pugixml", None, 2.2),
    "remove-first": Operation("remove the first", "pugixml", "pugixml", None, 1.9),
    "insert-last": Operation(
        "insert before the last", "pugixml", "pugixml", None, 2.5, nodes=10**4),
    "remove-last": Operation("remove the last", "pugixml", "pugixml", None, 4.0, nodes=10**4),
    "backwards": Operation("go backwards over siblings", "pugixml"),
    "queue": Operation("append one, remove the first", "pugixml"),
}

# The goals that are no ratios between libraries.
MOST_BYTES_PER_NODE = 145
MOST_BYTES_PER_ANY_NODE = 160
MOST_STEP_NANOSECONDS = 100
MOST_PEAK_TEXTS = 1.0
PEAK_ALLOWANCE = 128 * 1024  # what Expat needs besides, and whole pages
MOST_GROWTH = 1.5
MOST_CHILD_GROWTH = 2.0
MOST_SEARCH_RATIO = 2.0
MOST_KIBIBYTES = 116
LEAST_OF_TWO_THREADS = 1.9


def fixed(value, decimals=2):
    return "n/a" if value is None else f"{value:.{decimals}f}"


def judged(what, goal, measured, is_met, on_all_documents=""):
    return [what, goal, measured, on_all_documents, "yes" if is_met else "NO"]


def goal_of(operation):
    """What is asked of an operation, in words."""
    parts = [f"{most:.2f}{where}" for most, where in
             [(operation.most_small, " on small documents"), (operation.most, "")] if most]
    goal = f"at most {', '.join(parts)} times {operation.goal_base}"
    if operation.most_on_any:
        goal += f", on none above {operation.most_on_any:.2f}"
    return goal + (f", {operation.nodes} children" if operation.nodes else "")


def speed_goals(results):
    rows = []
    for name, operation in OPERATIONS.items():
        if not operation.goal_base:
            continue
        small, everywhere = [
            results.ratios(name, sets, "xmldom", operation.goal_base, operation.nodes)
            for sets in (["small"], SETS)]
        cells = [f"{each.mean:.2f} ({each.worst:.2f} on {each.sample})" if each else "n/a"
                 for each in (small, everywhere)]
        is_met = bool(everywhere and everywhere.mean <= operation.most
                      and everywhere.worst <= (operation.most_on_any or math.inf)
                      and (not operation.most_small
                           or small and small.mean <= operation.most_small))
        rows.append(judged(operation.title, goal_of(operation), cells[0], is_met, cells[1]))
    return rows


def step_goals(results):
    """The time of a step where the peers' ratios say little."""
    rows = []
    for name in ("backwards", "queue"):
        steps = [(results.per_node(key), key.nodes)
                 for key in results.keys(name, ["small"], "xmldom")]
        most, nodes = max(steps, default=(math.inf, 0))
        rows.append(judged(f"{OPERATIONS[name].title}, a step",
                           f"at most {MOST_STEP_NANOSECONDS} ns",
                           f"{most:.0f} ns ({nodes} children)", most <= MOST_STEP_NANOSECONDS))
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
    heaps = [(load.heap / load.nodes, load.sample)
             for load in results.loads if load.library == "xmldom"]
    flat = max((heap for heap, sample in heaps if sample == "flat"), default=math.inf)
    heap, largest = max(heaps, default=(math.inf, "not measured"))
    peak, sample = max(results.peaks(PEAK_ALLOWANCE), default=(math.inf, "not measured"))
    return [
        judged("heap bytes a node, flat records: all that a document keeps without its parser",
               f"at most {MOST_BYTES_PER_NODE}", f"{flat:.1f}", flat <= MOST_BYTES_PER_NODE),
        judged("the same on any document", f"at most {MOST_BYTES_PER_ANY_NODE}",
               f"{heap:.1f} ({largest})", heap <= MOST_BYTES_PER_ANY_NODE),
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


def threads_goal(results):
    gains = [(one / two, f"{nodes} nodes") for (library, nodes), (one, two) in results.threads().items()
             if library == "xmldom"]
    gain, where = min(gains, default=(0, "not measured"))
    return judged("two threads on two cores, each with documents of its own",
                  f"at least {LEAST_OF_TWO_THREADS:.1f} times the work of one",
                  f"{gain:.2f} ({where})", gain >= LEAST_OF_TWO_THREADS)


def size_goal(results):
    size = results.sizes["xmldom"]
    return judged("both shared libraries, stripped, text and data",
                  f"at most {MOST_KIBIBYTES} KiB", f"{size:.0f} KiB", 0 < size <= MOST_KIBIBYTES)


def all_goals(results):
    return [
        *speed_goals(results),
        *step_goals(results),
        growth_goal(results, True, "a child at 10^6 children", "10^4", MOST_CHILD_GROWTH),
        *memory_goals(results),
        growth_goal(results, False, "a node at 10^6 nodes", "10^5", MOST_GROWTH),
        *extreme_goals(results),
        threads_goal(results),
        size_goal(results),
    ]
