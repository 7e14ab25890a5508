#ifndef XMLDOM_QUERY_SEARCHMEMORY_H
#define XMLDOM_QUERY_SEARCHMEMORY_H

#include <cstddef>

class IXMLDOMNode;

namespace xmldom {

/// What a search in a path with dots records for a pair of a node and a step. TextMemory uses
/// `visit` alone, for a number of its own.
struct SearchRecord {
  IXMLDOMNode* node;
  int step;
  bool isOpen;        // the node is being searched with the step
  std::size_t visit;  // the number of its last test with the step, counted from 1; 0: none yet
  // The first child of the node that no search with the step has come to; null when there is none.
  IXMLDOMNode* unreached;
};

/// The records of one search, found by node and step in constant time on average.
class SearchMemory {
 public:
  SearchMemory() : m_records(nullptr), m_capacity(0), m_size(0) {}
  ~SearchMemory();

  SearchMemory(const SearchMemory&) = delete;
  SearchMemory& operator=(const SearchMemory&) = delete;

  /// Result: the record of a node and a step, made when there is none; valid until the next call.
  /// Effects: std::bad_alloc when memory is out.
  SearchRecord& At(IXMLDOMNode* node, int step);

 private:
  SearchRecord* Slot(IXMLDOMNode* node, int step) const;
  void Grow();

  SearchRecord* m_records;  // open addressing: in a free slot the node is null
  std::size_t m_capacity;   // a power of 2, at least twice the number of records
  std::size_t m_size;
};

}  // namespace xmldom

#endif
