#ifndef XMLDOM_BENCH_RECORDS_H
#define XMLDOM_BENCH_RECORDS_H

#include <string>

namespace bench {

/// Prints the nodes of a document in the order in which a load makes them, one on a line: the
/// depth, whether it is an attribute, and the lengths of name and value in bytes, -1 for none.
/// Effects: std::runtime_error when the text is not well-formed.
void PrintRecords(const std::string& text);

}  // namespace bench

#endif
