#include <fstream>
#include <stdexcept>

#include "commands/Commands.h"
#include "commands/Options.h"
#include "commands/Running.h"
#include "results/Sections.h"
#include "results/Summary.h"

namespace bench {

namespace {

const char* const kIntroduction =
    "# Performance\n\n"
    "Written by `scripts/bench`; no figure here comes from anywhere else.\n\n"
    "The libraries of a table are measured within one run. They take turns, seven a figure, each\n"
    "turn in a process of its own, so that nobody finds the heap as another has left it; and a\n"
    "ratio is the median of the quotients of the same turns: what disturbs a turn disturbs both.\n"
    "Counted is the processor time, after enough repetitions to warm the caches. Debug lines go\n"
    "to the null device. Each operation is checked once before it is measured, and selections\n"
    "have to find the same number of nodes in every library.\n\n";

const char* const kContenders =
    "- *expat*: Expat with empty start, end and default handlers, the floor of every load.\n"
    "- *plain*: the plainest linked tree over the same handlers, every node, name and value a "
    "block\n"
    "  of the heap (`bench/plain/`).\n"
    "- *pugixml*, *libxml2*, *tinyxml2*, *xerces-c*: from Debian, linked as shared libraries, "
    "with\n"
    "  their ordinary allocators. pugixml and tinyxml2 are no conforming parsers.\n\n"
    "A library has *n/a* where it has no such operation, refuses the document (tinyxml2: more "
    "than\n"
    "100 levels, internal document types), or would need namespaces in the path. Text of several\n"
    "nodes is collected by hand for pugixml, and `//name[@attr='value']` for tinyxml2. Xerces-C "
    "has\n"
    "no predicates in paths, and keeps blank text, which all others drop. Text with references is "
    "a\n"
    "row of its own: for each of them xmldom prints a debug line with all text collected so far,\n"
    "which grows with the square of the text; only documents for which that is less than 32 MiB "
    "are\n"
    "measured.\n\n";

const char* const kDocuments =
    "Documents: *small* are generated ones of seven shapes with some 2000 nodes, whose trees fit "
    "the\n"
    "cache of a core; *large* the same with 100 000; *real* five from Debian packages. Nodes are\n"
    "elements, attributes, and texts that are not blank. Edits are done with 1000 and with 10 000\n"
    "children.\n\n";

void WritePlots(std::ostream& out) {
  out << "## Time a node against the number of nodes\n\n"
         "A device configuration of any number of sections.\n\n";
  for (Operation operation : PlottedOperations()) {
    const OperationName& name = NameOf(operation);
    out << "![" << name.title << "](performance/" << name.name << ".svg)\n\n";
  }
  out << "## Ratios of each operation\n\n![ratios](performance/ratios.svg)\n\n";
}

}  // namespace

void WritePage(const CommandWords& words) {
  const Options options(words, {"results", "page"});
  Results results;
  results.Read(options.Get("results"));
  std::ofstream out(options.Get("page"));
  out << kIntroduction << "## The machine\n\n";
  WriteMachine(out);
  out << "\n## The contenders\n\n" << kContenders << kDocuments << "## Goals\n\n";
  out << "Geometric means over the documents, with the worst of them; judged on the small "
         "ones.\n\n";
  WriteGoals(out, results);
  out << "\n";
  WritePlots(out);
  out << "Geometric means over the small documents:\n\n";
  WriteRatios(out, results, "small");
  out << "\nGeometric means over all documents:\n\n";
  WriteRatios(out, results, "");
  out << "\n## xmldom on each document\n\n";
  WriteDocumentRatios(out, results, "");
  out << "\n## Where the time goes\n\n";
  WriteProfile(out, results);
  out << "\n## Memory\n\n";
  WriteMemory(out, results);
  out << "\n## Size of the libraries\n\nStripped shared libraries; for xmldom both together.\n\n";
  WriteSizes(out, results);
  out << "\n## Growth\n\nxmldom on a document and on one that is ten times larger, or on a list of "
         "children and one\nthat is a hundred times longer.\n\n";
  WriteGrowth(out, results);
  out << "\n## Depth and breadth\n\nAll of it is done by a thread with a stack of 256 KiB.\n\n";
  WriteExtremes(out, results);
  if (!out.flush()) throw std::runtime_error("cannot write " + options.Get("page"));
}

}  // namespace bench
