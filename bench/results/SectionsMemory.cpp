#include "Library.h"
#include "results/Figures.h"
#include "results/Sections.h"
#include "results/Table.h"

namespace bench {

namespace {

/// A row for each document, a column for each library that keeps a tree.
void WriteMeasure(std::ostream& out, const Results& results, const std::string& measure,
                  int decimals) {
  std::vector<std::string> header = {"document", "nodes"};
  std::vector<std::string> libraries;
  for (const std::unique_ptr<Library>& library : AllLibraries()) {
    if (results.Of(measure, "", library->Name()).empty()) continue;
    libraries.push_back(library->Name());
    header.push_back(library->Name());
  }
  Table table(header);
  for (const Result* ours : results.Of(measure, "", kOurs)) {
    std::vector<std::string> row = {ours->sample, std::to_string(ours->nodes)};
    for (const std::string& library : libraries) {
      const double value = BytesPerNode(results, measure, ours->sample, library);
      row.push_back(results.Beside(*ours, library) == nullptr ? "n/a" : Fixed(value, decimals));
    }
    table.AddRow(row);
  }
  table.Write(out);
}

}  // namespace

void WriteMemory(std::ostream& out, const Results& results) {
  out << "Every load is done from a file, in a process of its own. A block of the heap counts as\n"
         "large as the allocator has made it, with its header.\n\n"
         "Heap bytes a node that a document holds after its load:\n\n";
  WriteMeasure(out, results, "heap", 1);
  out << "\nOf these, bytes a node in the records, their names and their values alone:\n\n";
  WriteMeasure(out, results, "records", 1);
  out << "\nLive allocations a node:\n\n";
  WriteMeasure(out, results, "blocks", 2);
  out << "\nPeak of the resident memory during the load, above that before it, in bytes a "
         "node:\n\n";
  WriteMeasure(out, results, "peak", 1);
  out << "\nThe same of xmldom without the records, in multiples of the text:\n\n";
  Table table({"document", "texts"});
  for (const PeakFigure& figure : PeakFigures(results)) {
    table.AddRow({figure.sample, Fixed(figure.bytes / figure.textBytes, 2)});
  }
  table.Write(out);
}

void WriteSizes(std::ostream& out, const Results& results) {
  Table table({"library", "text and data, KiB"});
  for (const std::unique_ptr<Library>& library : AllLibraries()) {
    const double size = LibraryKibibytes(results, library->Name());
    if (size > 0) table.AddRow({library->Name(), Fixed(size, 0)});
  }
  table.Write(out);
}

}  // namespace bench
