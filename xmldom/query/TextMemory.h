#ifndef XMLDOM_QUERY_TEXTMEMORY_H
#define XMLDOM_QUERY_TEXTMEMORY_H

#include <xmldom/base/Stack.h>
#include <xmldom/base/Text.h>
#include <xmldom/query/SearchMemory.h>
#include <xmldom/support/MemFile.h>

#include <cstddef>

class IXMLDOMNode;

namespace xmldom {

/// The texts of elements that a query compares. Elements that a predicate names may be nested, and
/// collecting the text of each anew would be quadratic in their depth. So reading a text also
/// remembers where the texts of the elements below stand in it, for elements with more than a few
/// nodes below them: the others cost little to read again, and there may be many. A text that is
/// logged or printed is not remembered, because that has to happen each time. Nothing may change in
/// the tree while this exists.
class TextMemory {
 public:
  TextMemory();

  /// Result: the text of an element, with a blank or a NUL behind it, borrowed until the next call.
  /// Effects: those of IXMLDOMNode::GetTextHelper. Cost: constant on average when the text is
  /// remembered; otherwise linear in the nodes below the element and in their text.
  TextRange TextOf(IXMLDOMNode* element);

 private:
  /// Where the text of an element stands in m_kept.
  struct Range {
    std::size_t begin;
    std::size_t end;
  };

  const char* Read(IXMLDOMNode* top);
  void Remember(IXMLDOMNode* element, std::size_t begin);

  CMemFile m_text;        // of the element that was read last
  CMemFile m_kept;        // the texts that m_ranges tells of
  SearchMemory m_places;  // the visit of an element is the number of its range, counted from 1
  Stack<Range, 1> m_ranges;
};

}  // namespace xmldom

#endif
