#ifndef XMLDOM_QUERY_SEARCHMEMORY_H
#define XMLDOM_QUERY_SEARCHMEMORY_H

#include <cstddef>

class IXMLDOMNode;

namespace xmldom {

/// What a search remembers of a node and a step.
struct SearchRecord {
  IXMLDOMNode* node;
  int step;
  // Of the search of the node itself with the step.
  bool isOpen;
  std::size_t visit;  // the number of its last test, counted from 1 over the whole search
  // Of the search of the node's children with the step: the first that was never come to, or null.
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

  SearchRecord* m_records;  // open addressing: a free place has no node
  std::size_t m_capacity;   // a power of 2, at least twice the number of records
  std::size_t m_size;
};

}  // namespace xmldom

#endif
