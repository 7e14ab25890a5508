"""What `scripts/bench` has measured, read from the folder that it has filled."""

import collections
import json
import pathlib
import re
import statistics

SETS = ["small", "large", "real"]  # the documents that operations are compared on

Key = collections.namedtuple("Key", "operation set sample nodes library")
Load = collections.namedtuple("Load", "sample nodes bytes library heap records peak")
Ratios = collections.namedtuple("Ratios", "mean worst sample")
Growth = collections.namedtuple("Growth", "few many ratio")


class Results:
    """All that was measured; a part that is missing is empty."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.context = {}
        self.times = {}  # of a Key: nanoseconds, the least of the repetitions
        self.spreads = [0]  # standard deviations in multiples of the means
        self.failed = []  # names of benchmarks
        for part in SETS + ["growth", "scale", "threads", "extremes"]:
            for path in sorted(self.folder.glob(f"{part}/*.json")):
                self.read_benchmarks(json.loads(path.read_text()))
        self.times = dict(sorted(self.times.items()))  # The library mixes what takes turns.
        self.spreads.sort()
        self.loads = [Load(sample, int(nodes), int(size), library, *map(int, measured))
                      for sample, nodes, size, library, *measured in self.rows("memory")]
        self.sizes = collections.Counter()
        for library, size in self.rows("sizes"):
            self.sizes[library] += int(size) / 1024
        self.profile = collections.defaultdict(collections.Counter)  # instructions a node
        for operation, library, nodes, count, function in self.rows("profile"):
            part = owner_of_code(library, function)
            self.profile[operation, library][part] += int(count.replace(",", "")) / int(nodes)

    def rows(self, part):
        path = self.folder / (part + ".tsv")
        lines = path.read_text().splitlines() if path.exists() else []
        return [line.split("\t") for line in lines]

    def read_benchmarks(self, document):
        self.context = document["context"]
        for run in document["benchmarks"]:
            operation, group, sample, _, library = run["run_name"].split("/")[:5]
            if run.get("error_occurred"):
                if run["error_message"] != "not offered":
                    self.failed.append(run["run_name"])
            elif run.get("aggregate_name", "least") == "least":
                key = Key(operation, group, sample, int(run["nodes"]), library)
                self.times[key] = run["real_time"]
            elif run["aggregate_name"] == "cv":
                self.spreads.append(run["real_time"])

    def keys(self, operation, sets, library):
        return [key for name in sets for key in self.times
                if (key.operation, key.set, key.library) == (operation, name, library)]

    def per_node(self, key):
        return self.times[key] / key.nodes

    def ratio(self, key, base):
        """What a key's library takes in multiples of another; None where that takes no part."""
        other = self.times.get(key._replace(library=base))
        return other and self.times[key] / other

    def ratios(self, operation, sets, library, base, nodes=None):
        """Over all documents, or those of so many nodes, that both have done; None when there is
        none."""
        keys = [key for key in self.keys(operation, sets, library) if nodes in (None, key.nodes)]
        ratios = [(self.ratio(key, base), key.sample) for key in keys if self.ratio(key, base)]
        mean = ratios and statistics.geometric_mean(ratio for ratio, _ in ratios)
        return Ratios(mean, *max(ratios)) if ratios else None

    def growth(self, library):
        """The pairs of a document and a larger one, by operation and document."""
        pairs = collections.defaultdict(list)
        for key in self.times:
            if key.set == "growth" and key.library == library:
                pairs[key.operation, key.sample].append(key)
        return {name: Growth(*pair, self.per_node(pair[1]) / self.per_node(pair[0]))
                for name, pair in pairs.items() if len(pair) == 2}

    def threads(self):
        """For each library and number of nodes the nanoseconds a document that one thread and two
        take."""
        return {(key.library, key.nodes): (self.times[key._replace(operation="one-thread")], two)
                for key, two in self.times.items() if key.operation == "two-threads"}

    def destructions(self):
        """For each document, number of nodes, C library and order of destruction the nanoseconds a
        node that making the nodes and destroying them take: the least sum of all turns."""
        least = {}
        for sample, library, order, nodes, *times in self.rows("destruction"):
            key = sample, int(nodes), library, order
            making = tuple(map(float, times))
            least[key] = min(least.get(key, making), making, key=sum)
        return least

    def peaks(self, allowance):
        """What xmldom's loads need beside the records at their peak, in multiples of the text."""
        return [((load.peak - load.records - allowance) / load.bytes, load.sample)
                for load in self.loads if load.library == "xmldom"]


def owner_of_code(library, function):
    """Whose instructions those of a function, with its file, are when a library is measured."""
    own = {"xmldom": "libxmldom", "plain": "xmldom-bench"}.get(library, library)
    if "libexpat" in function:
        return "Expat"
    if re.search("malloc|calloc|realloc|free|unlink_chunk|operator (new|delete)", function):
        return "allocator"
    return "own" if own in function else "other"
