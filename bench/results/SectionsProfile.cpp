#include "Operation.h"
#include "results/Figures.h"
#include "results/Sections.h"
#include "results/Statistics.h"
#include "results/Table.h"

namespace bench {

namespace {

const char* const kParts[] = {"expat", "allocator", "own", "other"};

double InstructionsPerNode(const Result& part) {
  return Median(part.values) / static_cast<double>(part.nodes);
}

/// The row of one operation of one library; empty when that was not profiled.
std::vector<std::string> RowOf(const Results& results, const OperationName& operation,
                               const std::string& library) {
  std::vector<std::string> parts;
  double sum = 0;
  for (const char* part : kParts) {
    double instructions = 0;
    for (const Result* result : results.Of(operation.name, "profile", library)) {
      if (result->sample == part) instructions = InstructionsPerNode(*result);
    }
    sum += instructions;
    parts.push_back(Fixed(instructions, 0));
  }
  if (sum <= 0) return {};
  std::vector<std::string> row = {operation.title, library, Fixed(sum, 0)};
  row.insert(row.end(), parts.begin(), parts.end());
  return row;
}

const char kReasons[] = R"(
What bounds the goals that are not met:

- *Load, load and destroy.* Beside the parser most of a load is the allocator. A node with its
  reference count and its owner takes a block of 96 bytes, one of the plain tree 80; and a text has
  a name, as every node has, in a block of its own, which a text of the plain tree has not. What is
  left was cut: nodes are made with the lengths that the parse knows, open elements know the ends of
  their chains, and the last reference takes a node apart in place. Link-time optimisation and other
  ways of copying names gained nothing.
- *Append, insert, remove.* Each element that is made is two blocks of the C library's heap, its
  record and its name, and each one that goes gives two back, since an application may keep any node
  and drop any other. pugixml takes both from a page that goes as a whole. The allocator alone takes
  more instructions than pugixml in all; the plain tree, which does nothing but that and set links,
  does not reach the goal either, or just so.
- *Growth of selections.* Trees of 10^5 nodes fit the last cache of this machine, those of 10^6 do
  not, and a selection that visits few of the nodes waits for memory at each of them. The plain tree
  shows the same, more or less of it depending on what else uses the cache; walks of whole trees,
  which follow memory in its order, do not slow down.
- *Selections in large and real documents.* The same: record, name and value stand in blocks of their
  own, where pugixml has a node of 64 bytes that points into the text it was loaded from.
)";

}  // namespace

void WriteProfile(std::ostream& out, const Results& results) {
  out << "Instructions a node, or a child, as Callgrind counts them: a small document of flat "
         "records,\nand 1000 children. *own* is the code of the library that is measured, *other* "
         "mostly copies of\nmemory and measurements of texts.\n\n";
  Table table({"operation", "library", "all", "Expat", "allocator", "own", "other"});
  for (const OperationName& operation : AllOperations()) {
    for (const char* library : {kOurs, kPlain, "pugixml"}) {
      const std::vector<std::string> row = RowOf(results, operation, library);
      if (!row.empty()) table.AddRow(row);
    }
  }
  table.Write(out);
  out << kReasons;
}

}  // namespace bench
