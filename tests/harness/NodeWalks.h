#ifndef XMLDOM_TESTS_HARNESS_NODEWALKS_H
#define XMLDOM_TESTS_HARNESS_NODEWALKS_H

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <string>

typedef XMLPtr<IXMLDOMNode> NodePtr;

/// The names of the nodes of a range, a blank behind each.
template <class Range>
std::string Names(Range&& range) {
  std::string names;
  for (NodePtr node : range) names += std::string(node->m_pszNodeName) + " ";
  return names;
}

/// Walks a range and calls `edit` for each node, with the names met so far, its own included.
/// Result: all names.
template <class Range, class Edit>
std::string NamesWithEdits(Range&& range, Edit edit) {
  std::string names;
  for (NodePtr node : range) {
    names += node->m_pszNodeName;
    edit(node.Get(), names);
  }
  return names;
}

/// The reference counts of a chain, as "1 2 1 ".
inline std::string Counts(const IXMLDOMNode* head) {
  std::string counts;
  for (; head != nullptr; head = head->m_pNextSibling) {
    counts += std::to_string(head->GetRefCount()) + " ";
  }
  return counts;
}

/// Takes a child out and drops the reference that the tree held.
inline void Remove(IXMLDOMNode* parent, IXMLDOMNode* child) {
  NodePtr removed;
  EXPECT_EQ(S_OK, parent->removeChild(child, removed.Out()));
}

#endif
