#ifndef XMLDOM_BENCH_COMMANDS_COMMANDS_H
#define XMLDOM_BENCH_COMMANDS_COMMANDS_H

#include <string>
#include <vector>

namespace bench {

typedef std::vector<std::string> CommandWords;

// Each command appends its results to the file that "--results" names, or reads them from there.
// Effects: std::runtime_error for wrong words, and for what cannot be measured.

/// All libraries side by side. --documents small|all, --real FOLDER, --operation NAME,
/// --seconds of one library in one turn.
void MeasureOperations(const CommandWords& words);

/// All libraries on documents of growing size, for the plots.
void MeasureScale(const CommandWords& words);

/// xmldom on large and on ten times larger documents.
void MeasureGrowth(const CommandWords& words);

/// Heap and resident memory of loads, each in a process of its own. --real FOLDER.
void MeasureMemory(const CommandWords& words);

/// One load, in such a process. --library NAME, --file PATH.
void MeasureOneLoad(const CommandWords& words);

/// xmldom on trees of extreme depth and breadth, on a small stack. --divisor N for smaller ones.
void MeasureExtremes(const CommandWords& words);

/// One such tree, in a process of its own. --tree NAME, --nodes N.
void MeasureOneExtreme(const CommandWords& words);

/// One operation for a profiler, and to standard output how many nodes it was done with.
/// --operation NAME, --library NAME.
void ProfileOperation(const CommandWords& words);

/// The tables of the operations, to standard output. --documents small|all.
void PrintTables(const CommandWords& words);

/// The page of all results, in Markdown. --page FILE.
void WritePage(const CommandWords& words);

/// What the plots show, in text files with columns. --folder FOLDER.
void WritePlotData(const CommandWords& words);

}  // namespace bench

#endif
